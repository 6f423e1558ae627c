#include "data/content_archives.h"

#include "data/archive.h"
#include "platform/disk.h"

namespace mw {
namespace {

ContentArchivePaths held;

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

const ContentArchivePaths& HeldContentArchives() { return held; }

void CloseContentArchives() {
  for (std::string& path : held) {
    if (!path.empty()) archives.CloseArchive(path);
    path.clear();
  }
}

void ReopenContentArchives() {
  CloseContentArchives();
  held = ContentArchivePathsOf(modConfig);
  for (const std::string& path : held) {
    if (!path.empty()) archives.OpenArchive(path, false);
  }
}

}  // namespace mw
