#include "objects/mesh_cache.h"

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "data/archive.h"
#include "data/data_state.h"
#include "data/mod_config.h"
#include "objects/level_tree.h"
#include "objects/mesh_bytes.h"
#include "objects/object_browser.h"
#include "objects/object_catalogue.h"
#include "objects/object_store.h"
#include "objects/object_textures.h"
#include "objects/objects_state.h"
#include "support/dds_file.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;
using Rgb = std::array<int, 3>;

constexpr Rgb kRedSeen{255, 0, 0}, kBlueSeen{0, 0, 255}, kWhiteSeen{255, 255, 255}, kNothing{};

// A game whose content archive holds meshes, shaders and textures that the test puts into it, and a
// 3D view to load them for.
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
    for (const ObjectTexture& texture : objectStore.textures.slots)
      references += texture.references;
    return references;
  }

 private:
  Archive* content_ = nullptr;
};

class MeshCacheTest : public ContentTest {
 protected:
  void SetUp() override {
    ContentTest::SetUp();
    objectStore.catalogue = ParseObjectList(
        "House=StandardMesh(house_m1)\nOak=TreeMesh(oak_m1)\nlost=StandardMesh(lost_m1)\n");
  }
  void TearDown() override {
    if (!HasFatalFailure() && !IsSkipped()) ClearMeshes();
    ContentTest::TearDown();
  }

  // Loads the house or the oak and draws it over black; the colours of its left and right half.
  std::array<Rgb, 2> Draw(CachedMesh& mesh) {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glEnable(GL_TEXTURE_2D);
    CallMeshList(mesh.lists[3]);
    glDisable(GL_TEXTURE_2D);
    const DrawnPicture picture = ReadPicture();
    const auto at = [&](std::size_t column) {
      const std::uint8_t* pixel = &picture.rgb[(4 * 8 + column) * 3];
      return Rgb{pixel[0], pixel[1], pixel[2]};
    };
    return {at(2), at(6)};
  }
  void PutHouse(const Bytes& mesh = StandardMeshBytes{}.Get()) {
    Put("standardMesh/house_m1.sm", mesh);
  }
  // Of two squares side by side.
  void PutHouse(std::string_view left, std::string_view right) {
    PutHouse(
        StandardMeshBytes{.materials = {{.name = left, .right = 0}, {.name = right, .left = 0}}}
            .Get());
  }
  void PutShader(const std::string& text) { Put("standardMesh/house_m1.rs", TextBytes(text)); }

  static StaticObject Cached(int entry) {
    StaticObject object;
    object.meshIndex = 7;
    object.lists = {1, 2, 3, 4};
    CacheMeshForObject(entry, object);
    return object;
  }
  static void ExpectNotCached(int entry) {
    const StaticObject object = Cached(entry);
    EXPECT_EQ(object.meshIndex, 0);
    EXPECT_THAT(object.lists, Each(0u));
    EXPECT_THAT(ChildrenOf(levelTree.fixed.cachedObjects), SizeIs(1)) << "\"Add New Object\" only";
    EXPECT_EQ(objectStore.textures.count, 0);
  }

  static constexpr int kHouse = 0, kOak = 1, kLost = 2;
};

// A sub-shader of this name that shows a texture.
std::string Shows(const std::string& name, const std::string& texture, const char* more = "") {
  return "subshader \"" + name + "\" \"x\"\n{\n" + more + "\ttexture \"texture/" + texture +
         "\";\n}\n";
}

TEST_F(MeshCacheTest, AMaterialShowsItsTexture) {
  PutTexture("texture/red.dds", kRed);
  PutTexture("texture/blue.dds", kBlue);
  const struct {
    const char *what, *right;  // the left half is called "brick"
    std::string shader;
    Rgb left, rightHalf;
  } rows[] = {
      {"no shader file", "roof", "", kWhiteSeen, kWhiteSeen},
      {"whatever the case", "ROOF", Shows("Brick", "red") + Shows("roof", "blue"), kRedSeen,
       kBlueSeen},
      {"one that is unknown looks like the first", "unknown",
       Shows("roof", "blue") + Shows("brick", "red"), kRedSeen, kBlueSeen},
      {"one without its texture is none", "roof", Shows("brick", "gone") + Shows("roof", "blue"),
       kBlueSeen, kBlueSeen},
      {"one that fades is not drawn", "roof",
       Shows("brick", "red", "\ttextureFade true;\n") + Shows("roof", "blue"), kNothing, kBlueSeen},
      {"a malformed file", "roof", Shows("brick", "red") + "transparent\n", kWhiteSeen,
       kWhiteSeen}};
  for (const auto& [what, right, shader, left, rightHalf] : rows) {
    PutHouse("brick", right);
    if (!shader.empty()) PutShader(shader);
    CachedMesh mesh;
    EXPECT_TRUE(LoadStandardMesh(kHouse, mesh));
    EXPECT_THAT(Draw(mesh), ElementsAre(left, rightHalf)) << what;
    FreeMesh(mesh);
    EXPECT_EQ(References(), 0);
  }
}

