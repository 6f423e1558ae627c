#include "data/dds.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/little_endian.h"
#include "data/game_file.h"
#include "data/image.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

constexpr std::size_t kMagicSize = 4, kHeaderSize = 124;
// Offsets in the header, which follows the magic.
constexpr std::size_t kHeight = 8, kWidth = 12, kLinearSize = 16, kMipCount = 24, kFourCc = 80;
constexpr std::uint32_t kMipMappedFrom = 9;  // levels; object textures with fewer are only linear

constexpr std::uint32_t FourCc(const char (&text)[5]) {
  return static_cast<std::uint32_t>(text[0]) | static_cast<std::uint32_t>(text[1]) << 8 |
         static_cast<std::uint32_t>(text[2]) << 16 | static_cast<std::uint32_t>(text[3]) << 24;
}

// The GL format, or 0 for anything but the three kinds that the game uses.
std::uint32_t FormatOf(std::uint32_t fourCc) {
  switch (fourCc) {
    case FourCc("DXT1"):
      return GL_COMPRESSED_RGBA_S3TC_DXT1_EXT;
    case FourCc("DXT3"):
      return GL_COMPRESSED_RGBA_S3TC_DXT3_EXT;
    case FourCc("DXT5"):
      return GL_COMPRESSED_RGBA_S3TC_DXT5_EXT;
    default:
      return 0;
  }
}

bool IsDxt1(const CompressedImage& image) {
  return image.format == GL_COMPRESSED_RGBA_S3TC_DXT1_EXT;
}

// Bytes that the file's levels take at most: the smaller levels together need less than the top
// one.
std::uint64_t StatedDataSize(const CompressedImage& image) {
  if (image.mipCount < 2) return image.topLevelSize;
  return std::uint64_t{image.topLevelSize} * (IsDxt1(image) ? 2 : 4);
}

std::size_t LevelSize(const CompressedImage& image, int width, int height) {
  const std::size_t blocks =
      (static_cast<std::size_t>(width) + 3) / 4 * ((static_cast<std::size_t>(height) + 3) / 4);
  return blocks * (IsDxt1(image) ? 8 : 16);
}

using Rgba = std::array<std::uint8_t, 4>;

Rgba ExpandColour(std::uint32_t c) {
  return {static_cast<std::uint8_t>(c >> 8 & 0xF8), static_cast<std::uint8_t>(c >> 3 & 0xFC),
          static_cast<std::uint8_t>(c << 3 & 0xF8), 255};
}

// (a x weight of a + b x weight of b) / (sum of the weights), per channel.
Rgba Mix(const Rgba& a, int weightA, const Rgba& b, int weightB) {
  Rgba mixed{0, 0, 0, 255};
  for (std::size_t i = 0; i < 3; ++i) {
    mixed[i] = static_cast<std::uint8_t>((a[i] * weightA + b[i] * weightB) / (weightA + weightB));
  }
  return mixed;
}

std::array<Rgba, 4> BlockColours(std::uint16_t c0, std::uint16_t c1) {
  const Rgba a = ExpandColour(c0), b = ExpandColour(c1);
  if (c0 > c1) return {a, b, Mix(a, 2, b, 1), Mix(a, 1, b, 2)};
  return {a, b, Mix(a, 1, b, 1), Rgba{0, 255, 255, 0}};
}

// Decodes one block into the part of the picture that begins at `out` and has room for columns x
// rows pixels.
void DecodeBlock(std::span<const std::uint8_t> block, std::uint8_t* out, std::size_t rowBytes,
                 int columns, int rows) {
  const auto colours = BlockColours(LoadU16(block, 0), LoadU16(block, 2));
  for (int y = 0; y < rows; ++y, out += rowBytes) {
    const unsigned bits = block[4 + static_cast<std::size_t>(y)];
    for (int x = 0; x < columns; ++x) {
      const Rgba& colour = colours[bits >> (2 * x) & 3];
      std::copy(colour.begin(), colour.end(), out + 4 * x);
    }
  }
}

}  // namespace

