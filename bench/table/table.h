// The table that bench.sh prints: each row is one piece of work done in two ways in turns, ours and
// a plain one or a peer, and how the two compare. Used by the files beside this one.
#pragma once

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace mw::bench {

// Seconds that each way takes.
struct Times {
  double ours = 0, other = 0;
  double Ratio() const { return ours / other; }
};

template <typename Work>
double Time(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double MedianOf(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

// Both ways in turns, so that whatever else the machine does meets both; the medians. `ours` and
// `other` return the seconds that count.
template <typename Ours, typename Other>
Times Compare(int rounds, Ours ours, Other other) {
  std::vector<double> ourTimes, otherTimes;
  for (int round = 0; round < rounds; ++round) {
    ourTimes.push_back(ours());
    otherTimes.push_back(other());
  }
  return {MedianOf(ourTimes), MedianOf(otherTimes)};
}

// A row of times; `limit` is the goal for ours / other, without one the row only reports.
void AddTimes(const std::string& what, const std::string& against, const Times& times,
              std::optional<double> limit);
// A row about the result itself, such as how many pixels differ.
void AddResult(const std::string& what, const std::string& ours, const std::string& against,
               const std::string& other, const std::string& goal, bool met);
void Print();

// A number for the table: printf's %.*f.
std::string Decimal(double value, int digits);

// Ends the program when the work that was to be measured failed.
void Require(bool good, const char* what);

// What the rows are about.
void AddTerrainRows();
void AddObjectRows();
void AddArchiveRows();
void AddSavingRows();
void AddPictureRows();
void AddGroundRows();
void AddHistoryRows();

}  // namespace mw::bench
