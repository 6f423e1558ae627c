#include "objects/entity_scripts.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>

#include "data/level_archive_test.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "support/golden.h"

namespace mw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::array kFolders{"conquest", "ctf", "tdm"};
constexpr std::array kFiles{"SoldierSpawnTemplates.con",    "SoldierSpawns.con",
                            "ObjectSpawnTemplates.con",     "ObjectSpawns.con",
                            "ControlPointTemplates.con",    "ControlPoints.con",
                            "spawnPointManagerSettings.con"};

class EntityScriptsTest : public LevelArchiveTest {
 protected:
  EntityScriptsTest() {
    entities = Entities{};
    objectStore = ObjectStore{};
    BuildTree();
    EXPECT_TRUE(level->BeginSave());  // in memory: no test waits for the disk
  }
  ~EntityScriptsTest() override { entities = Entities{}; }

  template <class Template>
  static const Template& TemplateAt(EntityKind kind, std::size_t index) {
    return static_cast<const Template&>(*entities.Of(kind).templates.at(index));
  }
  static const SpawnInstance& InstanceAt(EntityKind kind, std::size_t index) {
    return *entities.Of(kind).instances.at(index);
  }

  // "name:modes" of each.
  template <class Records>
  static std::vector<std::string> Names(const Records& records) {
    std::vector<std::string> names;
    for (const auto& record : records) {
      names.push_back(record->name.String() + ":" + std::to_string(record->modes));
    }
    return names;
  }

  static void Read() {
    BeginLoadReport();
    ReadGameModeFiles();
    EndLoadReport();
  }

  std::map<std::string, std::string> AllFiles() const {
    std::map<std::string, std::string> files;
    for (const std::string mode : kFolders) {
      for (const char* file : kFiles) files[mode + "/" + file] = Get(mode + "/" + file);
    }
    return files;
  }
  std::map<std::string, std::string> OpenAndSave() const {
    ReadGameModeFiles();
    EXPECT_TRUE(WriteGameModeFiles());
    EXPECT_EQ(GameFileError(), "");
    return AllFiles();
  }

  // A soldier spawn with its template, in one mode.
  void PutSoldierSpawn(const std::string& mode, const std::string& name) {
    Put(mode + "/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint " + name);
    Put(mode + "/SoldierSpawns.con", "Object.create " + name);
  }

  // `count` control points, in one mode, whose names start with `prefix`.
  void PutControlPoints(const std::string& mode, const std::string& prefix, int count) {
    std::string templates, instances;
    for (int i = 0; i < count; ++i) {
      const std::string name = prefix + std::to_string(i) + "\r\n";
      templates += "ObjectTemplate.create ControlPoint " + name;
      instances += "Object.create " + name;
    }
    Put(mode + "/ControlPointTemplates.con", templates);
    Put(mode + "/ControlPoints.con", instances);
  }
};

std::string InFile(std::string_view folder, std::string_view file, std::string_view lines) {
  std::string text = "rem " + std::string(file) + " created by Mapwright\nrem (" +
                     openLevel.folder.String() + "/" + std::string(folder) + "/" +
                     std::string(file) + ")\n\n" + std::string(lines) + "rem EndOfFile\n";
  std::string stored;
  for (const char c : text) stored += c == '\n' ? "\r\n" : std::string(1, c);
  return stored;
}

std::string Entry(std::string_view title, std::string_view lines) {
  const std::string rule = "rem ----------------------------------------- \n";
  return rule + "rem ---  " + std::string(title) + "  ---\n" + rule + std::string(lines) + "\n";
}

