// What the game's shadow tracer left in the scratch folder, of any content: the level takes a file
// whole or not at all.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "data/dds.h"
#include "data/mod_config.h"
#include "fuzz/input_reader.h"
#include "fuzz/level_sandbox.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"
#include "platform/disk.h"
#include "terrain/level_textures.h"
#include "terrain/shadow_work.h"

namespace {

constexpr mw::TileIndex kTile{1, 2};
constexpr const char* kTileFile = "Textures/Tx01x02.dds";

void MakeScratchFolders() {
  static const std::string game =
      mw::BackslashPath(std::filesystem::path(PrivatePath("")).parent_path().string()) + "\\";
  mw::modConfig.GamePath = game;
  mw::modConfig.LevelName = "Fuzz";
  static const bool made = mw::MakeScratchFolder(mw::ScratchMergedFolder()) &&
                           mw::MakeScratchFolder(mw::ScratchObjectLightMapsFolder());
  Require(made);
}

std::string Native(const std::string& folder, const std::string& file) {
  std::string path = folder + "/" + file;
  std::ranges::replace(path, '\\', '/');
  return path;
}

bool Equal(LevelSandbox& level, const std::string& file, std::span<const std::uint8_t> bytes) {
  const auto held = level.Read(file);
  return held && std::ranges::equal(*held, bytes);
}

// A tile of the size that the level takes is too large to be mutated; a small one takes the same
// way.
void TakeTile(LevelSandbox& level, int side, std::span<const std::uint8_t> tga) {
  const std::string name = Native(mw::ScratchMergedFolder(), "Tx01x02");
  WriteFile(name + ".tga", tga);
  Require(mw::TakeMergedTile(kTile) == mw::TileTaken::Missing && !level.Read(kTileFile));
  const auto taken = mw::ConvertTgaTileToDds(name.c_str(), side, side, kTile.row, kTile.column);
  Require(taken != mw::TileTaken::NotWritten);
  if (taken == mw::TileTaken::Missing) {
    Require(!level.Read(kTileFile));
    return;
  }
  const auto file = level.Read(kTileFile);
  Require(file.has_value());
  const auto image = mw::DecodeDds(*file);
  Require(image && image->width == side && image->height == side);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MakeScratchFolders();
  LevelSandbox level;
  InputReader input(data, size);
  const int side = 1 << input.Byte() % 4;
  const bool hasBits = input.Flag();
  const auto bits = input.Part(), lightMap = input.Part();

  const std::string bitsFile = Native(mw::ScratchTexturesFolder(), "LightmapShadowBits.lsb");
  std::filesystem::remove(bitsFile);
  if (hasBits) WriteFile(bitsFile, bits);
  Require(mw::TakeShadowBits());
  Require(level.Read("Textures/LightmapShadowBits.lsb").has_value() == hasBits);
  Require(!hasBits || Equal(level, "Textures/LightmapShadowBits.lsb", bits));

  WriteFile(Native(mw::ScratchObjectLightMapsFolder(), "Bunker_1.dds"), lightMap);
  Require(mw::TakeObjectLightMaps());
  Require(Equal(level, "ObjectLightMaps/Bunker_1.dds", lightMap));

  TakeTile(level, side, input.Bytes(size));
  return 0;
}
