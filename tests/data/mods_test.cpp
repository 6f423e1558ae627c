// What the user does with mods, as stories in tests/golden/data/mods.
#include "data/mods.h"

#include "core/editor_state.h"
#include "core/text.h"
#include "data/content_archives.h"
#include "data/level_place.h"
#include "data/mod_files.h"
#include "data/mod_sandbox.h"
#include "data/open_level.h"

namespace mw {
namespace {

std::string Joined(const std::vector<std::string>& words, std::size_t from = 0) {
  std::string text;
  for (std::size_t i = from; i < words.size(); ++i) text += (i > from ? " " : "") + words[i];
  return text;
}

class ModStory : public ModSandboxTest, public testing::WithParamInterface<std::string> {
 protected:
  // A level of this mod is open.
  static void OpenLevel(const std::string& mod, const std::string& name) {
    modConfig.LevelName = name;
    editor.levelLoaded = true;
    openLevel.folder = modConfig.GamePath.String() + "Mods\\" + mod + "\\varnhold\\levels\\" + name;
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
  // An archive of a level, as far as its place goes.
  void WriteLevelFile(const std::filesystem::path& level) {
    std::filesystem::create_directories(level.parent_path());
    Write(level.string(), "");
  }
  std::string StateAfterStep() const override {
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
  ModSnapshot snapshot;
};

TEST_P(ModStory, GoesAsItIsTold) {
  const auto number = [](const Words& words) { return ParseInt(words.at(0)); };
  // Of the game folder where a path begins with its name.
  const auto path = [this](const std::string& text) {
    return text.starts_with("GAME") ? folder.string() + text.substr(4) : text;
  };
  ActOut(
      GetParam(),
      {{"file", [&](const Words& words) { WriteText(words[0], Joined(words, 1)); }},
       {"files",
        [&](const Words& words) {
          for (int i = 0; i < number(words); ++i)
            Write("mod" + std::to_string(100 + i) + ".cfg", "");
        }},
       {"folder", [](const Words& words) { std::filesystem::create_directories(words[0]); }},
       {"rm", [](const Words& words) { EXPECT_TRUE(DeleteDiskFile(words[0])); }},
       {"there",
        [&](const Words& words) { TellAnswer(FileExists(words[0]) || FolderExists(words[0])); }},
       {"show", [&](const Words& words) { Show(words[0]); }},
       {"mod",
        [&](const Words& words) {
          for (const std::string& name : words) WriteMod(name);
        }},
       {"find", [](const Words&) { FindMods(); }},
       {"select", [&](const Words& words) { TellAnswer(SelectMod(number(words))); }},
       {"forget", [](const Words&) { modList.current = -1; }},
       {"warn", [](const Words&) { WarnOfMissingContent(); }},
       {"name", [&](const Words& words) { Tell("  " + ModNameFromInput(Joined(words))); }},
       {"archive",
        [&](const Words& words) { Tell("  " + ContentArchivePath(words[0], Joined(words, 1))); }},
       {"create", [&](const Words& words) { TellAnswer(CreateMod(Joined(words))); }},
       {"last", [&](const Words&) { TellAnswer(UseLastMod()); }},
       {"delete", [&](const Words& words) { TellAnswer(DeleteMod(number(words))); }},
       {"apply",
        [&](const Words& words) {
          TellAnswer(ApplyModSettings(words.empty() ? "" : path(words[0]), Joined(words, 1)));
        }},
       {"folders", [](const Words& words) { CreateModFolders(words[0], words[1]); }},
       {"lists", [&](const Words&) { Tell("  " + Joined(ObjectListChoices())); }},
       {"place",
        [&](const Words& words) {
          const auto place = PlaceOfLevel(words[0]);
          Tell("  " + (place ? place->gameFolder + " and " + place->mod : "no level's place"));
        }},
       {"levelfile", [&](const Words& words) { WriteLevelFile(path(words[0])); }},
       {"modof",
        [&](const Words& words) {
          const auto mod = ModOfLevel(path(words[0]), Joined(words, 1));
          Tell("  " + (mod ? std::to_string(*mod) : "none"));
        }},
       {"make",
        [&](const Words& words) {
          const std::filesystem::path level = path(words[0]);
          Tell("  as " + NewModName(*PlaceOfLevel(level)));
          const auto made = MakeModOfLevel(*PlaceOfLevel(level), level);
          Tell("  " + (made ? std::to_string(*made) : "none"));
        }},
       {"level", [](const Words& words) { OpenLevel(words[0], words[1]); }},
       {"close", [](const Words&) { editor.levelLoaded = false; }},
       {"size",
        [&](const Words& words) {
          modConfig.MaterialSize = number(words), modConfig.WorldSize = 4 * number(words);
        }},
       {"fog", [&](const Words& words) { modConfig.fogEnd = number(words); }},
       {"water",
        [&](const Words& words) { modConfig.WaterLevel = static_cast<float>(number(words)); }},
       {"list", [](const Words& words) { modConfig.ObjectsList = words[0]; }},
       {"gamepath", [](const Words& words) { modConfig.GamePath = words[0]; }},
       {"snapshot", [&](const Words&) { snapshot = TakeModSnapshot(); }},
       {"restore", [&](const Words&) { RestoreMod(snapshot); }},
       {"reload", [&](const Words&) { TellAnswer(ReloadModConfig()); }}});
}

INSTANTIATE_TEST_SUITE_P(All, ModStory, testing::ValuesIn(GoldenFiles("data/mods")));

TEST_F(ModSandboxTest, SavingTheGamePathKeepsEveryOtherByte) {
  const std::string rest = "\nTeam=\xE4/x/y\nGamePath=",
                    tail = std::string(600, 'l') + "\r\n\nlast";
  Write("winter.cfg", "//GamePath=a\r\nGamePath=b\r\nTeam=\xE4/x/y\nGamePath2\n" + tail);
  ModConfig saved, loaded;
  saved.GamePath = std::string(kMaxSavedGamePath - 1, 'x') + "\\";
  const std::string path = saved.GamePath.String();
  ASSERT_TRUE(SaveModGamePath("winter", saved));
  EXPECT_EQ(Read("winter.cfg"),
            "//GamePath=a\r\nGamePath=" + path + "\r" + rest + path + "\n" + tail + "\n");
  ASSERT_TRUE(ParseModConfig("winter", loaded));
  EXPECT_EQ(loaded.GamePath, path) << "the longest one is read back whole";
  Answer({PromptAnswer::Ok});
  EXPECT_FALSE(SaveModGamePath("gone", saved));
  ExpectPrompts({"Error: Can't read gone.cfg"});
}

}  // namespace
}  // namespace mw
