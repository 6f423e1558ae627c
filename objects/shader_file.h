// Shader files (.rs): the materials of a standard mesh, one block of text lines for each. Read when
// a mesh is loaded; docs/formats.md describes the file.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

struct ShaderMaterial {
  std::string name;                   // of the material in the mesh file
  std::vector<std::string> textures;  // as written; the last one is shown
  bool transparent = false, textureFade = false, twoSided = false;
};

// Calls `onMaterial` at the end of each block. False when a line is malformed; the materials of the
// blocks before it have been handed out.
bool ParseShaderFile(std::string_view text,
                     const std::function<void(const ShaderMaterial&)>& onMaterial);

}  // namespace mw
