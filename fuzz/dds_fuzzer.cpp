#include <cstdint>

#include "data/dds.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (const auto image = mw::DecodeDds({data, size})) {
    mw::DecodeDxt1(image->data, image->width, image->height);
  }
  return 0;
}
