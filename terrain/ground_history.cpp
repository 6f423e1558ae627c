#include "terrain/ground_history.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "core/hooks.h"
#include "data/mod_config.h"
#include "platform/prompts.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {

namespace {

constexpr int kBlocks = (kGridCapacity + kHistoryBlock - 1) / kHistoryBlock;  // per side

// The part of a block that the grid holds.
struct BlockCells {
  int i0, j0, rows, columns;
};

BlockCells CellsOf(int blockRow, int blockColumn) {
  const int i0 = blockRow * kHistoryBlock, j0 = blockColumn * kHistoryBlock;
  return {i0, j0, std::min(kHistoryBlock, kGridCapacity - i0),
          std::min(kHistoryBlock, kGridCapacity - j0)};
}

float& HeightOf(int i, int j) { return terrain.grid[i][j].h; }
std::uint32_t& MaterialOf(int i, int j) { return materialMapper->grid[i][j]; }

template <typename Value>
struct Block {
  std::int16_t row, column;
  std::array<Value, kHistoryBlock * kHistoryBlock> cells;
};

// The blocks of one grid, whose cells `At` gives.
template <typename Value, Value& (*At)(int, int)>
struct KeptGrid {
  std::vector<Block<Value>> blocks;
  std::bitset<kBlocks * kBlocks> kept;  // only while the step is open

  void Keep(int blockRow, int blockColumn) {
    const auto place = static_cast<std::size_t>(blockRow * kBlocks + blockColumn);
    if (kept[place]) return;
    kept.set(place);
    Block<Value>& block = blocks.emplace_back();
    block.row = static_cast<std::int16_t>(blockRow);
    block.column = static_cast<std::int16_t>(blockColumn);
    ForCells(block, [](Value& was, Value& is) { was = is; });
  }

  void KeepAll() {
    const int end = std::min(modConfig.MaterialSize / kHistoryBlock + 1, kBlocks);
    blocks.reserve(static_cast<std::size_t>(end) * static_cast<std::size_t>(end));
    for (int row = 0; row < end; ++row) {
      for (int column = 0; column < end; ++column) Keep(row, column);
    }
  }

  void DropUnchanged() {
    std::erase_if(blocks, [](Block<Value>& block) {
      bool same = true;
      // As bytes: 0 and -0 are two heights.
      ForCells(block, [&same](const Value& was, const Value& is) {
        same = same && std::memcmp(&was, &is, sizeof(Value)) == 0;
      });
      return same;
    });
    blocks.shrink_to_fit();
  }

  void MarkKept() {
    kept.reset();
    for (const auto& block : blocks)
      kept.set(static_cast<std::size_t>(block.row * kBlocks + block.column));
  }

  void Exchange() {
    for (auto& block : blocks) ForCells(block, [](Value& was, Value& is) { std::swap(was, is); });
  }

  template <typename Act>
  static void ForCells(Block<Value>& block, Act act) {
    const BlockCells cells = CellsOf(block.row, block.column);
    for (int i = 0; i < cells.rows; ++i) {
      for (int j = 0; j < cells.columns; ++j) {
        act(block.cells[static_cast<std::size_t>(i * kHistoryBlock + j)],
            At(cells.i0 + i, cells.j0 + j));
      }
    }
  }
};

// A pixel of the Mini-Map's picture shows whichever of its vertices was set last, which the heights
// alone do not tell.
struct KeptPixels {
  std::vector<std::pair<std::uint16_t, std::uint8_t>> pixels;  // place in the picture, grey
  std::bitset<kMiniMapSize * kMiniMapSize> kept;

  void Keep(int blockRow, int blockColumn) {
    const int perPixel = modConfig.MaterialSize / kMiniMapSize;
    if (perPixel == 0) return;
    const BlockCells cells = CellsOf(blockRow, blockColumn);
    for (int x = cells.i0 / perPixel; x <= (cells.i0 + cells.rows - 1) / perPixel; ++x) {
      for (int y = cells.j0 / perPixel; y <= (cells.j0 + cells.columns - 1) / perPixel; ++y)
        KeepPixel(kMiniMapSize - x, kMiniMapSize - y);
    }
  }

  void KeepPixel(int column, int row) {
    if (column < 0 || column >= kMiniMapSize || row < 0 || row >= kMiniMapSize) return;
    const auto place = static_cast<std::size_t>(row * kMiniMapSize + column);
    if (kept[place]) return;
    kept.set(place);
    pixels.emplace_back(place, terrain.miniMap.grey[place]);
  }

  void MarkKept() {
    kept.reset();
    for (const auto& [place, grey] : pixels) kept.set(place);
  }

