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

class ModStory : public ModSandboxTest, public testing::WithParamInterface<std::string> {
 protected:
  // A level of this mod is open.
  static void OpenLevel(const std::string& mod, const std::string& name) {
    modConfig.LevelName = name;
    editor.levelLoaded = true;
    openLevel.folder = modConfig.GamePath.String() + "Mods\\" + mod + "\\varnhold\\levels\\" + name;
  }
  // An archive of a level, as far as its place goes.
  void WriteLevelFile(const std::filesystem::path& level) {
    std::filesystem::create_directories(level.parent_path());
    Write(level.string(), "");
  }
  ModSnapshot snapshot;
};

TEST_P(ModStory, GoesAsItIsTold) {
  const auto number = [](const Words& words) { return ParseInt(words.at(0)); };
  auto verbs = Verbs();
  verbs.insert(
      {{"forget", [](const Words&) { modList.current = -1; }},
       {"warn", [](const Words&) { WarnOfMissingContent(); }},
       {"name", [&](const Words& words) { Tell("  " + ModNameFromInput(Joined(words))); }},
       {"archive",
        [&](const Words& words) { Tell("  " + ContentArchivePath(words[0], Joined(words, 1))); }},
       {"create", [&](const Words& words) { TellAnswer(CreateMod(Joined(words))); }},
       {"last", [&](const Words&) { TellAnswer(UseLastMod()); }},
       {"delete", [&](const Words& words) { TellAnswer(DeleteMod(number(words))); }},
       {"apply",
        [&](const Words& words) {
          TellAnswer(ApplyModSettings(words.empty() ? "" : PathOf(words[0]), Joined(words, 1)));
        }},
       {"folders", [](const Words& words) { CreateModFolders(words[0], words[1]); }},
       {"lists", [&](const Words&) { Tell("  " + Joined(ObjectListChoices())); }},
       {"place",
        [&](const Words& words) {
          const auto place = PlaceOfLevel(words[0]);
          Tell("  " + (place ? place->gameFolder + " and " + place->mod : "no level's place"));
        }},
       {"levelfile", [&](const Words& words) { WriteLevelFile(PathOf(words[0])); }},
       {"modof",
        [&](const Words& words) {
          const auto mod = ModOfLevel(PathOf(words[0]), Joined(words, 1));
          Tell("  " + (mod ? std::to_string(*mod) : "none"));
        }},
       {"make",
        [&](const Words& words) {
          const std::filesystem::path level = PathOf(words[0]);
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
  ActOut(GetParam(), verbs);
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
