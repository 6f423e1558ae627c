#include "terrain/brush_stroke.h"

#include <algorithm>
#include <vector>

#include "core/frame_time.h"
#include "core/history.h"
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

float LengthOfPicks() {
  float length = 0;
  for (std::size_t k = 0; k + 1 < terrain.stroke.picks.size(); ++k)
    length += BrushWay::Between(terrain.stroke.picks[k], terrain.stroke.picks[k + 1]).Length();
  return length;
}

// Calls act(way, share) for the straight ways between two shares, 0 ... 1, of the whole, each with
// its own share of it.
template <typename Act>
void ForWaysBetween(float first, float last, Act act) {
  const float length = LengthOfPicks();
  if (length == 0) {
    act(BrushWay::Between(terrain.stroke.picks.back(), terrain.stroke.picks.back()), last - first);
    return;
  }
  float begin = 0;
  for (std::size_t k = 0; k + 1 < terrain.stroke.picks.size(); ++k) {
    const BrushWay way = BrushWay::Between(terrain.stroke.picks[k], terrain.stroke.picks[k + 1]);
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
  if (terrain.stroke.dueSeconds < kShortestAction) return false;
  const float due = terrain.stroke.dueSeconds;
  ForWaysBetween(0, 1, [due](const BrushWay& way, float share) { BrushAlong(way, due * share); });
  terrain.stroke.dueSeconds = 0;
  return true;
}

// Each pass takes a part of the way.
bool DoSmooth() {
  constexpr float kRounding = 0.001f;
  const int due = static_cast<int>(terrain.stroke.dueSeconds / kSmoothingPass + kRounding);
  const int passes = std::min(due, kMostPasses);
  if (passes < 1) return false;
  const auto count = static_cast<float>(passes);
  for (int pass = 0; pass < passes; ++pass) {
    const auto done = static_cast<float>(pass);
    ForWaysBetween(done / count, (done + 1) / count,
                   [](const BrushWay& way, float) { BrushAlong(way, kSmoothingPass); });
  }
  terrain.stroke.dueSeconds =
      std::min(terrain.stroke.dueSeconds - count * kSmoothingPass, kMostPasses * kSmoothingPass);
  return true;
}

// Whether the tool has acted; it waits while too little time has gone by.
bool DoWithTool() {
  switch (terrain.tool) {
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
  if (terrain.stroke.picks.empty())
    terrain.stroke.dueSeconds = std::min(terrain.stroke.dueSeconds, 0.0f);
  else if (DoWithTool())
    terrain.stroke.picks.assign(1, terrain.stroke.picks.back());
}

// Of the step that a stroke is.
const char* NameOf(TerrainTool tool) {
  switch (tool) {
    case TerrainTool::Carving:
      return "Carving";
    case TerrainTool::Raising:
      return "Raising";
    case TerrainTool::Smoothing:
      return "Smoothing";
    case TerrainTool::Flatten:
      return "Flatten";
    case TerrainTool::PointManipulation:
    case TerrainTool::Road:
      break;
  }
  return "";
}

// What the brush does at once where the button is pressed.
float FirstAction() {
  return terrain.tool == TerrainTool::Smoothing ? kSmoothingPass : kShortestAction;
}

// The way that is left gets the time that there is; then the brush is nowhere.
void FinishWay() {
  if (terrain.stroke.picks.size() > 1) {
    terrain.stroke.dueSeconds = std::max(terrain.stroke.dueSeconds, FirstAction());
    DoWhatIsDue();
  }
  terrain.stroke.picks.clear();
}

// The brush goes on to the pick point, but not over ground that nobody sees.
void GoOnToPick() {
  const Vector3 to{terrain.pick.x, terrain.pick.y, terrain.pick.z};
  std::vector<Vector3>& picks = terrain.stroke.picks;
  if (!picks.empty() && !IsWayInSight(picks.back(), to)) FinishWay();
  if (picks.size() == kMostPicks)
    picks.back() = to;
  else
    picks.push_back(to);
}

}  // namespace

void PressBrush(std::uint32_t now) {
  if (!terrain.grid || !IsBrush(terrain.tool)) return;
  terrain.stroke.isHeld = true;
  terrain.stroke.step.Begin(NameOf(terrain.tool));
  terrain.stroke.picks.clear();
  terrain.stroke.faded.clear();
  terrain.stroke.dueSeconds = 0;
  terrain.stroke.countedUntil = now;
  if (terrain.pick.missed) return;
  GoOnToPick();
  terrain.stroke.dueSeconds = FirstAction();
  DoWhatIsDue();
  terrain.stroke.dueSeconds -= FirstAction();
}

void MoveBrush() {
  if (!terrain.stroke.isHeld) return;
  if (terrain.pick.missed)
    FinishWay();
  else
    GoOnToPick();
}

void LiftBrush() {
  if (terrain.stroke.isHeld) FinishWay();
}

void HoldBrush(std::uint32_t now) {
  if (!terrain.stroke.isHeld || !terrain.grid) return;
  terrain.stroke.dueSeconds += CountedSeconds(now - terrain.stroke.countedUntil);
  terrain.stroke.countedUntil = now;
  DoWhatIsDue();
}

void ReleaseBrush(std::uint32_t now) {
  if (!terrain.stroke.isHeld || !terrain.grid) return;
  HoldBrush(now);
  FinishWay();
  terrain.stroke.isHeld = false;
  terrain.stroke.faded.clear();
  terrain.stroke.step.End();
}

}  // namespace mw
