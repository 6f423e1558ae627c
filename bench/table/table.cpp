#include "bench/table/table.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace mw::bench {
namespace {

constexpr std::size_t kColumns = 7;
using Row = std::array<std::string, kColumns>;

std::vector<Row> rows;
int goals = 0, goalsMet = 0;

std::string Milliseconds(double seconds) {
  const double ms = seconds * 1e3;
  return Decimal(ms, ms < 1 ? 4 : ms < 100 ? 2 : 0) + " ms";
}

void Add(Row row, bool hasGoal, bool met) {
  goals += hasGoal;
  goalsMet += hasGoal && met;
  row.back() = !hasGoal ? "-" : met ? "met" : "NOT MET";
  std::fprintf(stderr, "  %s: %s, %s\n", row.front().c_str(), row[4].c_str(), row.back().c_str());
  rows.push_back(std::move(row));
}

}  // namespace

std::string Decimal(double value, int digits) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, value);
  return text.data();
}

void AddTimes(const std::string& what, const std::string& against, const Times& times,
              std::optional<double> limit) {
  const double ratio = times.Ratio();
  Add({what, Milliseconds(times.ours), against, Milliseconds(times.other),
       Decimal(ratio, ratio < 0.1 ? 4 : 3),
       limit ? "<= " + Decimal(*limit, *limit < 0.1 ? 4 : 3) : "-", ""},
      limit.has_value(), limit && ratio <= *limit);
}

void AddResult(const std::string& what, const std::string& ours, const std::string& against,
               const std::string& other, const std::string& goal, bool met) {
  Add({what, ours, against, other, "-", goal, ""}, true, met);
}

void Print() {
  rows.insert(rows.begin(), Row{"what", "ours", "against", "its", "ours / its", "goal", ""});
  Row widest{};
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < kColumns; ++i) {
      if (row[i].size() > widest[i].size()) widest[i] = row[i];
    }
  }
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < kColumns; ++i) {
      const bool isText = i == 0 || i == 2 || i + 1 == kColumns;
      const int width = static_cast<int>(widest[i].size());
      std::printf("%*s%s", isText ? -width : width, row[i].c_str(), i + 1 < kColumns ? "  " : "\n");
    }
  }
  std::printf("%d of %d goals met.\n", goalsMet, goals);
}

void Require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "Benchmark failed: %s\n", what);
  std::fflush(stdout);
  std::_Exit(EXIT_FAILURE);  // other threads may be at work
}

}  // namespace mw::bench