std::optional<CompressedImage> DecodeDds(Bytes file) {
  constexpr std::array<std::uint8_t, kMagicSize> kDdsMagic = {'D', 'D', 'S', ' '};
  if (file.size() < kMagicSize + kHeaderSize) return std::nullopt;
  if (!std::equal(kDdsMagic.begin(), kDdsMagic.end(), file.begin())) return std::nullopt;
  const auto header = ByteView(file).subspan(kMagicSize, kHeaderSize);
  const std::uint32_t width = LoadU32(header, kWidth), height = LoadU32(header, kHeight);
  if (width < 1 || width > kMaxImageSide || height < 1 || height > kMaxImageSide) {
    return std::nullopt;
  }
  CompressedImage image;
  image.format = FormatOf(LoadU32(header, kFourCc));
  if (image.format == 0) return std::nullopt;
  image.width = static_cast<std::int32_t>(width);
  image.height = static_cast<std::int32_t>(height);
  image.components = IsDxt1(image) ? 3 : 4;
  image.topLevelSize = LoadU32(header, kLinearSize);
  image.mipCount = LoadU32(header, kMipCount);
  image.file = std::move(file);
  image.data = ByteView(image.file).subspan(kMagicSize + kHeaderSize);
  image.data = image.data.first(
      static_cast<std::size_t>(std::min<std::uint64_t>(StatedDataSize(image), image.data.size())));
  return image;
}

std::optional<CompressedImage> LoadDds(std::string_view gamePath) {
  const auto file = GameFileOpen(gamePath, "rb");
  return file ? DecodeDds(std::move(file->data)) : std::nullopt;
}

int UploadCompressed(const CompressedImage& image) {
  const auto uploadLevel =
      reinterpret_cast<PFNGLCOMPRESSEDTEXIMAGE2DARBPROC>(GlFunction("glCompressedTexImage2DARB"));
  if (!uploadLevel) return 0;
  const std::uint32_t levels = std::max(image.mipCount, 1u);
  int width = image.width, height = image.height, level = 0;
  std::size_t offset = 0;
  while (static_cast<std::uint32_t>(level) < levels && (width > 0 || height > 0)) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    const std::size_t size = LevelSize(image, width, height);
    if (size > image.data.size() - offset) break;
    uploadLevel(GL_TEXTURE_2D, level, image.format, width, height, 0, static_cast<GLsizei>(size),
                image.data.data() + offset);
    offset += size;
    width /= 2;
    height /= 2;
    ++level;
  }
  if (level > 0) glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, level - 1);
  if (level == 1) glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  return level;
}

bool LoadDdsTexture(std::string_view gamePath, unsigned& texture) {
  texture = 0;
  const auto image = LoadDds(gamePath);
  if (!image || !MakeViewContextCurrent()) return false;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                  image->mipCount < kMipMappedFrom ? GL_LINEAR : GL_LINEAR_MIPMAP_LINEAR);
  if (UploadCompressed(*image) > 0) return true;
  glDeleteTextures(1, &texture);
  texture = 0;
  return false;
}

std::vector<std::uint8_t> DecodeDxt1(std::span<const std::uint8_t> blocks, int width, int height) {
  if (width < 1 || width > kMaxImageSide || height < 1 || height > kMaxImageSide) return {};
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
  std::vector<std::uint8_t> rgba(rowBytes * static_cast<std::size_t>(height));
  for (int y = 0; y < height; y += 4) {
    for (int x = 0; x < width; x += 4) {
      if (blocks.size() < 8) return rgba;
      DecodeBlock(blocks, rgba.data() + static_cast<std::size_t>(y) * rowBytes + 4 * x, rowBytes,
                  std::min(4, width - x), std::min(4, height - y));
      blocks = blocks.subspan(8);
    }
  }
  return rgba;
}

std::array<std::uint8_t, 4> DecodeDxt1Pixel(std::span<const std::uint8_t> blocks, int width, int x,
                                            int y) {
  const auto block = [](int pixel) { return static_cast<std::size_t>(pixel) / 4; };
  const std::size_t offset = (block(y) * block(width + 3) + block(x)) * 8;
  if (offset + 8 > blocks.size()) return {};
  const unsigned bits = blocks[offset + 4 + static_cast<std::size_t>(y % 4)];
  return BlockColours(LoadU16(blocks, offset),
                      LoadU16(blocks, offset + 2))[bits >> (2 * (x % 4)) & 3];
}

}  // namespace mw
