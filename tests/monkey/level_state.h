// A level as it lies in its archive and as the editor holds it, to compare what was saved with what
// is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace mw::monkey {

struct LevelState {
  std::map<std::string, std::vector<std::uint8_t>> members;
  std::map<std::string, std::ptrdiff_t> counts;
  std::map<std::string, std::string> settings;  // that the scripts mention, by their commands
  std::vector<int> heights;                     // 1/256 height units, as they are saved
  std::vector<std::uint32_t> materials;
};

// Of the open level, on the thread of the windows.
LevelState TakeLevelState();
// Members that the archive has not got any more or with other bytes, as lines of text.
std::vector<std::string> DifferentMembers(const LevelState& before, const LevelState& after);
// How the level as it was read differs from the one that was saved, as lines of text.
std::vector<std::string> Differences(const LevelState& saved, const LevelState& read);

}  // namespace mw::monkey