TEST_F(MeshCacheTest, ViewModesWithoutAPictureOfTheirOwnShowTheNextSimpler) {
  const std::pair<StandardMeshBytes, std::array<int, 4>> rows[] = {
      {{}, {0, 1, 2, 2}},  // the picture of each view mode; -1 for none
      {{.levels = 0}, {0, 1, 1, 1}},
      {{.collisions = {}, .levels = 0}, {0, -1, -1, -1}}};
  for (const auto& [file, pictures] : rows) {
    PutHouse(file.Get());
    CachedMesh mesh;
    ASSERT_TRUE(LoadStandardMesh(kHouse, mesh));
    for (std::size_t mode = 0; mode < pictures.size(); ++mode) {
      const int like = pictures[mode];
      EXPECT_EQ(mesh.lists[mode], like < 0 ? 0 : mesh.lists[static_cast<std::size_t>(like)]);
      EXPECT_EQ(mesh.lists[mode] == 0, like < 0);
    }
    FreeMesh(mesh);
  }
}

TEST_F(MeshCacheTest, ATreeShowsTheTexturesOfItsItems) {
  TreeMeshBytes tree;
  tree.groups = {{{{0, 1, "texture/leaf"}}, {{3, 1, "missing"}}, {{0, 0, "sprite"}}, {}}};
  tree.indices = {0, 1, 2, 0, 2, 3};
  Put("treeMesh/oak_m1.tm", tree.Get());
  PutTexture("texture/leaf.dds", kRed);
  PutTexture("texture/sprite.dds", kBlue);
  CachedMesh mesh;
  ASSERT_TRUE(LoadTreeMesh(kOak, mesh));
  EXPECT_THAT(Draw(mesh), ElementsAre(kWhiteSeen, kRedSeen))
      << "the lower right triangle with its texture, the other without";
  EXPECT_EQ(References(), 2) << "the textures that are not drawn are held, too";
  FreeMesh(mesh);
  EXPECT_EQ(objectStore.textures.count, 0);
}

TEST_F(MeshCacheTest, APreviewIsFreedWhenTheNextIsChosen) {
  PutTexture("texture/red.dds");
  PutHouse("brick", "brick");
  PutShader(Shows("brick", "red"));
  EXPECT_TRUE(PreviewEntry(kHouse));
  EXPECT_GT(References(), 0);
  EXPECT_FALSE(PreviewEntry(kLost));
  EXPECT_EQ(References(), 0);
}

TEST_F(MeshCacheTest, AnObjectGetsTheMeshThatIsCachedForIt) {
  PutHouse();
  Put("treeMesh/oak_m1.tm", TreeMeshBytes{}.Get());
  Cached(kHouse);
  const StaticObject oak = Cached(kOak);
  EXPECT_EQ(oak.meshIndex, 1);
  EXPECT_EQ(oak.lists, objectStore.meshes.at(1).lists);
  EXPECT_NE(oak.lists[3], 0u);
  EXPECT_EQ(FindCachedMesh("OAK"), 1);
  EXPECT_EQ(FindCachedMesh("House_M1"), 0);
  EXPECT_EQ(FindCachedMesh("lost"), -1);
  EXPECT_EQ(objectStore.catalogue.entries[kOak].boxB, (Vector3{4, 5, 6}));
  const std::vector<TreeItem> items = ChildrenOf(levelTree.fixed.cachedObjects);
  ASSERT_THAT(items, SizeIs(3));
  EXPECT_EQ(levelTree.items.at(items[2]).text, "oak");
  EXPECT_EQ(FindMeshByTreeItem(items[2]), 1);
  EXPECT_EQ(FindMeshByTreeItem(items[0]), -1);
  EXPECT_EQ(FindMeshByTreeItem(0), -1);
  ClearMeshes();
  Put("treeMesh/oak_m1.tm", TreeMeshBytes{.version = 2}.Get());
  EXPECT_THAT(Cached(kOak).lists, Each(0u)) << "of another version";
  EXPECT_THAT(objectStore.meshes, SizeIs(1));
}

// A level may have hundreds of objects of one broken mesh, which is tried again when the meshes
// were cleared.
TEST_F(MeshCacheTest, AfterAFailedLoadTheObjectHasNoMesh) {
  for (const int entry : {kLost, -1, 3}) ExpectNotCached(entry);
  PutHouse(Bytes(30));
  PutShader(Shows("brick", "brick"));
  PutTexture("texture/brick.dds");
  ExpectNotCached(kHouse);
  PutHouse();
  ExpectNotCached(kHouse);
  EXPECT_THAT(objectStore.meshes, SizeIs(0));
  ClearMeshes();
  EXPECT_NE(Cached(kHouse).lists[3], 0u);
}

