// Where the archive of a level lies in the folders of a game, and whose configuration names that
// game: how a level is opened by its file alone.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

// <game>/Mods/<mod>/Archives/varnhold/levels/<level>.vra, in any case of letters.
struct LevelPlace {
  std::string gameFolder;  // as configurations hold it: with `\`, also at the end
  std::string mod;         // the name of its folder
};
// Nothing when the file lies elsewhere. The path must be absolute.
std::optional<LevelPlace> PlaceOfLevel(const std::filesystem::path& archive);

// The mod, by its place in the list, in which this file is the archive of the level that it is
// named after. Of several the one named `preferred` goes first, then the current one.
std::optional<int> ModOfLevel(const std::filesystem::path& archive,
                              std::string_view preferred = {});

// The name that a new configuration of the mod at `place` gets: that of the mod's folder, with a
// number where that is taken or would mean another folder.
std::string NewModName(const LevelPlace& place);
// Makes that configuration from the template and puts it at the end of the list, which is where it
// is then. Nothing, after a message, when it cannot be made, or when what it can hold does not lead
// to this archive.
std::optional<int> MakeModOfLevel(const LevelPlace& place, const std::filesystem::path& archive);

}  // namespace mw
