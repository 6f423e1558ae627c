#include "terrain/ground_ray.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/cell_draw_list.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();

CellSplit DrawnSplit() {
  return IsEditMode(EditMode::MaterialMapper) || editor.ShowTextures
             ? CellSplit::FarLeftToNearRight
             : CellSplit::FarRightToNearLeft;
}

// The ground between rows `row` and `row` + 1 and columns `column` and `column` + 1.
class CellGround {
 public:
  CellGround(int row, int column)
      : row_(row),
        column_(column),
        farLeft_(HeightOf(row, column)),
        farRight_(HeightOf(row, column + 1)),
        nearLeft_(HeightOf(row + 1, column)),
        nearRight_(HeightOf(row + 1, column + 1)) {}

  double Lowest() const { return std::min({farLeft_, farRight_, nearLeft_, nearRight_}); }
  double Highest() const { return std::max({farLeft_, farRight_, nearLeft_, nearRight_}); }

  // At a position in the cell, world units.
  double HeightAt(double x, double z, CellSplit split) const {
    const double u = x / terrain.cellSize - row_,
                 v = z / terrain.cellSize - column_;  // from its far left corner
    if (split == CellSplit::FarLeftToNearRight) {
      if (u >= v) return farLeft_ + u * (nearLeft_ - farLeft_) + v * (nearRight_ - nearLeft_);
      return farLeft_ + v * (farRight_ - farLeft_) + u * (nearRight_ - farRight_);
    }
    if (u + v <= 1) return farLeft_ + u * (nearLeft_ - farLeft_) + v * (farRight_ - farLeft_);
    return nearRight_ + (1 - u) * (farRight_ - nearRight_) + (1 - v) * (nearLeft_ - nearRight_);
  }

 private:
  static double HeightOf(int i, int j) { return double{DrawnHeight(i, j)} * modConfig.HeightScale; }

  int row_, column_;
  double farLeft_, farRight_, nearLeft_, nearRight_;
};

// A way from one point to another; what lies on it is given by its share of the way, 0 ... 1.
struct Way {
  Vector3 from, along;

  double X(double share) const { return from.x + share * along.x; }
  double Y(double share) const { return from.y + share * along.y; }
  double Z(double share) const { return from.z + share * along.z; }
};

struct Part {
  double first = 0, last = 1;
  bool IsEmpty() const { return !(first < last); }

  // Cuts off what lies outside low ... high on one axis.
  void LimitTo(double low, double high, double from, double along) {
    if (along == 0) {
      if (from < low || from > high) last = first;
      return;
    }
    const auto [enter, leave] = std::minmax({(low - from) / along, (high - from) / along});
    first = std::max(first, enter);
    last = std::min(last, leave);
  }
};

Part PartOverViewSquare(const Way& way) {
  Part part;
  if (terrain.viewSquare.ViewRowStart >= terrain.viewSquare.ViewRowEnd ||
      terrain.viewSquare.ViewColStart >= terrain.viewSquare.ViewColEnd)
    return {0, 0};
  part.LimitTo(terrain.viewSquare.ViewRowStart * double{terrain.cellSize},
               terrain.viewSquare.ViewRowEnd * double{terrain.cellSize}, way.from.x, way.along.x);
  part.LimitTo(terrain.viewSquare.ViewColStart * double{terrain.cellSize},
               terrain.viewSquare.ViewColEnd * double{terrain.cellSize}, way.from.z, way.along.z);
  return part;
}

// Goes from cell to cell along one axis of the grid, from that where the way enters the square.
struct CellSteps {
  int firstIndex, endIndex, index, step;
  double next, distance;  // shares of the way to the next line of the grid, and from line to line

  CellSteps(double from, double along, double share, int first, int end)
      : firstIndex(first),
        endIndex(end),
        index(std::clamp(static_cast<int>(std::floor((from + share * along) / terrain.cellSize)),
                         first, end - 1)),
        step(along < 0 ? -1 : 1),
        next(along == 0
                 ? kNever
                 : ((index + (along > 0 ? 1 : 0)) * double{terrain.cellSize} - from) / along),
        distance(along == 0 ? kNever : terrain.cellSize / std::abs(along)) {}
  bool IsInSquare() const { return index >= firstIndex && index < endIndex; }
  void Advance() {
    index += step;
    next += distance;
  }
};