// What the editor writes of one entity of each kind, by file.
const std::map<std::string, std::string> kEveryLine = {
    {"SoldierSpawnTemplates.con",
     "ObjectTemplate.create SpawnPoint Camp_Spawn1\n"
     "ObjectTemplate.setSpawnId 7\n"
     "ObjectTemplate.setGroup 2\n"},
    {"SoldierSpawns.con",
     "Object.create Camp_Spawn1\n"
     "Object.absolutePosition 512.500000/31.250000/-640.000000\n"
     "Object.rotation 90.000000/0.000000/-0.500000\n"},
    {"ObjectSpawnTemplates.con",
     "ObjectTemplate.create ObjectSpawner Tanks\n"
     "ObjectTemplate.setObjectTemplate 1 panzer\n"
     "ObjectTemplate.MinSpawnDelay 10\n"
     "ObjectTemplate.MaxSpawnDelay 20\n"
     "ObjectTemplate.SpawnDelayAtStart 0\n"
     "ObjectTemplate.TimeToLive 45\n"
     "ObjectTemplate.Distance 40\n"
     "ObjectTemplate.DamageWhenLost 5\n"},
    {"ObjectSpawns.con",
     "Object.create Tanks\n"
     "Object.absolutePosition 1.000000/2.000000/3.000000\n"
     "Object.rotation 0.000000/0.000000/0.000000\n"
     "Object.setOSId 2\n"
     "Object.setTeam 1\n"},
    {"ControlPointTemplates.con",
     "ObjectTemplate.create ControlPoint Camp\n"
     "ObjectTemplate.networkableInfo ControlPointInfo\n"
     "ObjectTemplate.setControlPointName camp\n"
     "ObjectTemplate.radius 50\n"
     "ObjectTemplate.team 1\n"
     "ObjectTemplate.spawnGroupId 2\n"
     "ObjectTemplate.objectSpawnerId 3\n"
     "ObjectTemplate.areaValue 20\n"
     "ObjectTemplate.timeToGetControl 11\n"
     "ObjectTemplate.timeToLoseControl 12\n"
     "ObjectTemplate.disableIfEnemyInsideRadius 0\n"
     "ObjectTemplate.disableWhenLosingControl 5\n"
     "ObjectTemplate.loseControlWhenEnemyClose 1\n"
     "ObjectTemplate.loseControlWhenNotClose 4\n"
     "ObjectTemplate.geometry flagbase_m1\n"
     "ObjectTemplate.hasCollisionPhysics 1\n"
     "ObjectTemplate.addTemplate AnimatedFlag\n"
     "ObjectTemplate.setPosition 0.000000/8.200000/0.000000\n"
     "ObjectTemplate.setTeamGeometry 1 flagge_m1\n"
     "ObjectTemplate.setTeamGeometry 2 flagus_m1\n"},
    {"ControlPoints.con",
     "Object.create Camp\n"
     "Object.absolutePosition 4.000000/5.000000/6.000000\n"},
    {"spawnPointManagerSettings.con",
     "spawnPointManager.group 2\n"
     "spawnPointManager.groupTeam 1\n"
     "spawnPointManager.groupIcon test1.tga\n"}};
const std::map<std::string, std::string> kTitles = {
    {"SoldierSpawnTemplates.con", "Camp_Spawn1"}, {"SoldierSpawns.con", "Camp_Spawn1"},
    {"ObjectSpawnTemplates.con", "Tanks"},        {"ObjectSpawns.con", "Tanks"},
    {"ControlPointTemplates.con", "Camp"},        {"ControlPoints.con", "Camp"},
    {"spawnPointManagerSettings.con", "group 2"}};

TEST_F(EntityScriptsTest, EveryLineComesBackInItsPlace) {
  for (const auto& [file, lines] : kEveryLine) Put("conquest/" + file, lines);
  const auto saved = OpenAndSave();
  for (const auto& [file, lines] : kEveryLine) {
    const std::string preamble = file != "ControlPointTemplates.con"
                                     ? ""
                                     : "NetworkableInfo.createNewInfo ControlPointInfo\n"
                                       "NetworkableInfo.setPredictionMode PMNone\n"
                                       "NetworkableInfo.setBasePriority c_NIGhostAlways\n"
                                       "\n";
    EXPECT_EQ(saved.at("conquest/" + file),
              InFile("conquest", file, preamble + Entry(kTitles.at(file), lines)));
    EXPECT_EQ(saved.at("ctf/" + file), InFile("ctf", file, preamble));
  }
}

