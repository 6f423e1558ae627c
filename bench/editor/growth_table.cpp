#include "bench/editor/growth_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "bench/editor/bench_levels.h"
#include "bench/table/table.h"

namespace mw::bench {
namespace {

std::string Milliseconds(double seconds) {
  const double value = seconds * 1e3;
  return Decimal(value, value < 10 ? 2 : value < 100 ? 1 : 0);
}

std::string Shown(const Cost& cost, bool isMemory) {
  if (isMemory) return Decimal(cost.wall, 0) + " MB";
  return Milliseconds(cost.processor) + " / " + Milliseconds(cost.wall);
}

// From one size to the next, with four times the samples; the mean where a size was left out.
double GrowthOfAStep(double before, int sideBefore, double now, int side) {
  return std::pow(now / before, 1 / std::log2(static_cast<double>(side) / sideBefore));
}

}  // namespace

GrowthTable::Row& GrowthTable::RowOf(const std::string& name) {
  const auto found = std::ranges::find(rows_, name, &std::pair<std::string, Row>::first);
  return found != rows_.end() ? found->second : rows_.emplace_back(name, Row{}).second;
}

void GrowthTable::Add(const std::string& row, int side, const Cost& cost, double limit) {
  RowOf(row).bySide[side] = cost;
  RowOf(row).limit = limit;
  std::fprintf(stderr, "  %i: %s: %s ms\n", side, row.c_str(), Shown(cost, false).c_str());
}

void GrowthTable::AddMemory(const std::string& row, int side, double megabytes) {
  RowOf(row).bySide[side] = {megabytes, megabytes};
  RowOf(row).isMemory = true;
}

void GrowthTable::Print() const {
  std::printf("%-58s", "processor / wall, milliseconds");
  for (const int side : kLevelSides) std::printf(" %15d", side);
  std::printf("  growth of the processor's time by step\n");
  for (const auto& [name, row] : rows_) {
    std::printf("%-58s", name.c_str());
    double before = 0;
    int sideBefore = 0;
    std::string growth;
    bool met = true;
    for (const auto& [side, cost] : row.bySide) {
      std::printf(" %15s", Shown(cost, row.isMemory).c_str());
      if (before > 0) {
        const double step = GrowthOfAStep(before, sideBefore, cost.processor, side);
        growth += "  " + Decimal(step, 2);
        met = met && step <= row.limit;
      }
      before = cost.processor;
      sideBefore = side;
    }
    if (row.limit > 0) growth += "  <= " + Decimal(row.limit, 2) + (met ? "  met" : "  NOT MET");
    std::printf("%s\n", growth.c_str());
  }
}

}  // namespace mw::bench
