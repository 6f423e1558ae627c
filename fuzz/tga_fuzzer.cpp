// Any bytes as a TGA file of the size that the first two of them say: its pixels, written as such a
// file, are the same bytes again.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>

#include "data/image.h"
#include "fuzz/input_reader.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  InputReader input(data, size);
  const int width = static_cast<int>(input.Byte()), height = static_cast<int>(input.Byte());
  const auto file = input.Bytes(size);
  const auto rgb = mw::DecodeTga(file, width, height);
  if (!rgb) return 0;
  const auto written = mw::EncodeTga(width, height, *rgb);
  Require(written.size() == mw::kTgaHeaderSize + rgb->size() && written.size() <= file.size());
  Require(std::equal(written.begin() + mw::kTgaHeaderSize, written.end(),
                     file.begin() + mw::kTgaHeaderSize));
  Require(mw::DecodeTga(written, width, height) == rgb);
  return 0;
}
