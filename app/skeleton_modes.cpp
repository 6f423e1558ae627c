// The scripts of a new level's game modes.
#include "app/skeleton_scripts.h"
#include "core/text.h"
#include "data/mod_config.h"

namespace mw {
namespace {

constexpr int kEntityHeight = 60;   // world units, until the entities are set on the ground
constexpr int kBaseDistance = 60;   // of each side's base from the level's middle
constexpr int kSpawnDistance = 10;  // of a soldier spawn from its base

constexpr std::string_view kSinglePlayer = R"(run singleplayer/ControlPointTemplates
run singleplayer/SpawnpointManagerSettings
run singleplayer/SoldierSpawnTemplates
run singleplayer/SoldierSpawns
run singleplayer/ObjectSpawnTemplates

Game.setNumberOfTickets 1 100
Game.setNumberOfTickets 2 100
Game.setTicketLostPerMin 1 15
Game.setTicketLostPerMin 2 15
game.maxNrofPlayers 16

if v_arg1 == host
	run ai
	run SinglePlayer/ObjectSpawns
	run singleplayer/ControlPoints
	game.timeToNextWave 20
endIf
)";

constexpr std::string_view kSpawnGroups = R"(spawnPointManager.group 1
spawnPointManager.groupTeam 1
spawnPointManager.groupIcon test1.tga

spawnPointManager.group 2
spawnPointManager.groupTeam 2
spawnPointManager.groupIcon test1.tga

)";

constexpr std::string_view kSoldierSpawnTemplates =
    R"(ObjectTemplate.create SpawnPoint AxisBase_Spawn1
ObjectTemplate.setSpawnId 0
ObjectTemplate.setGroup 1

ObjectTemplate.create SpawnPoint AlliedBase_Spawn1
ObjectTemplate.setSpawnId 1
ObjectTemplate.setGroup 2

)";

struct Tickets {
  int team1, team2, lostPerMinute1, lostPerMinute2;
};

std::string TicketLines(const Tickets& tickets) {
  return FormatText(
      "Game.setNumberOfTickets 1 %i\n"
      "Game.setNumberOfTickets 2 %i\n"
      "Game.setTicketLostPerMin 1 %i\n"
      "Game.setTicketLostPerMin 2 %i\n",
      tickets.team1, tickets.team2, tickets.lostPerMinute1, tickets.lostPerMinute2);
}

// Runs the entity files of the mode's folder.
std::string RunBlock(const char* mode) {
  return FormatText(R"(
run %s/SpawnpointManagerSettings
run %s/SoldierSpawnTemplates
run %s/SoldierSpawns
run %s/ObjectSpawnTemplates
run %s/ControlPointTemplates

if v_arg1 == host
run ai
run %s/ObjectSpawns
run %s/ControlPoints
else
endIf
)",
                    mode, mode, mode, mode, mode, mode, mode);
}

// `afterBases` stands before the clients' part of the script.
std::string CaptureTheFlagText(std::string_view afterBases) {
  const int half = modConfig.WorldSize / 2, quarter = modConfig.WorldSize / 4;
  const auto place = [half](int z) {
    return "\tObject.absolutePosition " + PositionText(half, kEntityHeight, z) +
           "\n\tObject.rotation 0/0/0\n";
  };
  const std::string base1 = place(quarter), base2 = place(3 * quarter);
  std::string text = R"(run Ctf/SpawnpointManagerSettings

run Ctf/SoldierSpawnTemplates
run Ctf/SoldierSpawns

run Ctf/ObjectSpawnTemplates
run Ctf/ControlPointTemplates

if v_arg1 == host
	run Ctf/ObjectSpawns
	run Ctf/ControlPoints

)";
  text += "\tobject.create gebase\n" + base1 + "\n";
  text += "\tobject.create usbase\n" + base2;
  text += afterBases;
  text += "else\n";
  text += "\tobject.create FlagPole\n" + base1 + "\n";
  text += "\tobject.create FlagPole\n" + base2;
  text += "endIf\n";
  return text;
}

struct Side {
  int team;
  const char* base;      // name of the control point
  const char* homeBase;  // as the game shows it
};

constexpr Side kAxis{1, "AxisBase", "Axis_Home_Base"};
constexpr Side kAllies{2, "AlliedBase", "Allied_Home_Base"};

