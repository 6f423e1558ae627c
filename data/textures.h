// The selected texture set, and the textures that live from start-up to exit.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/fixed_string.h"
#include "data/image.h"

namespace mw {

inline constexpr int kMaterialCount = 16, kMaxSetTextures = 16, kMaxEnvironmentTextures = 6;
// In material order; they name the pictures media/mat_%s.bmp.
extern const std::array<const char*, kMaterialCount> kMaterialKeys;

// They live from start-up to exit.
struct SharedTextures {
  std::array<unsigned, kMaterialCount> materials{};
  unsigned noSurface = 0, water = 0;  // GL names; 0 when the picture could not be loaded
};

struct SetTexture {
  FixedString<16> name;
  NameText file;
  unsigned texture = 0;
  bool loaded = false;
  std::int32_t width = 0, height = 0;
  std::vector<std::uint8_t> rgb;  // rows from the bottom
};

struct Palette {
  NameText file;
  std::array<std::uint8_t, 24> header{};
  std::array<std::uint8_t, 1024> data{};
  bool loaded = false;
};

struct TextureSet {
  SharedTextures shared;  // whatever set is selected
  std::array<SetTexture, kMaxSetTextures> textures;
  std::array<SetTexture, kMaxEnvironmentTextures> environment;
  SetTexture detail;
  Palette terrainPalette, objectPalette;
};
extern TextureSet textureSet;

// True when all required extensions are there. Otherwise their messages are on standard output, and
// the caller ends the process with exit code 1.
bool CheckGlExtensions();
// Checks the extensions first; false as above. Without a context nothing is loaded.
bool LoadSharedTextures();
// A GL texture of the picture with all its mip-maps, linear filters; 0 when memory runs out. A
// context must be current.
unsigned MakeMipMappedTexture(const Image& image);
// The file that lists what a texture set holds.
std::string TextureSetIndex(std::string_view folder);
// Replaces the whole set by that file. False when that file cannot be read; the set is
// then empty. Without a context the entries have their pixels and no GL texture.
bool LoadTextureSet(std::string_view folder);
// Write "%s\terrainPalette.pal" and "%s\Palette.pal" on disk. False when the set has no such
// palette or the file cannot be written.
bool WriteTerrainPalette(std::string_view folder);
bool WriteObjectPalette(std::string_view folder);

}  // namespace mw
