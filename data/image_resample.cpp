#include <new>

#include "data/image.h"

#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image_resize.h>
#pragma GCC diagnostic pop

namespace mw {

std::vector<std::uint8_t> ResampleRgb(std::span<const std::uint8_t> rgb, int width, int height,
                                      int newWidth, int newHeight) try {
  const auto isSide = [](int side) { return side >= 1 && side <= kMaxImageSide; };
  if (!isSide(width) || !isSide(height) || !isSide(newWidth) || !isSide(newHeight)) return {};
  if (rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)
    return {};
  std::vector<std::uint8_t> scaled(static_cast<std::size_t>(newWidth) *
                                   static_cast<std::size_t>(newHeight) * 3);
  const int done =
      stbir_resize_uint8_generic(rgb.data(), width, height, 0, scaled.data(), newWidth, newHeight,
                                 0, 3, STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_CLAMP,
                                 STBIR_FILTER_TRIANGLE, STBIR_COLORSPACE_LINEAR, nullptr);
  if (!done) scaled.clear();
  return scaled;
} catch (const std::bad_alloc&) {
  return {};
}

}  // namespace mw
