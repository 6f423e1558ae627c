// Pictures on disk: Windows bitmaps of every kind, plain 24-bit bitmaps, and TGA.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// Red, green, blue per pixel, rows from the bottom row up, no padding.
struct Image {
  std::int32_t width = 0, height = 0;
  std::vector<std::uint8_t> rgb;
};

// Pixels per side of a picture that is read or written; larger ones are refused before anything is
// allocated for them.
inline constexpr std::int32_t kMaxImageSide = 4096;

// Decodes 1, 4, 8, 16, 24 and 32 bits per pixel, RLE4, RLE8 and bit fields, core and information
// headers, both row directions, with or without a file header. `error` gets the message to show.
std::optional<Image> DecodeBmp(std::span<const std::uint8_t> file, std::string* error = nullptr);
// A bitmap file on disk. Nothing, without a message, when it cannot be opened; damaged files show
// "Unknown DIB file format.", "Image file conversion error." or "Out of memory.".
std::optional<Image> LoadBmp(std::string_view fileName);

// A plain 24-bit bitmap: the 40-byte information header and the rows as stored (padding included),
// red and blue swapped. Nothing for bitmaps of another kind and for files that do not hold all
// rows.
struct PlainBmp {
  std::array<std::uint8_t, 40> information{};
  std::vector<std::uint8_t> pixels;
};
std::optional<PlainBmp> DecodeBmp24(std::span<const std::uint8_t> file);
std::optional<PlainBmp> LoadBmp24(std::string_view fileName);

// Turns blue-green-red pixels into red-green-blue ones and back, in place.
void SwapRedAndBlue(std::span<std::uint8_t> pixels);
// An uncompressed 24-bit TGA file, as far as the tools agree on it: a header of this many bytes,
// then blue-green-red pixels, rows from the bottom.
inline constexpr std::size_t kTgaHeaderSize = 18;
// The picture (red-green-blue, rows from the top) as such a file; empty for sides that it cannot
// have and for too few pixels. Unlike a writer that works in place, the caller's pixels stay as
// they are.
std::vector<std::uint8_t> EncodeTga(int width, int height, std::span<const std::uint8_t> rgb);
bool WriteTga(std::string_view fileName, int width, int height, std::span<const std::uint8_t> rgb);
// The pixels of a file that is taken to be such a picture of width x height, whatever its header
// says: red-green-blue, rows from the top. Nothing when it holds fewer, and for sides beyond
// kMaxImageSide.
std::optional<std::vector<std::uint8_t>> DecodeTga(std::span<const std::uint8_t> file, int width,
                                                   int height);
// An image scaled to another size with a linear filter (the mean of the pixels it covers when it
// becomes smaller); rows keep their direction. Empty for sides beyond kMaxImageSide, too few pixels
// or too little memory.
std::vector<std::uint8_t> ResampleRgb(std::span<const std::uint8_t> rgb, int width, int height,
                                      int newWidth, int newHeight);

}  // namespace mw