std::string ControlPointTemplateText(const Side& side) {
  return FormatText(
      R"(ObjectTemplate.create ControlPoint %s
ObjectTemplate.networkableInfo ControlPointInfo
ObjectTemplate.setControlPointName %s
ObjectTemplate.radius 5
ObjectTemplate.team %i
ObjectTemplate.spawnGroupId %i
ObjectTemplate.objectSpawnerId %i
ObjectTemplate.areaValue 0
ObjectTemplate.timeToGetControl 9999
ObjectTemplate.timeToLoseControl 9999
ObjectTemplate.disableIfEnemyInsideRadius 0
ObjectTemplate.disableWhenLosingControl 0
ObjectTemplate.loseControlWhenEnemyClose 1
ObjectTemplate.loseControlWhenNotClose 0
ObjectTemplate.geometry flagbase_m1
ObjectTemplate.hasCollisionPhysics 1
ObjectTemplate.addTemplate AnimatedFlag
ObjectTemplate.unableToChangeTeam 1
ObjectTemplate.setPosition 0/8.2/0
ObjectTemplate.setTeamGeometry 1 flagge_m1
ObjectTemplate.setTeamGeometry 2 flaguk_m1

)",
      side.base, side.homeBase, side.team, side.team, side.team);
}

std::string CreateAt(const std::string& name, int x, int z) {
  return "Object.create " + name + "\nObject.absolutePosition " +
         PositionText(x, kEntityHeight, z) + "\n";
}

}  // namespace

bool WriteSinglePlayerScripts() {
  bool written = WriteModeEntityFiles("SinglePlayer", ControlPoints::Included);
  for (const char* path : {"SinglePlayerAllied.con", "SinglePlayerAxis.con"}) {
    written &= WriteNewScript(path, kSinglePlayer);
  }
  for (const char* path : {"Coop.con", "GameTypes\\Coop.con"}) {
    written &= WriteNewScript(path, TicketLines({60, 100, 10000, 10}) + RunBlock("SinglePlayer"));
  }
  return written;
}

bool WriteConquestScripts() {
  bool written = WriteModeEntityFiles("Conquest", ControlPoints::Included);
  for (const char* path : {"Conquest.con", "GameTypes\\Conquest.con"}) {
    written &= WriteNewScript(path, TicketLines({100, 100, 10, 10}) + RunBlock("Conquest"));
  }
  return written;
}

bool WriteTeamDeathMatchScripts() {
  bool written = WriteModeEntityFiles("TDM", ControlPoints::Included);
  for (const char* path : {"tdm.con", "GameTypes\\tdm.con"}) {
    written &= WriteNewScript(path, RunBlock("TDM"));
  }
  return written;
}

bool WriteCaptureTheFlagScripts() {
  return WriteModeEntityFiles("Ctf", ControlPoints::None) &&
         WriteNewScript("Ctf.con", CaptureTheFlagText("")) &&
         WriteNewScript("GameTypes\\Ctf.con", CaptureTheFlagText("\n"));
}

bool WriteModeEntityFiles(std::string_view folder, ControlPoints controlPoints) {
  const int half = modConfig.WorldSize / 2;
  const int axisZ = half - kBaseDistance, alliedZ = half + kBaseDistance;
  bool written = true;
  const auto write = [&](const char* file, std::string_view text) {
    written &= WriteNewScript(std::string(folder) + "\\" + file, text);
  };
  if (controlPoints == ControlPoints::Included) {
    write("ControlPoints.con",
          CreateAt(kAxis.base, half, axisZ) + "\n" + CreateAt(kAllies.base, half, alliedZ) + "\n");
    write("ControlPointTemplates.con",
          ControlPointTemplateText(kAxis) + ControlPointTemplateText(kAllies));
  }
  write("ObjectSpawns.con", "");
  write("ObjectSpawnTemplates.con", "");
  const auto soldierSpawn = [half](const Side& side, int z) {
    return CreateAt(std::string(side.base) + "_Spawn1", half + kSpawnDistance, z) +
           "Object.rotation 0.0000/0.0000/0.0000\n\n";
  };
  write("SoldierSpawns.con", soldierSpawn(kAxis, axisZ) + soldierSpawn(kAllies, alliedZ));
  write("SoldierSpawnTemplates.con", kSoldierSpawnTemplates);
  write("spawnPointManagerSettings.con", kSpawnGroups);
  return written;
}

}  // namespace mw
