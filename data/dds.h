// Compressed DDS textures of the game, read through the game-file layer and uploaded as they are.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/bytes.h"

namespace mw {

// It holds the file that it was made of, so that its pixels, the most of it, need not be copied.
struct CompressedImage {
  std::int32_t width = 0, height = 0;
  std::int32_t components = 0;     // 3 for DXT1, 4 for DXT3 and DXT5
  std::uint32_t format = 0;        // GL_COMPRESSED_RGBA_S3TC_DXTn_EXT
  std::uint32_t topLevelSize = 0;  // the header's linear size
  std::uint32_t mipCount = 0;      // as in the header
  Bytes file;
  ByteView data;  // of the file: all mip levels, largest first, as far as it has them

  CompressedImage() = default;
  CompressedImage(CompressedImage&&) = default;  // the view stays good: the bytes do not move
  CompressedImage& operator=(CompressedImage&&) = default;
};

// From the bytes of a file. Nothing for anything but DXT1, DXT3 and DXT5.
std::optional<CompressedImage> DecodeDds(Bytes file);
std::optional<CompressedImage> LoadDds(std::string_view gamePath);
// Uploads the levels that are wholly in the data to the bound 2D texture and tells the texture its
// last level. Returns how many were uploaded; 0 uploads nothing.
int UploadCompressed(const CompressedImage& image);
// An object texture: repeated, linear, with mip-maps when the file has 9 levels or more. False when
// it could not be read; `texture` is then 0.
bool LoadDdsTexture(std::string_view gamePath, unsigned& texture);
// RGBA pixels, rows from the top, of the DXT1 blocks; missing blocks are left 0. Width and height
// in pixels.
std::vector<std::uint8_t> DecodeDxt1(std::span<const std::uint8_t> blocks, int width, int height);
// One RGBA pixel of the same picture, column x and row y within it, from its own block only.
std::array<std::uint8_t, 4> DecodeDxt1Pixel(std::span<const std::uint8_t> blocks, int width, int x,
                                            int y);

}  // namespace mw
