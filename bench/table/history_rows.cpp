// What Undo costs: a stroke whose past is kept against one without, taking back a whole landscape
// against making it, and what a hundred strokes hold.
#include <cmath>

#include "bench/plain/terrain_scene.h"
#include "bench/table/table.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "core/history.h"
#include "data/mod_config.h"
#include "terrain/brush_way.h"
#include "terrain/material_map.h"
#include "terrain/random_terrain.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw::bench {
namespace {

constexpr int kSize = 1024, kRounds = 61, kStrokeActions = 120;

// One of a hundred strokes in a ten by ten pattern, about 60 cells long.
void Stroke(int number) {
  const float x = 1700 + 64 * static_cast<float>(number % 10);
  const float z = 1700 + 64 * static_cast<float>(number / 10 % 10);
  for (int k = 0; k < kStrokeActions; ++k) {
    const float along = 2 * static_cast<float>(k);
    BrushAlong({x + along, z, x + along + 2, z + std::sin(along)}, 0.016f);
  }
}

void KeptStroke(int number) {
  const HistoryStep step("Raising");
  Stroke(number);
}

void AddStrokeRows() {
  SelectTool(TerrainTool::Raising);
  SetBrushSize(kMaxBrushSize);
  camera.position = {2000, 100, 2000};
  UpdateViewSquare();
  int kept = 0, plain = 50;  // in turns each finds ground that it has not just had in the cache
  const Times times = Compare(
      kRounds, [&] { return Time([&] { KeptStroke(++kept); }); },
      [&] { return Time([&] { Stroke(++plain); }); });
  AddTimes("stroke of size 9, its past kept", "without", times, 1.02);
  ClearHistory();
  for (int k = 0; k < 100; ++k) KeptStroke(k);
  Require(editor.history.past.size() == 100, "100 strokes");
  const std::size_t bytes = editor.history.bytes;
  AddResult("100 strokes of size 9 kept",
            Decimal(static_cast<double>(bytes) / (1 << 20), 1) + " MB", "all steps",
            Decimal(static_cast<double>(kHistoryBytes >> 20), 0) + " MB", "<= 8 MB",
            bytes <= std::size_t{8} << 20);
}

void AddLandscapeRow() {
  ClearHistory();
  GenerateTerrain({});
  const Times times = Compare(
      7, [] { return Time([] { Require(Undo().has_value(), "undo"); }); },
      [] { return Time([] { GenerateTerrain({}); }); });
  AddTimes("Random Terrain of a Large level undone", "generated", times, 0.2);
  ClearHistory();
}

}  // namespace

void AddHistoryRows() {
  MakeLandscape(kSize);
  CreateMaterialMapper();
  AddStrokeRows();
  AddLandscapeRow();
  DestroyMaterialMapper();
  RemoveLandscape();
}

}  // namespace mw::bench
