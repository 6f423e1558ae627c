// Bookmarks: places of the camera that the user keeps for each level under numbers from 1 to 9.
// They are kept in the settings of the editor's user, for the levels that had one kept last.
#pragma once

#include <cstddef>

namespace mw {

inline constexpr int kBookmarkCount = 9;
inline constexpr std::size_t kMostBookmarkedLevels = 50;

// Keeps where the camera of the open level is, where it looks and how it moves, in the place of
// what had that number. The status bar says whether that was written.
void KeepBookmark(int number);
// Puts the camera there again. Where nothing was kept under the number the status bar says so.
void GoToBookmark(int number);

}  // namespace mw
