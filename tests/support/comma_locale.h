// A locale whose numbers have a comma.
#pragma once

#include <filesystem>

namespace mw {

// Makes it the program's, on the spot in `folder` where the system has none. False when it can't.
bool UseCommaLocale(const std::filesystem::path& folder);

}  // namespace mw
