// A sandbox for tests about mods: no mod is known, and mods with their content archives are made in
// one call. The sandbox is both the working folder and the game folder.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "app/story.h"
#include "core/hooks.h"
#include "data/archive.h"
#include "data/content_archives.h"
#include "data/data_state.h"
#include "data/mods.h"
#include "platform/disk.h"

namespace mw {

class ModSandboxTest : public StoryTest {
 protected:
  ModSandboxTest() {
    ResetDataState();
    hooks.loadObjectCatalogue = [this] { ++catalogueLoads; };
    std::filesystem::create_directories(folder / "TextureSets" / "Default");
    Write("TextureSets/Default/index.dat", "");
  }

  void Write(std::string_view path, std::string_view text) {
    ASSERT_TRUE(WriteWholeFile(path, text)) << path;
  }

  std::string Read(std::string_view path) {
    const auto bytes = ReadWholeFile(path);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "(no such file)";
  }

  // `<name>.cfg` (with a WaterLevel of 20) and the mod's four content archives, empty.
  void WriteMod(const std::string& name) {
    const std::string content = "Path=Mods\\" + name + "\\";
    Write(name + ".cfg", "GamePath=" + GameFolder() + "\nObjects" + content +
                             "objects\nStandardMesh" + content + "standardMesh\nTreeMesh" +
                             content + "treeMesh\nTexture" + content +
                             "texture\nObjectsList=objects.lst\nWaterLevel=20\n");
    const auto archiveFolder = folder / "Mods" / name / "Archives";
    std::filesystem::create_directories(archiveFolder);
    for (const char* file : {"objects.vra", "standardMesh.vra", "treeMesh.vra", "texture.vra"}) {
      Archive archive;
      ASSERT_TRUE(archive.Create((archiveFolder / file).string()));
      ASSERT_TRUE(archive.Close());
    }
  }

  // These mods are there, by their order in the list, and one of them is current.
  void UseMods(std::initializer_list<const char*> names, int current = -1) {
    for (const char* name : names) WriteMod(name);
    FindMods();
    if (current >= 0) {
      ASSERT_TRUE(SelectMod(current));
    }
  }

  static std::vector<std::string> OpenArchivePaths() {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < archives.Count(); ++i) paths.push_back(archives.At(i)->Path());
    return paths;
  }

  int catalogueLoads = 0;
};

}  // namespace mw
