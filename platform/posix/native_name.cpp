#include "platform/native_name.h"

#include <system_error>

#include "core/text.h"

namespace mw {

namespace fs = std::filesystem;

fs::path PathOfText(std::string_view text) { return text; }

std::string TextOfPath(const fs::path& path) { return path.string(); }

fs::path ExistingSpelling(const fs::path& folder, const fs::path& name) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(folder / name, error))) return folder / name;
  fs::path found;
  const fs::path& listed = folder.empty() ? fs::path(".") : folder;
  for (fs::directory_iterator it(listed, error), end; !error && it != end; it.increment(error)) {
    const std::string candidate = it->path().filename().string();
    // The first in byte order, so that the choice does not depend on the folder's own order.
    if (EqualNoCase(candidate, name.native()) &&
        (found.empty() || candidate < found.filename().string())) {
      found = folder / candidate;
    }
  }
  return found.empty() ? folder / name : found;
}

}  // namespace mw
