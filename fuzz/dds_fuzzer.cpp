// Any bytes as a DDS file: its pixels can be decoded, all of them and one by one.
#include <algorithm>
#include <cstdint>

#include "data/dds.h"
#include "fuzz/require.h"

namespace {

// A picture is decoded whole when the file holds a fair part of it: a few bytes that promise a
// large picture would only show that much memory can be filled.
constexpr std::size_t kPixelsPerByte = 64;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto image = mw::DecodeDds({data, data + size});
  if (!image) return 0;
  const int x = image->width - 1, y = image->height - 1;
  const auto corner = mw::DecodeDxt1Pixel(image->data, image->width, x, y);
  const auto area =
      static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height);
  if (area > kPixelsPerByte * size) return 0;
  const auto pixels = mw::DecodeDxt1(image->data, image->width, image->height);
  Require(pixels.size() == 4 * area);
  Require(std::equal(corner.begin(), corner.end(), pixels.end() - 4));
  return 0;
}
