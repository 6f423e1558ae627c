#include "terrain/brush_stroke.h"

#include <algorithm>
#include <vector>

#include "core/frame_time.h"
#include "core/vector3.h"
#include "terrain/brush_way.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr float kShortestAction = 0.01f;     // seconds of Carving and Raising
constexpr float kSmoothingPass = 1.0f / 60;  // seconds
constexpr int kMostPasses = 4;               // of Smoothing at a time
constexpr std::size_t kMostPicks = 256;      // that a stroke keeps between two actions

// What the held button makes of the mouse's moves: the picks that the brush has still to go along,
// from that where it acted last, and the time that it has for it.
struct Stroke {
  bool isHeld = false;
  std::vector<Vector3> picks;
  float dueSeconds = 0;            // below 0: done in advance
  std::uint32_t countedUntil = 0;  // milliseconds
};
Stroke stroke;

float LengthOfPicks() {
  float length = 0;
  for (std::size_t k = 0; k + 1 < stroke.picks.size(); ++k)
    length += BrushWay::Between(stroke.picks[k], stroke.picks[k + 1]).Length();
  return length;
}

// Calls act(way, share) for the straight ways between two shares, 0 ... 1, of the whole, each with
// its own share of it.
template <typename Act>
void ForWaysBetween(float first, float last, Act act) {
  const float length = LengthOfPicks();
  if (length == 0) {
    act(BrushWay::Between(stroke.picks.back(), stroke.picks.back()), last - first);
    return;
  }
  float begin = 0;
  for (std::size_t k = 0; k + 1 < stroke.picks.size(); ++k) {
    const BrushWay way = BrushWay::Between(stroke.picks[k], stroke.picks[k + 1]);
    const float share = way.Length() / length;
    if (share == 0) continue;
    const float from = std::max((first - begin) / share, 0.0f);
    const float to = std::min((last - begin) / share, 1.0f);
    if (from < to) act(way.Section(from, to), (to - from) * share);
    begin += share;
  }
}

void DoFlatten() {
  ForWaysBetween(0, 1, [](const BrushWay& way, float) { BrushAlong(way, 0); });
}

bool DoCarveOrRaise() {
  if (stroke.dueSeconds < kShortestAction) return false;
  const float due = stroke.dueSeconds;
  ForWaysBetween(0, 1, [due](const BrushWay& way, float share) { BrushAlong(way, due * share); });
  stroke.dueSeconds = 0;
  return true;
}

// Each pass takes a part of the way.
bool DoSmooth() {
  constexpr float kRounding = 0.001f;
  const int due = static_cast<int>(stroke.dueSeconds / kSmoothingPass + kRounding);
  const int passes = std::min(due, kMostPasses);
  if (passes < 1) return false;
  const auto count = static_cast<float>(passes);
  for (int pass = 0; pass < passes; ++pass) {
    const auto done = static_cast<float>(pass);
    ForWaysBetween(done / count, (done + 1) / count,
                   [](const BrushWay& way, float) { BrushAlong(way, kSmoothingPass); });
  }
  stroke.dueSeconds =
      std::min(stroke.dueSeconds - count * kSmoothingPass, kMostPasses * kSmoothingPass);
  return true;
}

// Whether the tool has acted; it waits while too little time has gone by.
bool DoWithTool() {
  switch (terrain->tool) {
    case TerrainTool::Carving:
    case TerrainTool::Raising:
      return DoCarveOrRaise();
    case TerrainTool::Smoothing:
      return DoSmooth();
    case TerrainTool::Flatten:
      DoFlatten();
      return true;
    case TerrainTool::PointManipulation:
    case TerrainTool::Road:
      break;
  }
  return false;
}

void DoWhatIsDue() {
  if (stroke.picks.empty())
    stroke.dueSeconds = std::min(stroke.dueSeconds, 0.0f);
  else if (DoWithTool())
    stroke.picks.assign(1, stroke.picks.back());
}

// What the brush does at once where the button is pressed.
float FirstAction() {
  return terrain->tool == TerrainTool::Smoothing ? kSmoothingPass : kShortestAction;
}

// The way that is left gets the time that there is; then the brush is nowhere.
void FinishWay() {
  if (stroke.picks.size() > 1) {
    stroke.dueSeconds = std::max(stroke.dueSeconds, FirstAction());
    DoWhatIsDue();
  }
  stroke.picks.clear();
}

// The brush goes on to the pick point, but not over ground that nobody sees.
void GoOnToPick() {
  const Vector3 to{pick.x, pick.y, pick.z};
  std::vector<Vector3>& picks = stroke.picks;
  if (!picks.empty() && !IsWayInSight(picks.back(), to)) FinishWay();
  if (picks.size() == kMostPicks)
    picks.back() = to;
  else
    picks.push_back(to);
}

}  // namespace

void PressBrush(std::uint32_t now) {
  if (!terrain || !IsBrush(terrain->tool)) return;
  stroke.isHeld = true;
  stroke.picks.clear();
  stroke.dueSeconds = 0;
  stroke.countedUntil = now;
  if (pick.missed) return;
  GoOnToPick();
  stroke.dueSeconds = FirstAction();
  DoWhatIsDue();
  stroke.dueSeconds -= FirstAction();
}

void MoveBrush() {
  if (!stroke.isHeld) return;
  if (pick.missed)
    FinishWay();
  else
    GoOnToPick();
}

void LiftBrush() {
  if (stroke.isHeld) FinishWay();
}

void HoldBrush(std::uint32_t now) {
  if (!stroke.isHeld || !terrain) return;
  stroke.dueSeconds += CountedSeconds(now - stroke.countedUntil);
  stroke.countedUntil = now;
  DoWhatIsDue();
}

void ReleaseBrush(std::uint32_t now) {
  if (!stroke.isHeld || !terrain) return;
  HoldBrush(now);
  FinishWay();
  stroke.isHeld = false;
}

}  // namespace mw
