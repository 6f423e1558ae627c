// Flat ground of 256 x 256 samples, 4 world units apart, all of it in sight, and what differs from
// it as text for golden files.
#pragma once

#include <algorithm>
#include <string>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {

inline std::string RangeText(int first, int last) {
  return first == last ? std::to_string(first) : FormatText("%i-%i", first, last);
}

inline std::string NumberText(double value) { return FormatText("%g", value); }

// What valueOf(i, j) is where it is not `rest`: a line for each row of the grid, which equal ones
// that follow it share, as in "10-11: 20=100 21-24=101.5".
template <typename Value, typename Text = std::string (*)(double)>
std::string ListGround(double rest, Value valueOf, Text text = NumberText) {
  std::string listing, line;
  int first = 0;
  for (int i = 0; i <= kMaxMaterialSize + 1; ++i) {
    std::string row;
    for (int j = 0, end = 0; i <= kMaxMaterialSize && j <= kMaxMaterialSize; j = end) {
      const double here = valueOf(i, j);
      for (end = j + 1; end <= kMaxMaterialSize && valueOf(i, end) == here;) ++end;
      if (here != rest) row += " " + RangeText(j, end - 1) + "=" + text(here);
    }
    if (row == line) continue;
    if (!line.empty()) listing += RangeText(first, i - 1) + ":" + line + "\n";
    first = i;
    line = row;
  }
  return listing;
}

template <typename Base>
class FlatGround : public Base {
 protected:
  static constexpr int kSide = 256;

  FlatGround() {
    modConfig.MaterialSize = kSide;
    modConfig.WorldSize = 4 * kSide;
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    CreateMaterialMapper();
    StartFlat();
    camera.position.Set(480, 300, 280);
    camera.frustum.fill({0, 0, 0, 1});
    hooks.invalidateMiniMap = [this] { ++repaints; };
  }
  ~FlatGround() override {
    DestroyMaterialMapper();
    DestroyTerrain();
    modConfig = {};
  }

  // As at the beginning, with the tools as they are.
  void StartFlat() {
    InitGrid();
    materialMapper->grid = MaterialGrid::Zeroed();
    materialMapper->paintedCells.clear();
    terrain.miniMap = {};
    terrain.viewSquare = {0, kSide, 0, kSide};
    editor.levelModified = false;
    repaints = 0;
  }
  // A view of 100 x 100 pixels shows the ground there from straight above.
  static void LookDownOn(float x, float z) {
    editor.viewWidth = editor.viewHeight = 100;
    camera.position.Set(x, 300, z);
    camera.pitch = -90;
    camera.UpdateDirection();
  }
  static float& Height(int i, int j) { return terrain.grid[i][j].h; }
  static std::uint32_t& Material(int i, int j) { return materialMapper->grid[i][j]; }

  static std::string Heights() { return ListGround(kFlatHeight, Height); }
  static std::string Materials() { return ListGround(0, Material); }
  // What an edit says to the rest of the program, in a line.
  std::string Told() const {
    const auto shown = std::ranges::count_if(terrain.miniMap.grey,
                                             [](int grey) { return grey != kUnpaintedGrey; });
    return FormatText("%s, repainted %i times, %i pixels of the Mini-Map\n",
                      editor.levelModified ? "modified" : "unmodified", repaints,
                      static_cast<int>(shown));
  }

  int repaints = 0;

 private:
  static constexpr int kUnpaintedGrey = 127;
};

}  // namespace mw
