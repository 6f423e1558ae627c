#include "objects/scatter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

#include "core/editor_state.h"
#include "core/game_random.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "objects/object_history.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "objects/placement.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"
#include "objects/visibility.h"
#include "platform/prompts.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

constexpr float kDensitySide = 100;  // world units of the square that densities are given for
constexpr float kDegreesPerRadian = 180 / std::numbers::pi_v<float>;

ScatterBrush& Brush() { return objectStore.scatter.brush; }
const ScatterSettings& Settings() { return objectStore.scatter.settings; }

// 0 ... 1, both included.
float Chance() { return static_cast<float>(GameRandom()) / static_cast<float>(kGameRandomMax); }

// Level files have few decimals.
float Hundredths(float value) { return std::round(value * 100) / 100; }

// Side of the squares of which each has room for one object.
float SquareSide() { return kDensitySide / std::sqrt(Settings().density); }

ScatterSquare SquareAt(const Vector3& place) {
  const float side = SquareSide();
  return {static_cast<int>(std::floor(place.x / side)),
          static_cast<int>(std::floor(place.z / side))};
}

double Apart(const Vector3& a, const Vector3& b) { return std::hypot(a.x - b.x, a.z - b.z); }

float ShareOf(const ScatterKind& kind) {
  return kind.name.empty() ? 0 : std::max(kind.share, 0.0f);
}

std::size_t DrawKind() {
  const auto& kinds = Settings().kinds;
  float all = 0;
  for (const ScatterKind& kind : kinds) all += ShareOf(kind);
  float rest = Chance() * all;
  std::size_t drawn = 0;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (ShareOf(kinds[i]) <= 0) continue;
    drawn = i;
    rest -= ShareOf(kinds[i]);
    if (rest <= 0) break;
  }
  return drawn;
}

float DrawScale() {
  const auto [smallest, largest] = Settings().scale;
  return Hundredths(smallest + Chance() * (largest - smallest));
}

// Always as many numbers, so that no setting changes where the next one stands.
ScatterChance DrawChance(const ScatterSquare& square) {
  const float side = SquareSide();
  ScatterChance drawn;
  drawn.place.x = Hundredths((static_cast<float>(square.first) + Chance()) * side);
  drawn.place.z = Hundredths((static_cast<float>(square.second) + Chance()) * side);
  drawn.place.y = Hundredths(DrawnGroundHeight(drawn.place.x, drawn.place.z));
  drawn.kind = DrawKind();
  drawn.turn = std::round(Chance() * 359);
  drawn.scale = DrawScale();
  return drawn;
}

bool IsOnLevel(const Vector3& place) {
  const auto side = static_cast<float>(modConfig.WorldSize);
  return place.x >= 0 && place.x <= side && place.z >= 0 && place.z <= side;
}

// Degrees, over the width of a cell.
float SlopeAt(const Vector3& place) {
  const float reach = terrain.cellSize / 2;
  const auto rise = [reach](float x0, float z0, float x1, float z1) {
    return (DrawnGroundHeight(x1, z1) - DrawnGroundHeight(x0, z0)) / (2 * reach);
  };
  const float alongX = rise(place.x - reach, place.z, place.x + reach, place.z);
  const float alongZ = rise(place.x, place.z - reach, place.x, place.z + reach);
  return std::atan(std::hypot(alongX, alongZ)) * kDegreesPerRadian;
}

bool CarriesObject(const Vector3& place) {
  const ScatterSettings& settings = Settings();
  if (!IsOnLevel(place) || SlopeAt(place) > settings.steepest) return false;
  if (settings.aboveWater && place.y <= modConfig.WaterLevel) return false;
  const float levelX = MirrorX(place.x);
  return std::ranges::none_of(objectStore.objects, [&](const StaticObject& object) {
    const float x = object.position.x - levelX, z = object.position.z - place.z;
    return x * x + z * z < settings.distance * settings.distance;
  });
}

bool IsOfKinds(const StaticObject& object) {
  return std::ranges::any_of(Settings().kinds, [&object](const ScatterKind& kind) {
    return !kind.name.empty() && EqualNoCase(kind.name, object.name);
  });
}

void Place(ScatterChance& chance) {
  chance.isUsed = true;
  if (ObjectTableIsFull()) {
    Brush().foundNoRoom = true;
    return;
  }
  StaticObject object = NewStaticObject(Settings().kinds[chance.kind].name);
  object.position = {MirrorX(chance.place.x), chance.place.y, chance.place.z};
  if (Settings().turned) object.rotation.x = chance.turn;
  object.scaleGiven = chance.scale != 1;
  object.scale = {chance.scale, chance.scale, chance.scale};
  FindMesh(object);
  ShowKindOf(object);
  AppendStaticObject(object);
  editor.levelModified = true;
}

// What stands already: the squares that have their object, from this stroke or from before, and how
// many more the density leaves within the brush.
struct Standing {
  std::set<ScatterSquare> taken;
  int room = 0;
};

bool IsWithinBrush(const Vector3& place, const Vector3& middle) {
  return Apart(place, middle) <= ScatterRadius();
}

int CountWithin(const Vector3& middle) {
  return static_cast<int>(std::ranges::count_if(objectStore.objects, [&](const auto& object) {
    return IsOfKinds(object) && IsWithinBrush(object.ViewPosition(), middle);
  }));
}

