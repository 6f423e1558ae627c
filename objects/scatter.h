// Scattering objects over the ground with a brush: woods, stones, whatever a level has many of. The
// settings, the brush's strokes, and the sheet that edits the settings. Used by the Object Mapper.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "core/fixed_string.h"
#include "core/vector3.h"

namespace mw {

inline constexpr std::size_t kScatterKinds = 4;
inline constexpr int kLargestScatterBrush = 9;
inline constexpr float kScatterBrushStep = 10;  // world units of radius for each size
inline constexpr float kThinnestScatter = 0.1f, kDensestScatter = 2500;
inline constexpr float kSmallestScatter = 0.1f, kLargestScatter = 10;
inline constexpr float kFarthestScatter = 1000, kSteepestScatter = 90;

struct ScatterKind {
  NameText name;  // of the catalogue; empty for none
  float share = 1;
};

// What the sheet edits, and keeps within its ranges.
struct ScatterSettings {
  std::array<ScatterKind, kScatterKinds> kinds;
  float density = 20;   // objects on 100 x 100 world units, kThinnestScatter ... kDensestScatter
  float distance = 4;   // world units to any other object's place, up to kFarthestScatter
  float steepest = 30;  // degrees of slope that still carries objects
  std::array<float, 2> scale{1, 1};       // smallest and largest
  bool turned = true, aboveWater = true;  // any heading; not where the ground lies under water
};

// One stroke looks at each square of a grid once: its chance to get an object, and which.
struct ScatterChance {
  Vector3 place;  // on the ground, view coordinates
  std::size_t kind = 0;
  float turn = 0, scale = 1;  // degrees
  bool isUsed = false;
};
using ScatterSquare = std::pair<int, int>;

struct ScatterBrush {
  int size = 3;                                    // 1 ... kLargestScatterBrush
  std::optional<Vector3> place;                    // under the mouse, view coordinates
  std::optional<Vector3> last;                     // where it acted last in this stroke
  std::map<ScatterSquare, ScatterChance> chances;  // of this stroke
  bool held = false, foundNoRoom = false;
};

struct Scatter {
  ScatterSettings settings;
  ScatterBrush brush;
};

// Whether any kind of object is chosen.
bool HasScatterKinds();
// World units.
float ScatterRadius();
void SetScatterBrush(int size);

// The sheet; true on OK. Where no kind is chosen yet it offers those of the selected objects, by
// how many there are of each.
bool EditScatter();

// The mouse is over this view pixel.
void PickScatter(int x, int y);
// The button goes down there; the brush is moved on to where the mouse is picked; it goes up.
// Places objects, or removes those of the chosen kinds while Ctrl is held.
void PressScatter(int x, int y);
void DragScatter(int x, int y);
// Tells when the table of objects was too full.
void ReleaseScatter();
// The next place is a new one, no way leads there.
void LiftScatter();

// The edge of the brush on the ground, while the tool is chosen. The depth stays as it is.
void DrawScatterBrush();

}  // namespace mw
