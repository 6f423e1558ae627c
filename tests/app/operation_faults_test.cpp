// No operation loses a level: every single change that one makes to the disk is the one that goes
// wrong, in every way. After a restart each member is as before or as after the operation, and the
// user was told what failed and that the level on disk is as it was.
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <iostream>
#include <map>
#include <sstream>

#include "app/level.h"
#include "app/level_fixture.h"
#include "app/light_map_commands.h"
#include "app/new_level.h"
#include "app/object_operations.h"
#include "data/add_file.h"
#include "data/image.h"
#include "data/mods.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "support/archive_bytes.h"
#include "support/disk_faults.h"
#include "terrain/shadow_work.h"
#include "terrain/surface_maps.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using Members = std::map<std::string, Bytes>;

constexpr std::uint32_t kSmallMembers = 60;
constexpr std::size_t kMostChanges = 200;  // that an operation makes
constexpr std::size_t kTileBytes = std::size_t{1024} * 1024 * 3;

struct FaultCase {
  FaultKind kind;
  const char* name;
};
constexpr FaultCase kFaults[] = {{FaultKind::Stop, "the program stops"},
                                 {FaultKind::Fail, "input/output error"},
                                 {FaultKind::Full, "no space left"},
                                 {FaultKind::Short, "short write"}};

struct Operation {
  std::function<void()> prepare;
  std::function<bool()> run;        // true when it claims to be complete
  const char* message;              // what the user reads when it is not
  bool putsNewFileInPlace = false;  // of which the disk may not have said that it will last
};

const std::uint8_t* PaintTile(std::int32_t, std::int32_t, std::int32_t) {
  static const Bytes picture(kTileBytes, 90);
  return picture.data();
}
constexpr SurfacePlugin kPlugin{
    [](const std::uint32_t*, std::int32_t, std::int32_t, std::int32_t) { return true; },
    [](std::int32_t, const MapwrightTextureSlot*) {}, PaintTile};

// The members of `expected` that are others in `members`, for the message of a failing test.
std::string Differing(const Members& members, const Members& expected) {
  std::string names = " (" + std::to_string(members.size()) + " members; differing:";
  for (const auto& [name, bytes] : expected) {
    const auto found = members.find(name);
    if (found == members.end() || found->second != bytes) names += " " + name;
  }
  return names + ")";
}

bool NothingSaid() { return scripted::script.prompts.empty(); }

class OperationFaults : public LevelTest {
 protected:
  OperationFaults() {
    ConnectObjectOperations();
    WriteConfig();
    fs::remove(folder / kLevels / "Valley.vra");
    AddSmallMembers();
    AnswerDialogs("Island");
  }
  ~OperationFaults() override { EndProgram(); }
  static void TearDownTestSuite() {
    std::cout << "Disk faults: " << points << " points tried, " << lost << " levels lost\n";
  }

  void WriteConfig() {
    std::stringstream text;
    text << std::ifstream("varnhold.cfg").rdbuf();
    const std::string old = text.str();
    std::ofstream("varnhold.cfg") << "GamePath=" << GameFolder() << "game\\"
                                  << old.substr(old.find('\n'))
                                  << "Team=Axis/German/GermanSoldier\n"
                                  << "Team=Allies/US/USSoldier\n";
  }
  void AddSmallMembers() {
    Archive archive;
    ASSERT_TRUE(archive.Open(ArchivePath("Island"), true) && archive.BeginSave());
    for (std::uint32_t i = 0; i < kSmallMembers; ++i) {
      const std::string name = "varnhold/levels/Island/Objects/part" + std::to_string(i) + ".con";
      ASSERT_TRUE(archive.WriteMember(name, NoiseBytes(100 + i * 7, i)));
    }
    ASSERT_TRUE(archive.CommitSave());
  }

