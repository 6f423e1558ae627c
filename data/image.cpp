#include "data/image.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <new>
#include <utility>

#include "core/little_endian.h"
#include "core/text.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr std::size_t kTgaHeaderSize = 18;
constexpr std::uint8_t kTgaTrueColour = 2;

void ShowImageError(std::string_view text) {
  ShowPrompt(text, "Error", PromptButtons::Ok, PromptIcon::Stop);
}

bool CanBeOpened(std::string_view fileName) {
  return FileExists(fileName) && std::ifstream(NativePath(fileName)).is_open();
}

}  // namespace

std::optional<Image> LoadBmp(std::string_view fileName) try {
  if (!CanBeOpened(fileName)) return std::nullopt;
  const auto file = ReadWholeFile(fileName);
  if (!file || file->empty()) {
    ShowImageError(FormatText("Failed to open DIB file %s.\n", std::string(fileName).c_str()));
    return std::nullopt;
  }
  std::string error;
  std::optional<Image> image = DecodeBmp(*file, &error);
  if (!image) ShowImageError(error);
  return image;
} catch (const std::bad_alloc&) {
  ShowImageError("Out of memory.");
  return std::nullopt;
}

void SwapRedAndBlue(std::span<std::uint8_t> pixels) {
  for (std::size_t i = 0; i + 2 < pixels.size(); i += 3) std::swap(pixels[i], pixels[i + 2]);
}

bool WriteTga(std::string_view fileName, int width, int height, std::span<const std::uint8_t> rgb) {
  constexpr int kLargestSide = std::numeric_limits<std::uint16_t>::max();
  if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return false;
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
  const std::size_t rows = static_cast<std::size_t>(height);
  if (rgb.size() < rowBytes * rows) return false;

  std::vector<std::uint8_t> file(kTgaHeaderSize + rowBytes * rows);
  file[2] = kTgaTrueColour;
  StoreU16(file, 12, static_cast<std::uint16_t>(width));
  StoreU16(file, 14, static_cast<std::uint16_t>(height));
  file[16] = 24;  // bits per pixel
  for (std::size_t row = 0; row < rows; ++row) {
    const auto out = std::span(file).subspan(kTgaHeaderSize + row * rowBytes, rowBytes);
    const auto in = rgb.subspan((rows - 1 - row) * rowBytes, rowBytes);
    std::copy(in.begin(), in.end(), out.begin());
    SwapRedAndBlue(out);
  }
  return WriteWholeFile(fileName, file);
}

}  // namespace mw
