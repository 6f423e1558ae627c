#include "data/image.h"

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

constexpr std::size_t kFileHeaderSize = 14, kPixelOffsetField = 10;
constexpr std::size_t kTgaHeaderSize = 18;
constexpr std::uint8_t kTgaTrueColour = 2;

void ShowImageError(std::string_view text) {
  ShowPrompt(text, "Error", PromptButtons::Ok, PromptIcon::Stop);
}

bool CanBeOpened(std::string_view fileName) {
  return FileExists(fileName) && std::ifstream(NativePath(fileName)).is_open();
}

// Swaps red and blue of `width` pixels.
void SwapRedAndBlue(std::span<std::uint8_t> row, std::size_t width) {
  for (std::size_t x = 0; x < width; ++x) std::swap(row[3 * x], row[3 * x + 2]);
}

// Bytes of a 24-bit bitmap row with its padding.
std::size_t PaddedRow(std::size_t width) {
  return (width * 3 + 3) / 4 * 4;
}

std::optional<PlainBmp> DecodePlainBmp(std::span<const std::uint8_t> file) {
  PlainBmp bmp;
  if (file.size() < kFileHeaderSize + bmp.information.size()) return std::nullopt;
  if (file[0] != 'B' || file[1] != 'M') return std::nullopt;
  const auto header = file.subspan(kFileHeaderSize, bmp.information.size());
  std::copy(header.begin(), header.end(), bmp.information.begin());
  const auto width = static_cast<std::int32_t>(LoadU32(header, 4));
  const auto height = static_cast<std::int32_t>(LoadU32(header, 8));
  const bool isPlain = LoadU16(header, 14) == 24 && LoadU32(header, 16) == 0;
  if (!isPlain || width < 1 || width > kMaxImageSide || height < -kMaxImageSide ||
      height > kMaxImageSide || height == 0) {
    return std::nullopt;
  }
  const std::size_t rowBytes = PaddedRow(static_cast<std::size_t>(width));
  const std::size_t rows = static_cast<std::size_t>(height < 0 ? -height : height);
  const std::size_t offset = LoadU32(file, kPixelOffsetField);
  if (offset > file.size() || file.size() - offset < rowBytes * rows) return std::nullopt;
  const std::size_t size = std::max<std::size_t>(LoadU32(header, 20), rowBytes * rows);
  const auto pixels = file.subspan(offset, std::min(size, file.size() - offset));
  bmp.pixels.assign(pixels.begin(), pixels.end());
  for (std::size_t row = 0; row < rows; ++row) {
    SwapRedAndBlue(std::span(bmp.pixels).subspan(row * rowBytes, rowBytes),
                   static_cast<std::size_t>(width));
  }
  return bmp;
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

std::optional<PlainBmp> LoadBmp24(std::string_view fileName) try {
  const auto file = ReadWholeFile(fileName);
  return file ? DecodePlainBmp(*file) : std::nullopt;
} catch (const std::bad_alloc&) {
  return std::nullopt;
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
    SwapRedAndBlue(out, static_cast<std::size_t>(width));
  }
  return WriteWholeFile(fileName, file);
}

}  // namespace mw
