// The Object Browser without its window: which catalogue entries it lists, the mesh that it turns
// in the 3D view, and what its OK does.
#pragma once

#include <vector>

#include "core/fixed_string.h"

namespace mw {

enum class BrowserCategory { All = 0, Structures = 1, Props = 2, Vegetation = 3 };

// What is listed; kept from one opening to the next.
struct BrowserFilter {
  BrowserCategory category = BrowserCategory::All;
  FixedString<128> text;  // a part of the names; upper and lower case differ
};

// Catalogue entries of the category whose names contain the text, in the catalogue's order. "All"
// are the entries of the three categories; those of any other are never listed.
std::vector<int> BrowserEntries(const BrowserFilter& filter);

// From BeginPreview to EndPreview the 3D view shows the preview mesh instead of the level. The
// camera is level meanwhile, and afterwards where it was.
void BeginPreview();
// False, and nothing to see, when the entry's mesh cannot be loaded.
bool PreviewEntry(int entry);
void EndPreview();

// Brings the entry's mesh into the cache, unless it is there, and chooses its item in the level
// tree, from where it is dragged into the view. False when it cannot be loaded.
bool OfferEntry(int entry);

}  // namespace mw
