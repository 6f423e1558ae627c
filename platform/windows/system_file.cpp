#include "platform/system_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <random>
#include <system_error>
#include <vector>
#include <windows.h>

#include "platform/native_name.h"
#include "platform/windows/wide_path.h"

namespace mw::os {

namespace fs = std::filesystem;

namespace {

// Reasons that <cerrno> has no number for are Windows' own, moved behind all of its numbers.
constexpr int kWindowsReasons = 1 << 20;

int CodeOf(DWORD error) {
  switch (error) {
    case ERROR_SUCCESS:
      return 0;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
      return ENOENT;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_ACCESS_DENIED:
      return EACCES;
    case ERROR_WRITE_PROTECT:
      return EROFS;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_INVALID_HANDLE:
      return EBADF;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return ENOMEM;
    case ERROR_TOO_MANY_OPEN_FILES:
      return EMFILE;
    case ERROR_NOT_SAME_DEVICE:
      return EXDEV;
    case ERROR_DIR_NOT_EMPTY:
      return ENOTEMPTY;
    case ERROR_IO_DEVICE:
    case ERROR_CRC:
      return EIO;
    default:
      return kWindowsReasons + static_cast<int>(error);
  }
}

int LastCode() { return CodeOf(GetLastError()); }

// What a call of Windows comes to.
int Code(BOOL done) { return done ? 0 : LastCode(); }

HANDLE Native(Handle file) {
  return reinterpret_cast<HANDLE>(file);  // NOLINT(performance-no-int-to-ptr)
}

// Nobody is kept from opening, renaming or removing the file meanwhile.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenHandle(const fs::path& path, DWORD access, DWORD disposition, DWORD flags = 0,
                  DWORD share = kShareAll) {
  return CreateFileW(WidePath(path).c_str(), access, share, nullptr, disposition, flags, nullptr);
}

// A handle that closes itself.
class OpenHandleGuard {
 public:
  explicit OpenHandleGuard(HANDLE handle) : handle_(handle) {}
  ~OpenHandleGuard() {
    if (*this) CloseHandle(handle_);
  }
  OpenHandleGuard(const OpenHandleGuard&) = delete;
  OpenHandleGuard& operator=(const OpenHandleGuard&) = delete;
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

DWORD DispositionOf(FileAccess access) {
  switch (access) {
    case FileAccess::Create:
      return OPEN_ALWAYS;
    case FileAccess::CreateNew:
      return CREATE_NEW;
    default:
      return OPEN_EXISTING;
  }
}

bool IsFolder(const fs::path& path) {
  const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

// A place in a file for a call that reads, writes or locks there.
OVERLAPPED At(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

// So many bytes are read or written with one call.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

// A name beside `path` that no file has.
fs::path FreeName(const fs::path& path) {
  static std::minstd_rand random{std::random_device{}()};
  fs::path name;
  do {
    name = path;
    name += L"." + std::to_wstring(random() % 1'000'000);
  } while (GetFileAttributesW(WidePath(name).c_str()) != INVALID_FILE_ATTRIBUTES);
  return name;
}

// The claim is a lock on one byte that no file has, so that it keeps nobody from reading or
// writing.
constexpr std::uint64_t kClaimedByte = std::uint64_t{1} << 62;

// Since Windows 10, which the headers of the compiler do not all know.
constexpr auto kDispositionInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);

// Renames in one step also where somebody has the target open, as Windows 10 can.
bool RenameOverOpenFile(const fs::path& from, const fs::path& to) {
  const OpenHandleGuard file(
      OpenHandle(from, DELETE | SYNCHRONIZE, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
  if (!file) return false;
  const std::wstring name = WidePath(to);
  const std::size_t nameBytes = name.size() * sizeof(wchar_t);
  std::vector<std::max_align_t> room(
      (sizeof(FILE_RENAME_INFO) + nameBytes) / sizeof(std::max_align_t) + 1);
  auto* const request = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  constexpr DWORD kReplace = 1, kPosixSemantics = 2;
  request->Flags = kReplace | kPosixSemantics;
  request->FileNameLength = static_cast<DWORD>(nameBytes);
  std::memcpy(request->FileName, name.data(), nameBytes);
  return SetFileInformationByHandle(file.Get(), kRenameInfoEx, request,
                                    static_cast<DWORD>(sizeof(FILE_RENAME_INFO) + nameBytes));
}

bool Move(const fs::path& from, const fs::path& to, DWORD flags) {
  return MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(), flags | MOVEFILE_WRITE_THROUGH);
}

// Takes the name from a file that is open; the file is gone when the last has closed it. Until then
// it lies among the temporary files, or where it was if those are on another disk.
int RemoveOpenFile(const fs::path& path) {
  std::error_code ignored;
  const fs::path temporary = fs::temp_directory_path(ignored) / path.filename();
  for (const fs::path& place : {temporary, path}) {
    const fs::path aside = FreeName(place);
    if (Move(path, aside, 0)) return Code(DeleteFileW(WidePath(aside).c_str()));
  }
  return LastCode();
}

FileIdentity IdentityFrom(const BY_HANDLE_FILE_INFORMATION& info) {
  constexpr std::int64_t kFrom1601To1970 = 116'444'736'000'000'000, kNanoseconds = 100;
  const auto modified = static_cast<std::int64_t>(
      Joined(info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime));
  // The volume is left out: what is compared has the same path, and Wine does not tell the volume
  // of a file that was renamed while it is open.
  return {0, Joined(info.nFileIndexHigh, info.nFileIndexLow),
          Joined(info.nFileSizeHigh, info.nFileSizeLow),
          (modified - kFrom1601To1970) * kNanoseconds};
}

}  // namespace

std::string ReasonText(int code) {
  if (code < kWindowsReasons) return std::generic_category().message(code);
  wchar_t text[512];
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     static_cast<DWORD>(code - kWindowsReasons), 0, text, std::size(text), nullptr);
  std::wstring_view reason(text, length);
  reason = reason.substr(0, reason.find_last_not_of(L" .\r\n") + 1);
  if (reason.empty()) return "Windows error " + std::to_string(code - kWindowsReasons);
  return Utf8Text(reason);
}

int Open(const fs::path& path, FileAccess access, Handle& file) {
  const DWORD rights =
      access == FileAccess::Read ? GENERIC_READ : DWORD{GENERIC_READ | GENERIC_WRITE};
  const HANDLE handle = OpenHandle(path, rights, DispositionOf(access), FILE_ATTRIBUTE_NORMAL);
  if (handle == INVALID_HANDLE_VALUE) {
    const int code = LastCode();
    return IsFolder(path) ? (access == FileAccess::CreateNew ? EEXIST : EISDIR) : code;
  }
  if (GetFileType(handle) != FILE_TYPE_DISK) {
    CloseHandle(handle);
    return EINVAL;
  }
  file = reinterpret_cast<Handle>(handle);
  return 0;
}

int OpenAside(const fs::path& target, fs::path& aside, Handle& file) {
  constexpr int kMostTries = 16;
  int code = EEXIST;
  for (int tries = 0; tries < kMostTries && code == EEXIST; ++tries) {
    aside = FreeName(target);
    code = Open(aside, FileAccess::CreateNew, file);
  }
  return code;
}

void Close(Handle file) { CloseHandle(Native(file)); }

bool Claim(Handle file) {
  OVERLAPPED place = At(kClaimedByte);
  if (LockFileEx(Native(file), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                 &place)) {
    return true;
  }
  const DWORD error = GetLastError();
  return error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING;
}

void GiveUpClaim(Handle file) {
  OVERLAPPED place = At(kClaimedByte);
  UnlockFileEx(Native(file), 0, 1, 0, &place);
}

int Size(Handle file, std::uint64_t& size) {
  LARGE_INTEGER found;
  if (!GetFileSizeEx(Native(file), &found)) return LastCode();
  size = static_cast<std::uint64_t>(found.QuadPart);
  return 0;
}

std::optional<FileIdentity> Identity(Handle file) {
  BY_HANDLE_FILE_INFORMATION info;
  if (!GetFileInformationByHandle(Native(file), &info)) return std::nullopt;
  return IdentityFrom(info);
}

std::optional<FileIdentity> IdentityOf(const fs::path& path) {
  const OpenHandleGuard file(
      OpenHandle(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
  return file ? Identity(reinterpret_cast<Handle>(file.Get())) : std::nullopt;
}

int Read(Handle file, std::uint64_t offset, std::span<std::uint8_t> out, std::size_t& got) {
  got = 0;
  while (got < out.size()) {
    OVERLAPPED place = At(offset + got);
    DWORD read = 0;
    if (!ReadFile(Native(file), out.data() + got,
                  static_cast<DWORD>(std::min(out.size() - got, kMostAtOnce)), &read, &place)) {
      return GetLastError() == ERROR_HANDLE_EOF ? 0 : LastCode();
    }
    if (read == 0) break;
    got += read;
  }
  return 0;
}

int Write(Handle file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    OVERLAPPED place = At(offset);
    DWORD written = 0;
    if (!WriteFile(Native(file), bytes.data(),
                   static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce)), &written, &place)) {
      return LastCode();
    }
    if (written == 0) return ENOSPC;
    offset += written;
    bytes = bytes.subspan(written);
  }
  return 0;
}

// Windows copies whole files by name only.
std::uint64_t CopyStart(Handle, Handle, std::uint64_t) { return 0; }

// That is chosen when a file is opened, and the claim on it would be lost with the handle.
bool SetStraight(Handle, bool) { return false; }

void ForgetCached(Handle, std::uint64_t, std::uint64_t) {}

int Truncate(Handle file, std::uint64_t size) {
  FILE_END_OF_FILE_INFO end{};
  end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
  return Code(SetFileInformationByHandle(Native(file), FileEndOfFileInfo, &end, sizeof end));
}

int Sync(Handle file) {
  // Windows may note the time of a write as late as when the file is closed. Here it is part of
  // what tells one state of a file from another, so it is noted now.
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  if (!SetFileTime(Native(file), nullptr, nullptr, &now)) return LastCode();
  return Code(FlushFileBuffers(Native(file)));
}

// Who may do what comes with the folder; a file itself can be hidden, or no part of a backup.
int CopyPermissions(Handle from, Handle to) {
  FILE_BASIC_INFO info{};
  if (!GetFileInformationByHandleEx(Native(from), FileBasicInfo, &info, sizeof info)) {
    return LastCode();
  }
  FILE_BASIC_INFO only{};  // times that are zero stay as they are
  only.FileAttributes = info.FileAttributes & ~DWORD{FILE_ATTRIBUTE_READONLY};
  return Code(SetFileInformationByHandle(Native(to), FileBasicInfo, &only, sizeof only));
}

int Rename(const fs::path& from, const fs::path& to) {
  if (RenameOverOpenFile(from, to)) return 0;
  if (Move(from, to, MOVEFILE_REPLACE_EXISTING)) return 0;
  const int code = LastCode();
  if (code != EACCES || !IdentityOf(to)) return code;
  if (IsFolder(to)) return IsFolder(from) ? EEXIST : EISDIR;
  // Somebody has the old file open, and this system cannot replace it in one step.
  const fs::path aside = FreeName(to);
  if (!Move(to, aside, 0)) return code;
  if (!Move(from, to, 0)) {
    const int reason = LastCode();
    Move(aside, to, 0);
    return reason;
  }
  RemoveOpenFile(aside);
  return 0;
}

int Remove(const fs::path& path) {
  {
    const OpenHandleGuard file(
        OpenHandle(path, DELETE, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT));
    if (!file) return LastCode();
    DWORD request = FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS;
    if (SetFileInformationByHandle(file.Get(), kDispositionInfoEx, &request, sizeof request)) {
      return 0;
    }
  }
  const bool onlyOne = [&] {
    const OpenHandleGuard alone(
        OpenHandle(path, DELETE, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, 0));
    return static_cast<bool>(alone);
  }();
  return onlyOne ? Code(DeleteFileW(WidePath(path).c_str())) : RemoveOpenFile(path);
}

int SyncFolder(const fs::path& folder) {
  const OpenHandleGuard handle(
      OpenHandle(folder, GENERIC_WRITE, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
  if (handle && FlushFileBuffers(handle.Get())) return 0;
  const DWORD error = GetLastError();
  // Windows flushes folders only for some users and file systems. Renames are written through
  // anyway (MOVEFILE_WRITE_THROUGH), and file systems with a log keep names in order.
  const bool cannot = error == ERROR_ACCESS_DENIED || error == ERROR_INVALID_FUNCTION ||
                      error == ERROR_INVALID_HANDLE || error == ERROR_NOT_SUPPORTED;
  return cannot ? 0 : CodeOf(error);
}

}  // namespace mw::os
