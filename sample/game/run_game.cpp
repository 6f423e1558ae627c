#include <cstdio>
#include <map>

#include "core/text.h"
#include "platform/disk.h"
#include "sample/game/game_commands.h"

namespace mw::sample {
namespace {

using Switches = std::map<std::string, std::string>;

Switches ReadSwitches(const std::vector<std::string>& words) {
  Switches switches;
  for (std::size_t i = 1; i + 1 < words.size(); i += 2) switches[words[i]] = words[i + 1];
  return switches;
}

// "varnhold\levels\NAME\ 1.5 0.6": a level's folder, and what follows its name.
struct LevelArgument {
  std::string name, rest;
};
LevelArgument ReadLevelArgument(const std::string& text) {
  Tokenizer parts(text);
  parts.Next("\\");
  parts.Next("\\");
  LevelArgument level;
  level.name = std::string(parts.Next("\\").value_or(""));
  level.rest = std::string(parts.Next("\\").value_or(""));
  return level;
}

}  // namespace

int RunGame(const std::vector<std::string>& words, const std::filesystem::path& game) {
  const Switches switches = ReadSwitches(words);
  const auto value = [&](const char* name) {
    const auto found = switches.find(name);
    return found == switches.end() ? std::string() : found->second;
  };
  const std::filesystem::path work = NativePath(value("+workingFolder"));
  if (switches.contains("+hostServer")) return HostGame(game, value("+game"));
  if (switches.contains("+traceTerrainShadows")) {
    return TraceTerrainShadows(game, work, ReadLevelArgument(value("+traceTerrainShadows")).name);
  }
  if (switches.contains("+mergeTerrainShadows")) {
    const LevelArgument level = ReadLevelArgument(value("+mergeTerrainShadows"));
    Tokenizer numbers(level.rest);
    const float contrast = ParseFloat(numbers.Next(" "));
    return MergeTerrainShadows(work, level.name, contrast, ParseFloat(numbers.Next(" ")));
  }
  if (switches.contains("+traceObjectShadows")) {
    return TraceObjectShadows(game, work, ReadLevelArgument(value("+traceObjectShadows")).name);
  }
  std::fprintf(stderr, "varnhold: nothing to do. It is started by the level editor.\n");
  return 1;
}

}  // namespace mw::sample
