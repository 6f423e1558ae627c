// Moving on a grid and turning in steps. The first of several selected things comes onto the grid
// or to a multiple of the step; the others keep their arrangement with it.
#pragma once

#include <array>

#include "core/vector3.h"

namespace mw {

inline constexpr std::array kGridSteps{0, 1, 2, 4};                 // world units; 0 = off
inline constexpr std::array kTurnSteps{5, 10, 15, 30, 45, 60, 90};  // degrees

// No effect for a step that is not among these.
void SetGridStep(int step);
void SetTurnStep(int step);
// The next one; after the last the first.
void NextGridStep();
void NextTurnStep();

// The SelectionPivot next to a place of the view with which the selection is on the grid.
Vector3 PivotOnGrid(const Vector3& place);
// The place on the grid that is next to a point of the scene, as high above the ground as that;
// view coordinates.
Vector3 PointOnGrid(const Vector3& point);
// How far the selection turns about an axis, by degrees that the mouse turned: with Shift only in
// whole steps, and what is left counts the next time.
float TurnInSteps(float Vector3::*axis, float degrees);

}  // namespace mw
