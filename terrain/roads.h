// Roads: points picked on the ground become a polyline along which the ground is graded to straight
// slopes and, on request, painted with a material. Points and settings live in the Terrain record.
// Used by the Road tool of the Terrain Mapper.
#pragma once

#include <array>
#include <functional>

namespace mw {

inline constexpr int kMinRoadPoints = 2;  // of a road that can be built

// As the list of the dialog shows them; roadWidth is the index + 1.
inline constexpr auto kRoadWidthNames =
    std::to_array<const char*>({"Path", "Single Lane", "Double Lane", "Quadruple Lane"});

// Adds the centre of the cell under view pixel (x, y). Nothing happens when there is no ground.
void AddRoadPoint(int x, int y);
// Adds the centre of the cell at world position (x, z), with the height of its corner. Ignored when
// kMaxRoadPoints are there, in row 0 and column 0, and outside the level.
void AddRoadPointAt(float x, float z);
// Builds the road when `confirm`, which may change its settings, returns true; it is only asked
// when there are enough points. In every case the points are gone then.
void FinishRoadPoints(const std::function<bool()>& confirm);
// Grades the ground along the points and discards them. The heights of each segment rise evenly
// from its first to its second point; of cells that several steps reach, the last step decides.
void CreateRoad();

}  // namespace mw
