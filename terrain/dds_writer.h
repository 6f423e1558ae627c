// DXT1 textures as the game reads them: the one writer of .dds files.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace mw {

// The whole file: 128 bytes of header, then the opaque DXT1 blocks of each level. `rgb` holds width
// x height pixels of 3 bytes, rows from the top; width and height are powers of two. Empty when
// they are not, or when the pixels are too few.
std::vector<std::uint8_t> EncodeDds(int width, int height, std::span<const std::uint8_t> rgb,
                                    bool mipmaps);
// Writes it through the game-file layer; without pixels the file is empty. False when the pixels
// cannot be encoded, which leaves the old file, or when it cannot be written.
[[nodiscard]] bool SaveDDS(std::string_view path, int width, int height,
                           std::span<const std::uint8_t> rgb, bool mipmaps);

}  // namespace mw
