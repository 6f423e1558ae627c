#include "data/archive_replace.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "data/archive_journal.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyBuffer = std::size_t{1} << 20;

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

fs::path WithSuffix(const fs::path& path, const char* suffix) {
  fs::path result = path;
  result += suffix;
  return result;
}

bool CopyContent(File& from, File& to, std::string& error) {
  const auto size = from.Size();
  if (!size) {
    error = from.Error();
    return false;
  }
  std::vector<std::uint8_t> buffer(
      static_cast<std::size_t>(std::min<std::uint64_t>(kCopyBuffer, *size)));
  for (std::uint64_t offset = 0; offset < *size;) {
    const auto chunk = std::span(buffer).first(
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), *size - offset)));
    if (!from.ReadAt(offset, chunk)) {
      error = from.Error();
      return false;
    }
    if (!to.WriteAt(offset, chunk)) {
      error = to.Error();
      return false;
    }
    offset += chunk.size();
  }
  return true;
}

// Copies the archive to its backup, which is whole at any moment, and made to last.
bool BackUp(File& archive, const fs::path& archivePath, std::string& error) {
  const fs::path backup = BackupPath(archivePath);
  const fs::path unfinished = WithSuffix(backup, "-new");
  File copy;
  if (!RemoveFile(unfinished, &error)) return false;
  bool copied = copy.Open(unfinished, FileAccess::CreateNew);
  if (!copied) error = copy.Error();
  copied = copied && CopyContent(archive, copy, error);
  if (copied && !(copy.CopyPermissions(archive) && copy.Sync())) {
    error = copy.Error();
    copied = false;
  }
  if (copied && RenameFile(unfinished, backup, &error)) return SyncFolderOf(backup, &error);
  RemoveFile(unfinished);
  return false;
}

}  // namespace

fs::path AsidePath(const fs::path& archivePath) { return WithSuffix(archivePath, "-new"); }

fs::path BackupPath(const fs::path& archivePath) { return WithSuffix(archivePath, ".bak"); }

bool RemoveAside(const fs::path& archivePath, std::string& error) {
  const fs::path aside = AsidePath(archivePath);
  return RemoveFile(JournalPath(aside), &error) && RemoveFile(aside, &error);
}

bool PutAsideInPlace(File& aside, const fs::path& archivePath, std::string& error) {
  if (!RecoverArchive(archivePath, error)) return false;
  const fs::path journal = JournalPath(archivePath);
  if (Exists(journal)) {  // of some other state: it would stand in the way of every later save
    error = journal.filename().string() + " is in the way";
    return false;
  }
  if (Exists(archivePath)) {
    File old;
    if (!old.Open(archivePath, FileAccess::Read)) {
      error = old.Error();
      return false;
    }
    if (!BackUp(old, archivePath, error)) return false;
    aside.CopyPermissions(old);  // as good as can be had
  }
  return RenameFile(AsidePath(archivePath), archivePath, &error) &&
         SyncFolderOf(archivePath, &error);
}

}  // namespace mw
