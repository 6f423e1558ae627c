// What happens to levels while they are made, found, opened, edited, saved and recovered, with
// other programs about: the stories in tests/golden/app/levels.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

#include "app/camera_control.h"
#include "app/camera_places.h"
#include "app/commands.h"
#include "app/input.h"
#include "app/level.h"
#include "app/level_file.h"
#include "app/level_fixture.h"
#include "app/level_story_acts.h"
#include "app/light_map_commands.h"
#include "app/modes.h"
#include "app/new_level.h"
#include "app/recent_levels.h"
#include "app/recovery_offer.h"
#include "app/start_up.h"
#include "app/test_level.h"
#include "core/history.h"
#include "data/image.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "data/textures.h"
#include "objects/entities.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/mini_map_picture.h"
#include "terrain/roads.h"
#include "terrain/shadow_work.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, CommandId> kCommands = {
    {"new", kCommandNewLevel}, {"open", kCommandOpenLevel},
    {"exit", kCommandExit},    {"undo", kCommandUndo},
    {"redo", kCommandRedo},    {"in-game-map", kCommandGenerateInGameMap}};

class LevelStory : public LevelTest, public testing::WithParamInterface<std::string> {
 protected:
  LevelStory() {
    shell.setLevelOpen = [this](bool open) { isOpen = open; };
    shell.selectMod = [](bool) { return true; };
    shell.closeMainWindow = [this] { Tell("the window closes"); };
    shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
  }

