// What is read of a level's scripts of objects and entities, and what a save makes of them.
#include <array>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "objects/object_level_test.h"
#include "objects/static_objects.h"
#include "support/archive_bytes.h"
#include "support/golden.h"

namespace mw {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

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

class LevelScriptsTest : public ObjectLevelTest {
 protected:
  LevelScriptsTest() { EXPECT_TRUE(level->BeginSave()); }  // no test waits for the disk

  static void Read() {
    BeginLoadReport();
    LoadStaticObjects();
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
    ClearAllObjects();
    LoadStaticObjects();
    TakeScripts();
    EXPECT_TRUE(SaveStaticObjects());
    return TakeScripts();
  }
  void PutObjects(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i)
      lines += "Object.create hut\r\nObject.absolutePosition " + std::to_string(i) + "/0/0\r\n";
    Put("StaticObjects.con", lines);
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

TEST_F(LevelScriptsTest, EveryLineComesBackInItsPlace) {
  ExpectGolden("objects/every_line.con", OpenAndSave(GoldenText("objects/every_line.con")));
}

TEST_F(LevelScriptsTest, ScriptsAreReadAsTheGameDoesAndSettleAfterTheSecondSave) {
  for (const auto& [title, scripts] : Parts(GoldenText("objects/script_cases.con"), "##### ")) {
    SCOPED_TRACE(title);
    for (const auto& [file, text] : Parts(scripts, "=== ")) Put(file, text);
    story.Do(title, Read);
    ClearLoadReport();
    const std::string second = OpenAndSave(OpenAndSave(TakeScripts()));
    EXPECT_EQ(OpenAndSave(second), second);
    ClearAllObjects();
  }
  story.Expect("scripts_read");
}

TEST_F(LevelScriptsTest, AFullTableLosesNothingThatItsThreeFilesShare) {
  PutObjects(kMaxStaticObjects);
  for (const char* mode : kModes) PutControlPoints(mode, "p", kMaxTemplates);
  Read();
  EXPECT_EQ(objectStore.objects.back().position.x, 2047);
  EXPECT_EQ(Templates(EntityKind::ControlPoint).size(), kMaxTemplates);
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), kMaxInstances);
  EXPECT_THAT(openLevel.loadReport.lines, IsEmpty());
}

TEST_F(LevelScriptsTest, ATooLargeLevelIsNotOverwritten) {
  PutObjects(kMaxStaticObjects + 1);
  PutControlPoints("conquest", "p", 1);
  Read();
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  EXPECT_THAT(ChildrenOf(levelTree.fixed.standardMeshes), SizeIs(2048));
  EXPECT_THAT(openLevel.loadReport.lines,
              ElementsAre("Could not load all objects - Maximum number of objects exceeded! (2048 "
                          "were loaded.)",
                          "The level's entities were not loaded."));
  TakeScripts();
  EXPECT_TRUE(SaveStaticObjects());
  EXPECT_THAT(Names(), IsEmpty());
}

// Nor does a save replace the files of the modes that it would lack in.
TEST_F(LevelScriptsTest, WhatDoesNotFitIsReportedOnceForEachKind) {
  PutObjects(1);
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
      ElementsAre(
          "Too many spawn groups in tdm/spawnPointManagerSettings.con: only the first 48 were "
          "loaded.",
          "Too many control point templates in ctf/ControlPointTemplates.con: only the first 1024 "
          "were loaded.",
          HasSubstr("ctf/ControlPoints.con, 2 without a template"),
          HasSubstr("tdm/ControlPoints.con, 2 without a template")));
  TakeScripts();
  EXPECT_TRUE(SaveStaticObjects());
  EXPECT_THAT(Names(), SizeIs(1 + 7));
  EXPECT_EQ(Names()[0], "conquest/ControlPoints.con");
  EXPECT_EQ(Names()[7], "StaticObjects.con");
}

// What a record cannot hold must not be written back in part, nor what could not be read.
TEST_F(LevelScriptsTest, LongNamesAreCutAndDamagedFilesReadInPart) {
  const std::string most(47, 'n');
  Put("StaticObjects.con", "Object.create " + std::string(64, 'n') + "\r\n");
  Put("conquest/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint " + most + "-end\n");
  Put("conquest/ControlPoints.con", "Object.create " + most + "-end\n");
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint " + most + "\n");
  Put("ctf/SoldierSpawns.con", "Object.create " + most + "\n");
  story.Do("names of 64, 51 and 47 characters", Read);
  ASSERT_TRUE(level->CommitSave());
  Damage("ctf/SoldierSpawns.con");
  ClearAllObjects();
  story.Do("a damaged file", Read);
  story.Expect("scripts_read_in_part");
}

TEST_F(LevelScriptsTest, WhatStandsBehindADamageIsReadAndNothingOfItOverwritten) {
  PutObjects(2000);
  ASSERT_TRUE(level->CommitSave());
  const RawArchive archive = ReadRawArchive(folder / "Island.vra");
  const RawEntry* const entry = archive.Find(Member("StaticObjects.con"));
  ASSERT_TRUE(entry);
  mw::Bytes file = archive.file;
  std::fill_n(file.begin() + entry->offset + entry->storedSize / 2, 64, std::uint8_t{0xEE});
  WriteBytes(folder / "Island.vra", file);
  Read();
  EXPECT_THAT(openLevel.loadReport.lines,
              Contains(StartsWith("Could not load all objects - StaticObjects.con is damaged! (")));
  EXPECT_FALSE(MayWrite(LevelPart::StaticObjects));
  const auto& objects = objectStore.objects;
  ASSERT_GT(objects.size(), 1000u);
  EXPECT_LT(objects.size(), 2000u);
  for (std::size_t behind = 1; behind <= 400; ++behind)
    EXPECT_EQ(objects[objects.size() - behind].position.x, static_cast<float>(2000 - behind));
}

}  // namespace
}  // namespace mw
