// The four archives that hold a mod's content: objects, standard meshes, tree meshes and textures.
// They are open, read-only, while the mod is current.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "data/mod_config.h"

namespace mw {

using ContentArchivePaths = std::array<std::string, 4>;

// The archive of a content path: "Mods\varnhold\objects" is kept in
// "<game folder>Mods\varnhold\Archives\objects.vra". Empty for an empty path.
std::string ContentArchivePath(std::string_view gamePath, std::string_view contentPath);
// In the order in which they are opened; the file layer looks into the last one first.
ContentArchivePaths ContentArchivePathsOf(const ModConfig& config);
// The ones opened last.
const ContentArchivePaths& HeldContentArchives();

// What of the content cannot be read, a line each with the path and the reason: the game folder, or
// the archives in it that are missing or damaged. Empty when all is there.
using ContentProblems = std::vector<std::string>;
// Of a configuration that is not in use yet.
ContentProblems CheckContent(const ModConfig& config);

// Closes the archives held and opens those of `modConfig`. One that cannot be read is passed over.
void ReopenContentArchives();
// What was found then.
const ContentProblems& HeldContentProblems();
void CloseContentArchives();

}  // namespace mw
