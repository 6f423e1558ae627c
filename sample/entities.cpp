#include "sample/entities.h"

#include <algorithm>
#include <functional>
#include <span>
#include <string>

#include "core/text.h"

namespace mw::sample {
namespace {

struct ModeFolder {
  const char* name;
  bool Modes::*flag;
};
constexpr ModeFolder kModeFolders[] = {{"Conquest", &Modes::conquest},
                                       {"Ctf", &Modes::captureTheFlag},
                                       {"TDM", &Modes::teamDeathMatch}};

// What appears at the object spawns: the vehicle of either team, and how soon it comes back.
struct VehicleTemplate {
  std::string_view vehicle;
  const char* spawner;
  int minDelay, maxDelay, timeToLive, distance;
};
constexpr VehicleTemplate kVehicleTemplates[] = {{"jeep", "Jeep_Spawner", 10, 20, 45, 60},
                                                 {"truck", "Truck_Spawner", 15, 30, 60, 60},
                                                 {"medium_tank", "Tank_Spawner", 30, 60, 90, 80},
                                                 {"landing_boat", "Boat_Spawner", 20, 40, 60, 80},
                                                 {"field_gun", "Gun_Spawner", 20, 40, 0, 20}};

// A soldier spawn has a template of its own, numbered through the level in all modes alike.
struct SoldierSpawn {
  std::string name;
  int id = 0, group = 0;
  SpawnPlace place;
};

struct GroupedPoint {
  const ControlPointPlan* plan;
  int group;  // from 1
  std::vector<SoldierSpawn> soldiers;
};

std::vector<GroupedPoint> GroupPoints(const Level& level) {
  std::vector<GroupedPoint> points;
  int spawnId = 1;
  for (const ControlPointPlan& plan : level.controlPoints) {
    GroupedPoint point{&plan, static_cast<int>(points.size()) + 1, {}};
    int number = 1;
    for (const SpawnPlace& place : plan.soldiers) {
      point.soldiers.push_back({FormatText("%s_Spawn%d", std::string(plan.name).c_str(), number++),
                                spawnId++, point.group, place});
    }
    points.push_back(std::move(point));
  }
  return points;
}

// One of a mode's files, in the form that the editor saves it in.
class EntityFile {
 public:
  EntityFile(const std::string& folder, const char* fileName) : path_(folder + "/" + fileName) {
    text_ = FormatText("rem %s created by Mapwright\nrem (%s)\n\n", fileName, path_.c_str());
  }
  void Line(const std::string& line) { text_ += line + "\n"; }
  void Entry(const std::string& title, const std::string& lines) {
    constexpr std::string_view kRule = "rem ----------------------------------------- \n";
    text_ += kRule;
    text_ += "rem ---  " + title + "  ---\n";
    text_ += kRule;
    text_ += lines + "\n";
  }
  Member Finish() { return TextMember(path_, text_ + "rem EndOfFile\n"); }