  void Exchange() {
    for (auto& [place, grey] : pixels) std::swap(grey, terrain.miniMap.grey[place]);
    terrain.miniMap.changed = MiniMapPicture::Rows{};
  }
};

class GroundPart final : public HistoryPart {
 public:
  void KeepHeights(int blockRow, int blockColumn) {
    const std::size_t before = heights_.blocks.size();
    heights_.Keep(blockRow, blockColumn);
    if (heights_.blocks.size() != before) pixels_.Keep(blockRow, blockColumn);
  }
  void KeepMaterials(int blockRow, int blockColumn) { materials_.Keep(blockRow, blockColumn); }
  void KeepEveryHeight() {
    heights_.KeepAll();
    for (int place = 0; place < kMiniMapSize * kMiniMapSize; ++place)
      pixels_.KeepPixel(place % kMiniMapSize, place / kMiniMapSize);
  }
  void KeepEveryMaterial() { materials_.KeepAll(); }

  bool Close() override {
    if (!HasGrids()) return false;
    heights_.DropUnchanged();
    materials_.DropUnchanged();
    pixels_.pixels.shrink_to_fit();
    return !heights_.blocks.empty() || !materials_.blocks.empty();
  }

  void Reopen() override {
    heights_.MarkKept();
    materials_.MarkKept();
    pixels_.MarkKept();
  }

  void Exchange() override {
    if (!HasGrids()) return;
    heights_.Exchange();
    pixels_.Exchange();
    materials_.Exchange();
    MarkDrawn();
  }

  std::size_t Bytes() const override {
    return sizeof(*this) + heights_.blocks.capacity() * sizeof(Block<float>) +
           materials_.blocks.capacity() * sizeof(Block<std::uint32_t>) +
           pixels_.pixels.capacity() * sizeof(pixels_.pixels[0]);
  }

  // The middle of what changed.
  std::optional<Vector3> Place() const override {
    int i0 = kGridCapacity, i1 = 0, j0 = kGridCapacity, j1 = 0;
    const auto include = [&](const auto& block) {
      i0 = std::min(i0, block.row * kHistoryBlock);
      i1 = std::max(i1, (block.row + 1) * kHistoryBlock);
      j0 = std::min(j0, block.column * kHistoryBlock);
      j1 = std::max(j1, (block.column + 1) * kHistoryBlock);
    };
    std::ranges::for_each(heights_.blocks, include);
    std::ranges::for_each(materials_.blocks, include);
    const int i = std::min((i0 + i1) / 2, modConfig.MaterialSize);
    const int j = std::min((j0 + j1) / 2, modConfig.MaterialSize);
    return Vector3{static_cast<float>(i) * terrain.cellSize,
                   DrawnHeight(i, j) * modConfig.HeightScale,
                   static_cast<float>(j) * terrain.cellSize};
  }

 private:
  bool HasGrids() const {
    return (heights_.blocks.empty() || terrain.grid) &&
           (materials_.blocks.empty() || materialMapper);
  }

  void MarkDrawn() const {
    for (const auto& block : heights_.blocks) {
      const BlockCells cells = CellsOf(block.row, block.column);
      MarkTerrainChanged(cells.i0, cells.j0, cells.i0 + cells.rows - 1,
                         cells.j0 + cells.columns - 1);
    }
    if (!materials_.blocks.empty()) MarkMaterialsChanged();
    if (!heights_.blocks.empty()) hooks.invalidateMiniMap();
  }

  KeptGrid<float, HeightOf> heights_;
  KeptGrid<std::uint32_t, MaterialOf> materials_;
  KeptPixels pixels_;
};

}  // namespace

void KeepHeightBlock(int i, int j) {
  LastKept& last = terrain.keptHeights;
  last = {editor.history.moment, i / kHistoryBlock, j / kHistoryBlock};
  if (editor.history.IsRecording())
    editor.history.PartOf<GroundPart>().KeepHeights(last.row, last.column);
}

void KeepMaterialBlock(int i, int j) {
  LastKept& last = terrain.keptMaterials;
  last = {editor.history.moment, i / kHistoryBlock, j / kHistoryBlock};
  if (editor.history.IsRecording())
    editor.history.PartOf<GroundPart>().KeepMaterials(last.row, last.column);
}

void KeepAllHeights() {
  if (editor.history.IsRecording() && HasUsableTerrain())
    editor.history.PartOf<GroundPart>().KeepEveryHeight();
}

void KeepAllMaterials() {
  if (editor.history.IsRecording() && materialMapper && HasUsableSize())
    editor.history.PartOf<GroundPart>().KeepEveryMaterial();
}

std::size_t WholeGroundBytes() {
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize + kHistoryBlock);
  return side * side * (sizeof(float) + sizeof(std::uint32_t));
}

bool MayReplaceGround() {
  return FitsHistory(WholeGroundBytes()) ||
         ShowPrompt("This cannot be undone. Continue?", "Undo", PromptButtons::YesNo,
                    PromptIcon::Exclamation) == PromptAnswer::Yes;
}

}  // namespace mw
