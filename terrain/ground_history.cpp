#include "terrain/ground_history.h"

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <cstdint>
#include <memory>
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

constexpr int kHistoryBlock = 8;                                              // cells per side
constexpr std::size_t kUsualBlocks = 64;                                      // of a stroke
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

// Which places are kept already; takes memory only while the step is open.
template <int kPlaces>
class Marks {
 public:
  // False when it was marked before.
  bool Mark(int place) {
    if (!marks_) marks_ = std::make_unique<std::bitset<kPlaces>>();
    auto mark = (*marks_)[static_cast<std::size_t>(place)];
    return !mark && (mark = true);
  }
  void Drop() { marks_.reset(); }

 private:
  std::unique_ptr<std::bitset<kPlaces>> marks_;
};

// The blocks of one grid, whose cells `At` gives.
template <typename Value, Value& (*At)(int, int)>
struct KeptGrid {
  std::vector<Block<Value>> blocks;
  Marks<kBlocks * kBlocks> kept;

  void Keep(int blockRow, int blockColumn) {
    if (!kept.Mark(blockRow * kBlocks + blockColumn)) return;
    if (blocks.empty()) blocks.reserve(kUsualBlocks);
    Block<Value>& block = blocks.emplace_back();
    block.row = static_cast<std::int16_t>(blockRow);
    block.column = static_cast<std::int16_t>(blockColumn);
    EachCell(block, [](Value& was, Value& is) { return was = is, true; });
  }

  void DropUnchanged() {
    kept.Drop();
    std::erase_if(blocks, [](Block<Value>& block) {
      // By their bits: 0 and -0 are two heights.
      return EachCell(block, [](const Value& was, const Value& is) {
        return std::bit_cast<std::uint32_t>(was) == std::bit_cast<std::uint32_t>(is);
      });
    });
    blocks.shrink_to_fit();
  }

  void MarkKept() {
    for (const auto& block : blocks) kept.Mark(block.row * kBlocks + block.column);
  }

  void Exchange() {
    for (auto& block : blocks) {
      EachCell(block, [](Value& was, Value& is) { return std::swap(was, is), true; });
    }
  }

  // Whether act(was, is) holds for each cell; it is not called after it did not.
  template <typename Act>
  static bool EachCell(Block<Value>& block, Act act) {
    const BlockCells cells = CellsOf(block.row, block.column);
    for (int i = 0; i < cells.rows; ++i) {
      for (int j = 0; j < cells.columns; ++j) {
        Value& was = block.cells[static_cast<std::size_t>(i * kHistoryBlock + j)];
        if (!act(was, At(cells.i0 + i, cells.j0 + j))) return false;
      }
    }
    return true;
  }
};

// A pixel of the Mini-Map's picture shows whichever of its vertices was set last, which the heights
// alone do not tell.
struct KeptPixels {
  std::vector<std::pair<std::uint16_t, std::uint8_t>> pixels;  // place in the picture, grey
  Marks<kMiniMapSize * kMiniMapSize> kept;

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
    const int place = row * kMiniMapSize + column;
    if (kept.Mark(place))
      pixels.emplace_back(place, terrain.miniMap.grey[static_cast<std::size_t>(place)]);
  }

  void MarkKept() {
    for (const auto& [place, grey] : pixels) kept.Mark(place);
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

  bool Close() override {
    if (!HasGrids()) return false;
    heights_.DropUnchanged();
    materials_.DropUnchanged();
    pixels_.kept.Drop();
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

bool IsWithinKept(const LastKept& last, const VertexBlock& block) {
  return IsKept(last, block.firstRow, block.firstColumn) &&
         IsKept(last, block.lastRow, block.lastColumn);
}

// Whole blocks of the history, as far as the vertices reach into them.
void KeepBlocks(LastKept& last, const VertexBlock& block, void (GroundPart::*keep)(int, int)) {
  const int top = block.firstRow / kHistoryBlock, bottom = block.lastRow / kHistoryBlock;
  const int left = block.firstColumn / kHistoryBlock, right = block.lastColumn / kHistoryBlock;
  last = {editor.history.moment,
          {top * kHistoryBlock, (bottom + 1) * kHistoryBlock - 1, left * kHistoryBlock,
           (right + 1) * kHistoryBlock - 1}};
  if (!editor.history.IsRecording()) return;
  auto& part = editor.history.PartOf<GroundPart>();
  for (int row = top; row <= bottom; ++row) {
    for (int column = left; column <= right; ++column) (part.*keep)(row, column);
  }
}

VertexBlock WholeGround() { return {0, modConfig.MaterialSize, 0, modConfig.MaterialSize}; }

}  // namespace

void KeepHeights(const VertexBlock& block) {
  if (!IsWithinKept(terrain.keptHeights, block)) {
    KeepBlocks(terrain.keptHeights, block, &GroundPart::KeepHeights);
  }
}

void KeepMaterials(const VertexBlock& block) {
  if (!IsWithinKept(terrain.keptMaterials, block)) {
    KeepBlocks(terrain.keptMaterials, block, &GroundPart::KeepMaterials);
  }
}

void KeepAllHeights() {
  if (HasUsableTerrain()) KeepHeights(WholeGround());
}

void KeepAllMaterials() {
  if (materialMapper && HasUsableSize()) KeepMaterials(WholeGround());
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