TEST_F(EntityScriptsTest, ReadsIntoTheFieldsThatTheSheetsEdit) {
  for (const auto& [file, lines] : kEveryLine) Put("conquest/" + file, lines);
  ReadGameModeFiles();
  EXPECT_EQ(TemplateAt<SoldierSpawnTemplate>(EntityKind::SoldierSpawn, 0).spawnId, 7);
  EXPECT_EQ(InstanceAt(EntityKind::SoldierSpawn, 0).rotation.z, -0.5f);
  const auto& vehicle = TemplateAt<ObjectSpawnTemplate>(EntityKind::ObjectSpawn, 0);
  EXPECT_EQ(vehicle.team1Object, "panzer");
  EXPECT_EQ(vehicle.maxSpawnDelay, 20);
  EXPECT_EQ(vehicle.timeToLive, 45);
  EXPECT_EQ(static_cast<const ObjectSpawn&>(InstanceAt(EntityKind::ObjectSpawn, 0)).osId, 2);
  const auto& point = TemplateAt<ControlPointTemplate>(EntityKind::ControlPoint, 0);
  EXPECT_EQ(point.radius, 50);
  EXPECT_EQ(point.team, 1);
  EXPECT_EQ(point.objectSpawnerId, 3);
  EXPECT_EQ(point.timeToLoseControl, 12);
  EXPECT_EQ(point.disableWhenLosingControl, 5);
  EXPECT_EQ(point.loseControlWhenNotClose, 4);
  EXPECT_EQ(point.relativePosition.y, 8.2f);
  EXPECT_EQ(point.teamGeometry2, "flagus_m1");
  EXPECT_EQ(entities.spawnGroups.at(0).icon, "test1.tga");
}

TEST_F(EntityScriptsTest, ALevelWithoutEntitiesGetsAllFiles) {
  EXPECT_TRUE(WriteGameModeFiles());
  EXPECT_EQ(level->Entries().size(), kFolders.size() * kFiles.size());
  EXPECT_EQ(Get("tdm/spawnPointManagerSettings.con"),
            InFile("tdm", "spawnPointManagerSettings.con", ""));
  ReadGameModeFiles();
  for (const EntityKind kind : kEntityKinds) EXPECT_TRUE(entities.Of(kind).templates.empty());
}

TEST_F(EntityScriptsTest, OptionalLinesAppearWithTheirValues) {
  Put("ctf/SoldierSpawnTemplates.con",
      "ObjectTemplate.create SpawnPoint s\nObjectTemplate.setAIEnterOnSpawn 1\n"
      "ObjectTemplate.setSpawnAsParaTroper 2\n");
  Put("ctf/SoldierSpawns.con", "Object.create s");
  Put("ctf/ObjectSpawnTemplates.con",
      "ObjectTemplate.create ObjectSpawner o\nObjectTemplate.setObjectTemplate 2 truck\n"
      "ObjectTemplate.MaxNrOfObjectSpawned 3\n");
  Put("ctf/ObjectSpawns.con", "Object.create o");
  Put("ctf/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint c\nObjectTemplate.unableToChangeTeam 1\n");
  Put("ctf/ControlPoints.con", "Object.create c");
  Put("ctf/spawnPointManagerSettings.con",
      "spawnPointManager.group 4\nspawnPointManager.groupStatus 0\n");
  const auto saved = OpenAndSave();
  std::string all;  // but for the heads, which name the sandbox
  for (const auto& [file, text] : saved) {
    if (file.starts_with("ctf/")) all += "=== " + file + text.substr(text.find("\r\n\r\n"));
  }
  ExpectGolden("objects/optional_lines.con", all);
  EXPECT_EQ(OpenAndSave(), saved);
}

