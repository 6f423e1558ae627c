#include "data/content_archives.h"

#include "data/archive.h"
#include "data/mods.h"
#include "platform/disk.h"

namespace mw {
namespace {

// Calls open(path, reason) for the archive of each content path. A game folder that is not there is
// one problem, not four.
template <typename Open>
ContentProblems OpenEach(const ModConfig& config, const ContentArchivePaths& paths, Open open) {
  const bool hasFolder = FolderExists(config.GamePath);
  ContentProblems problems;
  for (const std::string& path : paths) {
    std::string reason;
    if (path.empty() || open(path, reason) || !hasFolder) continue;
    problems.push_back(NativePath(path).string() + ": " + reason);
  }
  if (!hasFolder) {
    problems.push_back(config.GamePath.empty()
                           ? "No game path is set."
                           : NativePath(config.GamePath).string() + ": there is no such folder.");
  }
  return problems;
}

}  // namespace

std::string ContentArchivePath(std::string_view gamePath, std::string_view contentPath) {
  std::string path = BackslashPath(contentPath);
  if (path.ends_with('\\')) path.pop_back();
  if (path.empty()) return {};
  const std::size_t separator = path.rfind('\\');
  const bool hasFolder = separator != path.npos;
  const std::string folder = hasFolder ? path.substr(0, separator + 1) : std::string();
  const std::string name = hasFolder ? path.substr(separator + 1) : path;
  return std::string(gamePath) + folder + "Archives\\" + name + ".vra";
}

ContentArchivePaths ContentArchivePathsOf(const ModConfig& config) {
  return {ContentArchivePath(config.GamePath, config.ObjectsPath),
          ContentArchivePath(config.GamePath, config.StandardMeshPath),
          ContentArchivePath(config.GamePath, config.TreeMeshPath),
          ContentArchivePath(config.GamePath, config.TexturePath)};
}

const ContentArchivePaths& HeldContentArchives() { return modList.contentArchives; }

const ContentProblems& HeldContentProblems() { return modList.contentProblems; }

ContentProblems CheckContent(const ModConfig& config) {
  return OpenEach(config, ContentArchivePathsOf(config),
                  [](const std::string& path, std::string& reason) {
                    Archive archive;
                    if (archive.Open(path, false)) return true;
                    reason = archive.Error();
                    return false;
                  });
}

void CloseContentArchives() {
  for (std::string& path : modList.contentArchives) {
    if (!path.empty()) archives.CloseArchive(path);
    path.clear();
  }
  modList.contentProblems.clear();
}

void ReopenContentArchives() {
  CloseContentArchives();
  modList.contentArchives = ContentArchivePathsOf(modConfig);
  modList.contentProblems = OpenEach(modConfig, modList.contentArchives,
                                     [](const std::string& path, std::string& reason) {
                                       return archives.OpenArchive(path, false, &reason) != nullptr;
                                     });
}

}  // namespace mw
