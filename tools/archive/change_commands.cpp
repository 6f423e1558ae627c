// add, remove and compact: each is one change, done wholly or not at all.
#include <algorithm>
#include <cstdio>

#include "core/text.h"
#include "platform/disk.h"
#include "tools/archive/commands.h"
#include "tools/archive/member_names.h"
#include "tools/archive/report.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

struct Source {
  fs::path file;
  std::string member;
};

// The files that a path on the command line means, with the names that they get.
std::vector<Source> SourcesOf(const fs::path& path, const std::string& under) {
  const auto named = [&](const fs::path& file, const fs::path& name) {
    return Source{file, NormalMemberName((fs::path(under) / name).generic_string())};
  };
  // "folder/" and "folder" are the same.
  const fs::path last = path.has_filename() ? path.filename() : path.parent_path().filename();
  if (!fs::is_directory(path)) return {named(path, last)};
  std::vector<Source> sources;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (!entry.is_regular_file()) continue;
    const fs::path below = entry.path().lexically_relative(path);
    sources.push_back(named(entry.path(), last == "." || last == ".." ? below : last / below));
  }
  std::ranges::sort(sources, {}, &Source::member);
  return sources;
}

int Failed(const Arguments& arguments, const Archive& archive) {
  return Refuse(arguments.archive + ": " + archive.Error());
}

int CloseChanged(const Arguments& arguments, Archive& archive) {
  return archive.Close() ? kFine : Failed(arguments, archive);
}

bool AddSource(Archive& archive, const Source& source, Progress& progress) {
  std::string error;
  const auto bytes = ReadWholeFile(source.file.string(), &error);
  if (!bytes) return Refuse(source.file.string() + ": " + error) == kFine;
  const bool replaces = archive.Find(source.member) != nullptr;
  if (!archive.WriteMember(source.member, *bytes)) {
    return Refuse(source.member + ": " + archive.Error()) == kFine;
  }
  progress.Clear();
  std::printf("%s %s\n", replaces ? "replaced" : "added", source.member.c_str());
  progress.Add(bytes->size());
  return true;
}

// A new archive is written aside, so that none is there before it is whole.
bool OpenOrCreate(Archive& archive, const Arguments& arguments) {
  if (!arguments.create || FileExists(arguments.archive)) {
    return OpenOrSay(archive, arguments.archive, true);
  }
  if (archive.CreateAside(arguments.archive) && archive.SetMode(StorageMode::Compressed)) {
    return true;
  }
  Failed(arguments, archive);
  return false;
}

}  // namespace

int AddMembers(const Arguments& arguments) {
  std::vector<Source> sources;
  std::uint64_t total = 0;
  for (const std::string& file : arguments.files) {
    if (!fs::exists(file)) return Refuse(file + ": no such file");
    for (Source& source : SourcesOf(file, arguments.under)) {
      total += fs::file_size(source.file);
      sources.push_back(std::move(source));
    }
  }
  Archive archive;
  if (!OpenOrCreate(archive, arguments)) return kUnreadable;
  if (!archive.BeginSave()) return Failed(arguments, archive);
  Progress progress(total);
  for (const Source& source : sources) {
    if (!AddSource(archive, source, progress)) return kUnreadable;  // what was begun is dropped
  }
  if (!archive.CommitSave() || !archive.PutInPlace()) return Failed(arguments, archive);
  return CloseChanged(arguments, archive);
}

int RemoveMembers(const Arguments& arguments) {
  Archive archive;
  if (!OpenOrSay(archive, arguments.archive, true)) return kUnreadable;
  const auto names = MatchingMembers(archive, arguments.patterns);
  if (names.empty()) return Refuse("no member matches");
  const bool removed = archive.RemoveMembersIf(
      [&](std::string_view name) { return std::ranges::binary_search(names, name, LessNoCase()); });
  if (!removed) return Failed(arguments, archive);
  for (const std::string& name : names) std::printf("removed %s\n", name.c_str());
  return CloseChanged(arguments, archive);
}

int CompactMembers(const Arguments& arguments) {
  Archive archive;
  if (!OpenOrSay(archive, arguments.archive, true)) return kUnreadable;
  const auto before = fs::file_size(NativePath(arguments.archive));
  if (!archive.Compact()) return Failed(arguments, archive);
  const auto after = fs::file_size(NativePath(arguments.archive));
  std::printf("%s before, %s now\n", SizeText(before).c_str(), SizeText(after).c_str());
  return kFine;
}

}  // namespace mw
