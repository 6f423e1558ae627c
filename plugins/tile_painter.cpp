#include "plugins/tile_painter.h"

#include <algorithm>
#include <array>
#include <span>

#include "assets/noise.h"
#include "core/parallel.h"

namespace mw::plugin {
namespace {

// Where grounds meet, the place that is looked up is moved by noise of two scales.
constexpr float kWideSway = 0.5f, kFineSway = 0.24f;  // cells, for noise of 1
constexpr float kMostSway = 0.9f;                     // cells
constexpr Lattice kWideWaves{380, 380}, kFineWaves{1500, 1500};
constexpr float kNoisePeriod = MAPWRIGHT_MAX_SIZE;  // cells
constexpr std::uint32_t kSwayDownSeed = 401, kSwayAcrossSeed = 403;
// What a ground's own grain adds to its share, and how far below the strongest a ground still
// shows.
constexpr float kGrain = 0.26f, kOverlap = 0.85f;
// Cells around one that its pixels can look up: one by the sway and one by the spline.
constexpr int kReach = 2, kReached = 2 * kReach + 1;

// A number for each pixel of a cell's row. The loops over them have no branches, so that the
// compiler works out several pixels at a time.
using Lanes = std::array<float, kCellPixels>;
using LaneSpan = std::span<const float, kCellPixels>;
// A number for each pixel of a tile's row.
using TileLine = std::array<float, kTileSide>;

std::size_t MaterialAt(const SurfaceMap& map, int down, int across) {
  const int row = map.size - std::clamp(down, 0, map.size - 1);
  const int column = std::clamp(across, 0, map.size - 1);
  const std::uint32_t material = map.materials[row * MAPWRIGHT_GRID_ROW + column];
  return material < MAPWRIGHT_MATERIALS ? material : 0;
}

// The materials that the pixels of a cell can look up.
struct Surroundings {
  std::array<std::size_t, MAPWRIGHT_MATERIALS> materials{};  // in rising order
  std::size_t count = 0;                                     // of them
  // Places in `materials`, by cells down and across; the cell itself is in the middle.
  std::array<std::array<std::uint8_t, kReached>, kReached> grounds{};
};

Surroundings SurroundingsOf(const SurfaceMap& map, int down, int across) {
  Surroundings around;
  std::array<std::uint8_t, MAPWRIGHT_MATERIALS> place{};
  for (int d = 0; d < kReached; ++d) {
    for (int a = 0; a < kReached; ++a) {
      const std::size_t material = MaterialAt(map, down + d - kReach, across + a - kReach);
      around.grounds[static_cast<std::size_t>(d)][static_cast<std::size_t>(a)] =
          static_cast<std::uint8_t>(material);
      place[material] = 1;
    }
  }
  for (std::size_t material = 0; material < place.size(); ++material) {
    if (!place[material]) continue;
    place[material] = static_cast<std::uint8_t>(around.count);
    around.materials[around.count++] = material;
  }
  for (auto& line : around.grounds) {
    for (std::uint8_t& ground : line) ground = place[ground];
  }
  return around;
}

// How much each cell of the surroundings counts in one direction.
using CellWeights = std::array<Lanes, kReached>;

// Quadratic B-spline over the cell that holds a pixel's place and its two neighbours.
void WeighCells(LaneSpan places, int middle, CellWeights& weights) {
  for (std::size_t k = 0; k < places.size(); ++k) {
    const float place = places[k];
    int cell = static_cast<int>(place);
    cell -= place < static_cast<float>(cell);
    const float t = place - static_cast<float>(cell);
    const float before = (1 - t) * (1 - t) / 2, at = 0.5f + t - t * t, after = t * t / 2;
    // One of the three is 1. Far outside the level places are rounded, but the cells all alike.
    const auto back = static_cast<float>(cell < middle), stay = static_cast<float>(cell == middle);
    const auto ahead = static_cast<float>(cell > middle);
    weights[0][k] = back * before;
    weights[1][k] = back * at + stay * before;
    weights[2][k] = back * after + stay * at + ahead * before;
    weights[3][k] = stay * after + ahead * at;
    weights[4][k] = ahead * after;
  }
}

// What each of the materials around counts for each pixel.
using MaterialWeights = std::array<Lanes, MAPWRIGHT_MATERIALS>;

void AddUpShares(const Surroundings& around, const CellWeights& down, const CellWeights& across,
                 MaterialWeights& shares) {
  for (std::size_t m = 0; m < around.count; ++m) shares[m].fill(0);
  for (std::size_t d = 0; d < kReached; ++d) {
    for (std::size_t a = 0; a < kReached; ++a) {
      Lanes& share = shares[around.grounds[d][a]];
      for (std::size_t k = 0; k < share.size(); ++k) share[k] += down[d][k] * across[a][k];
    }
  }
}

// Makes weights of the shares: near a border the ground whose grain stands out covers the other.
void WeighByGrain(const SurfaceMap& map, const Surroundings& around, std::size_t patternPixel,
                  MaterialWeights& shares) {
  MaterialWeights strengths;
  Lanes strongest{};
  for (std::size_t m = 0; m < around.count; ++m) {
    const float* const prominence = &map.grounds[around.materials[m]].prominence[patternPixel];
    for (std::size_t k = 0; k < strongest.size(); ++k) {
      const float strength = shares[m][k] + kGrain * prominence[k];
      strengths[m][k] = strength;
      strongest[k] = std::max(strongest[k], shares[m][k] > 0 ? strength : 0.0f);
    }
  }
  for (std::size_t m = 0; m < around.count; ++m) {
    for (std::size_t k = 0; k < strongest.size(); ++k) {
      shares[m][k] *= std::max(strengths[m][k] - strongest[k] + kOverlap, 0.0f);
    }
  }
}

void BlendColours(const SurfaceMap& map, const Surroundings& around, const MaterialWeights& weights,
                  std::size_t patternPixel, Rgb8* pixels) {
  std::array<Lanes, 3> sums{};
  Lanes total{};
  for (std::size_t m = 0; m < around.count; ++m) {
    const Lanes& weight = weights[m];
    for (std::size_t c = 0; c < sums.size(); ++c) {
      const std::uint8_t* const channel =
          &map.grounds[around.materials[m]].channels[c][patternPixel];
      for (std::size_t k = 0; k < total.size(); ++k) sums[c][k] += weight[k] * channel[k];
    }
    for (std::size_t k = 0; k < total.size(); ++k) total[k] += weight[k];
  }
  std::array<std::array<std::uint8_t, kCellPixels>, 3> rounded;
  for (std::size_t c = 0; c < sums.size(); ++c) {
    for (std::size_t k = 0; k < total.size(); ++k) {
      rounded[c][k] = static_cast<std::uint8_t>(static_cast<int>(sums[c][k] / total[k] + 0.5f));
    }
  }
  for (std::size_t k = 0; k < total.size(); ++k) {
    pixels[k] = {rounded[0][k], rounded[1][k], rounded[2][k]};
  }
}

// Where a tile's pixels lie, in cells, along one of its sides that begins at the cell `first`.
float PlaceOf(int first, int pixel) {
  return static_cast<float>(first) + (static_cast<float>(pixel) + 0.5f) / kCellPixels;
}

TileLine PlacesInPeriods(int first) {
  TileLine places;
  for (int x = 0; x < kTileSide; ++x) {
    places[static_cast<std::size_t>(x)] = PlaceOf(first, x) / kNoisePeriod;
  }
  return places;
}

// Down is along the grid's falling rows and along x of a tile; across is along the grid's columns
// and along y. A tile begins at the cell (down, across).
class TilePainter {
 public:
  TilePainter(const SurfaceMap& map, int down, int across, Rgb8* pixels)
      : map_(map),
        down_(down),
        across_(across),
        pixels_(pixels),
        wide_(PlacesInPeriods(down), kWideWaves),
        fine_(PlacesInPeriods(down), kFineWaves) {}

