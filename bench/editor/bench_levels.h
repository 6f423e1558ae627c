// Levels for the benchmarks of the running editor: of every size, each bare and full. All have the
// same hills, and what stands in a full one stands at the same places, so that the same is seen and
// touched in each of them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mw::bench {

inline constexpr int kLevelSides[] = {256, 512, 1024};  // samples
inline constexpr int kObjectsOfFullLevel = 2048, kEntitiesOfFullLevel = 1000;

std::string BenchLevelName(int side, bool full);
// Where the sample game in the current folder has it.
std::filesystem::path BenchLevelFile(const std::string& level);
// Writes those of the sizes into the sample game in the current folder. Ends the program when that
// fails.
void WriteBenchLevels(const std::vector<int>& sides);

}  // namespace mw::bench
