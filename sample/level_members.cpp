#include "sample/level_members.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <mutex>

#include "assets/charts.h"
#include "assets/sky.h"
#include "core/little_endian.h"
#include "core/parallel.h"
#include "core/text.h"
#include "sample/entities.h"
#include "sample/settings_scripts.h"
#include "sample/tile_painter.h"

namespace mw::sample {
namespace {

constexpr int kCellsPerTile = 64;
constexpr float kTileSize = kCellsPerTile * kCellSize;  // world units
constexpr int kMapSide = 512, kThumbnailSide = 128;     // pixels
constexpr int kMapSquare = 64;                          // pixels between the map's lines
constexpr float kStepsPerUnit = 256.0f;                 // of a stored height, per height unit
constexpr std::uint8_t kLoadCounter[] = {0x88, 0x94, 0xAE, 0x01};

// One row of samples after the other, from the south; each row runs east.
std::vector<std::uint8_t> HeightMap(const Level& level) {
  const Grid& height = level.land.height;
  const auto side = static_cast<std::size_t>(height.Side());
  std::vector<std::uint8_t> bytes(side * side * 2);
  for (int row = 0; row < height.Side(); ++row) {
    for (int column = 0; column < height.Side(); ++column) {
      const float steps = height.At(column, row) / level.heightScale * kStepsPerUnit;
      const auto offset =
          (static_cast<std::size_t>(row) * side + static_cast<std::size_t>(column)) * 2;
      StoreU16(bytes, offset, static_cast<std::uint16_t>(std::clamp(steps, 0.0f, 65535.0f)));
    }
  }
  return bytes;
}

std::vector<std::uint8_t> MaterialMap(const Landscape& land) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(land.materials.size());
  for (const Material material : land.materials) {
    bytes.push_back(static_cast<std::uint8_t>(material));
  }
  return bytes;
}

// Seen from above with north at the top, water tinted by its depth.
Picture OverviewPicture(const Landscape& land, const GroundPainter& painter) {
  const float unitsPerPixel = land.height.WorldSize() / kMapSide;
  const Picture ground = painter.Paint({0, 0}, unitsPerPixel, kMapSide);
  Picture map(kMapSide, kMapSide);
  for (int y = 0; y < kMapSide; ++y) {
    for (int x = 0; x < kMapSide; ++x) {
      const int row = kMapSide - 1 - y;
      const float depth =
          land.waterLevel - land.height.Sample({static_cast<float>(x) * unitsPerPixel,
                                                static_cast<float>(row) * unitsPerPixel});
      const int d = static_cast<int>(depth + 1.0f);
      map.At(x, y) = depth >= 0
                         ? Rgb(std::max(100 - d, 30), std::max(115 - d, 45), std::max(145 - d, 75))
                         : ground.At(x, row);
    }
  }
  return map;
}

void DrawGlyph(Picture& map, const Picture& glyphs, int glyph, int left, int top) {
  constexpr int kGlyphWidth = 8;
  for (int y = 0; y < glyphs.height; ++y) {
    for (int x = 0; x < kGlyphWidth; ++x) {
      const Colour colour = glyphs.At(glyph * kGlyphWidth + x, y);
      const bool transparent = colour.r == 1 && colour.g == 0 && colour.b == 0;
      if (!transparent) map.At(left + x, top + y) = colour;
    }
  }
}

// The overview with the squares that players call out to each other.
Picture InGameMap(const Picture& overview) {
  constexpr Colour kWhite{1, 1, 1};
  constexpr int kLabelEdge = 5, kLabelOffset = 28;
  Picture map = overview;
  const Picture glyphs = PaintMapGlyphs();
  for (int line = 0; line <= kMapSide; line += kMapSquare) {
    const int at = std::min(line, kMapSide - 1);
    for (int k = 0; k < kMapSide; ++k) map.At(k, at) = map.At(at, k) = kWhite;
  }
  for (int k = 0; k < kMapSide / kMapSquare; ++k) {
    DrawGlyph(map, glyphs, k, kLabelOffset + kMapSquare * k, kLabelEdge);
    DrawGlyph(map, glyphs, 8 + k, kLabelEdge, kLabelOffset + kMapSquare * k);
  }
  return map;
}

std::vector<Member> ScriptMembers(const Level& level, const std::string& folder) {
  const std::string conquest = ModeScript("Conquest", true), tdm = ModeScript("TDM", false),
                    ctf = ModeScript("Ctf", false);
  return {TextMember(folder + "/Init.con", LevelInitScript(level)),
          TextMember(folder + "/Init/Terrain.con", TerrainScript(level)),
          TextMember(folder + "/Init/SkyAndSun.con", SkyScript(level)),
          TextMember(folder + "/Menu/Init.con", MenuScript()),
          TextMember(folder + "/Sounds/Environment.con", SoundScript()),
          TextMember(folder + "/Watershader.rs",
                     "subshader \"WaterElala\" \"PatchTerrain/Water\"\n{\n}\n"),
          TextMember(folder + "/Conquest.con", conquest),
          TextMember(folder + "/GameTypes/Conquest.con", conquest),
          TextMember(folder + "/tdm.con", tdm),
          TextMember(folder + "/GameTypes/tdm.con", tdm),
          TextMember(folder + "/Ctf.con", ctf),
          TextMember(folder + "/GameTypes/Ctf.con", ctf),
          TextMember(folder + "/StaticObjects.con", StaticObjectsScript(level)),
          TextMember(folder + "/Textures/ENVMAP_G_.rcm", CubeMapText(level.name))};
}

std::vector<Member> TileMembers(const Level& level, const GroundPainter& painter,
                                const std::string& folder, int tileSide,
                                const std::function<void(double part)>& advance) {
  std::mutex telling;
  std::size_t painted = 0;
  const int tiles = level.land.height.Side() / kCellsPerTile;
  std::vector<Member> members(static_cast<std::size_t>(tiles) * static_cast<std::size_t>(tiles));
  SpreadOverCores(members.size(), [&](std::size_t index) {
    const int row = static_cast<int>(index) / tiles, column = static_cast<int>(index) % tiles;
    // Tile rows count eastwards and tile columns northwards.
    const Point corner{static_cast<float>(row) * kTileSize, static_cast<float>(column) * kTileSize};
    const Picture picture =
        painter.Paint(corner, kTileSize / static_cast<float>(tileSide), tileSide);
    members[index] = PictureMember(
        FormatText("%s/Textures/Tx0%ix0%i.dds", folder.c_str(), row, column), picture, true);
    const std::scoped_lock lock(telling);
    advance(static_cast<double>(++painted) / static_cast<double>(members.size()));
  });
  return members;
}

std::vector<Member> PictureMembers(const Level& level, const GroundPainter& painter,
                                   const std::string& folder) {
  const Picture overview = OverviewPicture(level.land, painter);
  Picture thumbnail = overview;
  while (thumbnail.width > kThumbnailSide) thumbnail = Halved(thumbnail);
  std::vector<Member> members{
      PictureMember(folder + "/Textures/ingamemap.dds", InGameMap(overview), true),
      PictureMember(folder + "/Menu/thumbnail.dds", thumbnail, false),
      PictureMember(folder + "/Textures/Detail.dds", PaintDetail(), true)};
  int number = 1;
  for (const CubeFace face : kEnvironmentFaces) {
    members.push_back(PictureMember(FormatText("%s/Textures/env_%s_0%i.dds", folder.c_str(),
                                               std::string(level.name).c_str(), number++),
                                    PaintEnvironment(face), false));
  }
  return members;
}

void Append(std::vector<Member>& members, std::vector<Member> more) {
  std::move(more.begin(), more.end(), std::back_inserter(members));
}

}  // namespace

std::vector<Member> LevelMembers(const Level& level, int tileSide,
                                 const std::function<void(double part)>& advance) {
  const std::string folder = "varnhold/levels/" + std::string(level.name);
  const GroundPainter painter(level.land);
  std::vector<Member> members = ScriptMembers(level, folder);
  members.push_back(
      {folder + "/loadcounter.dat", {std::begin(kLoadCounter), std::end(kLoadCounter)}});
  members.push_back({folder + "/heightmap.raw", HeightMap(level)});
  members.push_back({folder + "/materialmap.raw", MaterialMap(level.land)});
  Append(members, EntityMembers(level, folder));
  Append(members, PictureMembers(level, painter, folder));
  Append(members, TileMembers(level, painter, folder, tileSide, advance));
  return members;
}

}  // namespace mw::sample
