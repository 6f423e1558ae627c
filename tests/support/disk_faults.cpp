#include "support/disk_faults.h"

#include <algorithm>
#include <random>
#include <utility>

#include "core/hooks.h"
#include "support/archive_bytes.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using Kind = DiskChange::Kind;

constexpr std::size_t kSector = 512;

bool NeedsRoom(Kind kind) { return kind == Kind::Write || kind == Kind::Create; }
int ErrorOf(FaultKind kind) {
  if (kind == FaultKind::Short) return 0;
  return kind == FaultKind::Full ? ENOSPC : EIO;
}
bool ChangesContent(Kind kind) { return kind == Kind::Write || kind == Kind::Truncate; }

}  // namespace

DiskFaults::DiskFaults(FaultKind kind, std::size_t change) {
  hooks.diskFault = [this, kind, left = change](const DiskChange& made) mutable {
    std::optional<DiskFault> fault;
    if (kind == FaultKind::Short && made.kind != Kind::Write) return fault;
    const bool reached = left == 0;
    if (!reached) --left;
    const bool onlyOnce = kind == FaultKind::Fail || kind == FaultKind::Short;
    if (!reached || (onlyOnce && hit_)) return fault;
    if (kind == FaultKind::Full && !NeedsRoom(made.kind)) return fault;
    const std::size_t written = hit_ ? 0 : made.bytes.size() / 2;
    fault = DiskFault{ErrorOf(kind), written};
    hit_ = true;
    return fault;
  };
}

DiskFaults::~DiskFaults() { hooks.diskFault = nullptr; }

PowerCut::PowerCut(fs::path folder, std::size_t change, std::uint32_t seed)
    : folder_(std::move(folder)), left_(change), seed_(seed) {
  for (const auto& file : fs::directory_iterator(folder_)) {
    lastingNames_[file.path().filename().string()] = lasting_.size();
    lasting_.push_back(ReadBytes(file.path()));
  }
  names_ = lastingNames_;
  hooks.diskFault = [this](const DiskChange& made) { return Watch(made); };
}

PowerCut::~PowerCut() { hooks.diskFault = nullptr; }

std::optional<DiskFault> PowerCut::Watch(const DiskChange& change) {
  if (left_ == 0) hit_ = true;
  if (hit_) return DiskFault{};
  --left_;
  const std::string name = change.path.filename().string();
  if (change.kind == Kind::Create) {
    names_[name] = lasting_.size();
    lasting_.emplace_back();
  }
  const auto file = names_.count(name) ? names_[name] : 0;
  if (change.kind == Kind::Sync || change.kind == Kind::SyncFolder) {
    const auto synced = [&](const Pending& made) {
      return change.kind == Kind::Sync ? ChangesContent(made.kind) && made.file == file
                                       : !ChangesContent(made.kind);
    };
    for (const Pending& made : pending_) {
      if (synced(made)) MakeLasting(made);
    }
    std::erase_if(pending_, synced);
    return std::nullopt;
  }
  Pending made{change.kind, name,          {},
               file,        change.offset, {change.bytes.begin(), change.bytes.end()}};
  if (change.kind == Kind::Rename) {
    made.renamedTo = change.renamedTo->filename().string();
    names_[made.renamedTo] = file;
  }
  if (change.kind == Kind::Rename || change.kind == Kind::Remove) names_.erase(name);
  pending_.push_back(std::move(made));
  return std::nullopt;
}

void PowerCut::MakeLasting(const Pending& change) {
  Bytes& content = lasting_[change.file];
  switch (change.kind) {
    case Kind::Write:
      content.resize(std::max<std::size_t>(content.size(), change.offset + change.bytes.size()));
      std::ranges::copy(change.bytes, content.begin() + static_cast<std::ptrdiff_t>(change.offset));
      break;
    case Kind::Truncate:
      content.resize(change.offset);
      break;
    case Kind::Create:
      lastingNames_[change.name] = change.file;
      break;
    case Kind::Rename:
      lastingNames_.erase(change.name);
      lastingNames_[change.renamedTo] = change.file;
      break;
    case Kind::Remove:
      lastingNames_.erase(change.name);
      break;
    default:
      break;
  }
}

void PowerCut::Restart() {
  hooks.diskFault = nullptr;
  std::minstd_rand random(seed_ + 1);
  const auto lasts = [&random] { return random() % 2 == 0; };
  for (Pending& change : pending_) {
    if (change.kind != Kind::Write) {
      if (lasts()) MakeLasting(change);
      continue;
    }
    for (std::size_t at = 0; at < change.bytes.size();) {
      const std::size_t end =
          std::min(change.bytes.size(), at + kSector - (change.offset + at) % kSector);
      const auto from = change.bytes.begin();
      if (lasts()) {
        MakeLasting({Kind::Write,
                     {},
                     {},
                     change.file,
                     change.offset + at,
                     {from + std::ptrdiff_t(at), from + std::ptrdiff_t(end)}});
      }
      at = end;
    }
  }
  std::vector<fs::path> files;
  for (const auto& file : fs::directory_iterator(folder_)) files.push_back(file.path());
  for (const fs::path& file : files) RemoveFile(file);  // open as they are
  for (const auto& [name, file] : lastingNames_) WriteBytes(folder_ / name, lasting_[file]);
}

}  // namespace mw