  // The same path leads to another folder each time: a file that is new to the program has a first
  // save, with its backup.
  void StartInFreshGame() {
    EndProgram();
    fs::remove(game);
    fs::remove_all(folder / std::to_string(starts));
    const fs::path fresh = folder / std::to_string(++starts);
    fs::create_directory(fresh);
    fs::create_directory_symlink(fresh, game);
    fs::copy(folder / "Mods", game / "Mods", fs::copy_options::recursive);
    modConfig = ModConfig{};
    ASSERT_TRUE(ParseModConfig("varnhold", modConfig));
    editor = EditorState{};
    camera = Camera{};  // its place is saved with a level
    editor.viewReady = true;
    scripted::script.prompts.clear();
    scripted::script.answers.assign(4, PromptAnswer::Yes);
  }
  // Ends as a killed program does: nothing is written any more.
  static void EndProgram() {
    archives.Clear();
    CloseLevelArchive();
  }

  fs::path LevelFile() const { return game / kLevels / "Island.vra"; }
  // The level as the next start finds it.
  Members MembersAfterRestart() const {
    const fs::path restarted = folder / "restarted";
    fs::remove_all(restarted);
    fs::copy(game / kLevels, restarted);
    Archive archive;
    EXPECT_TRUE(archive.Open((restarted / "Island.vra").string(), true)) << archive.Error();
    Members members;
    for (const auto& [name, entry] : archive.Entries()) {
      members[std::string(name)] = *archive.ReadMember(name);
    }
    return members;
  }

  void ExpectLevelSurvivesFaultsIn(const Operation& operation) {
    StartInFreshGame();
    operation.prepare();
    const Members before = MembersAfterRestart();
    ASSERT_GE(before.size(), kSmallMembers);
    ASSERT_TRUE(operation.run());
    const Members after = MembersAfterRestart();
    for (const FaultCase& fault : kFaults) {
      for (std::size_t change = 0; TryFault(operation, fault, change, before, after); ++change) {
        ASSERT_LT(change, kMostChanges) << "the operation never ends";
        if (HasFatalFailure()) return;
      }
    }
  }

  // False when the operation was over before that change.
  bool TryFault(const Operation& operation, const FaultCase& fault, std::size_t change,
                const Members& before, const Members& after) {
    SCOPED_TRACE(std::string(fault.name) + " at change " + std::to_string(change));
    StartInFreshGame();
    operation.prepare();
    bool complete = false, hit = false;
    {
      const DiskFaults faults(fault.kind, change);
      complete = operation.run();
      hit = faults.Hit();
    }
    const Members now = MembersAfterRestart();
    const bool isBefore = now == before, isAfter = now == after;
    points += hit;
    lost += !isBefore && !isAfter;
    EXPECT_TRUE(isBefore || isAfter) << "a level is lost" << Differing(now, after);
    if (complete) {
      EXPECT_TRUE(isAfter) << "what was said to be complete is not there";
    } else {
      EXPECT_TRUE(hit) << "failed on a disk in good health";
      EXPECT_TRUE(isBefore || operation.putsNewFileInPlace) << "it is not as it was";
      ExpectTheUserWasTold(operation.message);
    }
    return hit;
  }

  static void ExpectTheUserWasTold(const char* message) {
    ASSERT_FALSE(scripted::script.prompts.empty()) << "it failed without a word";
    const std::string& text = scripted::script.prompts.back().text;
    EXPECT_THAT(text, HasSubstr(message));
    EXPECT_THAT(text, HasSubstr("on disk is as it was"));
  }

