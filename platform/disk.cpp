#include "platform/disk.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "core/editor_state.h"
#include "core/text.h"

namespace mw {

namespace {

namespace fs = std::filesystem;

// `name` in `folder` as it is spelled on disk: exactly, else in another case, else as given.
fs::path ExistingSpelling(const fs::path& folder, const std::string& name) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(folder / name, error))) return folder / name;
  fs::path found;
  const fs::path& listed = folder.empty() ? fs::path(".") : folder;
  for (fs::directory_iterator it(listed, error), end; !error && it != end; it.increment(error)) {
    const std::string candidate = it->path().filename().string();
    // The first in byte order, so that the choice does not depend on the folder's own order.
    if (EqualNoCase(candidate, name) && (found.empty() || candidate < found.filename().string())) {
      found = folder / candidate;
    }
  }
  return found.empty() ? folder / name : found;
}

void TellReason(std::string* error, int code) {
  if (error) *error = std::generic_category().message(code);
}

// A file descriptor that closes itself.
struct Descriptor {
  int value = -1;
  ~Descriptor() {
    if (value >= 0) close(value);
  }
};

bool WriteAll(int descriptor, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

// Where the shared folder would have a relative path.
std::optional<fs::path> SharedPath(const fs::path& native) {
  if (editor.sharedFolder.empty() || native.is_absolute()) return std::nullopt;
  return NativePath((fs::path(editor.sharedFolder) / native).string());
}

// Names of the entries of a folder that are wanted, sorted without regard to case.
template <typename Wanted>
std::vector<std::string> ListEntries(std::string_view folder, Wanted wanted) {
  std::vector<std::string> names;
  const auto list = [&](const fs::path& listed) {
    std::error_code error;
    for (fs::directory_iterator it(listed, error), end; !error && it != end; it.increment(error)) {
      std::string name = it->path().filename().string();
      if (wanted(*it, name)) names.push_back(std::move(name));
    }
  };
  const fs::path native = NativePath(folder);
  list(native.empty() ? "." : native);
  if (const auto shared = SharedPath(native)) list(*shared);
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const int order = CompareNoCase(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace

fs::path NativePath(std::string_view path) {
  std::string turned(path);
  std::replace(turned.begin(), turned.end(), '\\', '/');
  fs::path result;
  for (const fs::path& part : fs::path(turned)) {
    const std::string name = part.string();
    if (name.empty()) continue;
    if (part.has_root_directory() || name == "." || name == "..") {
      result /= part;
    } else {
      result = ExistingSpelling(result, name);
    }
  }
  return result;
}

fs::path ReadablePath(std::string_view path) {
  fs::path native = NativePath(path);
  std::error_code error;
  if (fs::exists(native, error)) return native;
  const auto shared = SharedPath(native);
  return shared && fs::exists(*shared, error) ? *shared : native;
}

std::string BackslashPath(std::string_view path) {
  std::string turned(path);
  std::replace(turned.begin(), turned.end(), '/', '\\');
  return turned;
}

std::string WorkingFolder() {
  std::error_code ignored;
  return fs::current_path(ignored).string();
}

std::string SystemPath(std::string_view path) { return NativePath(path).string(); }

bool FileExists(std::string_view path) {
  std::error_code error;
  return fs::is_regular_file(ReadablePath(path), error);
}

bool FolderExists(std::string_view path) {
  std::error_code error;
  return fs::is_directory(ReadablePath(path), error);
}

std::vector<std::string> ListFiles(std::string_view folder, std::string_view extension) {
  return ListEntries(folder, [&](const fs::directory_entry& entry, std::string_view name) {
    std::error_code ignored;
    return name.size() > extension.size() && entry.is_regular_file(ignored) &&
           EqualNoCase(name.substr(name.size() - extension.size()), extension);
  });
}

std::vector<std::string> ListFolders(std::string_view folder) {
  return ListEntries(folder, [](const fs::directory_entry& entry, std::string_view) {
    std::error_code ignored;
    return entry.is_directory(ignored);
  });
}

FolderResult CreateFolder(std::string_view path) {
  const fs::path native = NativePath(path);
  std::error_code error;
  if (fs::create_directory(native, error)) return FolderResult::Created;
  return fs::is_directory(native, error) ? FolderResult::Existed : FolderResult::Failed;
}

std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path, std::string* error) {
  const Descriptor file{open(ReadablePath(path).c_str(), O_RDONLY | O_CLOEXEC)};
  struct stat status {};
  if (file.value < 0 || fstat(file.value, &status) != 0) {
    TellReason(error, errno);
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode)) {
    TellReason(error, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    return std::nullopt;
  }
  if (static_cast<std::uintmax_t>(status.st_size) > kMaxWholeFile) {
    TellReason(error, EFBIG);
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.st_size));
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = read(file.value, bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      TellReason(error, errno);
      return std::nullopt;
    }
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  bytes.resize(filled);
  return bytes;
}

bool WriteWholeFile(std::string_view path, std::span<const std::uint8_t> bytes,
                    std::string* error) {
  fs::path target = NativePath(path);
  std::error_code ignored;
  // A link is kept: what it points to is replaced.
  if (fs::is_symlink(target, ignored)) target = fs::weakly_canonical(target, ignored);
  std::string aside = target.string() + ".XXXXXX";
  Descriptor file{mkostemp(aside.data(), O_CLOEXEC)};
  if (file.value < 0) {
    TellReason(error, errno);
    return false;
  }
  struct stat old {};
  const mode_t mask = umask(0);
  umask(mask);
  const mode_t mode = stat(target.c_str(), &old) == 0 ? old.st_mode & 07777 : 0666 & ~mask;
  if (fchmod(file.value, mode) != 0 || !WriteAll(file.value, bytes) || fsync(file.value) != 0 ||
      rename(aside.c_str(), target.c_str()) != 0) {
    TellReason(error, errno);
    unlink(aside.c_str());
    return false;
  }
  return true;
}

bool WriteWholeFile(std::string_view path, std::string_view text, std::string* error) {
  return WriteWholeFile(
      path, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), error);
}

bool DeleteDiskFile(std::string_view path) {
  std::error_code error;
  return fs::remove(NativePath(path), error);
}

}  // namespace mw
