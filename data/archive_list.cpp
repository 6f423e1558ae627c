#include <algorithm>

#include "core/text.h"
#include "data/archive.h"

namespace mw {

Archive* ArchiveList::OpenArchive(std::string_view path, bool writable, std::string* error) {
  auto archive = std::make_unique<Archive>();
  if (!archive->Open(path, writable)) {
    if (error) *error = archive->Error();
    return nullptr;
  }
  return archives_.emplace_back(std::move(archive)).get();
}

Archive* ArchiveList::CreateArchive(std::string_view path) {
  auto archive = std::make_unique<Archive>();
  if (!archive->Create(path)) return nullptr;
  archive->SetMode(StorageMode::Compressed);
  return archives_.emplace_back(std::move(archive)).get();
}

Archive* ArchiveList::CreateArchiveAside(std::string_view path, std::string& error) {
  auto archive = std::make_unique<Archive>();
  if (!archive->CreateAside(path)) {
    error = archive->Error();
    return nullptr;
  }
  archive->SetMode(StorageMode::Compressed);
  return archives_.emplace_back(std::move(archive)).get();
}

bool ArchiveList::CloseArchive(std::string_view path) {
  const auto found = std::ranges::find_if(
      archives_, [path](const auto& archive) { return EqualNoCase(archive->Path(), path); });
  if (found == archives_.end()) return false;
  (*found)->Close();
  archives_.erase(found);
  return true;
}

Archive* ArchiveList::FindHolding(std::string_view name, bool writableOnly) const {
  const auto found = std::find_if(archives_.rbegin(), archives_.rend(), [&](const auto& archive) {
    return (archive->Writable() || !writableOnly) && archive->Find(name);
  });
  return found == archives_.rend() ? nullptr : found->get();
}

Archive* ArchiveList::Last() const { return archives_.empty() ? nullptr : archives_.back().get(); }

// The most recent archive that was opened for writing, whether or not it can be written, or null.
Archive* ArchiveList::LastForWriting() const {
  const auto found = std::find_if(archives_.rbegin(), archives_.rend(), [](const auto& archive) {
    return archive->Writable() || !archive->WriteProtection().empty();
  });
  return found == archives_.rend() ? nullptr : found->get();
}

Archive* ArchiveList::LastWritable() const {
  Archive* const archive = LastForWriting();
  return archive && archive->Writable() ? archive : nullptr;
}

std::string ArchiveList::ReasonNotWritable() const {
  const Archive* const archive = LastForWriting();
  return archive ? "The level is write-protected: " + archive->WriteProtection() + "."
                 : "No archive is open for writing.";
}

void ArchiveList::Clear() { archives_.clear(); }

}  // namespace mw
