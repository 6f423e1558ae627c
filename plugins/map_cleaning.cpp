#include "plugins/map_cleaning.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/parallel.h"
#include "plugins/mapwright_plugin.h"

namespace mw::plugin {
namespace {

constexpr int kRounding = 2;  // cells around each one that take part in its majority
constexpr int kMergePasses = 3;

using Counts = std::array<std::uint16_t, MAPWRIGHT_MATERIALS>;

std::uint16_t& CountOf(Counts& counts, Material material) {
  return counts[static_cast<std::size_t>(material)];
}

// The most frequent material; `present` wins where it is one of several.
Material Majority(Counts& counts, Material present) {
  Material best = present;
  for (std::size_t m = 0; m < counts.size(); ++m) {
    if (counts[m] > CountOf(counts, best)) best = static_cast<Material>(m);
  }
  return best;
}

Material MajorityAround(const Plane<Material>& materials, int row, int column) {
  Counts counts{};
  for (int r = row - kRounding; r <= row + kRounding; ++r) {
    for (int c = column - kRounding; c <= column + kRounding; ++c) {
      ++CountOf(counts, materials.Near(r, c));
    }
  }
  return Majority(counts, materials.At(row, column));
}

void RoundBorders(Plane<Material>& materials) {
  const Plane<Material> before = materials;
  SpreadOverCores(static_cast<std::size_t>(materials.side), [&](std::size_t line) {
    const int row = static_cast<int>(line);
    for (int column = 0; column < materials.side; ++column) {
      materials.At(row, column) = MajorityAround(before, row, column);
    }
  });
}

template <typename Visit>
void ForNeighbours(const Plane<Material>& materials, int index, Visit visit) {
  const int side = materials.side, row = index / side, column = index % side;
  if (row > 0) visit(index - side);
  if (row < side - 1) visit(index + side);
  if (column > 0) visit(index - 1);
  if (column < side - 1) visit(index + 1);
}

// Collects the connected cells of one material that hold `start`.
void CollectPatch(const Plane<Material>& materials, int start, std::vector<bool>& seen,
                  std::vector<int>& patch) {
  patch.assign(1, start);
  seen[static_cast<std::size_t>(start)] = true;
  const Material material = materials.values[static_cast<std::size_t>(start)];
  for (std::size_t next = 0; next < patch.size(); ++next) {
    ForNeighbours(materials, patch[next], [&](int neighbour) {
      const auto k = static_cast<std::size_t>(neighbour);
      if (seen[k] || materials.values[k] != material) return;
      seen[k] = true;
      patch.push_back(neighbour);
    });
  }
}

void GiveAway(Plane<Material>& materials, const std::vector<int>& patch) {
  const Material own = materials.values[static_cast<std::size_t>(patch[0])];
  Counts border{};
  for (const int index : patch) {
    ForNeighbours(materials, index, [&](int neighbour) {
      const Material material = materials.values[static_cast<std::size_t>(neighbour)];
      if (material != own) ++CountOf(border, material);
    });
  }
  const Material taker = Majority(border, own);
  for (const int index : patch) materials.values[static_cast<std::size_t>(index)] = taker;
}

// True when a patch was given away; what it was given to may be small itself.
bool MergeSmallPatches(Plane<Material>& materials) {
  std::vector<bool> seen(materials.values.size());
  std::vector<int> patch;
  bool merged = false;
  for (std::size_t k = 0; k < seen.size(); ++k) {
    if (seen[k]) continue;
    CollectPatch(materials, static_cast<int>(k), seen, patch);
    if (patch.size() >= kLeastPatch) continue;
    GiveAway(materials, patch);
    merged = true;
  }
  return merged;
}

}  // namespace

void CleanMap(Plane<Material>& materials) {
  RoundBorders(materials);
  RoundBorders(materials);
  for (int pass = 0; pass < kMergePasses && MergeSmallPatches(materials); ++pass) {
  }
}

}  // namespace mw::plugin
