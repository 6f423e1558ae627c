#include <cstdio>

#include "data/archive_segments.h"
#include "platform/file.h"
#include "tools/archive/commands.h"
#include "tools/archive/member_names.h"
#include "tools/archive/report.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

struct Target {
  std::string member;
  fs::path path;
};

// Whether a folder that exists, links followed, lies in `root`.
bool LiesIn(const fs::path& folder, const fs::path& root) {
  const fs::path below = fs::weakly_canonical(folder).lexically_relative(fs::canonical(root));
  return !below.empty() && *below.begin() != "..";
}

// Where each member goes; those that have no place in the folder are named, and left out.
std::vector<Target> FindTargets(const Archive& archive, const Arguments& arguments, int& result) {
  std::vector<Target> targets;
  for (std::string& name : MatchingMembers(archive, arguments.patterns)) {
    if (const auto below = PathBelow(name)) {
      targets.push_back({std::move(name), fs::path(arguments.folder) / *below});
    } else {
      std::fprintf(stderr, "left out: %s: no file in the folder can have this name\n",
                   name.c_str());
      result = kDamaged;
    }
  }
  return targets;
}

bool MayWrite(const std::vector<Target>& targets) {
  bool may = true;
  for (const Target& target : targets) {
    if (!fs::exists(fs::symlink_status(target.path))) continue;
    Refuse(target.path.string() + " exists (use --force to write over it)");
    may = false;
  }
  return may;
}

// In the place of a file or a link of that name, which is not followed.
bool WriteNewFile(const fs::path& path, std::span<const std::uint8_t> bytes) {
  std::string reason;
  if (!RemoveFile(path, &reason)) return Refuse(path.string() + ": " + reason) == kFine;
  File file;
  if (file.Open(path, FileAccess::CreateNew) && file.WriteAt(0, bytes)) return true;
  RemoveFile(path);
  return Refuse(path.string() + ": " + file.Error()) == kFine;
}

bool WriteTarget(Archive& archive, const Target& target, const fs::path& root, int& result) {
  const auto member = archive.ReadMemberWithGaps(target.member);
  const std::uint32_t size = archive.Find(target.member)->size;
  if (!member || !member->IsWhole()) {
    std::fprintf(stderr, "damaged: %s: %zu of %u bytes can be read\n", target.member.c_str(),
                 member ? ReadableBytes(*member, size) : 0, size);
    result = kDamaged;
    if (!member || member->data.empty()) return true;
  }
  std::error_code error;
  fs::create_directories(target.path.parent_path(), error);
  if (error) return Refuse(target.path.parent_path().string() + ": " + error.message()) == kFine;
  if (!LiesIn(target.path.parent_path(), root)) {
    return Refuse(target.path.string() + ": a link leads out of the folder") == kFine;
  }
  return WriteNewFile(target.path, member->data);
}

}  // namespace

int ExtractMembers(const Arguments& arguments) {
  Archive archive;
  if (!OpenOrSay(archive, arguments.archive, false)) return kUnreadable;
  int result = kFine;
  const std::vector<Target> targets = FindTargets(archive, arguments, result);
  if (targets.empty() && result == kFine && !arguments.patterns.empty()) {
    return Refuse("no member matches");
  }
  if (!arguments.force && !MayWrite(targets)) return kUnreadable;
  std::error_code error;
  fs::create_directories(arguments.folder, error);
  if (error) return Refuse(arguments.folder + ": " + error.message());
  std::uint64_t total = 0;
  for (const Target& target : targets) total += archive.Find(target.member)->size;
  Progress progress(total);
  for (const Target& target : targets) {
    if (!WriteTarget(archive, target, arguments.folder, result)) return kUnreadable;
    progress.Add(archive.Find(target.member)->size);
  }
  return result;
}

}  // namespace mw
