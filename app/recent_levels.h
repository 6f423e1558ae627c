// The levels that were opened last, with their mods. They are kept in the settings of the editor's
// user; shown by File > Open Recent and by the welcome dialog.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

inline constexpr std::size_t kMaxRecentLevels = 10;

struct RecentLevel {
  std::string archive;  // absolute, as the system spells it
  std::string mod;      // its configuration's name
};
// Newest first, each archive once.
std::vector<RecentLevel> RecentLevels();
// What a list of them says of each: "Island (mymod)", with the archive's folder where two would be
// the same.
std::vector<std::string> RecentLevelCaptions(const std::vector<RecentLevel>& levels);

// Puts the open level at the top.
void RememberLevel();
// Opens the level of that archive of the list, after the question about unsaved changes. False when
// it is not open then: the user knows why. One whose archive is gone is taken off the list.
bool OpenRecentLevel(std::string_view archive);

}  // namespace mw
