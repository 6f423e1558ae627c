#include "objects/pixel_coverage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "objects/object_transform.h"

namespace mw {
namespace {

constexpr float kCotangent = 2.4142135f;  // of half of 45 degrees
constexpr Matrix4 kUnit{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// A view of 64 x 40 pixels that does not begin in the window's corner.
PixelGrid SmallView() {
  PixelGrid grid;
  grid.projection = {kCotangent / 1.6f, 0, 0, 0, 0, kCotangent, 0, 0, 0, 0, -1, -1, 0, 0, -0.2f, 0};
  grid.left = 5, grid.bottom = 3, grid.width = 64, grid.height = 40;
  grid.onlyCentres = true;
  return grid;
}

struct Pixel {
  double x, y;
};

Pixel Seen(const Vector3& p, const Matrix4& m, const PixelGrid& grid) {
  const auto eye = [&](std::size_t row) {
    return double{m[row]} * p.x + double{m[4 + row]} * p.y + double{m[8 + row]} * p.z + m[12 + row];
  };
  const double depth = -eye(2);
  return {grid.left + grid.width * (grid.projection[0] * eye(0) / depth + 1) / 2,
          grid.bottom + grid.height * (grid.projection[5] * eye(1) / depth + 1) / 2};
}

double Turn(const Pixel& a, const Pixel& b, const Pixel& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool HoldsPixelCentre(const std::array<Pixel, 3>& t) {
  const auto [left, right] = std::minmax({t[0].x, t[1].x, t[2].x});
  const auto [low, high] = std::minmax({t[0].y, t[1].y, t[2].y});
  for (double y = std::ceil(low - 0.5) + 0.5; y <= high; ++y) {
    for (double x = std::ceil(left - 0.5) + 0.5; x <= right; ++x) {
      const double a = Turn(t[0], t[1], {x, y}), b = Turn(t[1], t[2], {x, y}),
                   c = Turn(t[2], t[0], {x, y});
      if ((a >= 0 && b >= 0 && c >= 0) || (a <= 0 && b <= 0 && c <= 0)) return true;
    }
  }
  return false;
}

TEST(PixelCoverageTest, EveryTriangleWithAPixelsCentreInItStaysAndMostOthersGo) {
  constexpr int kTriangles = 20000;
  std::mt19937 random(7);
  const auto between = [&](float low, float high) {
    return std::uniform_real_distribution<float>(low, high)(random);
  };
  std::vector<MeshVertex> vertices;
  std::vector<std::uint32_t> indices;
  for (int k = 0; k < kTriangles; ++k) {
    const Vector3 place{between(-90, 90), between(-60, 60), between(-30, 30)};
    const bool isLast = k + 1 == kTriangles;  // which is surely seen
    for (int corner = 0; corner < 3; ++corner) {
      const Vector3 offset{between(-1, 1), between(-1, 1), between(-1, 1)};
      indices.push_back(static_cast<std::uint32_t>(vertices.size()));
      vertices.push_back({isLast ? offset * 20 : place + offset});
    }
  }
  const PixelGrid grid = SmallView();
  const Matrix4 modelView = PlacedMatrix(kUnit, {3, -2, -150}, {40, 20, 10}, {-1.5f, 1, 0.5f});
  PixelCoverage coverage;
  std::vector<std::uint32_t> shown;
  coverage.Project(vertices, modelView, grid);
  coverage.AppendShown(indices, shown);

  std::size_t visible = 0, next = 0;
  for (std::size_t at = 0; at < indices.size(); at += 3) {
    std::array<Pixel, 3> triangle;
    for (std::size_t corner = 0; corner < 3; ++corner)
      triangle[corner] = Seen(vertices[at + corner].position, modelView, grid);
    const bool isShown = next < shown.size() && shown[next] == indices[at];
    next += isShown ? 3 : 0;
    if (!HoldsPixelCentre(triangle)) continue;
    ++visible;
    EXPECT_TRUE(isShown) << "triangle " << at / 3;
  }
  EXPECT_EQ(next, shown.size());
  EXPECT_GT(visible, 200u);
  EXPECT_LT(shown.size() / 3, kTriangles / 3u);
}

TEST(PixelCoverageTest, OnlyMeshesWithFarMoreTrianglesThanPixelsAreLookedInto) {
  const PixelGrid grid = SmallView();
  const BoundingSphere bounds{{0, 1, 0}, 1};
  const auto at = [](float distance, float scale) {
    return PlacedMatrix(kUnit, {0, 0, -distance}, {30, 0, 0}, {-scale, scale, scale});
  };
  EXPECT_TRUE(IsFinerThanPixels(300, bounds, at(100, 1), grid));
  EXPECT_FALSE(IsFinerThanPixels(1, bounds, at(100, 1), grid)) << "a few triangles";
  EXPECT_FALSE(IsFinerThanPixels(300, bounds, at(5, 1), grid)) << "close by";
  EXPECT_FALSE(IsFinerThanPixels(300, bounds, at(100, 20), grid)) << "large";
  EXPECT_FALSE(IsFinerThanPixels(300, bounds, at(-100, 1), grid)) << "behind the viewer";
  EXPECT_FALSE(IsFinerThanPixels(300, {{}, NAN}, at(100, 1), grid)) << "without a size";
  PixelGrid multisampled = grid;
  multisampled.onlyCentres = false;
  EXPECT_FALSE(IsFinerThanPixels(300, bounds, at(100, 1), multisampled));
}

TEST(PixelCoverageTest, TheBoundsHoldAllVertices) {
  const MeshVertex vertices[] = {{{-1, 0, 2}}, {{3, 0, 2}}, {{1, 5, 2}}, {{1, 0, 9}}};
  const BoundingSphere bounds = BoundingSphereOf(vertices);
  for (const MeshVertex& vertex : vertices)
    EXPECT_LE(vertex.position.DistanceTo(bounds.middle), bounds.radius + 1e-5);
  EXPECT_EQ(BoundingSphereOf({}).radius, 0);
}

}  // namespace
}  // namespace mw
