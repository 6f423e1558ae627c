// Random access to one file on disk, and the folder operations that make changes last. Archives are
// read and written through this. Paths are native ones (`NativePath` makes them). Nothing here
// throws.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace mw {

enum class FileAccess {
  Read,
  ReadWrite,
  Create,     // read and write; made when missing, not emptied when it exists
  CreateNew,  // read and write; must not exist yet
};

// What tells one state of a file on disk from another, as far as the system knows.
struct FileIdentity {
  std::uint64_t device = 0, number = 0;  // which file it is
  std::uint64_t size = 0;
  std::int64_t modified = 0;  // nanoseconds since 1970
  bool operator==(const FileIdentity&) const = default;
};
// Nothing when there is no such file, or it cannot be asked for.
std::optional<FileIdentity> IdentityOf(const std::filesystem::path& path);

// Memory that bytes can go straight from to the disk.
class DiskBlock {
 public:
  static constexpr std::size_t kAlignment = 4096;

  explicit DiskBlock(std::size_t size = 0) : pages_((size + kAlignment - 1) / kAlignment) {}
  std::size_t Size() const { return pages_.size() * kAlignment; }
  std::span<std::uint8_t> First(std::size_t size) { return {pages_.data()->bytes, size}; }

 private:
  struct alignas(kAlignment) Page {
    std::uint8_t bytes[kAlignment];
  };
  std::vector<Page> pages_;
};

// One open plain file. After a failure `Error` is the system's reason.
class File {
 public:
  File() = default;
  ~File();
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  bool Open(const std::filesystem::path& path, FileAccess access);
  bool IsOpen() const { return handle_ != -1; }
  void Close();

  // Claims the file until it is closed or the program ends, however it ends. Nobody else can have
  // the claim meanwhile, in this program or another; who does not ask for it reads and writes the
  // file as ever. The claim is that of the open file, whatever its name: a file that is put in its
  // place has none. False when somebody else has it. Where the file system keeps no claims,
  // everybody gets one.
  bool Claim();
  void GiveUpClaim();
  // Whether the path leads to this file, not to one that has taken its place.
  bool IsAt(const std::filesystem::path& path) const;

  std::optional<std::uint64_t> Size();
  std::optional<FileIdentity> Identity() const;
  // Fills `out` from `offset`. False when the file ends before or cannot be read.
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out);
  // Writes all of `bytes` or fails; after a failure some of them may be in the file.
  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);
  // Writes all bytes of `source` from offset 0; the system copies them itself where it can.
  bool CopyContent(File& source);
  // Whether bytes from now on go straight to the disk and back, not through the system's memory.
  // Addresses, offsets and sizes must then be multiples of DiskBlock::kAlignment. Stays off where
  // the file system cannot do that.
  void SetStraight(bool straight);
  bool IsStraight() const { return straight_; }
  bool Truncate(std::uint64_t size);
  // Returns when everything written is safe on the disk.
  bool Sync();
  // Whether the file holds `expected` at `offset`. It is asked of the disk, not of the system's
  // memory of what was written, where that can be had; sync before what did not go straight.
  // `Error` says so when it does not.
  bool Holds(std::uint64_t offset, std::span<const std::uint8_t> expected);
  // The same for bytes that were copied: `size` bytes of `source` from `sourceOffset`.
  bool HoldsCopy(std::uint64_t offset, File& source, std::uint64_t sourceOffset,
                 std::uint64_t size);
  // Whether the file holds all of `source` and nothing else.
  bool HoldsContentOf(File& source);
  // Gives this file the permissions of `other`.
  bool CopyPermissions(const File& other);

  const std::string& Error() const { return error_; }

 private:
  bool Check(int code);
  bool Fail(const char* reason);
  bool FailDiffering();
  bool CopyByBlocks(File& source, std::uint64_t from, std::uint64_t end);

  std::intptr_t handle_ = -1;  // the system's, -1 for none
  bool straight_ = false;
  DiskBlock compared_;  // what Holds has read
  std::filesystem::path path_;
  std::string error_;
};

// Whether somebody has the claim on the file at the path.
bool IsClaimed(const std::filesystem::path& path);

// Puts `from` in the place of `to` in one step.
bool RenameFile(const std::filesystem::path& from, const std::filesystem::path& to,
                std::string* error = nullptr);
// True when the file is gone afterwards.
bool RemoveFile(const std::filesystem::path& path, std::string* error = nullptr);
// Returns when the creation, renaming and removal of files beside `path` are safe on the disk.
bool SyncFolderOf(const std::filesystem::path& path, std::string* error = nullptr);

// One change that is about to be made to the disk; `hooks.diskFault` is asked before.
struct DiskChange {
  enum class Kind { Create, Write, Truncate, Sync, Rename, Remove, SyncFolder };
  Kind kind;
  const std::filesystem::path& path;
  std::uint64_t offset = 0;                          // Write; the new size for Truncate
  std::span<const std::uint8_t> bytes{};             // Write
  const std::filesystem::path* renamedTo = nullptr;  // Rename
};

struct DiskFault {
  int code = EIO;  // the error of <cerrno> that the change ends with; 0: it claims to be done
  std::size_t written = 0;  // bytes of a Write that still reach the disk
};

}  // namespace mw