  // The cells that lie beside each other in the picture.
  void PaintCells(int cellY) const {
    std::array<Surroundings, MAPWRIGHT_TILE_CELLS> around;
    for (std::size_t x = 0; x < around.size(); ++x) {
      around[x] = SurroundingsOf(map_, down_ + static_cast<int>(x), across_ + cellY);
    }
    for (std::size_t x = 0; x < around.size();) {
      const std::size_t first = x;
      while (x < around.size() && around[x].count > 1) ++x;
      if (x > first) PaintMeeting(std::span(around).subspan(first, x - first), first, cellY);
      for (; x < around.size() && around[x].count == 1; ++x) {
        CopyGround(map_.grounds[around[x].materials[0]], x, cellY);
      }
    }
  }

 private:
  static std::size_t PatternPixel(int y, std::size_t x) {
    return static_cast<std::size_t>(y % kPatternSide) * kPatternSide + x % kPatternSide;
  }
  Rgb8* Pixel(int y, std::size_t x) const {
    return pixels_ + std::size_t{kTileSide} * static_cast<std::size_t>(y) + x;
  }

  void CopyGround(const GroundTexture& ground, std::size_t cellX, int cellY) const {
    const std::size_t x = cellX * kCellPixels;
    for (int y = cellY * kCellPixels; y < (cellY + 1) * kCellPixels; ++y) {
      std::copy_n(&ground.pixels[PatternPixel(y, x)], kCellPixels, Pixel(y, x));
    }
  }

