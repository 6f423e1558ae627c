#include "platform/file.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "core/hooks.h"
#include "platform/system_file.h"

namespace mw {

namespace fs = std::filesystem;

namespace {

using Kind = DiskChange::Kind;

constexpr std::size_t kBlock = std::size_t{1} << 20;  // bytes copied or compared at a time

std::optional<DiskFault> PlannedFault(const DiskChange& change) {
  return hooks.diskFault ? hooks.diskFault(change) : std::nullopt;
}

// Whether it is done, which 0 stands for; else with the reason.
bool IsDone(int code, std::string* error) {
  if (code != 0 && error) *error = os::ReasonText(code);
  return code == 0;
}

bool Refuse(int code, std::string* error) {
  IsDone(code, error);
  return false;
}

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

}  // namespace

File::~File() { Close(); }

File::File(File&& other) noexcept
    : handle_(std::exchange(other.handle_, os::kNoFile)),
      straight_(std::exchange(other.straight_, false)),
      path_(std::move(other.path_)),
      error_(std::move(other.error_)) {}

File& File::operator=(File&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(straight_, other.straight_);
  std::swap(path_, other.path_);
  std::swap(error_, other.error_);
  return *this;
}

bool File::Check(int code) { return IsDone(code, &error_); }

bool File::Fail(const char* reason) {
  error_ = reason;
  return false;
}

bool File::Open(const fs::path& path, FileAccess access) {
  Close();
  const bool mayCreate = access == FileAccess::Create || access == FileAccess::CreateNew;
  if (hooks.diskFault && mayCreate && !Exists(path)) {
    const auto fault = PlannedFault({Kind::Create, path});
    if (fault) return Refuse(fault->code, &error_);
  }
  if (!Check(os::Open(path, access, handle_))) return false;
  path_ = path;
  return true;
}

void File::Close() {
  if (IsOpen()) os::Close(std::exchange(handle_, os::kNoFile));
  straight_ = false;
  compared_ = DiskBlock();
}

bool File::Claim() { return os::Claim(handle_); }

void File::GiveUpClaim() { os::GiveUpClaim(handle_); }

bool File::IsAt(const fs::path& path) const {
  const auto own = Identity(), there = IdentityOf(path);
  return own && there && own->device == there->device && own->number == there->number;
}

bool IsClaimed(const fs::path& path) {
  File file;
  return file.Open(path, FileAccess::Read) && !file.Claim();
}

std::optional<std::uint64_t> File::Size() {
  std::uint64_t size = 0;
  if (!Check(os::Size(handle_, size))) return std::nullopt;
  return size;
}

std::optional<FileIdentity> File::Identity() const { return os::Identity(handle_); }

std::optional<FileIdentity> IdentityOf(const fs::path& path) { return os::IdentityOf(path); }

bool File::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) {
  std::size_t got = 0;
  if (!Check(os::Read(handle_, offset, out, got))) return false;
  return got == out.size() || Fail("Unexpected end of file");
}

bool File::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (const auto fault = PlannedFault({Kind::Write, path_, offset, bytes})) {
    os::Write(handle_, offset, bytes.first(std::min(fault->written, bytes.size())));
    return Check(fault->code);
  }
  int code = os::Write(handle_, offset, bytes);
  if (code == EINVAL && straight_) {  // the disk wants still larger multiples
    SetStraight(false);
    code = os::Write(handle_, offset, bytes);
  }
  return Check(code);
}

bool File::CopyContent(File& source) {
  const auto size = source.Size();
  if (!size) return Fail(source.Error().c_str());
  // Tests see every byte that is written. What is left is copied by hand, which knows the reason.
  const std::uint64_t done = hooks.diskFault ? 0 : os::CopyStart(source.handle_, handle_, *size);
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
  if (straight != straight_ && os::SetStraight(handle_, straight)) straight_ = straight;
}

bool File::Truncate(std::uint64_t size) {
  if (const auto fault = PlannedFault({Kind::Truncate, path_, size}))
    return Refuse(fault->code, &error_);
  return Check(os::Truncate(handle_, size));
}

bool File::Sync() {
  if (const auto fault = PlannedFault({Kind::Sync, path_})) return Refuse(fault->code, &error_);
  return Check(os::Sync(handle_));
}

bool File::Holds(std::uint64_t offset, std::span<const std::uint8_t> expected) {
  const std::size_t most = std::min(kBlock, expected.size());
  if (compared_.Size() < most) compared_ = DiskBlock(most);
  if (!straight_) os::ForgetCached(handle_, offset, expected.size());
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
  return Check(os::CopyPermissions(other.handle_, handle_));
}

bool RenameFile(const fs::path& from, const fs::path& to, std::string* error) {
  const auto fault = PlannedFault({Kind::Rename, from, 0, {}, &to});
  if (fault) return Refuse(fault->code, error);
  return IsDone(os::Rename(from, to), error);
}

bool RemoveFile(const fs::path& path, std::string* error) {
  if (hooks.diskFault && !Exists(path)) return true;
  if (const auto fault = PlannedFault({Kind::Remove, path})) return Refuse(fault->code, error);
  const int code = os::Remove(path);
  return (code != 0 && !Exists(path)) || IsDone(code, error);
}

bool SyncFolderOf(const fs::path& path, std::string* error) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (const auto fault = PlannedFault({Kind::SyncFolder, path})) return Refuse(fault->code, error);
  return IsDone(os::SyncFolder(folder), error);
}

}  // namespace mw
