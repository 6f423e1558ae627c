// No operation loses a level: every single change that one makes to the disk is the one that goes
// wrong, in every way. After a restart each member is as before or as after the operation, and the
// user was told what failed and that the level on disk is as it was.
#include <fstream>
#include <gmock/gmock.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "app/light_map_commands.h"
#include "app/new_level.h"
#include "data/add_file.h"
#include "data/image.h"
#include "data/mods.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "terrain/surface_maps.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using Members = std::map<std::string, Bytes>;

constexpr std::size_t kTileBytes = std::size_t{1024} * 1024 * 3;
constexpr FaultKind kFaults[] = {FaultKind::Stop, FaultKind::Fail, FaultKind::Full,
                                 FaultKind::Short};

bool NothingSaid() { return scripted::script.prompts.empty(); }

struct Operation {
  std::function<void()> prepare;
  std::function<bool()> run;        // true when it claims to be complete
  const char* message;              // what the user reads when it is not
  bool putsNewFileInPlace = false;  // of which the disk may not have said that it will last
};

class OperationFaults : public LevelTest {
 protected:
  OperationFaults() {
    fs::remove(levels / "Valley.vra");
    AnswerDialogs("Island");
  }

  // As after a kill, with the level as it was made.
  void StartAnew() {
    archives.Clear();
    archives.backedUp.clear();
    CloseLevelArchive();
    for (const fs::path& left : {folder / "ShadowWork", levels}) fs::remove_all(left);
    fs::create_directory(levels);
    WriteBytes(island, made);
    modConfig = ModConfig{};
    ASSERT_TRUE(ParseModConfig("varnhold", modConfig));
    ResetCoreState();  // the camera's place is saved with a level
    editor.viewReady = true;
    TakePrompts();
    scripted::script.answers.assign(4, PromptAnswer::Yes);
  }
  // The level as the next start finds it.
  Members MembersAfterRestart() const {
    const fs::path restarted = folder / "restarted";
    fs::remove_all(restarted);
    fs::copy(levels, restarted);
    Archive archive;
    EXPECT_TRUE(archive.Open((restarted / "Island.vra").string(), true)) << archive.Error();
    Members members;
    for (const auto& [name, entry] : archive.Entries())
      members[std::string(name)] = *archive.ReadMember(name);
    return members;
  }

  void ExpectLevelSurvivesFaultsIn(const Operation& operation) {
    StartAnew();
    operation.prepare();
    const Members before = MembersAfterRestart();
    ASSERT_TRUE(operation.run());
    const Members after = MembersAfterRestart();
    for (const FaultKind fault : kFaults) {
      SCOPED_TRACE(static_cast<int>(fault));
      EachChange(2, [&](std::size_t change) {
        StartAnew();
        operation.prepare();
        bool complete = false;
        const bool hit = HitWhile(fault, change, [&] { complete = operation.run(); });
        const Members now = MembersAfterRestart();
        EXPECT_TRUE(complete || hit) << "failed on a disk in good health";
        EXPECT_TRUE(now == after || (!complete && now == before));
        if (complete) return hit;
        EXPECT_TRUE(now == before || operation.putsNewFileInPlace) << "it is not as it was";
        const std::string told = NothingSaid() ? "" : TakePrompts().back();
        EXPECT_THAT(told, HasSubstr(operation.message));
        EXPECT_THAT(told, HasSubstr("on disk is as it was"));
        EXPECT_THAT(told, HasSubstr(fault == FaultKind::Full ? "No space left on device" : ""));
        return hit;
      });
    }
  }

  const Bytes made = ReadBytes(island);
};

TEST_F(OperationFaults, Saving) {
  const auto openWithEdits = [] {
    ASSERT_TRUE(OpenLevel());
    Edit();
  };
  const auto save = [] {
    const bool saved = SaveLevel();
    EXPECT_EQ(editor.levelModified, !saved);
    return saved;
  };
  ExpectLevelSurvivesFaultsIn({openWithEdits, save, "The level could not be saved.\n\n"});
}

TEST_F(OperationFaults, ANewLevelOverAnOldOne) {
  NewLevelChoices choices;
  choices.name = "Island";
  choices.size = LevelSize::Small;
  choices.randomTerrain = false;
  const auto create = [&] {
    const bool created = NewLevel([&] { return choices; });
    EXPECT_TRUE(editor.levelLoaded == created && !editor.levelModified);
    return created;
  };
  ExpectLevelSurvivesFaultsIn({[] {}, create, "The level could not be created.\n\n", true});
}

TEST_F(OperationFaults, ChangesOfTheArchive) {
  static const Bytes picture(kTileBytes, 90);
  const SurfacePlugin plugin{
      [](const std::uint32_t*, std::int32_t, std::int32_t, std::int32_t) { return true; },
      [](std::int32_t, const MapwrightTextureSlot*) {},
      [](std::int32_t, std::int32_t, std::int32_t) { return picture.data(); }};
  std::ofstream("loading.txt") << "a loading screen";
  ASSERT_TRUE(WriteTga("merged.tga", 1024, 1024, Bytes(kTileBytes, 120)));
  scripted::script.program = [&](std::string_view) {
    const fs::path merged = folder / "ShadowWork/varnhold/levels/Island/textures/merged";
    return fs::create_directories(merged) &&
           fs::copy_file(folder / "merged.tga", merged / "Tx01x01.tga");
  };
  const auto openWithTile = [] {
    ASSERT_TRUE(OpenLevel());
    levelTextures.SurfaceAssigned[1][1] = terrain.shadowSettings.ShadowSelected[1][1] = true;
    TakePrompts();  // opening told what the level lacks
  };
  const std::function<bool()> changes[] = {
      [&] { return GenerateSurfaceMaps(plugin), NothingSaid(); },
      [] { return MergeTerrainLightmaps(), NothingSaid(); },
      [] { return AddFileToArchive("loading.txt", modConfig.levelsFolder.String() + "Island"); }};
  for (const auto& change : changes) {
    ExpectLevelSurvivesFaultsIn(
        {openWithTile, change, "The level's archive could not be changed: "});
  }
}

}  // namespace
}  // namespace mw
