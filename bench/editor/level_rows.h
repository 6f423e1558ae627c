// The rows of one level of the benchmark in the running editor. For a thread beside the windows;
// all throw help::TourError.
#pragma once

#include <string>

#include "app/command_ids.h"
#include "bench/editor/editor_cost.h"
#include "bench/editor/growth_table.h"

namespace mw::bench {

// Goals for the growth from size to size: of work on the whole map, and of what is the same there.
inline constexpr double kWholeMap = 4.2, kLocal = 1.15;

class LevelRows {
 public:
  LevelRows(GrowthTable& table, int side, bool full);

  void AddOpening() const;  // leaves the level open
  // What it draws and does from frame to frame.
  void AddFrames() const;
  void AddStrokes() const;
  void AddObjects() const;  // of a full level
  void AddTree() const;     // of a full level
  void AddScattering() const;
  // What the user waits for.
  void AddSaving() const;
  void AddWholeMap() const;
  void AddClosing() const;  // leaves no level open

 private:
  std::string Named(const std::string& row) const { return row + (full_ ? ", full" : ", bare"); }
  void Add(const std::string& row, const Cost& cost, double limit) const {
    table_.Add(Named(row), side_, cost, limit);
  }
  // A row of the other table, about the time that is waited for.
  void AddRatio(const std::string& what, const std::string& against, double ours, double other,
                double limit) const;
  void AddMemory(double before) const;
  void AddOffScreen(const char* mode) const;
  void AddCommand(const char* name, CommandId command, int rounds, bool isUndone) const;
  // A part of its width and height.
  help::Target InView(double x, double y) const;
  void MakeStroke() const;

  GrowthTable& table_;
  const int side_;
  const bool full_;
  QWidget* const view_;
  FrameMeter meter_;
};

// As keys are written in the menus.
void PressKeys(const char* keys);
// Takes the last step back; there must be one. On the thread of the windows, as the next.
void UndoLast();
void SaveOpenLevel();

}  // namespace mw::bench
