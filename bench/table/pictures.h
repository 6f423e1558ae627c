// Pictures to encode, and how near an encoded picture comes to the original. For the rows about
// textures and levels.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace mw::bench {

inline constexpr int kPictureSide = 1024;  // pixels
inline constexpr std::size_t kDdsHeaderSize = 128, kDxt1BlockSize = 8;

enum class Picture { Natural, Smooth, HardEdged };

// RGB pixels, rows from the top.
std::vector<std::uint8_t> Paint(Picture picture);

// Signal to noise of DXT1 blocks in decibels, against the RGB pixels of the same picture; more is
// better.
double Quality(std::span<const std::uint8_t> rgb, std::span<const std::uint8_t> blocks);

}  // namespace mw::bench
