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

constexpr std::uint8_t kTgaTrueColour = 2;

void ShowImageError(std::string_view text) {
  ShowPrompt(text, "Error", PromptButtons::Ok, PromptIcon::Stop);
}

bool CanBeOpened(std::string_view fileName) {
  return FileExists(fileName) && std::ifstream(ReadablePath(fileName)).is_open();
}

// The rows in the opposite order, red and blue swapped.
void CopyTurned(std::span<const std::uint8_t> from, std::size_t rowBytes,
                std::span<std::uint8_t> to) {
  for (; !to.empty(); to = to.subspan(rowBytes)) {
    const auto row = from.last(rowBytes);
    std::copy(row.begin(), row.end(), to.begin());
    SwapRedAndBlue(to.first(rowBytes));
    from = from.first(from.size() - rowBytes);
  }
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

std::vector<std::uint8_t> EncodeTga(int width, int height, std::span<const std::uint8_t> rgb) {
  constexpr int kLargestSide = std::numeric_limits<std::uint16_t>::max();
  if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return {};
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
  const std::size_t rows = static_cast<std::size_t>(height);
  if (rgb.size() < rowBytes * rows) return {};

  std::vector<std::uint8_t> file(kTgaHeaderSize + rowBytes * rows);
  file[2] = kTgaTrueColour;
  StoreU16(file, 12, static_cast<std::uint16_t>(width));
  StoreU16(file, 14, static_cast<std::uint16_t>(height));
  file[16] = 24;  // bits per pixel
  CopyTurned(rgb.first(rowBytes * rows), rowBytes, std::span(file).subspan(kTgaHeaderSize));
  return file;
}

bool WriteTga(std::string_view fileName, int width, int height, std::span<const std::uint8_t> rgb) {
  const std::vector<std::uint8_t> file = EncodeTga(width, height, rgb);
  return !file.empty() && WriteWholeFile(fileName, file);
}

std::optional<std::vector<std::uint8_t>> DecodeTga(std::span<const std::uint8_t> file, int width,
                                                   int height) try {
  const auto isSide = [](int side) { return side >= 1 && side <= kMaxImageSide; };
  if (!isSide(width) || !isSide(height) || file.size() < kTgaHeaderSize) return std::nullopt;
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
  const std::size_t size = rowBytes * static_cast<std::size_t>(height);
  const auto pixels = file.subspan(kTgaHeaderSize);
  if (pixels.size() < size) return std::nullopt;
  std::vector<std::uint8_t> rgb(size);
  CopyTurned(pixels.first(size), rowBytes, rgb);
  return rgb;
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

}  // namespace mw
