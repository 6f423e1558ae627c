// The textures of the open level: its surface tiles (64 x 64 cells each) and its detail texture,
// and the files that a level receives from the texture set.
#pragma once

#include <array>
#include <cstdint>

namespace mw {

inline constexpr int kMaxTiles = 8;  // per side

struct SurfaceTile {
  unsigned texture = 0;  // GL name
  bool hasTexture = false;
  std::uint32_t revision = 0;  // of the file that it was read from (GameFileRevision)
};

// For the game's shadow tracer: the tiles that it is to trace, and how fine.
struct ShadowSettings {
  std::array<std::array<bool, kMaxTiles>, kMaxTiles> ShadowSelected{};  // [tile row][tile column]
  float ShadowPrecision = 0.5f;
};

struct LevelTextures {
  std::array<std::array<SurfaceTile, kMaxTiles>, kMaxTiles> tiles;  // [tile row][tile column]
  // Tiles that surface generation paints.
  std::array<std::array<bool, kMaxTiles>, kMaxTiles> SurfaceAssigned{};
  unsigned detailTexture = 0;
  bool hasDetail = false;
  std::uint32_t detailRevision = 0;
  // The user chose the texture set for this level since it was opened or created; else the level
  // keeps the detail and environment textures that it has.
  bool textureSetChosen = false;
};
extern LevelTextures levelTextures;

// Loads the tiles, the height buffer and the detail texture of the level folder, in this order. On
// opening a level SurfaceAssigned becomes exactly what the files say. Reloading reads only textures
// whose files may have changed since they were read; SurfaceAssigned stays what the user made of
// it, and the heights stay what they are. Without a context the flags are set and no texture is
// made. A texture that is damaged is noted in the load report.
enum class LevelTextureLoad { Opening, Reloading };
void LoadLevelTextures(LevelTextureLoad occasion);
// SurfaceAssigned stays as it is.
void DeleteLevelTextures();

// Writes the level's detail texture, environment textures and cube-map description from the texture
// set, if it was chosen for the level. Pictures are encoded once, not at every save; entries that
// are not loaded write no file. False when one of the files could not be written.
[[nodiscard]] bool WriteTextureSetToLevel();

// Reads "<baseName>.tga" (24-bit, from disk) and writes it as the level's tile with mip-maps. Only
// Yes changes the level; Missing is a file that cannot be read or has another size.
enum class TileTaken { Yes, Missing, NotWritten };
[[nodiscard]] TileTaken ConvertTgaTileToDds(const char* baseName, int width, int height,
                                            int tileRow, int tileColumn);

}  // namespace mw
