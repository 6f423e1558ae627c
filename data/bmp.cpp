// The bitmap reader. The format is the device-independent bitmap of the Windows graphics interface.
// It is read here and not by Qt, because the houses of the logic, their tests and the fuzz target
// run without Qt. Besides, Qt's reader takes no bitmap without a file header, gives no reason why a
// file is refused, and allocates by the size that the header claims before it has seen the pixels.
#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <new>

#include "core/bytes.h"
#include "core/little_endian.h"
#include "data/bmp_rle.h"
#include "data/image.h"
#include "platform/disk.h"

namespace mw {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

constexpr std::size_t kFileHeaderSize = 14, kPixelOffsetField = 10;
constexpr std::size_t kCoreHeaderSize = 12, kInformationHeaderSize = 40;
constexpr std::size_t kMaskTableSize = 12;  // three 32-bit masks behind the information header
constexpr char kUnknownFormat[] = "Unknown DIB file format.";
constexpr char kConversionError[] = "Image file conversion error.";
constexpr char kOutOfMemory[] = "Out of memory.";

enum class Compression : std::uint32_t { None = 0, Rle8 = 1, Rle4 = 2, BitFields = 3 };

// One colour channel of a 16- or 32-bit pixel.
struct Channel {
  std::uint32_t mask = 0;

