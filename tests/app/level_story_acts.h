// What the stories of levels do and tell that needs nothing of the story itself.
#pragma once

#include <string>
#include <vector>

#include "app/new_level.h"
#include "core/bytes.h"

namespace mw {

// Of the level that the editor shows; `mark` is that of the last edit.
std::string DescribeLevel(bool isOpen, int mark);
// NAME small|medium|large, and what else is chosen for a new level.
NewLevelChoices ChoicesOf(const std::vector<std::string>& words);
// Tab and line break stand in the word as two signs each.
std::string WithBreaks(const std::string& word);
// By two points and the key that ends them.
void BuildRoad();

// Where the game leaves a file when it traces the level Valley.
std::string ValleyScratch(const std::string& file);
// What the game leaves of its tracing. The merged tile is white above, blue below.
bool LeaveTraced();
// Valley gets two tiles to trace, one that is not chosen and one that has no surface.
void PrepareTracing();

}  // namespace mw