 private:
  std::string path_, text_;
};

// On the ground, or on the water above it.
std::string PositionLine(const Level& level, Point at) {
  const double height = std::max(level.land.height.Sample(at), level.land.waterLevel);
  return FormatText("Object.absolutePosition %f/%f/%f\n", static_cast<double>(at.x), height,
                    static_cast<double>(at.z));
}
std::string RotationLine(float heading) {
  return FormatText("Object.rotation %f/%f/%f\n", static_cast<double>(heading), 0.0, 0.0);
}

std::string ControlPointTemplateLines(const GroupedPoint& point) {
  const ControlPointPlan& plan = *point.plan;
  const std::string name(plan.name);
  std::string lines = FormatText(
      "ObjectTemplate.create ControlPoint %s\n"
      "ObjectTemplate.networkableInfo ControlPointInfo\n"
      "ObjectTemplate.setControlPointName %s\n"
      "ObjectTemplate.radius %d\n"
      "ObjectTemplate.team %d\n"
      "ObjectTemplate.spawnGroupId %d\n"
      "ObjectTemplate.objectSpawnerId %d\n"
      "ObjectTemplate.areaValue %d\n"
      "ObjectTemplate.timeToGetControl %d\n"
      "ObjectTemplate.timeToLoseControl %d\n"
      "ObjectTemplate.disableIfEnemyInsideRadius 0\n"
      "ObjectTemplate.disableWhenLosingControl 0\n"
      "ObjectTemplate.loseControlWhenEnemyClose 1\n"
      "ObjectTemplate.loseControlWhenNotClose 0\n",
      name.c_str(), name.c_str(), plan.radius, plan.team, point.group, point.group,
      plan.isBase ? 0 : 20, plan.isBase ? 9999 : 10, plan.isBase ? 9999 : 10);
  if (plan.isBase) lines += "ObjectTemplate.unableToChangeTeam 1\n";
  lines += FormatText(
      "ObjectTemplate.geometry flagbase_m1\n"
      "ObjectTemplate.hasCollisionPhysics 1\n"
      "ObjectTemplate.addTemplate AnimatedFlag\n"
      "ObjectTemplate.setPosition %f/%f/%f\n"
      "ObjectTemplate.setTeamGeometry 1 flagge_m1\n"
      "ObjectTemplate.setTeamGeometry 2 flagus_m1\n",
      0.0, 8.2, 0.0);
  return lines;
}

std::string VehicleTemplateLines(const VehicleTemplate& vehicle) {
  const std::string name(vehicle.vehicle);
  return FormatText(
      "ObjectTemplate.create ObjectSpawner %s\n"
      "ObjectTemplate.setObjectTemplate 1 %s\n"
      "ObjectTemplate.setObjectTemplate 2 %s\n"
      "ObjectTemplate.MinSpawnDelay %d\n"
      "ObjectTemplate.MaxSpawnDelay %d\n"
      "ObjectTemplate.SpawnDelayAtStart 0\n"
      "ObjectTemplate.TimeToLive %d\n"
      "ObjectTemplate.Distance %d\n"
      "ObjectTemplate.DamageWhenLost 10\n",
      vehicle.spawner, name.c_str(), name.c_str(), vehicle.minDelay, vehicle.maxDelay,
      vehicle.timeToLive, vehicle.distance);
}

Member ControlPointTemplates(const std::string& folder, std::span<const GroupedPoint> points) {
  EntityFile file(folder, "ControlPointTemplates.con");
  file.Line("NetworkableInfo.createNewInfo ControlPointInfo");
  file.Line("NetworkableInfo.setPredictionMode PMNone");
  file.Line("NetworkableInfo.setBasePriority c_NIGhostAlways");
  file.Line("");
  for (const GroupedPoint& point : points) {
    file.Entry(std::string(point.plan->name), ControlPointTemplateLines(point));
  }
  return file.Finish();
}

Member ControlPoints(const Level& level, const std::string& folder,
                     std::span<const GroupedPoint> points) {
  EntityFile file(folder, "ControlPoints.con");
  for (const GroupedPoint& point : points) {
    const std::string name(point.plan->name);
    file.Entry(name, "Object.create " + name + "\n" + PositionLine(level, point.plan->at));
  }
  return file.Finish();
}

Member SoldierSpawnTemplates(const std::string& folder, std::span<const GroupedPoint> points) {
  EntityFile file(folder, "SoldierSpawnTemplates.con");
  for (const GroupedPoint& point : points) {
    for (const SoldierSpawn& spawn : point.soldiers) {
      file.Entry(spawn.name, FormatText("ObjectTemplate.create SpawnPoint %s\n"
                                        "ObjectTemplate.setSpawnId %d\n"
                                        "ObjectTemplate.setGroup %d\n",
                                        spawn.name.c_str(), spawn.id, spawn.group));
    }
  }
  return file.Finish();
}

Member SoldierSpawns(const Level& level, const std::string& folder,
                     std::span<const GroupedPoint> points) {
  EntityFile file(folder, "SoldierSpawns.con");
  for (const GroupedPoint& point : points) {
    for (const SoldierSpawn& spawn : point.soldiers) {
      file.Entry(spawn.name, "Object.create " + spawn.name + "\n" +
                                 PositionLine(level, spawn.place.at) +
                                 RotationLine(spawn.place.heading));
    }
  }
  return file.Finish();
}

Member ObjectSpawnTemplates(const std::string& folder, std::span<const GroupedPoint> points) {
  EntityFile file(folder, "ObjectSpawnTemplates.con");
  for (const VehicleTemplate& vehicle : kVehicleTemplates) {
    const bool used = std::any_of(points.begin(), points.end(), [&](const GroupedPoint& point) {
      return std::any_of(
          point.plan->vehicles.begin(), point.plan->vehicles.end(),
          [&](const VehicleSpawn& spawn) { return spawn.vehicle == vehicle.vehicle; });
    });
    if (used) file.Entry(vehicle.spawner, VehicleTemplateLines(vehicle));
  }
  return file.Finish();
}

Member ObjectSpawns(const Level& level, const std::string& folder,
                    std::span<const GroupedPoint> points) {
  EntityFile file(folder, "ObjectSpawns.con");
  for (const GroupedPoint& point : points) {
    for (const VehicleSpawn& spawn : point.plan->vehicles) {
      const auto* vehicle = std::find_if(
          std::begin(kVehicleTemplates), std::end(kVehicleTemplates),
          [&](const VehicleTemplate& candidate) { return candidate.vehicle == spawn.vehicle; });
      if (vehicle == std::end(kVehicleTemplates)) continue;
      file.Entry(vehicle->spawner, FormatText("Object.create %s\n", vehicle->spawner) +
                                       PositionLine(level, spawn.place.at) +
                                       RotationLine(spawn.place.heading) +
                                       FormatText("Object.setOSId %d\nObject.setTeam %d\n",
                                                  point.group, std::max(point.plan->team, 1)));
    }
  }
  return file.Finish();
}

Member SpawnGroups(const std::string& folder, std::span<const GroupedPoint> points) {
  EntityFile file(folder, "spawnPointManagerSettings.con");
  for (const GroupedPoint& point : points) {
    file.Entry(FormatText("group %d", point.group),
               FormatText("spawnPointManager.group %d\n"
                          "spawnPointManager.groupTeam %d\n"
                          "spawnPointManager.groupIcon test1.tga\n",
                          point.group, point.plan->team));
  }
  return file.Finish();
}

}  // namespace

std::vector<Member> EntityMembers(const Level& level, const std::string& levelFolder) {
  const std::vector<GroupedPoint> all = GroupPoints(level);
  std::vector<Member> members;
  for (const ModeFolder& mode : kModeFolders) {
    std::vector<GroupedPoint> points;
    std::copy_if(all.begin(), all.end(), std::back_inserter(points),
                 [&](const GroupedPoint& point) { return point.plan->modes.*mode.flag; });
    const std::string folder = levelFolder + "/" + mode.name;
    members.push_back(SoldierSpawnTemplates(folder, points));
    members.push_back(SoldierSpawns(level, folder, points));
    members.push_back(ObjectSpawnTemplates(folder, points));
    members.push_back(ObjectSpawns(level, folder, points));
    members.push_back(ControlPointTemplates(folder, points));
    members.push_back(ControlPoints(level, folder, points));
    members.push_back(SpawnGroups(folder, points));
  }
  return members;
}

}  // namespace mw::sample
