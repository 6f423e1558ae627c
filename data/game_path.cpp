#include "data/game_path.h"

#include <array>

#include "core/text.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/disk.h"

namespace mw {
namespace {

// False for an empty prefix, which no path is under.
bool RemovePrefix(std::string_view& path, std::string_view prefix) {
  if (prefix.empty() || !StartsWithNoCase(path, prefix)) return false;
  path.remove_prefix(prefix.size());
  return true;
}

void RemoveModFolder(std::string_view& path) {
  const std::array<std::string_view, 3> folders = {modConfig.modFolder, openLevel.modFolder,
                                                   kBaseModFolder};
  for (const std::string_view folder : folders) {
    if (RemovePrefix(path, folder)) return;
  }
}

std::string CollapseSeparators(std::string_view path) {
  std::string collapsed;
  for (const char c : path) {
    if (c != '\\' || collapsed.empty() || collapsed.back() != '\\') collapsed += c;
  }
  return collapsed;
}

}  // namespace

std::optional<std::string> NormalGamePath(std::string_view path) {
  if (path.size() > kMaxGamePath) return std::nullopt;
  const std::string turned = BackslashPath(path);
  std::string_view rest = turned;
  RemovePrefix(rest, modConfig.GamePath);
  RemoveModFolder(rest);
  return CollapseSeparators(rest);
}

bool IsNumberedArchive(std::string_view name) {
  constexpr std::size_t kSuffix = 4;
  if (name.size() < kSuffix) return false;
  name.remove_prefix(name.size() - kSuffix);
  return name[0] == '_' &&
         std::all_of(name.begin() + 1, name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace mw