TEST_F(EntityScriptsTest, HandWrittenFilesAreReadAsTheGameDoes) {
  Put("tdm/ControlPointTemplates.con",
      "ObjectTemplate.radius 99\r\n"
      "\r\n"
      "  OBJECTTEMPLATE.CREATE   controlpoint   Camp/West  rest of the line\r\n"
      "networkableInfo ControlPointInfo\r\n"
      "objecttemplate.RADIUS    50.9\r\n"
      "ObjectTemplate.spawnGroupId 3\r\n"
      "ObjectTemplate.areaValue\r\n"
      "ObjectTemplate.geometry flags/base_m1\r\n"
      "ObjectTemplate.addTemplate\r\n"
      "ObjectTemplate.setPosition 1 2\r\n"
      "ObjectTemplate.setTeamGeometry 2 team/two\r\n"
      "ObjectTemplate.setTeamGeometry 3 none\r\n"
      "ObjectTemplate.setTeamGeometry\r\n"
      "ObjectTemplate.unknown 5\r\n");
  Put("tdm/ControlPoints.con",
      "Object.absolutePosition 1/2/3\r\n"
      "object.create camp/west\r\n"
      "BeginRem\r\n"
      "Object.create Camp/West\r\n"
      "Object.absolutePosition 7/7/7\r\n"
      "ENDREM\r\n"
      "Object.absolutePosition 100\r\n"
      "Object.rotation\r\n"
      "rem Object.absolutePosition 5/5/5");
  ReadGameModeFiles();
  const auto& point = TemplateAt<ControlPointTemplate>(EntityKind::ControlPoint, 0);
  EXPECT_EQ(point.name, "Camp/West");
  EXPECT_EQ(point.radius, 50);
  EXPECT_EQ(point.group, 3);
  EXPECT_EQ(point.areaValue, 0);
  EXPECT_EQ(point.geometry, "flags/base_m1");
  EXPECT_EQ(point.addTemplate, "");
  EXPECT_EQ(point.relativePosition.z, 2.0f) << "a missing component repeats the one before";
  EXPECT_EQ(point.teamGeometry1, "");
  EXPECT_EQ(point.teamGeometry2, "team/two");
  ASSERT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), 1u);
  const SpawnInstance& placed = InstanceAt(EntityKind::ControlPoint, 0);
  EXPECT_EQ(placed.name, "Camp/West");
  EXPECT_EQ(placed.position.x, 100.0f);
  EXPECT_EQ(placed.position.z, 100.0f);
  EXPECT_EQ(placed.modes, kModeTeamDeathMatch);
}

TEST_F(EntityScriptsTest, DelaysAndTeamObjectsOfAVehicle) {
  Put("conquest/ObjectSpawns.con", "Object.create o");
  Put("conquest/ObjectSpawnTemplates.con",
      "ObjectTemplate.create ObjectSpawner o\nObjectTemplate.spawnDelay 30\n"
      "ObjectTemplate.spawnDelay\nObjectTemplate.setObjectTemplate 1/tanks/tiger\n"
      "ObjectTemplate.setObjectTemplate 0 x\nObjectTemplate.setObjectTemplate 2\n"
      "ObjectTemplate.setObjectTemplate\nObjectTemplate.MaxSpawnDelay 99999999999\n");
  ReadGameModeFiles();
  const auto& vehicle = TemplateAt<ObjectSpawnTemplate>(EntityKind::ObjectSpawn, 0);
  EXPECT_EQ(vehicle.minSpawnDelay, 30);
  EXPECT_EQ(vehicle.maxSpawnDelay, 2147483647);
  EXPECT_EQ(vehicle.team1Object, "tanks/tiger");
  EXPECT_EQ(vehicle.team2Object, "");
}

