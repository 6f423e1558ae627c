#include "platform/file.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "core/hooks.h"

namespace mw {

namespace fs = std::filesystem;

namespace {

using Kind = DiskChange::Kind;

constexpr std::size_t kBlock = std::size_t{1} << 20;  // bytes copied or compared at a time

std::optional<DiskFault> PlannedFault(const DiskChange& change) {
  return hooks.diskFault ? hooks.diskFault(change) : std::nullopt;
}

void SetReason(std::string* error, int code) {
  if (error) *error = std::generic_category().message(code);
}

// 0, or the system error that ended the writing.
int WriteBytes(int descriptor, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written =
        pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return ENOSPC;
    offset += static_cast<std::uint64_t>(written);
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return 0;
}

int OpenFlags(FileAccess access) {
  switch (access) {
    case FileAccess::Read:
      return O_RDONLY;
    case FileAccess::ReadWrite:
      return O_RDWR;
    case FileAccess::Create:
      return O_RDWR | O_CREAT;
    case FileAccess::CreateNew:
      return O_RDWR | O_CREAT | O_EXCL;
  }
  return O_RDONLY;
}

FileIdentity IdentityFrom(const struct stat& status) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

}  // namespace

File::~File() { Close(); }

File::File(File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      straight_(std::exchange(other.straight_, false)),
      path_(std::move(other.path_)),
      error_(std::move(other.error_)) {}

File& File::operator=(File&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(straight_, other.straight_);
  std::swap(path_, other.path_);
  std::swap(error_, other.error_);
  return *this;
}

bool File::Fail(int code) {
  SetReason(&error_, code);
  return false;
}

bool File::Fail(const char* reason) {
  error_ = reason;
  return false;
}

bool File::Open(const fs::path& path, FileAccess access) {
  Close();
  const int flags = OpenFlags(access);
  if (hooks.diskFault && (flags & O_CREAT) && !Exists(path)) {
    if (const auto fault = PlannedFault({Kind::Create, path})) return Fail(fault->code);
  }
  // A pipe must not keep the program waiting; plain files do not know O_NONBLOCK.
  descriptor_ = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
  if (descriptor_ < 0) return Fail(errno);
  struct stat status {};
  const int code = fstat(descriptor_, &status) != 0 ? errno
                   : S_ISDIR(status.st_mode)        ? EISDIR
                   : !S_ISREG(status.st_mode)       ? EINVAL
                                                    : 0;
  if (code != 0) {
    Close();
    return Fail(code);
  }
  path_ = path;
  return true;
}

void File::Close() {
  if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
  straight_ = false;
  compared_ = DiskBlock();
}

bool File::Claim() { return flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

void File::GiveUpClaim() { flock(descriptor_, LOCK_UN); }

bool File::IsAt(const fs::path& path) const {
  const auto own = Identity(), there = IdentityOf(path);
  return own && there && own->device == there->device && own->number == there->number;
}

bool IsClaimed(const fs::path& path) {
  File file;
  return file.Open(path, FileAccess::Read) && !file.Claim();
}

std::optional<std::uint64_t> File::Size() {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) {
    Fail(errno);
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(status.st_size);
}

std::optional<FileIdentity> File::Identity() const {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) return std::nullopt;
  return IdentityFrom(status);
}

std::optional<FileIdentity> IdentityOf(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return IdentityFrom(status);
}

bool File::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) {
  while (!out.empty()) {
    const ssize_t got = pread(descriptor_, out.data(), out.size(), static_cast<off_t>(offset));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Fail(errno);
    if (got == 0) return Fail("Unexpected end of file");
    offset += static_cast<std::uint64_t>(got);
    out = out.subspan(static_cast<std::size_t>(got));
  }
  return true;
}

bool File::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (const auto fault = PlannedFault({Kind::Write, path_, offset, bytes})) {
    WriteBytes(descriptor_, offset, bytes.first(std::min(fault->written, bytes.size())));
    return fault->code == 0 || Fail(fault->code);
  }
  int code = WriteBytes(descriptor_, offset, bytes);
  if (code == EINVAL && straight_) {  // the disk wants still larger multiples
    SetStraight(false);
    code = WriteBytes(descriptor_, offset, bytes);
  }
  return code == 0 || Fail(code);
}

bool File::CopyContent(File& source) {
  const auto size = source.Size();
  if (!size) return Fail(source.Error().c_str());
  std::uint64_t done = 0;
  // Tests see every byte that is written.
  while (!hooks.diskFault && done < *size) {
    auto from = static_cast<off_t>(done), to = from;
    const ssize_t copied = copy_file_range(source.descriptor_, &from, descriptor_, &to,
                                           static_cast<std::size_t>(*size - done), 0);
    if (copied <= 0) break;  // what is left is copied by hand, which knows the reason
    done += static_cast<std::uint64_t>(copied);
  }
  return CopyByBlocks(source, done, *size);
}

