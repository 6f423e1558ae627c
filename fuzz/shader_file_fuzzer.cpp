// Any bytes as a shader file.
#include <cstdint>

#include "fuzz/require.h"
#include "objects/shader_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::size_t blocks = 0, textures = 0;
  mw::ParseShaderFile({reinterpret_cast<const char*>(data), size},
                      [&](const mw::ShaderMaterial& material) {
                        ++blocks;
                        textures += material.textures.size();
                      });
  Require(blocks + textures <= size);
  return 0;
}