// Where the way crosses the diagonal of a cell.
double ShareAtDiagonal(const Way& way, int row, int column, CellSplit split) {
  if (split == CellSplit::FarLeftToNearRight) {
    const double along = way.along.x - way.along.z;
    return along == 0
               ? kNever
               : ((row - column) * double{terrain.cellSize} - (way.from.x - way.from.z)) / along;
  }
  const double along = way.along.x + way.along.z;
  return along == 0
             ? kNever
             : ((row + column + 1) * double{terrain.cellSize} - (way.from.x + way.from.z)) / along;
}

// Follows a way over the ground and notices when it comes from one side of it to the other.
class GroundCrossing {
 public:
  explicit GroundCrossing(const Way& way) : way_(way), split_(DrawnSplit()) {}

  // Where the way, which is in one cell for this part of it, crosses that cell's ground.
  std::optional<double> InCell(int row, int column, const Part& part) {
    const CellGround cell(row, column);
    if (!isBegun_) isAbove_ = Gap(cell, part.first) > 0;
    isBegun_ = true;
    const auto [low, high] = std::minmax({way_.Y(part.first), way_.Y(part.last)});
    if (isAbove_ ? low > cell.Highest() : high < cell.Lowest()) return std::nullopt;
    const double diagonal = ShareAtDiagonal(way_, row, column, split_);
    if (diagonal <= part.first || diagonal >= part.last) return OnTriangle(cell, part);
    if (const auto share = OnTriangle(cell, {part.first, diagonal})) return share;
    return OnTriangle(cell, {diagonal, part.last});
  }

 private:
  double Gap(const CellGround& cell, double share) const {
    return way_.Y(share) - cell.HeightAt(way_.X(share), way_.Z(share), split_);
  }

  std::optional<double> OnTriangle(const CellGround& cell, const Part& part) const {
    const double before = Gap(cell, part.first), after = Gap(cell, part.last);
    if ((after > 0) == isAbove_) return std::nullopt;
    if ((before > 0) != isAbove_) return part.first;  // on the line between two cells
    return part.first + (part.last - part.first) * before / (before - after);
  }

  const Way& way_;
  CellSplit split_;
  bool isBegun_ = false, isAbove_ = false;  // where the way comes from, once it has begun
};

}  // namespace

std::optional<Vector3> GroundBetween(const Vector3& from, const Vector3& to) {
  if (!HasUsableTerrain()) return std::nullopt;
  const Way way{from, to - from};
  Part part = PartOverViewSquare(way);
  if (part.IsEmpty()) return std::nullopt;
  CellSteps rows(way.from.x, way.along.x, part.first, terrain.viewSquare.ViewRowStart,
                 terrain.viewSquare.ViewRowEnd);
  CellSteps columns(way.from.z, way.along.z, part.first, terrain.viewSquare.ViewColStart,
                    terrain.viewSquare.ViewColEnd);
  GroundCrossing crossing(way);
  const double end = part.last;
  while (part.first < end && rows.IsInSquare() && columns.IsInSquare()) {
    part.last = std::min({rows.next, columns.next, end});
    if (const auto share = crossing.InCell(rows.index, columns.index, part)) {
      return Vector3{static_cast<float>(way.X(*share)), static_cast<float>(way.Y(*share)),
                     static_cast<float>(way.Z(*share))};
    }
    (rows.next <= columns.next ? rows : columns).Advance();
    part.first = part.last;
  }
  return std::nullopt;
}

float DrawnGroundHeight(float x, float z) {
  if (!HasUsableTerrain()) return 0;
  const float edge = static_cast<float>(modConfig.MaterialSize) * terrain.cellSize;
  x = std::clamp(x, 0.0f, edge);
  z = std::clamp(z, 0.0f, edge);
  const auto [i, j] = CellOf(x, z);
  const int last = modConfig.MaterialSize - 1;
  const CellGround cell(std::min(i, last), std::min(j, last));
  return static_cast<float>(cell.HeightAt(x, z, DrawnSplit()));
}

bool IsWayInSight(const Vector3& from, const Vector3& to) {
  const float x = (from.x + to.x) / 2, z = (from.z + to.z) / 2;
  const Vector3 ground{x, DrawnGroundHeight(x, z), z};
  const auto seen = GroundBetween(camera.position, ground);
  return !seen || seen->DistanceTo(ground) < terrain.cellSize;
}

}  // namespace mw
