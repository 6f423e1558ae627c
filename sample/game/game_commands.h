// What the stand-in game can be asked to do. All results are exit codes: 0 done, 1 failed with the
// reason on standard error.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mw::sample {

// Hosts a game: tells what the mod's map list makes it load, as far as it can be loaded.
int HostGame(const std::filesystem::path& gameFolder, const std::string& mod);
// Traces the tiles that "lmList.dat" names into grey pictures beside them, and the shadow bits of
// the whole level: a bit for every height sample, row by row, set where the sun shines.
int TraceTerrainShadows(const std::filesystem::path& gameFolder,
                        const std::filesystem::path& workFolder, const std::string& level);
// Darkens the level's tiles by their shadows: a tile's brightness is shadow + (1 - shadow) x light
// to the power of contrast.
int MergeTerrainShadows(const std::filesystem::path& workFolder, const std::string& level,
                        float contrast, float shadow);
// A light map for every placed object: how the sun reaches the ground around it.
int TraceObjectShadows(const std::filesystem::path& gameFolder,
                       const std::filesystem::path& workFolder, const std::string& level);

// Does what the words of a command line, the program's own first, ask for:
//   +game MOD +restart 1 +hostServer 1                     tells what it would host
//   +workingFolder FOLDER +traceTerrainShadows LEVEL       and the two other tracing switches
int RunGame(const std::vector<std::string>& words, const std::filesystem::path& gameFolder);

}  // namespace mw::sample
