// Run-length encoded bitmap pixels (RLE4 and RLE8), for the bitmap reader.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace mw {

// Marks pixels that the data skipped.
inline constexpr std::uint16_t kSkippedPixel = 0xFFFF;

// Palette indices of width x height pixels, in the order of the file's rows, at `bitCount` (4 or 8)
// bits per coded pixel. Runs are cut at the picture's edges. Data may end without its end mark, but
// nothing is returned when it ends within a code.
std::optional<std::vector<std::uint16_t>> DecodeRle(std::span<const std::uint8_t> data,
                                                    int bitCount, int width, int height);

}  // namespace mw