  std::uint8_t Of(std::uint32_t pixel) const {
    if (mask == 0) return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t largest = mask >> shift;
    const std::uint64_t value = (pixel & mask) >> shift;
    return static_cast<std::uint8_t>((value * 255 + largest / 2) / largest);
  }
};

struct Dib {
  std::int32_t width = 0, height = 0;
  bool rowsFromTop = false;
  unsigned bitCount = 0;
  Compression compression = Compression::None;
  std::array<Channel, 3> channels;  // red, green, blue of 16- and 32-bit pixels
  std::size_t colourTable = 0;      // offset in the file
  std::size_t colourEntrySize = 4;
  std::size_t colourCount = 0;     // as claimed
  std::array<Rgb, 256> palette{};  // colours that the file lacks are black
  ByteView pixels;                 // from the first pixel to the end of the file
};

std::size_t DefaultColourCount(unsigned bitCount) {
  return bitCount == 1 || bitCount == 4 || bitCount == 8 ? std::size_t{1} << bitCount : 0;
}

void ReadCoreHeader(ByteView header, Dib& dib) {
  dib.width = LoadU16(header, 4);
  dib.height = LoadU16(header, 6);
  dib.bitCount = LoadU16(header, 10);
  dib.colourEntrySize = 3;
  dib.colourCount = DefaultColourCount(dib.bitCount);
}

void ReadInformationHeader(ByteView header, Dib& dib) {
  dib.width = static_cast<std::int32_t>(LoadU32(header, 4));
  const std::int64_t height = static_cast<std::int32_t>(LoadU32(header, 8));
  dib.rowsFromTop = height < 0;
  dib.height = static_cast<std::int32_t>(
      std::min<std::int64_t>(std::abs(height), std::int64_t{kMaxImageSide} + 1));
  dib.bitCount = LoadU16(header, 14);
  dib.compression = static_cast<Compression>(LoadU32(header, 16));
  const std::uint32_t used = LoadU32(header, 32);
  dib.colourCount = used != 0 ? used : DefaultColourCount(dib.bitCount);
}

// Width and height are limited, and only the pairs of bit count and compression that the format
// has.
bool IsConvertible(const Dib& dib) {
  if (dib.width < 1 || dib.width > kMaxImageSide) return false;
  if (dib.height < 1 || dib.height > kMaxImageSide) return false;
  switch (dib.compression) {
    case Compression::None:
      return dib.bitCount == 1 || dib.bitCount == 4 || dib.bitCount == 8 || dib.bitCount == 16 ||
             dib.bitCount == 24 || dib.bitCount == 32;
    case Compression::Rle8:
      return dib.bitCount == 8;
    case Compression::Rle4:
      return dib.bitCount == 4;
    case Compression::BitFields:
      return dib.bitCount == 16 || dib.bitCount == 32;
  }
  return false;
}

// The masks of bit fields stand behind the information header, before the colour table.
bool ReadChannels(ByteView file, Dib& dib) {
  if (dib.compression != Compression::BitFields) {
    dib.channels = dib.bitCount == 16
                       ? std::array<Channel, 3>{{{0x7C00}, {0x03E0}, {0x001F}}}
                       : std::array<Channel, 3>{{{0xFF0000}, {0x00FF00}, {0x0000FF}}};
    return true;
  }
  if (file.size() < dib.colourTable + kMaskTableSize) return false;
  for (std::size_t i = 0; i < 3; ++i) dib.channels[i].mask = LoadU32(file, dib.colourTable + 4 * i);
  dib.colourTable += kMaskTableSize;
  return true;
}

void ReadPalette(ByteView file, std::size_t end, Dib& dib) {
  const std::size_t size = dib.colourEntrySize;
  const std::size_t held = (std::min(end, file.size()) - dib.colourTable) / size;
  const std::size_t count = std::min({dib.colourCount, held, dib.palette.size()});
  for (std::size_t i = 0; i < count; ++i) {
    const ByteView entry = file.subspan(dib.colourTable + i * size, size);
    dib.palette[i] = {entry[2], entry[1], entry[0]};
  }
}

// Finds the pixels: where the file header says, or behind the colour table.
bool FindPixels(ByteView file, bool hasFileHeader, Dib& dib) {
  const std::size_t behindTable = dib.colourTable + dib.colourCount * dib.colourEntrySize;
  const std::size_t stated = hasFileHeader ? LoadU32(file, kPixelOffsetField) : 0;
  const std::size_t offset = stated >= dib.colourTable ? stated : behindTable;
  if (offset >= file.size()) return false;
  ReadPalette(file, offset, dib);
  dib.pixels = file.subspan(offset);
  return true;
}

// Reads everything before the pixels; the text of the error, or null.
const char* ReadDib(ByteView file, Dib& dib) {
  const bool hasFileHeader = file.size() >= 2 && file[0] == 'B' && file[1] == 'M';
  const std::size_t headerAt = hasFileHeader ? kFileHeaderSize : 0;
  if (file.size() < headerAt + kCoreHeaderSize) return kUnknownFormat;
  const std::size_t headerSize = LoadU32(file, headerAt);
  if (headerSize != kCoreHeaderSize && headerSize != kInformationHeaderSize) return kUnknownFormat;
  if (file.size() < headerAt + headerSize) return kUnknownFormat;
  const ByteView header = file.subspan(headerAt, headerSize);
  if (headerSize == kCoreHeaderSize) {
    ReadCoreHeader(header, dib);
  } else {
    ReadInformationHeader(header, dib);
  }
  dib.colourTable = headerAt + headerSize;
  if (!IsConvertible(dib) || !ReadChannels(file, dib)) return kConversionError;
  return FindPixels(file, hasFileHeader, dib) ? nullptr : kConversionError;
}

// The row of the image (counted from the bottom) that holds the file's row.
std::uint8_t* RowOf(const Dib& dib, Image& image, int fileRow) {
  const int row = dib.rowsFromTop ? dib.height - 1 - fileRow : fileRow;
  return image.rgb.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(dib.width) * 3;
}

void ConvertIndexedRow(const Dib& dib, const std::uint8_t* in, std::uint8_t* out) {
  const unsigned mask = (1u << dib.bitCount) - 1;
  for (unsigned x = 0, bit = 0; x < static_cast<unsigned>(dib.width); ++x, bit += dib.bitCount) {
    const unsigned index = in[bit / 8] >> (8 - dib.bitCount - bit % 8) & mask;
    out = std::copy_n(dib.palette[index].begin(), 3, out);
  }
}

void ConvertTrueColourRow(const Dib& dib, const std::uint8_t* in, std::uint8_t* out) {
  const std::size_t size = static_cast<std::size_t>(dib.width) * 3;
  std::copy_n(in, size, out);
  SwapRedAndBlue({out, size});
}

void ConvertMaskedRow(const Dib& dib, const std::uint8_t* in, std::uint8_t* out) {
  const std::size_t size = dib.bitCount / 8;
  for (int x = 0; x < dib.width; ++x, in += size) {
    const std::uint32_t pixel = size == 2 ? LoadU16({in, size}) : LoadU32({in, size});
    for (const Channel& channel : dib.channels) *out++ = channel.Of(pixel);
  }
}

// ByteView of a row in the file without its padding, and with it: rows take whole 32-bit words.
std::size_t RowBytes(const Dib& dib) {
  return (static_cast<std::size_t>(dib.width) * dib.bitCount + 7) / 8;
}
std::size_t StrideOf(const Dib& dib) { return (RowBytes(dib) + 3) / 4 * 4; }

// The last row's padding may be missing.
bool ConvertRows(const Dib& dib, Image& image) {
  const std::size_t stride = StrideOf(dib);
  const std::size_t needed = stride * static_cast<std::size_t>(dib.height - 1) + RowBytes(dib);
  if (dib.pixels.size() < needed) return false;
  image.rgb.resize(static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.height) * 3);
  const auto convert = dib.bitCount <= 8    ? ConvertIndexedRow
                       : dib.bitCount == 24 ? ConvertTrueColourRow
                                            : ConvertMaskedRow;
  for (int row = 0; row < dib.height; ++row) {
    convert(dib, dib.pixels.data() + static_cast<std::size_t>(row) * stride,
            RowOf(dib, image, row));
  }
  return true;
}