TEST_F(MeshCacheTest, TablesThatAreFullRefuseTheMesh) {
  PutHouse("m0", "m1");
  PutTexture("texture/brick.dds");
  std::string shader;
  for (int k = 0; k < 64; ++k) shader += Shows("m" + std::to_string(k), "brick");
  PutShader(shader + Shows("m64", "brick"));
  ExpectNotCached(kHouse);
  ClearMeshes();
  PutShader(shader);
  objectStore.textures.count = kMaxObjectTextures;
  EXPECT_THAT(Cached(kHouse).lists, Each(0u));
  objectStore.textures.count = 0;
  ClearMeshes();
  objectStore.meshes.resize(kMaxCachedMeshes);
  ExpectNotCached(kHouse);
  objectStore.meshes.pop_back();
  EXPECT_EQ(Cached(kHouse).meshIndex, kMaxCachedMeshes - 1);
  EXPECT_EQ(References(), 64);
}

TEST_F(MeshCacheTest, ClearingTheMeshesLeavesNothingBehind) {
  PutHouse();
  PutShader(Shows("wall", "wall"));
  PutTexture("texture/wall.dds");
  CachedMesh freed;
  freed.lists = Cached(kHouse).lists;
  const auto texture = AcquireObjectTexture("wall");
  ASSERT_TRUE(texture);
  ClearMeshes();
  EXPECT_THAT(objectStore.meshes, SizeIs(0));
  EXPECT_EQ(objectStore.textures.count, 0);
  EXPECT_FALSE(glIsTexture(texture->texture)) << "whoever holds it";
  EXPECT_THAT(ChildrenOf(levelTree.fixed.cachedObjects), SizeIs(1));
  EXPECT_THAT(Draw(freed), Each(kNothing));
}

class ObjectTexturesTest : public ContentTest {
 protected:
  static ObjectTextureTable& Table() { return objectStore.textures; }
  static int Slot(std::string_view name) {
    const auto acquired = AcquireObjectTexture(name);
    return acquired ? acquired->slot : -1;
  }
};

TEST_F(ObjectTexturesTest, NamesWithAndWithoutTheFolderShareOneTexture) {
  PutTexture("texture/wall.dds");
  PutTexture("plain.dds");
  const auto first = AcquireObjectTexture("texture/wall");
  const auto second = AcquireObjectTexture("Wall");
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->texture, 0u);
  EXPECT_EQ(second->texture, first->texture);
  EXPECT_EQ(second->slot, first->slot);
  EXPECT_EQ(Table().slots[0].name, "wall");
  EXPECT_EQ(FindObjectTexture("texture/WALL"), first->texture);
  EXPECT_EQ(References(), 2) << "finding takes no reference";
  EXPECT_EQ(Slot("plain"), 1) << "in the other folder";
  EXPECT_EQ(Slot("texture/plain"), 1) << "it is loaded already";
  EXPECT_EQ(Table().count, 2);
  modConfig.TexturePath = "Mods\\other\\texture\\";
  PutTexture("Mods/other/texture/door.dds");
  EXPECT_EQ(Slot("texture/door"), 2) << "a path outside the mod folders is used as it is";
}

TEST_F(ObjectTexturesTest, WhatCannotBeLoadedTakesNoSlot) {
  const std::string tooLong = "texture/" + std::string(64, 'x');
  Put("texture/broken.dds", Bytes(10));
  PutTexture(tooLong + ".dds");
  for (const std::string& name : {std::string("texture/missing"), std::string("texture/broken"),
                                  std::string(), std::string("texture/"), tooLong})
    EXPECT_EQ(Slot(name), -1) << name;
  EXPECT_EQ(Table().count, 0);
}

TEST_F(ObjectTexturesTest, TheLastReferenceDeletesTheTextureAndFreesItsSlot) {
  for (const char* name : {"texture/a.dds", "texture/b.dds", "texture/c.dds"}) PutTexture(name);
  for (const char* name : {"a", "b", "c"}) ASSERT_GE(Slot(name), 0);
  const auto texture = AcquireObjectTexture("b");
  ASSERT_TRUE(texture);
  ReleaseObjectTexture(1);
  EXPECT_TRUE(glIsTexture(texture->texture));
  ReleaseObjectTexture(1);
  EXPECT_FALSE(glIsTexture(texture->texture));
  ReleaseObjectTexture(1);
  ReleaseObjectTexture(-1);
  EXPECT_EQ(Table().count, 3);
  EXPECT_EQ(FindObjectTexture(""), 0u) << "a free slot between others is no texture";
  EXPECT_EQ(FindObjectTexture("b"), 0u);
  ReleaseObjectTexture(2);
  EXPECT_EQ(Table().count, 1) << "the highest used slot plus one";
}

TEST_F(ObjectTexturesTest, AFullTableStillSharesWhatItHolds) {
  PutTexture("texture/last.dds");
  PutTexture("texture/more.dds");
  Table().count = kMaxObjectTextures - 1;
  for (int times = 0; times < 2; ++times) EXPECT_EQ(Slot("last"), kMaxObjectTextures - 1);
  EXPECT_EQ(Slot("more"), -1);
}

}  // namespace
}  // namespace mw
