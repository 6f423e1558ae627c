// The table of the running editor: each row is a piece of work at every size of level, and how it
// grows from size to size.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/editor/editor_cost.h"

namespace mw::bench {

class GrowthTable {
 public:
  // `limit`: the most that the processor's time may grow by from one size to the next,
  // with four times the samples; 0 for none.
  void Add(const std::string& row, int side, const Cost& cost, double limit = 0);
  void AddMemory(const std::string& row, int side, double megabytes);
  void Print() const;

 private:
  struct Row {
    std::map<int, Cost> bySide;  // in both columns megabytes when it is about memory
    double limit = 0;
    bool isMemory = false;
  };
  Row& RowOf(const std::string& name);

  std::vector<std::pair<std::string, Row>> rows_;
};

}  // namespace mw::bench