bool ConvertRle(const Dib& dib, Image& image) {
  // Skipped pixels stay black.
  image.rgb.resize(static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.height) * 3);
  return DecodeRle(dib.pixels, static_cast<int>(dib.bitCount), dib.width, dib.height,
                   [&](int row, int column, std::uint8_t index) {
                     std::copy_n(dib.palette[index].begin(), 3,
                                 RowOf(dib, image, row) + std::ptrdiff_t{3} * column);
                   });
}

const char* Decode(ByteView file, Image& image) {
  Dib dib;
  if (const char* failure = ReadDib(file, dib)) return failure;
  const bool runs = dib.compression == Compression::Rle4 || dib.compression == Compression::Rle8;
  if (!(runs ? ConvertRle(dib, image) : ConvertRows(dib, image))) return kConversionError;
  image.width = dib.width;
  image.height = dib.height;
  return nullptr;
}

}  // namespace

std::optional<Image> DecodeBmp(std::span<const std::uint8_t> file, std::string* error) {
  Image image;
  const char* failure = nullptr;
  try {
    failure = Decode(file, image);
  } catch (const std::bad_alloc&) {
    failure = kOutOfMemory;
  }
  if (!failure) return image;
  if (error) *error = failure;
  return std::nullopt;
}

std::optional<PlainBmp> DecodeBmp24(std::span<const std::uint8_t> file) try {
  PlainBmp bmp;
  if (file.size() < kFileHeaderSize + bmp.information.size()) return std::nullopt;
  if (file[0] != 'B' || file[1] != 'M') return std::nullopt;
  const auto header = file.subspan(kFileHeaderSize, bmp.information.size());
  std::copy(header.begin(), header.end(), bmp.information.begin());
  Dib dib;
  ReadInformationHeader(header, dib);
  if (dib.bitCount != 24 || dib.compression != Compression::None || !IsConvertible(dib)) {
    return std::nullopt;
  }
  const std::size_t stride = StrideOf(dib), rows = static_cast<std::size_t>(dib.height);
  const std::size_t offset = LoadU32(file, kPixelOffsetField);
  if (offset > file.size() || file.size() - offset < stride * rows) return std::nullopt;
  const std::size_t size = std::max<std::size_t>(LoadU32(header, 20), stride * rows);
  const auto pixels = file.subspan(offset, std::min(size, file.size() - offset));
  bmp.pixels.assign(pixels.begin(), pixels.end());
  for (std::size_t row = 0; row < rows; ++row) {
    SwapRedAndBlue(std::span(bmp.pixels).subspan(row * stride, RowBytes(dib)));
  }
  return bmp;
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

std::optional<PlainBmp> LoadBmp24(std::string_view fileName) try {
  const auto file = ReadWholeFile(fileName);
  return file ? DecodeBmp24(*file) : std::nullopt;
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

}  // namespace mw