  // Of a file in the sandbox; "levels" stands for the folder of the levels' archives.
  fs::path Path(const std::string& name) const {
    return name.starts_with("levels") ? levels.parent_path() / name : folder / name;
  }
  // What a shell script would do to the level meanwhile.
  void Meddle() {
    const fs::path copy = folder / "copy.vra";
    fs::copy_file(island, copy, fs::copy_options::overwrite_existing);
    Archive script;
    ASSERT_TRUE(script.Open(copy.string(), true) &&
                script.WriteMember("varnhold/levels/Island/theirs.txt", TextBytes("theirs")) &&
                script.Close());
    WriteBytes(island, ReadBytes(copy));
    knownFiles["as another program left it"] = ReadBytes(island);
  }
  // The welcome dialog is answered with these words, and the one for a new level that it opens.
  void Welcome(const Words& w) {
    auto next = w.begin();
    shell.welcomeDialog = [&](const auto&) {
      const std::string& word = *next++;
      return word == "open"    ? WelcomeChoice::OpenLevel
             : word == "close" ? WelcomeChoice::Close
                               : WelcomeChoice::NewLevel;
    };
    shell.newLevelDialog = [&] {
      return next[-1] == "new" ? std::optional(ChoicesOf({"Atoll", "small", "CQ"})) : std::nullopt;
    };
    AnswerDialogs("");
    TellAnswer(RunWelcomeLoop());
    EXPECT_TRUE(next == w.end());
  }
  void Look() { Tell(DescribeLevel(isOpen, Shown())); }
  // Digits by Ctrl+Shift or Alt; what is not kept then moves the camera on.
  void UseBookmarks(const Words& w) {
    const bool keeps = w[0] == "keep";
    SetModifiers(keeps, keeps, !keeps);
    for (std::size_t i = 1; i < w.size(); ++i) {
      RouteKey(w[i][0], true), RouteKey(w[i][0], false);
      if (keeps) camera.position += {10, 1, 20}, TurnCamera(45), TiltCamera(-5);
    }
    SetModifiers(false, false, false);
    if (!keeps) Look();
  }
  void TellName(const std::string& typed) {
    Tell("       name " + AcceptLevelName(typed).value_or("refused"));
  }
  void TellMembers(const std::string& level, bool withText) {
    for (const std::string& member : MembersOnDisk(level)) {
      if (withText) {
        TellMember(level, member);
      } else {
        std::string text = TextOnDisk(level, member);
        for (std::size_t at = 0; (at = text.find(GameFolder())) != text.npos;) {
          text.erase(at, GameFolder().size());  // wherever the sandbox is
        }
        Tell("       " + member + ' ' + std::to_string(text.size()));
      }
    }
  }
  std::map<std::string, Bytes> Members(const std::string& level) const {
    std::map<std::string, Bytes> members;
    for (const std::string& name : MembersOnDisk(level)) members[name] = MemberOnDisk(level, name);
    return members;
  }
  void TellOpened(bool opened) {
    TellAnswer(opened);
    Tell(std::string("       ") + (editor.levelLoaded ? "level " : "no level ") +
         modConfig.LevelName.String() + " of " + CurrentModName());
  }
  void TellFolders() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder / "Mods/varnhold")) {
      if (entry.is_directory()) names.push_back(fs::relative(entry.path(), folder).string());
    }
    std::ranges::sort(names);
    for (const std::string& name : names) Tell("       " + name);
  }

  void TellTraced() {
    std::string tiles;
    for (const int tile : ReadWholeFile(ValleyScratch("textures\\lmList.dat")).value_or(Bytes{})) {
      tiles += ' ' + std::to_string(tile);
    }
    Tell("       tiles" + tiles);
    for (const char* member :
         {"terrainLightmap.con", "objectsLightmap.con", "Textures/LightmapShadowBits.lsb",
          "Textures/Tx01x00.dds", "Textures/Tx00x01.dds", "ObjectLightMaps/old.dds",
          "ObjectLightMaps/new.dds", "ObjectLightMaps/Palette.pal"}) {
      TellMember("Valley", member);
    }
  }

  const std::map<std::string, Verb> verbs = {
      // Others.
      {"make", [this](const Words& w) { MakeLevel(w[0], std::stoi(w[1]), std::stoi(w[2])); }},
      {"write", [this](const Words& w) { WriteBytes(Path(w[0]), TextBytes(w[1])); }},
      {"folder", [this](const Words& w) { fs::create_directories(Path(w[0])); }},
      {"link", [this](const Words& w) { fs::create_symlink(Path(w[0]), Path(w[1])); }},
      {"template",
       [](const Words&) {
         WriteBytes("mpwr.cfg", TextBytes("GamePath=\nMaterialSize=512\nWorldSize=2048\n"));
       }},
      {"copy",
       [this](const Words& w) {
         const fs::path from = Path(w[0]), to = Path(w[1]);
         // MinGW takes any two files that are there for the same, and copies none over another.
         if (fs::is_regular_file(from)) return WriteBytes(to, ReadBytes(from));
         fs::copy(from, to, fs::copy_options::recursive);
       }},
      {"rename", [this](const Words& w) { fs::rename(Path(w[0]), Path(w[1])); }},
      {"remove",
       [this](const Words& w) {
         if (fs::is_regular_file(Path(w[0]))) return static_cast<void>(RemoveFile(Path(w[0])));
         fs::remove_all(Path(w[0]));
       }},
      {"full", [this](const Words&) { AddMembers(); }},
      {"break",
       [this](const Words& w) {
         BreakSegment(w[0], static_cast<std::uint32_t>(std::stoul(w[1])));
         knownFiles["as damaged"] = ReadBytes(island);
       }},
      {"leave-out", [this](const Words& w) { Remove(w[0]); }},
      {"zeros", [this](const Words& w) { PutMember(w[0], Bytes(std::stoul(w[1]))); }},
      {"meddle", [this](const Words&) { Meddle(); }},
      {"lock", [this](const Words& w) { EXPECT_TRUE(other.Open(ArchivePath(w[0]), true)); }},
      {"unlock", [this](const Words&) { other.Close(); }},
      {"add",
       [this](const Words& w) {
         EXPECT_TRUE(other.WriteMember("varnhold/levels/Island/" + w[0], TextBytes("theirs")));
       }},
      {"know", [this](const Words& w) { knownFiles[w[1]] = ReadBytes(Path(w[0])); }},
      // The user.
      {"choose", [this](const Words& w) { AnswerDialogs(w.empty() ? "" : w[0]); }},
      {"open",
       [this](const Words& w) {
         AnswerDialogs(w.empty() ? "" : w[0]);
         const bool opened = OpenLevel();
         TellAnswer(opened);
         if (opened) knownFiles["as opened"] = ReadBytes(NativePath(LevelArchivePath()));
       }},
      {"mod",
       [](const Words& w) {
         FindMods();
         EXPECT_TRUE(SelectMod(std::stoi(w[0])));
       }},
      {"open-file", [this](const Words& w) { TellOpened(OpenLevelFile(Path(w[0]).string())); }},
      {"open-from-here", [this](const Words& w) { TellOpened(OpenLevelFile(w[0])); }},
      {"open-recent",
       [this](const Words& w) {
         const std::string archive = RecentLevels().at(std::stoul(w[0])).archive;
         TellOpened(OpenRecentLevel(archive));
       }},
      {"drop",
       [this](const Words& w) {
         std::vector<std::string> files;
         for (const std::string& file : w) files.push_back(Path(file).string());
         OpenDroppedFiles(files);
       }},
      {"ignore-input", [](const Words&) { scripted::script.inputIgnored = true; }},
      {"edit", [](const Words&) { Edit(); }},
      {"settings",
       [](const Words&) {
         modConfig.fogEnd = 77;
         modConfig.HeightScale = 9;
       }},
      {"base-mod", [](const Words&) { modConfig.modFolder = kBaseModFolder; }},
      {"spoil-settings",
       [](const Words& w) {
         for (auto& [name, value] : scripted::script.editorSettings) {
           value.clear();
           for (const std::string& word : w) value += word + ' ';
         }
       }},
      {"camera", [](const Words&) { camera.position.Set(300, 80.125f, 400); }},
      {"bookmarks", [this](const Words& w) { UseBookmarks(w); }},
      {"bookmarks-are",
       [](const Words& w) {
         std::string text = WithBreaks(w[0]);
         std::ranges::replace(text, '_', ' ');
         scripted::script.editorSettings["Bookmarks"] =
             std::regex_replace(text, std::regex("LEVEL"), CameraPlaceName());
       }},
      {"many-bookmarked-levels",
       [](const Words&) {
         std::string& text = scripted::script.editorSettings["Bookmarks"] = std::string(3000, 'x');
         for (int i = 0; i < 60; ++i) text += FormatText("\nmod/%i\t1 0 0 0 0 0 1", i);
       }},
      {"bookmarked-levels",
       [this](const Words&) {
         const std::string text = scripted::script.editorSettings["Bookmarks"];
         Tell(FormatText("       %td levels, the last of them ", std::ranges::count(text, '\n')) +
              text.substr(text.rfind('/')));
       }},
      {"save", [this](const Words&) { TellAnswer(SaveLevel()); }},
      {"close", [](const Words&) { CloseLevelArchive(); }},
      {"close-on-a-full-disk",
       [](const Words&) {
         LevelArchive()->RemoveMember("varnhold/levels/Island/Textures/detail.dds");
         HitWhile(FaultKind::Full, 0, CloseLevelArchive);
       }},
      {"save-while-a-change-fails",
       [](const Words& w) { HitWhile(FaultKind::Fail, std::stoul(w[0]), [] { SaveLevel(); }); }},
      {"fill-with-material", [](const Words&) { FillWithMaterial(); }},
      {"steps",
       [this](const Words&) { Tell("       undo " + NextUndo() + ", redo " + NextRedo()); }},
      {"exit", [this](const Words&) { TellAnswer(ConfirmExit()); }},
      {"run", [](const Words& w) { RunCommand(kCommands.at(w[0])); }},
      {"stock", [](const Words&) { RunStockLevelLoad(); }},
      {"test", [](const Words&) { TestLevel(); }},
      {"no-game", [](const Words&) { scripted::script.program = [](auto) { return false; }; }},
      {"wait", [](const Words& w) { NameNewBackup(static_cast<std::uint32_t>(std::stoi(w[0]))); }},
      {"new",
       [this](const Words& w) {
         TellAnswer(NewLevel([&] { return ChoicesOf(w); }));
       }},
      {"new-but-cancel",
       [this](const Words&) {
         TellAnswer(NewLevel([] {
           modConfig.LevelName = "MyLevel";  // as Defaults does
           return std::nullopt;
         }));
       }},
      {"name",
       [this](const Words& w) {
         std::string typed;
         for (const std::string& word : w) typed += (typed.empty() ? "" : " ") + word;
         TellName(typed);
       }},
      {"long-name", [this](const Words&) { TellName(std::string(127, 'n')); }},
      {"new-with-the-longest-name",
       [this](const Words&) {
         std::string name(127, 'n');
         scripted::script.answers.assign(name.size(), PromptAnswer::Ok);
         while (!AcceptLevelName(name)) name.pop_back();
         scripted::script.answers.clear();
         TakePrompts();
         TellAnswer(NewLevel([&] { return ChoicesOf({name, "small", "SP", "CQ", "TDM", "CTF"}); }));
         // It is as long as the sandbox's path allows.
         CloseLevelArchive();
         fs::remove(levels / (name + ".vra"));
         scripted::script.status[1].clear();
       }},
      {"welcome", [this](const Words& w) { Welcome(w); }},
      {"road", [](const Words&) { BuildRoad(); }},
      {"textures", [](const Words&) { levelTextures.textureSetChosen = true; }},
      {"remember-level",
       [](const Words& w) {
         openLevel.archivePath = WithBreaks(w[0]);
         openLevel.mod = w[1];
         RememberLevel();
         openLevel.archivePath.clear();
       }},
      {"recent-are",
       [](const Words& w) {
         scripted::script.editorSettings["RecentLevels"] = std::regex_replace(
             WithBreaks(w[0]), std::regex("ROOT"), fs::absolute("/").string());
       }},
      // Recovery.
      {"work", [this](const Words& w) { Work(std::stoi(w[0])); }},
      {"restart", [](const Words&) { Restart(); }},
      {"second-editor",
       [this](const Words&) {
         running = std::move(session.recovery);
         Restart();
       }},
      {"kill-both",
       [this](const Words&) {
         running = Recovery{};
         Restart();
       }},
      {"offer", [this](const Words&) { TellAnswer(OfferRecovery()); }},
      // Light maps.
      {"tracing",
       [](const Words&) {
         PrepareTracing();
         scripted::script.program = [](std::string_view) { return LeaveTraced(); };
       }},
      {"no-tiles", [](const Words&) { SelectAllShadows(false); }},
      {"tile", [](const Words&) { terrain.shadowSettings.ShadowSelected[3][3] = true; }},
      {"palette", [](const Words&) { textureSet.objectPalette.loaded = true; }},
      {"own-script",
       [](const Words&) {
         EXPECT_TRUE(LevelArchive()->WriteMember("varnhold/levels/Valley/objectsLightmap.con",
                                                 TextBytes("rem of my own")));
       }},
      {"cancel-the-game", [](const Words&) { scripted::script.processesCancelled = true; }},
      {"commands-meanwhile",
       [](const Words&) {
         scripted::script.program = [](std::string_view) {
           for (const auto& [name, command] : kCommands) RunCommand(command);
           return LeaveTraced();
         };
       }},
      {"shadows", [](const Words&) { GenerateTerrainShadows(); }},
      {"merge", [](const Words&) { MergeTerrainLightmaps(); }},
      {"objects", [](const Words&) { GenerateObjectLightmaps(); }},
      {"traced", [this](const Words&) { TellTraced(); }},
      // What there is to see.
      {"look", [this](const Words&) { Look(); }},
      {"recent",
       [this](const Words&) {
         const std::vector<RecentLevel> recent = RecentLevels();
         for (std::size_t i = 0; i < recent.size(); ++i) {
           Tell("       " + recent[i].archive + " of " + recent[i].mod + ": " +
                RecentLevelCaptions(recent)[i]);
         }
       }},
      {"names",
       [this](const Words&) {
         for (const auto& [name, entry] : LevelArchive()->Entries()) {
           Tell("       " + std::string(name));
         }
       }},
      {"road-on-disk",
       [this](const Words&) {
         const auto cell = std::size_t{20} * 256 + (256 - 11);
         Tell("       height " + std::to_string(HeightOnDisk("Island", 11, 20)) + ", material " +
              std::to_string(MemberOnDisk("Island", "materialmap.raw").at(cell)));
       }},
      {"remember", [this](const Words& w) { remembered = Members(w[0]); }},
      {"compare",
       [this](const Words& w) {
         for (const auto& [name, bytes] : Members(w[0])) {
           Tell("       " + name + (remembered[name] == bytes ? " as it was" : " is new"));
         }
       }},
      {"read", [this](const Words& w) { TellMember(w[0], w[1]); }},
      {"members", [this](const Words& w) { TellMembers(w[0], false); }},
      {"scripts", [this](const Words& w) { TellMembers(w[0], true); }},
      {"folders", [this](const Words&) { TellFolders(); }},
      {"map-list",
       [this](const Words&) {
         const Bytes list = ReadBytes(folder / "Mods/varnhold/Settings/maplist.con");
         Tell(std::string(list.begin(), list.end()));
       }},
      {"list", [this](const Words&) {
         for (const std::string& level : ListLevels()) Tell("       " + level);
       }}};

  Archive other;     // of another editor
  Recovery running;  // that editor's
  std::map<std::string, Bytes> remembered;
  bool isOpen = false;
};

TEST_P(LevelStory, IsAsItStands) { ActOut(GetParam(), verbs); }

INSTANTIATE_TEST_SUITE_P(Levels, LevelStory, testing::ValuesIn(GoldenFiles("app/levels")),
                         StoryName);

}  // namespace
}  // namespace mw
