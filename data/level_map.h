// The maps of a level folder, files without a header: rows of samples, as many bytes as the level's
// size asks for. Used by the height field and the ground materials.
#pragma once

#include <optional>
#include <string_view>

#include "data/load_report.h"
#include "data/member_bytes.h"

namespace mw {

// The map's rows x rowBytes bytes, and where in them the file could not be read or ends early.
// Nothing when no archive holds it. A map that is missing, damaged or of another length is noted in
// the load report; so is such a map of the level when the file of a recovered one hides it.
std::optional<MemberBytes> LoadLevelMap(LevelPart part, std::string_view gamePath, std::size_t rows,
                                        std::size_t rowBytes);

}  // namespace mw