Standing LookAround(const Vector3& middle) {
  Standing standing;
  for (const StaticObject& object : objectStore.objects) {
    if (IsOfKinds(object)) standing.taken.insert(SquareAt(object.ViewPosition()));
  }
  const float area = std::numbers::pi_v<float> * ScatterRadius() * ScatterRadius();
  const float wanted = Settings().density * area / (kDensitySide * kDensitySide);
  standing.room = static_cast<int>(std::ceil(wanted)) - CountWithin(middle);
  return standing;
}

void PlaceAround(const Vector3& middle) {
  const Vector3 reach{ScatterRadius(), 0, ScatterRadius()};
  Standing standing = LookAround(middle);
  const ScatterSquare first = SquareAt(middle - reach), last = SquareAt(middle + reach);
  for (int i = first.first; i <= last.first; ++i) {
    for (int j = first.second; j <= last.second; ++j) {
      if (standing.room <= 0 || Brush().foundNoRoom) return;
      const auto [entry, isNew] = Brush().chances.try_emplace({i, j});
      ScatterChance& chance = entry->second;
      if (isNew) chance = DrawChance({i, j});
      if (chance.isUsed || !IsWithinBrush(chance.place, middle)) continue;
      if (standing.taken.contains({i, j}) || !CarriesObject(chance.place)) continue;
      Place(chance);
      --standing.room;
    }
  }
}

void RemoveAround(const Vector3& middle) {
  // The tree is not to choose another one for those that go.
  const bool suppressed = std::exchange(levelTree.suppressObjectSelection, true);
  const bool removed = RemoveStaticObjects([&](const StaticObject& object) {
    return IsOfKinds(object) && IsWithinBrush(object.ViewPosition(), middle);
  });
  levelTree.suppressObjectSelection = suppressed;
  if (removed) editor.levelModified = true;
}

void ActAt(const Vector3& place) {
  if (editor.ctrlHeld) {
    RemoveAround(place);
  } else {
    PlaceAround(place);
  }
  Brush().last = place;
}

// Another mod may have come since they were chosen.
void ForgetUnknownKinds() {
  for (ScatterKind& kind : objectStore.scatter.settings.kinds) {
    if (FindCatalogueEntry(kind.name) < 0) kind.name.clear();
  }
}

// A click is to show something, however thin it scatters.
void PlaceOneAt(const Vector3& place) {
  ScatterChance chance = DrawChance(SquareAt(place));
  chance.place = {Hundredths(place.x), Hundredths(DrawnGroundHeight(place.x, place.z)),
                  Hundredths(place.z)};
  if (CarriesObject(chance.place)) Place(chance);
}

// Along the whole way from where it acted last, without gaps.
void ActOnTheWayTo(const Vector3& to) {
  const Vector3 from = Brush().last.value_or(to);
  const double way = Apart(from, to), step = static_cast<double>(ScatterRadius()) / 2;
  if (Brush().last && way < step / 2) return;
  const int steps = std::max(1, static_cast<int>(std::ceil(way / step)));
  for (int i = 1; i <= steps; ++i) {
    ActAt(from + (to - from) * (static_cast<float>(i) / static_cast<float>(steps)));
  }
}

}  // namespace

bool HasScatterKinds() {
  return std::ranges::any_of(Settings().kinds,
                             [](const ScatterKind& kind) { return ShareOf(kind) > 0; });
}

float ScatterRadius() { return static_cast<float>(Brush().size) * kScatterBrushStep; }

void SetScatterBrush(int size) { Brush().size = std::clamp(size, 1, kLargestScatterBrush); }

void PickScatter(int x, int y) { Brush().place = GroundUnderCursor(x, y); }

void PressScatter(int x, int y) {
  PickScatter(x, y);
  ForgetUnknownKinds();
  if (!HasScatterKinds()) {
    SetStatusText(1, "Choose what to scatter: Tools > Scatter Settings (Ctrl+H).");
    return;
  }
  ScatterBrush& brush = Brush();
  if (!brush.place) return;
  objectStore.dragStep.Begin(editor.ctrlHeld ? "Remove Scattered" : "Scatter");
  KeepObjects();
  brush.held = true;
  brush.last.reset();
  brush.chances.clear();
  ActAt(*brush.place);
  if (!editor.ctrlHeld && CountWithin(*brush.place) == 0) PlaceOneAt(*brush.place);
}

void DragScatter(int x, int y) {
  PickScatter(x, y);
  if (!Brush().held) return;
  if (Brush().place) {
    ActOnTheWayTo(*Brush().place);
  } else {
    LiftScatter();
  }
}

void LiftScatter() { Brush().last.reset(); }

void ReleaseScatter() {
  ScatterBrush& brush = Brush();
  if (!std::exchange(brush.held, false)) return;
  brush.last.reset();
  brush.chances.clear();
  if (!std::exchange(brush.foundNoRoom, false)) return;
  ShowPrompt(
      FormatText("A level has room for %i objects, no more could be scattered.", kMaxStaticObjects),
      "Scatter", PromptButtons::Ok, PromptIcon::Stop);
}

}  // namespace mw
