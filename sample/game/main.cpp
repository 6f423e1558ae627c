// varnhold.exe: a stand-in for the game that the sample installation belongs to. It does, in small,
// what the editor asks the game for.
//   +game MOD +restart 1 +hostServer 1                     tells what it would host
//   +workingFolder FOLDER +traceTerrainShadows LEVEL       and the two other tracing switches
#include <cstdio>
#include <map>
#include <string>

#include "core/text.h"
#include "platform/disk.h"
#include "sample/game/game_commands.h"

namespace {

using Switches = std::map<std::string, std::string>;

Switches ReadSwitches(int argc, char** argv) {
  Switches switches;
  for (int i = 1; i + 1 < argc; i += 2) switches[argv[i]] = argv[i + 1];
  return switches;
}

// "varnhold\levels\NAME\ 1.5 0.6": a level's folder, and what follows its name.
struct LevelArgument {
  std::string name, rest;
};
LevelArgument ReadLevelArgument(const std::string& text) {
  mw::Tokenizer parts(text);
  parts.Next("\\");
  parts.Next("\\");
  LevelArgument level;
  level.name = std::string(parts.Next("\\").value_or(""));
  level.rest = std::string(parts.Next("\\").value_or(""));
  return level;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace mw::sample;
  const Switches switches = ReadSwitches(argc, argv);
  const auto value = [&](const char* name) {
    const auto found = switches.find(name);
    return found == switches.end() ? std::string() : found->second;
  };
  const std::filesystem::path game = std::filesystem::current_path();
  const std::filesystem::path work = mw::NativePath(value("+workingFolder"));
  if (switches.contains("+hostServer")) return HostGame(game, value("+game"));
  if (switches.contains("+traceTerrainShadows")) {
    return TraceTerrainShadows(game, work, ReadLevelArgument(value("+traceTerrainShadows")).name);
  }
  if (switches.contains("+mergeTerrainShadows")) {
    const LevelArgument level = ReadLevelArgument(value("+mergeTerrainShadows"));
    mw::Tokenizer numbers(level.rest);
    const float contrast = mw::ParseFloat(numbers.Next(" "));
    return MergeTerrainShadows(work, level.name, contrast, mw::ParseFloat(numbers.Next(" ")));
  }
  if (switches.contains("+traceObjectShadows")) {
    return TraceObjectShadows(game, work, ReadLevelArgument(value("+traceObjectShadows")).name);
  }
  std::fprintf(stderr, "varnhold: nothing to do. It is started by the level editor.\n");
  return 1;
}
