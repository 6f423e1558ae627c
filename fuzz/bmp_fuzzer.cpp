#include <cstdint>
#include <cstdlib>

#include "data/image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto image = mw::DecodeBmp({data, size});
  const bool isWhole = !image || image->rgb.size() == static_cast<std::size_t>(image->width) *
                                                          static_cast<std::size_t>(image->height) *
                                                          3;
  if (!isWhole) std::abort();
  return 0;
}
