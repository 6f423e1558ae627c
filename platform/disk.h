// Files on disk. Paths of the game and of configuration files use `\` and may be spelled in any
// case; these functions take such paths as well as native ones and find existing files and folders
// without regard to case. A relative path belongs to the working folder; one that is looked for or
// read, and that the working folder does not have, means what lies there in `editor.sharedFolder`,
// and what is listed is listed from both. Nothing here throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// The native path that `path` means: separators turned, and every component that exists on disk
// replaced by its real spelling (an exact match wins over one in another case). Components that do
// not exist are kept as given.
std::filesystem::path NativePath(std::string_view path);
// A native path written with `\` as configuration files hold it ("/home/me/x" gives "\home\me\x").
std::string BackslashPath(std::string_view path);

// The native path of what is read under `path`, of the working folder or the shared one.
std::filesystem::path ReadablePath(std::string_view path);

// The path as the system spells it, for messages.
std::string SystemPath(std::string_view path);
// The folder that relative paths belong to, as the system writes it.
std::string WorkingFolder();

bool FileExists(std::string_view path);
bool FolderExists(std::string_view path);
// Names (without folder) of the plain files in `folder` that end in `extension` (given with its
// dot, compared without regard to case), sorted by name without regard to case. Empty when there is
// no such folder.
std::vector<std::string> ListFiles(std::string_view folder, std::string_view extension);

// Names of the folders in `folder`, sorted in the same way.
std::vector<std::string> ListFolders(std::string_view folder);

enum class FolderResult { Created, Existed, Failed };
// Creates one folder; its parent must exist.
FolderResult CreateFolder(std::string_view path);

// At most this many bytes are read into memory at once; larger files are refused.
inline constexpr std::uintmax_t kMaxWholeFile = std::uintmax_t{1} << 30;

// The file's bytes, or nothing with the system's reason in `error`.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path,
                                                       std::string* error = nullptr);
// Writes aside and renames over the old file: after a failure the old file is as it was.
bool WriteWholeFile(std::string_view path, std::span<const std::uint8_t> bytes,
                    std::string* error = nullptr);
bool WriteWholeFile(std::string_view path, std::string_view text, std::string* error = nullptr);
bool DeleteDiskFile(std::string_view path);

}  // namespace mw
