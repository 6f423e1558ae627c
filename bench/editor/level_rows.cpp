#include "bench/editor/level_rows.h"

#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

#include "app/commands.h"
#include "app/level.h"
#include "app/shell.h"
#include "app/undo.h"
#include "bench/editor/bench_levels.h"
#include "bench/editor/level_memory.h"
#include "bench/table/table.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "core/history.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/mod_config.h"
#include "tests/monkey/editor_steps.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/hands.h"

namespace mw::bench {
namespace {

using help::OnGui;

constexpr int kRounds = 5, kWholeMapRounds = 3, kStrokeTime = 100;  // milliseconds

void Open(const std::string& level) {
  shell.selectMod = [](bool) { return true; };
  shell.loadLevelDialog = [&level] {
    ChooseLevel(level);
    return true;
  };
  RunCommand(kCommandOpenLevel);
  shell.renderFrameNow();
}

void ReadMembers(const std::string& level) {
  Archive archive;
  Require(archive.Open(BenchLevelFile(level).string(), false), "opening an archive");
  for (const auto& [name, entry] : archive.Entries()) {
    Require(archive.ReadMember(name).has_value(), "reading a member");
  }
}

// The same place in every level, with most of what stands there in sight.
void PlaceCamera() {
  camera.position.Set(static_cast<float>(modConfig.WorldSize) - 300, 110, 620);
  camera.pitch = -20;
  camera.yaw = 30;
  camera.UpdateDirection();
}

}  // namespace

void PressKeys(const char* keys) { monkey::Do("key", {}, {{"key", keys}}); }

void UndoLast() {
  const std::string step = NextUndo();
  UndoStep();
  Require(!step.empty() && NextRedo() == step, "undoing a step");
}

void SaveOpenLevel() { Require(SaveLevel(), "saving the level"); }

LevelRows::LevelRows(GrowthTable& table, int side, bool full)
    : table_(table), side_(side), full_(full), view_(OnGui(help::FindView)) {}

void LevelRows::AddRatio(const std::string& what, const std::string& against, double ours,
                         double other, double limit) const {
  AddTimes(FormatText("%s, %s level of %i", what.c_str(), full_ ? "full" : "bare", side_), against,
           {ours, other}, limit);
}

help::Target LevelRows::InView(double x, double y) const {
  return {view_, {qRound(view_->width() * x), qRound(view_->height() * y)}};
}

void LevelRows::MakeStroke() const {
  const help::Target ground = InView(0.5, 0.7);
  help::Press(ground);
  help::Wait(kStrokeTime);
  help::Release(ground);
}

// From the choice of the level to its first frame; and what of that are not the two frames, one of
// the emptied editor and that one.
void LevelRows::AddOpening() const {
  const std::string name = BenchLevelName(side_, full_);
  const double memoryBefore = MemoryNow();
  ForgetMostMemory();
  std::vector<Cost> opened, loaded, read;
  Cost frames;
  const auto showFrame = shell.renderFrameNow;
  const auto showAndCount = [&] {
    const Cost cost = CostOf(showFrame);
    frames = {frames.wall + cost.wall, frames.processor + cost.processor};
  };
  OnGui([&] { shell.renderFrameNow = showAndCount; });
  for (int round = 0; round < kRounds; ++round) {
    frames = {};
    read.push_back(CostOnGui([&] { ReadMembers(name); }));
    opened.push_back(CostOnGui([&] { Open(name); }));
    const Cost& all = opened.back();
    loaded.push_back({all.wall - frames.wall, all.processor - frames.processor});
    Require(OnGui([&] { return editor.levelLoaded && modConfig.LevelName.View() == name; }),
            "opening a level");
  }
  OnGui([&] { shell.renderFrameNow = showFrame; });
  Add("open to first frame", MedianOf(opened), 0);
  Add("the same without frames", MedianOf(loaded), kWholeMap);
  AddRatio("open to first frame", "reading its members", MedianOf(opened).wall, MedianOf(read).wall,
           2);
  AddRatio("the same without frames", "reading its members", MedianOf(loaded).wall,
           MedianOf(read).wall, 2);
  OnGui(PlaceCamera);
  AddMemory(memoryBefore);
}

void LevelRows::AddMemory(double before) const {
  help::WaitForFrames();
  const double now = MemoryNow();
  double held = 0;
  for (const auto& [what, megabytes] : OnGui(HeldByLevel)) {
    table_.AddMemory(Named("memory: " + what), side_, megabytes);
    held += megabytes;
  }
  table_.AddMemory(Named("memory: sum of these"), side_, held);
  table_.AddMemory(Named("memory: before it was opened"), side_, before);
  table_.AddMemory(Named("memory: level at rest"), side_, now);
}

void LevelRows::AddSaving() const {
  PressKeys("F1");
  std::vector<Cost> unchanged, stroked;
  for (int round = 0; round < kRounds; ++round) {
    MakeStroke();
    stroked.push_back(CostOnGui(SaveOpenLevel));
    unchanged.push_back(CostOnGui(SaveOpenLevel));
  }
  Add("save without a change", MedianOf(unchanged), kLocal);
  Add("save after one stroke", MedianOf(stroked), kLocal);
}

void LevelRows::AddCommand(const char* name, CommandId command, int rounds, bool isUndone) const {
  std::vector<Cost> costs, undos;
  for (int round = 0; round < rounds; ++round) {
    costs.push_back(CostOnGui([&] { RunCommand(command); }));
    if (isUndone) undos.push_back(CostOnGui(UndoLast));
  }
  Add(name, MedianOf(costs), kWholeMap);
  if (isUndone) Add(std::string("undo of ") + name, MedianOf(undos), kWholeMap);
}

void LevelRows::AddWholeMap() const {
  shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
  AddCommand("Random Terrain", kCommandRandomTerrain, kWholeMapRounds, true);
  AddCommand("Generate Material Map", kCommandGenerateMaterialMap, kWholeMapRounds, true);
  CostOnGui([] { RunCommand(kCommandGenerateMaterialMap); });  // for the tiles
  AddCommand("Generate Surface Maps", kCommandGenerateSurfaceMaps, 1, false);
  AddCommand("In-Game Map", kCommandGenerateInGameMap, kWholeMapRounds, false);
  std::vector<Cost> saves;
  for (int round = 0; round < kWholeMapRounds; ++round) {
    CostOnGui([] { RunCommand(kCommandRandomTerrain); });
    saves.push_back(CostOnGui(SaveOpenLevel));
  }
  Add("save after Random Terrain", MedianOf(saves), kWholeMap);
}

void LevelRows::AddClosing() const {
  const std::filesystem::path file = BenchLevelFile(BenchLevelName(side_, full_));
  const auto before = std::filesystem::file_size(file);
  const Cost cost = CostOnGui(CloseLevelArchive);
  Require(std::filesystem::file_size(file) < before, "compacting the archive");
  Add("close with compaction", cost, kWholeMap);
  table_.AddMemory(Named("memory: at most"), side_, MostMemory());
}

}  // namespace mw::bench
