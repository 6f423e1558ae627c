// Any bytes as a bitmap: a picture that is accepted is whole. Even a few bytes that promise a large
// one of runs cannot fill much memory: kMaxImageSide limits it to 48 MiB.
#include <cstdint>

#include "data/image.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto area = [](int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  };
  if (const auto image = mw::DecodeBmp({data, size})) {
    Require(image->rgb.size() == 3 * area(image->width, image->height));
  }
  mw::DecodeBmp24({data, size});
  return 0;
}
