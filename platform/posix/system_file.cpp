#include "platform/system_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace mw::os {

namespace fs = std::filesystem;

namespace {

int Descriptor(Handle file) { return static_cast<int>(file); }

// What a call of the system that answers with -1 for failure comes to.
int Code(int answer) { return answer == 0 ? 0 : errno; }

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

mode_t NewFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

std::string ReasonText(int code) { return std::generic_category().message(code); }

int Open(const fs::path& path, FileAccess access, Handle& file) {
  // A pipe must not keep the program waiting; plain files do not know O_NONBLOCK.
  const int descriptor = open(path.c_str(), OpenFlags(access) | O_CLOEXEC | O_NONBLOCK, 0666);
  if (descriptor < 0) return errno;
  struct stat status {};
  const int code = fstat(descriptor, &status) != 0 ? errno
                   : S_ISDIR(status.st_mode)       ? EISDIR
                   : !S_ISREG(status.st_mode)      ? EINVAL
                                                   : 0;
  if (code != 0) {
    close(descriptor);
    return code;
  }
  file = descriptor;
  return 0;
}

int OpenAside(const fs::path& target, fs::path& aside, Handle& file) {
  std::string name = target.string() + ".XXXXXX";
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) return errno;
  struct stat old {};
  const mode_t mode = stat(target.c_str(), &old) == 0 ? old.st_mode & 07777 : NewFileMode();
  if (fchmod(descriptor, mode) != 0) {
    const int code = errno;
    close(descriptor);
    unlink(name.c_str());
    return code;
  }
  aside = name;
  file = descriptor;
  return 0;
}

void Close(Handle file) { close(Descriptor(file)); }

bool Claim(Handle file) {
  return flock(Descriptor(file), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void GiveUpClaim(Handle file) { flock(Descriptor(file), LOCK_UN); }

int Size(Handle file, std::uint64_t& size) {
  struct stat status {};
  if (fstat(Descriptor(file), &status) != 0) return errno;
  size = static_cast<std::uint64_t>(status.st_size);
  return 0;
}

std::optional<FileIdentity> Identity(Handle file) {
  struct stat status {};
  if (fstat(Descriptor(file), &status) != 0) return std::nullopt;
  return IdentityFrom(status);
}

std::optional<FileIdentity> IdentityOf(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return IdentityFrom(status);
}

int Read(Handle file, std::uint64_t offset, std::span<std::uint8_t> out, std::size_t& got) {
  got = 0;
  while (got < out.size()) {
    const auto left = out.subspan(got);
    const ssize_t read =
        pread(Descriptor(file), left.data(), left.size(), static_cast<off_t>(offset + got));
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) return errno;
    if (read == 0) break;
    got += static_cast<std::size_t>(read);
  }
  return 0;
}

int Write(Handle file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written =
        pwrite(Descriptor(file), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return ENOSPC;
    offset += static_cast<std::uint64_t>(written);
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return 0;
}

std::uint64_t CopyStart(Handle source, Handle target, std::uint64_t size) {
  std::uint64_t done = 0;
  while (done < size) {
    auto from = static_cast<off_t>(done), to = from;
    const ssize_t copied = copy_file_range(Descriptor(source), &from, Descriptor(target), &to,
                                           static_cast<std::size_t>(size - done), 0);
    if (copied <= 0) break;
    done += static_cast<std::uint64_t>(copied);
  }
  return done;
}

bool SetStraight(Handle file, bool straight) {
  const int flags = fcntl(Descriptor(file), F_GETFL);
  const int wanted = straight ? flags | O_DIRECT : flags & ~O_DIRECT;
  return flags >= 0 && fcntl(Descriptor(file), F_SETFL, wanted) == 0;
}

void ForgetCached(Handle file, std::uint64_t offset, std::uint64_t size) {
  posix_fadvise(Descriptor(file), static_cast<off_t>(offset), static_cast<off_t>(size),
                POSIX_FADV_DONTNEED);
}

int Truncate(Handle file, std::uint64_t size) {
  return Code(ftruncate(Descriptor(file), static_cast<off_t>(size)));
}

int Sync(Handle file) { return Code(fsync(Descriptor(file))); }

int CopyPermissions(Handle from, Handle to) {
  struct stat status {};
  if (fstat(Descriptor(from), &status) != 0) return errno;
  return Code(fchmod(Descriptor(to), status.st_mode & 07777));
}

int Rename(const fs::path& from, const fs::path& to) {
  return Code(rename(from.c_str(), to.c_str()));
}

int Remove(const fs::path& path) { return Code(unlink(path.c_str())); }

int SyncFolder(const fs::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  const int code = Code(fsync(descriptor));
  close(descriptor);
  // A file system that cannot sync folders answers so: nothing better is to be had there.
  return code == EINVAL ? 0 : code;
}

}  // namespace mw::os
