// The four archives that hold a mod's content: objects, standard meshes, tree meshes and textures.
// They are open, read-only, while the mod is current.
#pragma once

#include <array>
#include <string>
#include <string_view>

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

// Closes the archives held and opens those of `modConfig`. One that is missing is passed over.
void ReopenContentArchives();
void CloseContentArchives();

}  // namespace mw