  void OpenWithEdits() {
    ASSERT_TRUE(OpenLevel());
    SetHeight(20, 20, 77);
    editor.levelModified = true;
  }
  void OpenWithTileToMake() {
    ASSERT_TRUE(OpenLevel());
    levelTextures.SurfaceAssigned[1][1] = terrain.shadowSettings.ShadowSelected[1][1] = true;
    scripted::script.prompts.clear();  // opening told what the level lacks
  }
  static bool SaveEdits() {
    const bool saved = SaveLevel();
    EXPECT_EQ(editor.levelModified, !saved);
    return saved;
  }
  // Leaves the files of a save that the program did not survive, with the archive half written.
  void InterruptSave() {
    StartInFreshGame();
    const Bytes old = ReadBytes(LevelFile());
    const auto isHalfWritten = [&] {
      return fs::exists(LevelFile() += "-journal") && ReadBytes(LevelFile()) != old;
    };
    for (std::size_t change = 0; !isHalfWritten(); ++change) {
      ASSERT_LT(change, kMostChanges);
      StartInFreshGame();
      OpenWithEdits();
      const DiskFaults faults(FaultKind::Stop, change);
      SaveLevel();
    }
    EndProgram();
    fs::remove_all(folder / "Mods");
    fs::copy(game / "Mods", folder / "Mods", fs::copy_options::recursive);
  }

  static constexpr const char* kLevels = "Mods/varnhold/Archives/varnhold/levels";
  static inline int points = 0, lost = 0;
  const fs::path game = folder / "game";
  int starts = 0;
};

TEST_F(OperationFaults, OpeningAfterAnInterruptedSave) {
  InterruptSave();
  ExpectLevelSurvivesFaultsIn({[] {}, OpenLevel, "The level Island could not be opened"});
}

TEST_F(OperationFaults, Saving) {
  ExpectLevelSurvivesFaultsIn(
      {[&] { OpenWithEdits(); }, SaveEdits, "The level could not be saved.\n\n"});
}

TEST_F(OperationFaults, CompactingWhenTheLevelIsClosed) {
  std::uintmax_t size = 0;
  const auto leaveHole = [&] {
    ASSERT_TRUE(OpenLevel());
    ASSERT_TRUE(LevelArchive()->RemoveMember("varnhold/levels/Island/notes.txt"));
    size = fs::file_size(LevelFile());
  };
  const auto close = [&] {
    CloseLevelArchive();
    return fs::file_size(LevelFile()) < size;
  };
  ExpectLevelSurvivesFaultsIn({leaveHole, close, "could not be compacted.\n\n"});
}

TEST_F(OperationFaults, ANewLevelOverAnOldOne) {
  NewLevelChoices choices;
  choices.name = "Island";
  choices.size = LevelSize::Small;
  choices.randomTerrain = false;
  const auto create = [&] { return NewLevel([&] { return choices; }); };
  ExpectLevelSurvivesFaultsIn({[] {}, create, "The level could not be created.\n\n", true});
}

TEST_F(OperationFaults, GeneratingSurfaceMaps) {
  const auto generate = [] {
    GenerateSurfaceMaps(kPlugin);
    return NothingSaid();
  };
  ExpectLevelSurvivesFaultsIn(
      {[&] { OpenWithTileToMake(); }, generate, "The level's archive could not be changed: "});
}

TEST_F(OperationFaults, MergingTerrainLightMaps) {
  ASSERT_TRUE(WriteTga("merged.tga", 1024, 1024, Bytes(kTileBytes, 120)));
  scripted::script.program = [&](std::string_view) {
    const fs::path merged = game / "ShadowWork/varnhold/levels/Island/textures/merged";
    return fs::create_directories(merged) &&
           fs::copy_file(folder / "merged.tga", merged / "Tx01x01.tga");
  };
  const auto merge = [] {
    MergeTerrainLightmaps();
    return NothingSaid();
  };
  ExpectLevelSurvivesFaultsIn(
      {[&] { OpenWithTileToMake(); }, merge, "The level's archive could not be changed: "});
}

TEST_F(OperationFaults, AddingAFile) {
  std::ofstream("loading.txt") << "a loading screen";
  const auto add = [] {
    return AddFileToArchive("loading.txt", modConfig.levelsFolder.String() + "Island");
  };
  ExpectLevelSurvivesFaultsIn(
      {[] { ASSERT_TRUE(OpenLevel()); }, add, "The level's archive could not be changed: "});
}

}  // namespace
}  // namespace mw
