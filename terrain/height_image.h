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
// Where the sample of grid vertex (i, j) lies in the image.
std::size_t HeightImageOffset(int size, int i, int j);

// trunc(h x 256), limited to 0 ... 65535; what is not a number becomes 0. `image` has
// HeightImageBytes.
void HeightsToImage(const VertexGrid& from, int size, std::span<std::uint8_t> image);
// Vertices whose samples the image lacks keep their height.
void ImageToHeights(std::span<const std::uint8_t> image, int size, VertexGrid& to);

}  // namespace mw
