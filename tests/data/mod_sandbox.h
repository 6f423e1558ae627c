// A sandbox for tests about mods: no mod is known, and mods with their content archives are made in
// one call. The sandbox is both the working folder and the game folder.
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/story.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/content_archives.h"
#include "data/data_state.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "platform/disk.h"

namespace mw {

inline std::string Joined(const std::vector<std::string>& words, std::size_t from = 0) {
  std::string text;
  for (std::size_t i = from; i < words.size(); ++i) text += (i > from ? " " : "") + words[i];
  return text;
}

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

  // "$" ends a line, "%" stands for a carriage return.
  void WriteText(const std::string& path, std::string text) {
    if (const std::size_t game = text.find("GAME"); game != text.npos)
      text.replace(game, 5, GameFolder());
    std::ranges::replace(text, '$', '\n');
    std::ranges::replace(text, '%', '\r');
    Write(path, text);
  }
  void Show(const std::string& path) {
    std::string text;
    for (const char c : Read(path))
      text += c == '\r' ? "%" : c == '\n' ? "$\n  " : std::string(1, c);
    Tell("  " + text);
  }
  // Of the game folder where a path begins with its name.
  std::string PathOf(const std::string& text) const {
    return text.starts_with("GAME") ? folder.string() + text.substr(4) : text;
  }
  std::string StateAfterStep() override {
    const bool isLong = modList.names.size() > 8;
    return FormatText("mods   %s, at %i: ", isLong ? "many" : Joined(modList.names).c_str(),
                      modList.current) +
           CurrentModName() +
           FormatText("\ngame   %s, list %s, catalogue read %i times", modConfig.GamePath.c_str(),
                      modConfig.ObjectsList.c_str(), catalogueLoads) +
           FormatText(
               "\nlevel  %s in %s, %i samples, %i units, height scale %g, water at %g, fog to %i",
               modConfig.LevelName.c_str(), openLevel.folder.c_str(), modConfig.MaterialSize,
               modConfig.WorldSize, modConfig.HeightScale, modConfig.WaterLevel, modConfig.fogEnd) +
           "\nopen   " + Joined(OpenArchivePaths()) + " of " + HeldContentArchives()[0] + "\n";
  }
  // What stories about mods begin with.
  std::map<std::string, Verb> Verbs() {
    return {{"file", [this](const Words& words) { WriteText(words[0], Joined(words, 1)); }},
            {"files",
             [this](const Words& words) {
               for (int i = 0; i < ParseInt(words[0]); ++i)
                 Write("mod" + std::to_string(100 + i) + ".cfg", "");
             }},
            {"folder", [](const Words& words) { std::filesystem::create_directories(words[0]); }},
            {"rm", [](const Words& words) { EXPECT_TRUE(DeleteDiskFile(words[0])); }},
            {"there",
             [this](const Words& words) {
               TellAnswer(FileExists(words[0]) || FolderExists(words[0]));
             }},
            {"show", [this](const Words& words) { Show(words[0]); }},
            {"mod",
             [this](const Words& words) {
               for (const std::string& name : words) WriteMod(name);
             }},
            {"find", [](const Words&) { FindMods(); }},
            {"select", [this](const Words& words) { TellAnswer(SelectMod(ParseInt(words[0]))); }}};
  }

  static std::vector<std::string> OpenArchivePaths() {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < archives.Count(); ++i) paths.push_back(archives.At(i)->Path());
    return paths;
  }

  int catalogueLoads = 0;
};

}  // namespace mw
