#include "assets/palette.h"

#include <cstring>

namespace mw {
namespace {

void PutText(PaletteFile& file, int offset, const char* four) {
  std::memcpy(file.data() + offset, four, 4);
}

void PutLittleEndian(PaletteFile& file, int offset, unsigned value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    file[offset + i] = static_cast<std::uint8_t>(value >> (8 * i) & 0xFF);
  }
}

PaletteFile FromRamp(const Ramp& ramp) {
  constexpr unsigned kVersion = 0x0300;
  constexpr unsigned kDataSize = 4 + 4 * kPaletteEntries;  // version, count, entries
  PaletteFile file{};
  PutText(file, 0, "RIFF");
  PutLittleEndian(file, 4, 4 + 8 + kDataSize, 4);
  PutText(file, 8, "PAL ");
  PutText(file, 12, "data");
  PutLittleEndian(file, 16, kDataSize, 4);
  PutLittleEndian(file, 20, kVersion, 2);
  PutLittleEndian(file, 22, kPaletteEntries, 2);
  for (int i = 0; i < kPaletteEntries; ++i) {
    const Colour colour = ramp.At(static_cast<float>(i) / (kPaletteEntries - 1));
    std::uint8_t* entry = file.data() + kPaletteHeader + 4 * i;
    entry[0] = static_cast<std::uint8_t>(colour.r * 255 + 0.5f);
    entry[1] = static_cast<std::uint8_t>(colour.g * 255 + 0.5f);
    entry[2] = static_cast<std::uint8_t>(colour.b * 255 + 0.5f);
  }
  return file;
}

}  // namespace

PaletteFile TerrainPaletteFile() {
  return FromRamp(
      {{0.0f, Rgb(44, 50, 66)}, {0.5f, Rgb(142, 144, 146)}, {1.0f, Rgb(255, 250, 238)}});
}

PaletteFile ObjectPaletteFile() {
  return FromRamp(
      {{0.0f, Rgb(52, 54, 60)}, {0.5f, Rgb(148, 147, 145)}, {1.0f, Rgb(255, 252, 246)}});
}

PaletteFile WinterTerrainPaletteFile() {
  return FromRamp(
      {{0.0f, Rgb(74, 84, 106)}, {0.5f, Rgb(150, 157, 168)}, {1.0f, Rgb(246, 249, 255)}});
}

PaletteFile WinterObjectPaletteFile() {
  return FromRamp(
      {{0.0f, Rgb(70, 76, 90)}, {0.5f, Rgb(152, 156, 162)}, {1.0f, Rgb(248, 250, 255)}});
}

}  // namespace mw
