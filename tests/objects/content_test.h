// A game whose content archive holds meshes, shaders and textures that the test puts into it, and a
// 3D view to load them for.
#pragma once

#include <GL/gl.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "bench/plain/gl_context.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/data_state.h"
#include "data/mod_config.h"
#include "objects/level_tree.h"
#include "objects/mesh_bytes.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "support/dds_file.h"
#include "support/sandbox.h"

namespace mw {

class ContentTest : public SandboxTest {
 protected:
  static constexpr std::uint16_t kRed = 0xF800, kBlue = 0x001F;

  void SetUp() override {
    if (!OpenTestGl(8, 8)) GTEST_SKIP() << TestGlError();
    ResetDataState();
    ResetObjectsState();
    modConfig.GamePath = GameFolder();
    modConfig.StandardMeshPath = "Mods\\varnhold\\standardMesh";
    modConfig.TreeMeshPath = "Mods\\varnhold\\treeMesh\\";
    modConfig.TexturePath = "Mods\\varnhold\\texture";
    content_ = archives.CreateArchive((folder / "content.vra").string());
    BuildTree();
  }
  void TearDown() override {
    ResetDataState();
    ResetObjectsState();
  }

  void Put(std::string_view member, const Bytes& bytes) {
    ASSERT_TRUE(content_->WriteMember(member, bytes));
  }
  void PutTexture(std::string_view member, std::uint16_t colour = kRed) {
    DdsFile file;
    file.data = UniformBlocks(1, colour);
    Put(member, file.Bytes());
  }
  // Number of GL textures that meshes hold, references counted.
  static int References() {
    int references = 0;
    for (const ObjectTexture& texture : objectStore.textures.slots) {
      references += texture.references;
    }
    return references;
  }

 private:
  Archive* content_ = nullptr;
};

}  // namespace mw