TEST_F(EntityScriptsTest, CommentsAndCurrentRecordsEndWithTheirFile) {
  PutSoldierSpawn("conquest", "s");
  Put("conquest/SoldierSpawns.con",
      "Object.create s\nObject.absolutePosition 1/1/1\nbeginrem\nObject.rotation 9/9/9\n");
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint s");
  Put("ctf/SoldierSpawns.con",
      "Object.absolutePosition 5/5/5\nObject.create s\nObject.absolutePosition 2/2/2\n");
  ReadGameModeFiles();
  ASSERT_EQ(entities.Of(EntityKind::SoldierSpawn).instances.size(), 2u);
  EXPECT_EQ(InstanceAt(EntityKind::SoldierSpawn, 0).position.x, 1.0f);
  EXPECT_EQ(InstanceAt(EntityKind::SoldierSpawn, 0).rotation.x, 0.0f);
  EXPECT_EQ(InstanceAt(EntityKind::SoldierSpawn, 1).position.x, 2.0f);
}

TEST_F(EntityScriptsTest, CopiesInSeveralModesBecomeOne) {
  const std::string templates =
      "ObjectTemplate.create ControlPoint Camp\nObjectTemplate.spawnGroupId 1\n"
      "ObjectTemplate.setPosition 0/8.2/0\n";
  const std::string group = "spawnPointManager.group 1\nspawnPointManager.groupIcon A.tga\n";
  Put("conquest/ControlPointTemplates.con", templates);
  Put("conquest/ControlPoints.con", "Object.create Camp\nObject.absolutePosition 8/1/1\n");
  Put("conquest/spawnPointManagerSettings.con", group);
  Put("ctf/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint CAMP\nObjectTemplate.spawnGroupId 1\n"
      "ObjectTemplate.setPosition 0/8.1/0\n");
  Put("ctf/ControlPoints.con",
      "Object.create Camp\nObject.absolutePosition 8.1/1/1\nObject.rotation 1/0/0\n");
  Put("ctf/spawnPointManagerSettings.con", LowerCase(group));
  Put("tdm/ControlPointTemplates.con", templates + "ObjectTemplate.radius 1\n");
  Put("tdm/ControlPoints.con", "Object.create Camp\nObject.absolutePosition 8/1/1\n");
  Put("tdm/spawnPointManagerSettings.con", group + "spawnPointManager.groupTeam 1\n");
  ReadGameModeFiles();
  const EntityTables& points = entities.Of(EntityKind::ControlPoint);
  EXPECT_THAT(Names(points.templates), ElementsAre("Camp:3", "Camp:8")) << "another radius";
  EXPECT_THAT(Names(points.instances), ElementsAre("Camp:3", "Camp:8")) << "another template";
  EXPECT_EQ(points.instances[1]->templateIndex, 1) << "each finds the template of its mode";
  ASSERT_EQ(entities.spawnGroups.size(), 2u);
  EXPECT_EQ(entities.spawnGroups[0].modes, kModeConquest | kModeCaptureTheFlag);
}

TEST_F(EntityScriptsTest, ACopyGoesIntoTheNearestOneBelow) {
  PutSoldierSpawn("conquest", "s");
  PutSoldierSpawn("ctf", "s");
  Put("conquest/SoldierSpawns.con",
      "Object.create s\nObject.absolutePosition 0/0/0\n"
      "Object.create s\nObject.absolutePosition 0.15/0/0\n");
  Put("ctf/SoldierSpawns.con", "Object.create s\nObject.absolutePosition 0.1/0/0\n");
  ReadGameModeFiles();
  EXPECT_THAT(Names(entities.Of(EntityKind::SoldierSpawn).instances), ElementsAre("s:1", "s:3"));
}

TEST_F(EntityScriptsTest, InstancesWithoutATemplateInTheirModeAreDropped) {
  PutSoldierSpawn("conquest", "s");
  Put("ctf/SoldierSpawns.con", "Object.create s\nObject.absolutePosition 9/9/9\n");
  ReadGameModeFiles();
  EXPECT_THAT(Names(entities.Of(EntityKind::SoldierSpawn).instances), ElementsAre("s:1"));
}

