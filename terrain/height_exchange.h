// The exchange of heights with other tools: a raw file without header, "heightmap.raw" in the
// working folder. (The level's own file of that name is a member of its archive.) Used by the File
// menu.
#pragma once

#include <functional>
#include <optional>

namespace mw {

// Of a sample. 8: whole height units. 16: 256ths of a height unit, low byte first. 24: a grey
// picture's three equal bytes, whole height units.
enum class SampleBits : int { Eight = 8, Sixteen = 16, TwentyFour = 24 };

// Lets the user choose in a dialog with this title; nothing when the user cancels.
using AskSampleBits = std::function<std::optional<SampleBits>(const char* title)>;

// Asks before it overwrites, asks for the bits, writes the file and says so. A failure shows the
// system's reason and leaves the file on disk as it was.
void ExportHeightmap(const AskSampleBits& ask);

// Asks for the bits and replaces the heights of the level; it then counts as modified. A file that
// is missing, of another size or unreadable changes nothing and shows why.
void ImportHeightmap(const AskSampleBits& ask);

}  // namespace mw
