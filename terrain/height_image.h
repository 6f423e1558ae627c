// The heights of the grid as heightmap.raw holds them: 16 bits per sample, low byte first. Rows of
// the grid are columns of the file, the last row first. Used by the height field.
#pragma once

#include <cstdint>
#include <span>

#include "terrain/terrain.h"

namespace mw {

inline constexpr float kStoredPerUnit = 256.0f;  // steps of the file per height unit

// `size` is the number of rows and columns with data, 1 ... kMaxMaterialSize.
std::size_t HeightImageBytes(int size);
// The offset of the sample of grid vertex (i, j) in the image, in bytes.
std::size_t HeightImageOffset(int size, int i, int j);

// A height h is stored as trunc(h x 256), limited to 0 ... 65535, and as 0 when it is not a number.
// `image` has HeightImageBytes.
void HeightsToImage(const VertexGrid& from, int size, std::span<std::uint8_t> image);
// The way back. Vertices whose samples the image lacks keep their height.
void ImageToHeights(std::span<const std::uint8_t> image, int size, VertexGrid& to);

}  // namespace mw
