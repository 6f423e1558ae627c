#include "data/archive_replace.h"

#include "data/archive_journal.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

fs::path WithSuffix(const fs::path& path, const char* suffix) {
  fs::path result = path;
  result += suffix;
  return result;
}

}  // namespace

fs::path AsidePath(const fs::path& archivePath) { return WithSuffix(archivePath, "-new"); }

fs::path BackupPath(const fs::path& archivePath, BackupKind kind) {
  return WithSuffix(archivePath, kind == BackupKind::Damaged ? ".damaged.bak" : ".bak");
}

bool BackUpArchive(File& archive, const fs::path& backup, std::string& error) {
  const fs::path unfinished = AsidePath(backup);
  File copy;
  if (!RemoveFile(unfinished, &error)) return false;
  if (!(copy.Open(unfinished, FileAccess::CreateNew) && copy.CopyContent(archive) &&
        copy.CopyPermissions(archive) && copy.Sync() && copy.HoldsContentOf(archive))) {
    error = copy.Error();
  } else if (RenameFile(unfinished, backup, &error)) {
    return SyncFolderOf(backup, &error);
  }
  RemoveFile(unfinished);
  return false;
}

bool RemoveAside(const fs::path& archivePath, std::string& error) {
  const fs::path aside = AsidePath(archivePath);
  if (IsClaimed(aside)) {
    error = kInUse;
    return false;
  }
  return RemoveFile(JournalPath(aside), &error) && RemoveFile(aside, &error);
}

bool PutAsideInPlace(File& aside, const fs::path& archivePath, BackupKind kind,
                     std::string& error) {
  File old;
  if (Exists(archivePath) && !(old.Open(archivePath, FileAccess::Read) && old.Claim())) {
    error = old.IsOpen() ? kInUse : old.Error();
    return false;
  }
  if (!RecoverArchive(archivePath, JournalUse::PlayBack, error)) return false;
  if (JournalExists(archivePath)) {  // it belongs to another state and would stop every save
    error = StrayJournalReason(archivePath);
    return false;
  }
  if (old.IsOpen()) {
    if (!BackUpArchive(old, BackupPath(archivePath, kind), error)) return false;
    aside.CopyPermissions(old);  // a failure is no reason to give up the new file
  }
  return RenameFile(AsidePath(archivePath), archivePath, &error) &&
         SyncFolderOf(archivePath, &error);
}

}  // namespace mw