  // Cells in a row in which grounds meet.
  void PaintMeeting(std::span<const Surroundings> cells, std::size_t firstCell, int cellY) const {
    TileLine down, across;
    const std::size_t first = firstCell * kCellPixels, count = cells.size() * kCellPixels;
    for (int y = cellY * kCellPixels; y < (cellY + 1) * kCellPixels; ++y) {
      const float placeAcross = PlaceOf(across_, y);
      Sway(placeAcross, kSwayDownSeed, first, std::span(down).first(count));
      Sway(placeAcross, kSwayAcrossSeed, first, std::span(across).first(count));
      for (std::size_t k = 0; k < count; ++k) {
        down[k] += PlaceOf(down_, static_cast<int>(first + k));
        across[k] += placeAcross;
      }
      for (std::size_t k = 0; k < count; k += kCellPixels) {
        const std::size_t cell = k / kCellPixels;
        CellWeights weightsDown, weightsAcross;
        WeighCells(LaneSpan(&down[k], kCellPixels), down_ + static_cast<int>(firstCell + cell),
                   weightsDown);
        WeighCells(LaneSpan(&across[k], kCellPixels), across_ + cellY, weightsAcross);
        MaterialWeights weights;
        AddUpShares(cells[cell], weightsDown, weightsAcross, weights);
        WeighByGrain(map_, cells[cell], PatternPixel(y, first + k), weights);
        BlendColours(map_, cells[cell], weights, PatternPixel(y, first + k), Pixel(y, first + k));
      }
    }
  }

  // How far the places of a row's pixels are moved.
  void Sway(float placeAcross, std::uint32_t seed, std::size_t first, std::span<float> sway) const {
    const float u = placeAcross / kNoisePeriod;
    TileLine fine;
    wide_.Along(u, seed, first, sway);
    fine_.Along(u, seed + 1, first, std::span(fine).first(sway.size()));
    for (std::size_t k = 0; k < sway.size(); ++k) {
      sway[k] = std::clamp(kWideSway * sway[k] + kFineSway * fine[k], -kMostSway, kMostSway);
    }
  }

  const SurfaceMap& map_;
  const int down_, across_;
  Rgb8* const pixels_;
  const NoiseLines wide_, fine_;
};

}  // namespace

void PaintTile(const SurfaceMap& map, int tileRow, int tileColumn, std::vector<Rgb8>& pixels) {
  pixels.resize(std::size_t{kTileSide} * kTileSide);
  const TilePainter painter(map, MAPWRIGHT_TILE_CELLS * tileRow + map.offsetRows,
                            MAPWRIGHT_TILE_CELLS * tileColumn + map.offsetColumns, pixels.data());
  SpreadOverCores(MAPWRIGHT_TILE_CELLS,
                  [&](std::size_t cellY) { painter.PaintCells(static_cast<int>(cellY)); });
}

}  // namespace mw::plugin
