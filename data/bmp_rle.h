// Run-length encoded bitmap pixels (RLE4 and RLE8), for the bitmap reader.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

namespace mw {

// Takes a pixel's palette index; rows as the file counts them.
using PutPixel = std::function<void(int row, int column, std::uint8_t index)>;

// Calls `put` for the pixels of a width x height picture that the data does not skip, at `bitCount`
// (4 or 8) bits per coded pixel. Runs are cut at the picture's edges. Data may end without its end
// mark; false when it ends within a code.
bool DecodeRle(std::span<const std::uint8_t> data, int bitCount, int width, int height,
               const PutPixel& put);

}  // namespace mw
