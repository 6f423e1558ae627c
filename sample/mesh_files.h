// The game's mesh and shader files. docs/formats.md describes them; what the editor passes over is
// filled with neutral values.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sample/mesh_builder.h"

namespace mw::sample {

// A standard mesh (.sm): the detailed mesh, its collision mesh, and its bounding box as a second,
// coarse collision mesh. `version` is 9 or 10.
std::vector<std::uint8_t> EncodeStandardMesh(const Mesh& mesh, std::uint32_t version);
// The materials of a standard mesh (.rs), one sub-shader each, named like the texture it shows.
std::string EncodeShader(const Mesh& mesh);

// A tree mesh (.tm, version 3): leaves, trunk, and the trunk as its collision mesh.
std::vector<std::uint8_t> EncodeTreeMesh(const Mesh& mesh);

}  // namespace mw::sample
