#include "platform/disk.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "core/editor_state.h"
#include "core/text.h"
#include "platform/native_name.h"
#include "platform/system_file.h"

namespace mw {

namespace {

namespace fs = std::filesystem;

void TellReason(std::string* error, int code) {
  if (error) *error = os::ReasonText(code);
}

// An open file that closes itself.
struct OpenFile {
  os::Handle handle = os::kNoFile;
  ~OpenFile() { Close(); }
  void Close() {
    if (handle != os::kNoFile) os::Close(std::exchange(handle, os::kNoFile));
  }
};

// Where the shared folder would have a relative path.
std::optional<fs::path> SharedPath(const fs::path& native) {
  if (editor.sharedFolder.empty() || native.is_absolute()) return std::nullopt;
  return NativePath(TextOfPath(PathOfText(editor.sharedFolder) / native));
}

// Names of the entries of a folder that are wanted, sorted without regard to case.
template <typename Wanted>
std::vector<std::string> ListEntries(std::string_view folder, Wanted wanted) {
  std::vector<std::string> names;
  const auto list = [&](const fs::path& listed) {
    std::error_code error;
    for (fs::directory_iterator it(listed, error), end; !error && it != end; it.increment(error)) {
      std::string name = TextOfPath(it->path().filename());
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
  for (const fs::path& part : PathOfText(turned)) {
    if (part.empty()) continue;
    if (part.has_root_path() || part == "." || part == "..") {
      result /= part;
    } else {
      result = ExistingSpelling(result, part);
    }
  }
  return result.make_preferred();
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
  return TextOfPath(fs::current_path(ignored));
}

std::string SystemPath(std::string_view path) { return TextOfPath(NativePath(path)); }

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
  OpenFile file;
  std::uint64_t size = 0;
  int code = os::Open(ReadablePath(path), FileAccess::Read, file.handle);
  if (code == 0) code = os::Size(file.handle, size);
  if (code == 0 && size > kMaxWholeFile) code = EFBIG;
  std::vector<std::uint8_t> bytes(code == 0 ? static_cast<std::size_t>(size) : 0);
  std::size_t filled = 0;
  if (code == 0) code = os::Read(file.handle, 0, bytes, filled);
  if (code != 0) {
    TellReason(error, code);
    return std::nullopt;
  }
  bytes.resize(filled);
  return bytes;
}

bool WriteWholeFile(std::string_view path, std::span<const std::uint8_t> bytes,
                    std::string* error) {
  fs::path target = NativePath(path), aside;
  std::error_code ignored;
  // A link is kept: what it points to is replaced.
  if (fs::is_symlink(target, ignored)) target = fs::weakly_canonical(target, ignored);
  OpenFile file;
  int code = os::OpenAside(target, aside, file.handle);
  if (code == 0) {
    code = os::Write(file.handle, 0, bytes);
    if (code == 0) code = os::Sync(file.handle);
    file.Close();
    if (code == 0) code = os::Rename(aside, target);
    if (code != 0) os::Remove(aside);
  }
  if (code != 0) TellReason(error, code);
  return code == 0;
}

bool WriteWholeFile(std::string_view path, std::string_view text, std::string* error) {
  return WriteWholeFile(
      path, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), error);
}

bool DeleteDiskFile(std::string_view path) { return os::Remove(NativePath(path)) == 0; }

}  // namespace mw
