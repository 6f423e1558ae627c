#include "bench/editor/bench_levels.h"

#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "bench/table/pictures.h"
#include "bench/table/table.h"
#include "core/bytes.h"
#include "core/text.h"
#include "sample/level_members.h"
#include "sample/levels.h"
#include "sample/objects.h"
#include "terrain/dds_writer.h"

namespace mw::bench {
namespace {

using sample::Point;

constexpr float kHeightScale = 0.5f;
constexpr float kSmallestWorld = 1024;  // units per side; everything stands within it

// Hills of some 200 units' length, 20 to 60 units high.
float HillAt(Point at) {
  return 40 + 12 * std::sin(at.x / 31) + 8 * std::cos(at.z / 43 + at.x / 97);
}

sample::Landscape Hills(int side) {
  sample::Landscape land{sample::MakeGrid(side, HillAt), 28, {0.5f, 0.7f, 0.3f}, {}, {}, {}};
  sample::AssignMaterials(land);
  return land;
}

// The k-th of `count` places on a square lattice.
Point PlaceOf(int k, int count) {
  const int perRow = static_cast<int>(std::ceil(std::sqrt(count)));
  const float step = kSmallestWorld / static_cast<float>(perRow + 1);
  return {step * static_cast<float>(1 + k % perRow), step * static_cast<float>(1 + k / perRow)};
}

std::vector<sample::PlacedObject> Objects() {
  const std::span kinds = sample::ObjectKinds();
  std::vector<sample::PlacedObject> objects;
  for (int k = 0; k < kObjectsOfFullLevel; ++k) {
    const Point at = PlaceOf(k, kObjectsOfFullLevel);
    objects.push_back({kinds[static_cast<std::size_t>(k) % kinds.size()].name, at, HillAt(at),
                       static_cast<float>(k * 37 % 360), 1});
  }
  return objects;
}

std::vector<sample::ControlPointPlan> ControlPoints() {
  constexpr int kPoints = 8;
  constexpr int kSoldiers = (kEntitiesOfFullLevel - kPoints) / kPoints;
  static constexpr std::string_view kNames[kPoints] = {"P1", "P2", "P3", "P4",
                                                       "P5", "P6", "P7", "P8"};
  std::vector<sample::ControlPointPlan> points;
  for (int k = 0; k < kPoints; ++k) {
    sample::ControlPointPlan point;
    point.name = kNames[k];
    point.team = k % 3;
    point.at = PlaceOf(k, kPoints);
    for (int soldier = 0; soldier < kSoldiers; ++soldier)
      point.soldiers.push_back({PlaceOf(soldier * kPoints + k, kSoldiers * kPoints), 90});
    points.push_back(std::move(point));
  }
  return points;
}

sample::Environment Daylight() {
  sample::Environment environment = sample::MakeHarbourPoint().environment;
  environment.fogEnd = 620;
  return environment;
}

// Surface tiles as large as the editor makes them, all with the same picture: the sample game's
// painter would take long for them. A level has as many as one digit can number.
void ReplaceTiles(std::vector<sample::Member>& members, const Bytes& tile) {
  constexpr std::string_view kTile = "/Textures/Tx0", kNumbers = "0x00.dds";
  const auto isTile = [&](const sample::Member& member) {
    return member.name.find(kTile) != std::string::npos;
  };
  std::erase_if(members, [&](const sample::Member& member) {
    return isTile(member) &&
           member.name.size() > member.name.find(kTile) + kTile.size() + kNumbers.size();
  });
  for (sample::Member& member : members) {
    if (isTile(member)) member.bytes = tile;
  }
}

}  // namespace

std::string BenchLevelName(int side, bool full) {
  return FormatText("Bench_%i_%s", side, full ? "full" : "bare");
}

std::filesystem::path BenchLevelFile(const std::string& level) {
  return "game/Mods/varnhold/Archives/varnhold/levels/" + level + ".vra";
}

void WriteBenchLevels(const std::vector<int>& sides) {
  constexpr int kPaintedSide = 4;  // pixels
  const Bytes tile = EncodeDds(kPictureSide, kPictureSide, Paint(Picture::Natural), true);
  const sample::Environment daylight = Daylight();
  for (const int side : sides) {
    const sample::Landscape land = Hills(side);
    for (const bool full : {false, true}) {
      const std::string name = BenchLevelName(side, full);
      sample::Level level{name, land, kHeightScale, daylight, {}, {}};
      if (full) {
        level.objects = Objects();
        level.controlPoints = ControlPoints();
      }
      std::vector<sample::Member> members = sample::LevelMembers(level, kPaintedSide);
      ReplaceTiles(members, tile);
      Require(sample::WriteArchive(BenchLevelFile(name).string(), StorageMode::Compressed, members),
              "writing a level");
    }
  }
}

}  // namespace mw::bench
