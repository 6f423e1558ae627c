// The "Random Terrain Generation" dialog. Asks for the parameters of the random terrain generator.
#pragma once

#include <optional>

#include "terrain/random_terrain.h"

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null. Nothing when the user cancels.
std::optional<RandomTerrainParameters> RandomTerrainDialog(QWidget* owner);

}  // namespace mw