TEST_F(EntityScriptsTest, AnObjectSpawnTemplateThatNothingUsesIsKept) {
  PutSoldierSpawn("conquest", "s");
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint unused\n");
  Put("ctf/ObjectSpawnTemplates.con", "ObjectTemplate.create ObjectSpawner tank\n");
  OpenAndSave();
  const auto second = OpenAndSave();
  EXPECT_THAT(second.at("ctf/ObjectSpawnTemplates.con"), HasSubstr("ObjectSpawner tank\r\n"));
  EXPECT_THAT(Names(entities.Of(EntityKind::ObjectSpawn).templates), ElementsAre("tank:2"));
  EXPECT_THAT(Names(entities.Of(EntityKind::SoldierSpawn).templates), ElementsAre("s:1"));
}

TEST_F(EntityScriptsTest, NewSpawnIdsComeAfterThoseOfTheLevel) {
  PutSoldierSpawn("conquest", "s");
  Put("conquest/SoldierSpawnTemplates.con",
      "ObjectTemplate.create SpawnPoint s\nObjectTemplate.setSpawnId 41\n"
      "ObjectTemplate.create SpawnPoint t\nObjectTemplate.setSpawnId 12\n");
  ReadGameModeFiles();
  EXPECT_EQ(entities.nextSpawnId, 42);
}

TEST_F(EntityScriptsTest, OpeningAndSavingSettlesAfterTheSecondTime) {
  PutControlPoints("conquest", "a", 3);
  PutControlPoints("ctf", "b", 2);
  Put("tdm/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint b1\nObjectTemplate.create ControlPoint a0\n"
      "ObjectTemplate.create ControlPoint c\n");
  Put("tdm/ControlPoints.con",
      "Object.create c\nObject.absolutePosition 0.0078125/1.23456789/-1e-9\n"
      "Object.create b1\nObject.create a0\n");
  OpenAndSave();
  const auto second = OpenAndSave();
  EXPECT_EQ(OpenAndSave(), second);
  EXPECT_THAT(second.at("tdm/ControlPoints.con"), HasSubstr("0.007812/1.234568/-0.000000"));
}

TEST_F(EntityScriptsTest, AFullTableLosesNothingThatItsThreeFilesShare) {
  for (const char* mode : kFolders) PutControlPoints(mode, "p", kMaxTemplates);
  Read();
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).templates.size(), kMaxTemplates);
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), kMaxInstances);
  EXPECT_THAT(openLevel.loadReport.lines, testing::IsEmpty());
}

TEST_F(EntityScriptsTest, WhatDoesNotFitIsReportedOnceForEachKind) {
  PutControlPoints("conquest", "a", kMaxTemplates);
  PutControlPoints("ctf", "b", 2);
  PutControlPoints("tdm", "c", 2);
  std::string groups;
  for (int id = 1; id <= 50; ++id) groups += "spawnPointManager.group " + std::to_string(id) + "\n";
  Put("tdm/spawnPointManagerSettings.con", groups);
  Read();
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).templates.size(), kMaxTemplates);
  EXPECT_EQ(entities.spawnGroups.size(), kMaxSpawnGroups);
  EXPECT_THAT(
      openLevel.loadReport.lines,
      ElementsAre("Too many spawn groups in tdm/spawnPointManagerSettings.con: only the first 48 "
                  "were loaded.",
                  "Too many control point templates in ctf/ControlPointTemplates.con: only the "
                  "first 1024 were loaded.",
                  "Of the control points in ctf/ControlPoints.con, 2 without a template were left "
                  "out.",
                  "Of the control points in tdm/ControlPoints.con, 2 without a template were left "
                  "out."));
  const auto before = AllFiles();
  entities.Of(EntityKind::ControlPoint).instances.resize(1);
  EXPECT_TRUE(WriteGameModeFiles());
  for (const auto& [file, text] : AllFiles()) {
    EXPECT_EQ(text != before.at(file), file.starts_with("conquest/")) << file;
  }
}

