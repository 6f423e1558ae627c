#include "plugins/tile_painter.h"

#include <algorithm>
#include <cmath>

#include "assets/noise.h"
#include "core/parallel.h"

namespace mw::plugin {
namespace {

// Where grounds meet, the place that is looked up is moved by noise of two scales.
constexpr float kWideSway = 0.5f, kFineSway = 0.24f;  // cells, for noise of 1
constexpr float kMostSway = 0.9f;                     // cells
constexpr Lattice kWideWaves{380, 380}, kFineWaves{1500, 1500};
constexpr float kNoisePeriod = MAPWRIGHT_MAX_SIZE;  // cells
// What a ground's own grain adds to its share, and how far below the strongest a ground still
// shows.
constexpr float kGrain = 0.26f, kOverlap = 0.85f;
// Cells around one that its pixels can look up: one by the sway and one by the spline.
constexpr int kReach = 2;

// A place in cells: down along the grid's falling rows, that is along x of a tile; across along the
// grid's columns, that is along y.
struct Spot {
  float down = 0, across = 0;
};

std::size_t MaterialAt(const SurfaceMap& map, int down, int across) {
  const int row = map.size - std::clamp(down, 0, map.size - 1);
  const int column = std::clamp(across, 0, map.size - 1);
  const std::uint32_t material = map.materials[row * MAPWRIGHT_GRID_ROW + column];
  return material < MAPWRIGHT_MATERIALS ? material : 0;
}

bool IsOneGround(const SurfaceMap& map, int down, int across) {
  const std::size_t material = MaterialAt(map, down, across);
  for (int d = down - kReach; d <= down + kReach; ++d) {
    for (int a = across - kReach; a <= across + kReach; ++a) {
      if (MaterialAt(map, d, a) != material) return false;
    }
  }
  return true;
}

Spot Swayed(Spot spot) {
  const float u = spot.across / kNoisePeriod, v = spot.down / kNoisePeriod;
  const auto sway = [&](std::uint32_t seed) {
    const float offset = kWideSway * GradientNoise(u, v, kWideWaves, seed) +
                         kFineSway * GradientNoise(u, v, kFineWaves, seed + 1);
    return std::clamp(offset, -kMostSway, kMostSway);
  };
  return {spot.down + sway(401), spot.across + sway(403)};
}

// Quadratic B-spline over the cell that holds the place and its two neighbours.
struct SplineWeights {
  explicit SplineWeights(float place) : cell(static_cast<int>(std::floor(place))) {
    const float t = place - static_cast<float>(cell);
    weights = {(1 - t) * (1 - t) / 2, 0.5f + t - t * t, t * t / 2};
  }
  int cell;
  std::array<float, 3> weights;  // of the cells before, at and after the place
};

using Shares = std::array<float, MAPWRIGHT_MATERIALS>;

Shares SharesAt(const SurfaceMap& map, Spot spot) {
  const SplineWeights down(spot.down), across(spot.across);
  Shares shares{};
  for (int d = 0; d < 3; ++d) {
    for (int a = 0; a < 3; ++a) {
      shares[MaterialAt(map, down.cell + d - 1, across.cell + a - 1)] +=
          down.weights[static_cast<std::size_t>(d)] * across.weights[static_cast<std::size_t>(a)];
    }
  }
  return shares;
}

// The grounds by their shares; near a border the one whose grain stands out covers the other.
Rgb8 Blended(const SurfaceMap& map, const Shares& shares, std::size_t patternPixel) {
  Shares strength{};
  float strongest = 0;
  for (std::size_t m = 0; m < shares.size(); ++m) {
    if (shares[m] <= 0) continue;
    strength[m] = shares[m] + kGrain * map.grounds[m].prominence[patternPixel];
    strongest = std::max(strongest, strength[m]);
  }
  std::array<float, 3> sum{};
  float total = 0;
  for (std::size_t m = 0; m < shares.size(); ++m) {
    const float weight = shares[m] * std::max(strength[m] - strongest + kOverlap, 0.0f);
    if (weight <= 0) continue;
    const Rgb8& colour = map.grounds[m].pixels[patternPixel];
    for (std::size_t c = 0; c < sum.size(); ++c) sum[c] += weight * colour[c];
    total += weight;
  }
  Rgb8 rgb{};
  for (std::size_t c = 0; c < rgb.size(); ++c) {
    rgb[c] = static_cast<std::uint8_t>(sum[c] / total + 0.5f);
  }
  return rgb;
}

std::size_t PatternPixel(int y, int x) {
  return static_cast<std::size_t>(y % kPatternSide) * kPatternSide +
         static_cast<std::size_t>(x % kPatternSide);
}

// The cells of the level under a tile, from its upper left corner.
struct TilePlace {
  int down = 0, across = 0;
};

void PaintCell(const SurfaceMap& map, TilePlace tile, int cellX, int cellY, Rgb8* pixels) {
  const int down = tile.down + cellX, across = tile.across + cellY;
  const bool plain = IsOneGround(map, down, across);
  const GroundTexture& ground = map.grounds[MaterialAt(map, down, across)];
  for (int y = cellY * kCellPixels; y < (cellY + 1) * kCellPixels; ++y) {
    Rgb8* row = pixels + std::size_t{kTileSide} * static_cast<std::size_t>(y);
    const float placeAcross =
        static_cast<float>(tile.across) + (static_cast<float>(y) + 0.5f) / kCellPixels;
    for (int x = cellX * kCellPixels; x < (cellX + 1) * kCellPixels; ++x) {
      const std::size_t patternPixel = PatternPixel(y, x);
      if (plain) {
        row[x] = ground.pixels[patternPixel];
        continue;
      }
      const float placeDown =
          static_cast<float>(tile.down) + (static_cast<float>(x) + 0.5f) / kCellPixels;
      row[x] = Blended(map, SharesAt(map, Swayed({placeDown, placeAcross})), patternPixel);
    }
  }
}

}  // namespace

void PaintTile(const SurfaceMap& map, int tileRow, int tileColumn, std::vector<Rgb8>& pixels) {
  const TilePlace tile{MAPWRIGHT_TILE_CELLS * tileRow + map.offsetRows,
                       MAPWRIGHT_TILE_CELLS * tileColumn + map.offsetColumns};
  pixels.resize(std::size_t{kTileSide} * kTileSide);
  SpreadOverCores(MAPWRIGHT_TILE_CELLS, [&](std::size_t cellY) {
    for (int cellX = 0; cellX < MAPWRIGHT_TILE_CELLS; ++cellX) {
      PaintCell(map, tile, cellX, static_cast<int>(cellY), pixels.data());
    }
  });
}

}  // namespace mw::plugin
