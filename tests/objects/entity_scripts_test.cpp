#include "objects/entity_scripts.h"

#include <array>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "objects/object_level_test.h"
#include "support/golden.h"

namespace mw {
namespace {

constexpr std::array kModes{"conquest", "ctf", "tdm"};

// The parts of a text that begin with a line of `mark` and a title, by their titles in their order.
std::vector<std::pair<std::string, std::string>> Parts(std::string_view text,
                                                       std::string_view mark) {
  std::vector<std::pair<std::string, std::string>> parts;
  for (std::size_t at = text.find(mark); at != std::string_view::npos;) {
    const std::size_t next = text.find(mark, at + 1);
    const std::string_view part = text.substr(at, next - at);
    const std::size_t line = part.find('\n');
    std::string title(part.substr(mark.size(), line - mark.size()));
    if (title.ends_with('\r')) title.pop_back();
    parts.emplace_back(title, part.substr(line + 1));
    at = next;
  }
  return parts;
}

class EntityScriptsTest : public ObjectLevelTest {
 protected:
  EntityScriptsTest() { EXPECT_TRUE(level->BeginSave()); }  // no test waits for the disk

  static void Read() {
    BeginLoadReport();
    ReadGameModeFiles();
    EndLoadReport();
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : level->Entries())
      names.emplace_back(entry.first.substr(Member("").size()));
    return names;
  }
  // The level's scripts, of which none is left.
  std::string TakeScripts() {
    std::string all;
    for (const std::string& name : Names()) {
      std::string text = Get(name);
      if (const auto at = text.find(openLevel.folder.String()); at != std::string::npos)
        text.replace(at, openLevel.folder.size(), "LEVEL");
      all += "=== " + name + "\r\n" + text;
      EXPECT_TRUE(level->RemoveMember(Member(name)));
    }
    return all;
  }
  std::string OpenAndSave(const std::string& scripts) {
    for (const auto& [file, text] : Parts(scripts, "=== ")) Put(file, text);
    ReadGameModeFiles();
    TakeScripts();
    EXPECT_TRUE(WriteGameModeFiles());
    return TakeScripts();
  }
  // `count` control points, in one mode, whose names start with `prefix`.
  void PutControlPoints(const std::string& mode, const std::string& prefix, std::size_t count) {
    std::string templates, instances;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string name = prefix + std::to_string(i) + "\r\n";
      templates += "ObjectTemplate.create ControlPoint " + name;
      instances += "Object.create " + name;
    }
    Put(mode + "/ControlPointTemplates.con", templates);
    Put(mode + "/ControlPoints.con", instances);
  }
};

TEST_F(EntityScriptsTest, EveryLineComesBackInItsPlace) {
  ExpectGolden("objects/every_line.con", OpenAndSave(GoldenText("objects/every_line.con")));
}

TEST_F(EntityScriptsTest, ScriptsAreReadAsTheGameDoesAndSettleAfterTheSecondSave) {
  for (const auto& [title, scripts] : Parts(GoldenText("objects/script_cases.con"), "##### ")) {
    SCOPED_TRACE(title);
    for (const auto& [file, text] : Parts(scripts, "=== ")) Put(file, text);
    story.Do(title, Read);
    ClearLoadReport();
    const std::string second = OpenAndSave(OpenAndSave(TakeScripts()));
    EXPECT_EQ(OpenAndSave(second), second);
    ResetObjectsState();
    BuildTree();
  }
  story.Expect("scripts_read");
}

TEST_F(EntityScriptsTest, AFullTableLosesNothingThatItsThreeFilesShare) {
  for (const char* mode : kModes) PutControlPoints(mode, "p", kMaxTemplates);
  Read();
  EXPECT_EQ(Templates(EntityKind::ControlPoint).size(), kMaxTemplates);
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), kMaxInstances);
  EXPECT_THAT(openLevel.loadReport.lines, testing::IsEmpty());
}

// Nor does a save replace the files of the modes that it would lack in.
TEST_F(EntityScriptsTest, WhatDoesNotFitIsReportedOnceForEachKind) {
  PutControlPoints("conquest", "a", kMaxTemplates);
  PutControlPoints("ctf", "b", 2);
  PutControlPoints("tdm", "c", 2);
  std::string groups;
  for (int id = 1; id <= 50; ++id) groups += "spawnPointManager.group " + std::to_string(id) + "\n";
  Put("tdm/spawnPointManagerSettings.con", groups);
  Read();
  EXPECT_EQ(Templates(EntityKind::ControlPoint).size(), kMaxTemplates);
  EXPECT_EQ(entities.spawnGroups.size(), kMaxSpawnGroups);
  EXPECT_THAT(
      openLevel.loadReport.lines,
      testing::ElementsAre(
          "Too many spawn groups in tdm/spawnPointManagerSettings.con: only the first 48 were "
          "loaded.",
          "Too many control point templates in ctf/ControlPointTemplates.con: only the first 1024 "
          "were loaded.",
          "Of the control points in ctf/ControlPoints.con, 2 without a template were left out.",
          "Of the control points in tdm/ControlPoints.con, 2 without a template were left out."));
  TakeScripts();
  EXPECT_TRUE(WriteGameModeFiles());
  EXPECT_THAT(Names(), testing::SizeIs(7));
  EXPECT_THAT(Names(), testing::Each(testing::StartsWith("conquest/")));
}

// What a record cannot hold must not be written back in part, nor what could not be read.
TEST_F(EntityScriptsTest, LongNamesAreCutAndDamagedFilesReadInPart) {
  const std::string most(47, 'n');
  Put("conquest/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint " + most + "-end\n");
  Put("conquest/ControlPoints.con", "Object.create " + most + "-end\n");
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint " + most + "\n");
  Put("ctf/SoldierSpawns.con", "Object.create " + most + "\n");
  story.Do("names of 51 and of 47 characters", Read);
  ASSERT_TRUE(level->CommitSave());
  Damage("ctf/SoldierSpawns.con");
  story.Do("a damaged file", Read);
  story.Expect("scripts_read_in_part");
}

}  // namespace
}  // namespace mw