// What a record cannot hold must not be written back in part.
TEST_F(EntityScriptsTest, NamesThatAreTooLongAreCutAndReported) {
  const std::string most(47, 'n');
  Put("conquest/ControlPointTemplates.con",
      "ObjectTemplate.create ControlPoint " + most + "-end\n");
  Put("conquest/ControlPoints.con", "Object.create " + most + "-end\n");
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint " + most + "\n");
  Put("ctf/SoldierSpawns.con", "Object.create " + most + "\n");
  Read();
  EXPECT_EQ(InstanceAt(EntityKind::ControlPoint, 0).name, most);
  EXPECT_EQ(InstanceAt(EntityKind::SoldierSpawn, 0).name, most);
  EXPECT_EQ(openLevel.loadReport.lines.at(0),
            "Some names in conquest/ControlPointTemplates.con are longer than 47 characters and "
            "were cut.");
  EXPECT_FALSE(MayWrite(LevelPart::ConquestEntities));
  EXPECT_TRUE(MayWrite(LevelPart::CaptureTheFlagEntities));
}

TEST_F(EntityScriptsTest, ADamagedFileIsReportedAndNotToBeReplaced) {
  PutSoldierSpawn("conquest", "s");
  ASSERT_TRUE(level->CommitSave());
  Damage("conquest/SoldierSpawns.con");
  Read();
  EXPECT_EQ(openLevel.loadReport.lines.at(0),
            "The file conquest/SoldierSpawns.con is damaged: not all of its soldier spawns could "
            "be loaded (0 were).");
  EXPECT_FALSE(MayWrite(LevelPart::ConquestEntities));
}

TEST_F(EntityScriptsTest, OneOfTwoFilesThatIsMissingIsReported) {
  Put("ctf/SoldierSpawnTemplates.con", "ObjectTemplate.create SpawnPoint s\n");
  Put("tdm/ControlPoints.con", "Object.create c\n");
  Read();
  EXPECT_THAT(openLevel.loadReport.lines,
              ElementsAre("The file ctf/SoldierSpawns.con is missing.",
                          "Of the control points in tdm/ControlPoints.con, 1 without a template "
                          "were left out.",
                          "The file tdm/ControlPointTemplates.con is missing.",
                          "The file ctf/spawnPointManagerSettings.con is missing."));
  EXPECT_TRUE(MayWrite(LevelPart::ConquestEntities));
  EXPECT_FALSE(MayWrite(LevelPart::CaptureTheFlagEntities));
  EXPECT_FALSE(MayWrite(LevelPart::TeamDeathMatchEntities));
}

TEST_F(EntityScriptsTest, TheTreeShowsWhatWasRead) {
  Put("conquest/ObjectSpawnTemplates.con", "ObjectTemplate.create ObjectSpawner Tanks\n");
  Put("conquest/ObjectSpawns.con", "Object.create Tanks\n");
  PutSoldierSpawn("conquest", "Camp_Spawn1");
  ReadGameModeFiles();
  const SpawnTemplate& vehicle = TemplateAt<SpawnTemplate>(EntityKind::ObjectSpawn, 0);
  const SpawnInstance& placed = InstanceAt(EntityKind::ObjectSpawn, 0);
  EXPECT_EQ(ItemText(vehicle.treeItem), "Tanks (CQ)");
  EXPECT_EQ(ParentOf(vehicle.treeItem), levelTree.fixed.objectSpawns);
  EXPECT_EQ(ParentOf(placed.treeItem), vehicle.treeItem);
  EXPECT_EQ(ParentOf(InstanceAt(EntityKind::SoldierSpawn, 0).treeItem),
            levelTree.fixed.soldierSpawns);
}

}  // namespace
}  // namespace mw