bool File::CopyByBlocks(File& source, std::uint64_t from, std::uint64_t end) {
  std::vector<std::uint8_t> buffer(
      static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, end - from)));
  while (from < end) {
    const auto block = std::span(buffer).first(
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), end - from)));
    if (!source.ReadAt(from, block)) return Fail(source.Error().c_str());
    if (!WriteAt(from, block)) return false;
    from += block.size();
  }
  return true;
}

void File::SetStraight(bool straight) {
  if (straight == straight_) return;
  const int flags = fcntl(descriptor_, F_GETFL);
  const int wanted = straight ? flags | O_DIRECT : flags & ~O_DIRECT;
  if (flags >= 0 && fcntl(descriptor_, F_SETFL, wanted) == 0) straight_ = straight;
}

bool File::Truncate(std::uint64_t size) {
  if (const auto fault = PlannedFault({Kind::Truncate, path_, size})) return Fail(fault->code);
  return ftruncate(descriptor_, static_cast<off_t>(size)) == 0 || Fail(errno);
}

bool File::Sync() {
  if (const auto fault = PlannedFault({Kind::Sync, path_})) return Fail(fault->code);
  return fsync(descriptor_) == 0 || Fail(errno);
}

bool File::Holds(std::uint64_t offset, std::span<const std::uint8_t> expected) {
  const std::size_t most = std::min(kBlock, expected.size());
  if (compared_.Size() < most) compared_ = DiskBlock(most);
  if (!straight_) {
    posix_fadvise(descriptor_, static_cast<off_t>(offset), static_cast<off_t>(expected.size()),
                  POSIX_FADV_DONTNEED);
  }
  while (!expected.empty()) {
    const auto block = compared_.First(std::min(most, expected.size()));
    if (!ReadAt(offset, block)) return false;
    if (!std::ranges::equal(block, expected.first(block.size()))) {
      return FailDiffering();
    }
    offset += block.size();
    expected = expected.subspan(block.size());
  }
  return true;
}

bool File::HoldsCopy(std::uint64_t offset, File& source, std::uint64_t sourceOffset,
                     std::uint64_t size) {
  std::vector<std::uint8_t> buffer(static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, size)));
  while (size > 0) {
    const auto block =
        std::span(buffer).first(static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, size)));
    if (!source.ReadAt(sourceOffset, block)) return Fail(source.Error().c_str());
    if (!Holds(offset, block)) return false;
    offset += block.size();
    sourceOffset += block.size();
    size -= block.size();
  }
  return true;
}

bool File::HoldsContentOf(File& source) {
  const auto size = source.Size();
  if (!size) return Fail(source.Error().c_str());
  const auto ownSize = Size();
  if (!ownSize) return false;
  if (*ownSize != *size) return FailDiffering();
  return HoldsCopy(0, source, 0, *size);
}

bool File::FailDiffering() { return Fail("The disk does not hold what was written to it"); }

bool File::CopyPermissions(const File& other) {
  struct stat status {};
  return (fstat(other.descriptor_, &status) == 0 &&
          fchmod(descriptor_, status.st_mode & 07777) == 0) ||
         Fail(errno);
}

bool RenameFile(const fs::path& from, const fs::path& to, std::string* error) {
  if (const auto fault = PlannedFault({Kind::Rename, from, 0, {}, &to})) {
    SetReason(error, fault->code);
    return false;
  }
  if (rename(from.c_str(), to.c_str()) == 0) return true;
  SetReason(error, errno);
  return false;
}

bool RemoveFile(const fs::path& path, std::string* error) {
  if (hooks.diskFault && !Exists(path)) return true;
  if (const auto fault = PlannedFault({Kind::Remove, path})) {
    SetReason(error, fault->code);
    return false;
  }
  if (unlink(path.c_str()) == 0) return true;
  const int code = errno;
  if (!Exists(path)) return true;
  SetReason(error, code);
  return false;
}

bool SyncFolderOf(const fs::path& path, std::string* error) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (const auto fault = PlannedFault({Kind::SyncFolder, path})) {
    SetReason(error, fault->code);
    return false;
  }
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A file system that cannot sync folders answers EINVAL: nothing better is to be had there.
  const bool done = descriptor >= 0 && (fsync(descriptor) == 0 || errno == EINVAL);
  if (!done) SetReason(error, errno);
  if (descriptor >= 0) close(descriptor);
  return done;
}

}  // namespace mw
