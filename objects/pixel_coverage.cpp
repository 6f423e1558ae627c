#include "objects/pixel_coverage.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace mw {
namespace {

constexpr float kTrianglesPerPixel = 4;  // of the square around a mesh, for looking at each to pay
// Pixels by which GL may see a point elsewhere than computed here: it rounds to 1/256.
constexpr float kUncertainty = 1.0f / 64;
constexpr float kNearest = 1;          // world units before the viewer
constexpr float kFarthest = 30000.0f;  // pixels; points beyond lie far outside the picture anyway

struct Row {
  float x, y, z, one;
  float At(const Vector3& p) const { return x * p.x + y * p.y + z * p.z + one; }
};

Row RowOf(const Matrix4& m, std::size_t row) {
  return {m[row], m[4 + row], m[8 + row], m[12 + row]};
}

Row RowOfProduct(const Matrix4& a, const Matrix4& b, std::size_t row) {
  std::array<float, 4> sums{};
  for (std::size_t column = 0; column < 4; ++column)
    for (std::size_t k = 0; k < 4; ++k) sums[column] += a[k * 4 + row] * b[column * 4 + k];
  return {sums[0], sums[1], sums[2], sums[3]};
}

float Length(float x, float y, float z) { return std::sqrt(x * x + y * y + z * z); }

// The most that the matrix stretches along an axis of the mesh.
float LargestScale(const Matrix4& m) {
  return std::max({Length(m[0], m[1], m[2]), Length(m[4], m[5], m[6]), Length(m[8], m[9], m[10])});
}

std::int16_t WholePixels(float pixels) {
  const float limited = std::min(kFarthest, std::max(-kFarthest, pixels));
  const auto whole = static_cast<std::int32_t>(limited);
  return static_cast<std::int16_t>(whole - (static_cast<float>(whole) > limited));
}

template <typename Number>
Number Largest(Number a, Number b, Number c) {
  return std::max(std::max(a, b), c);
}

}  // namespace

PixelGrid CurrentPixelGrid() {
  PixelGrid grid;
  std::array<GLint, 4> viewport{};
  GLint sampleBuffers = 0;
  glGetFloatv(GL_PROJECTION_MATRIX, grid.projection.data());
  glGetIntegerv(GL_VIEWPORT, viewport.data());
  glGetIntegerv(GL_SAMPLE_BUFFERS, &sampleBuffers);
  grid.left = static_cast<float>(viewport[0]);
  grid.bottom = static_cast<float>(viewport[1]);
  grid.width = static_cast<float>(viewport[2]);
  grid.height = static_cast<float>(viewport[3]);
  grid.onlyCentres = sampleBuffers == 0;
  return grid;
}

BoundingSphere BoundingSphereOf(std::span<const MeshVertex> vertices) {
  if (vertices.empty()) return {};
  Vector3 low = vertices.front().position, high = low;
  for (const MeshVertex& vertex : vertices) {
    const auto& [x, y, z] = vertex.position;
    low = {std::min(low.x, x), std::min(low.y, y), std::min(low.z, z)};
    high = {std::max(high.x, x), std::max(high.y, y), std::max(high.z, z)};
  }
  BoundingSphere bounds{(low + high) * 0.5f};
  for (const MeshVertex& vertex : vertices) {
    const double distance = vertex.position.DistanceTo(bounds.middle);
    bounds.radius = std::max(bounds.radius, static_cast<float>(distance));
  }
  return bounds;
}

bool IsFinerThanPixels(std::size_t triangles, const BoundingSphere& bounds,
                       const Matrix4& modelView, const PixelGrid& grid) {
  if (!grid.onlyCentres) return false;
  const float radius = bounds.radius * LargestScale(modelView);
  const Row depth = RowOfProduct(grid.projection, modelView, 3);
  const Row eyeDepth = RowOf(grid.projection, 3);
  const float nearest =
      depth.At(bounds.middle) - radius * Length(eyeDepth.x, eyeDepth.y, eyeDepth.z);
  if (!(nearest > kNearest)) return false;
  const float across = radius * std::abs(grid.projection[0]) * grid.width / nearest;
  const float up = radius * std::abs(grid.projection[5]) * grid.height / nearest;
  return static_cast<float>(triangles) > kTrianglesPerPixel * across * up;
}

void PixelCoverage::Project(std::span<const MeshVertex> vertices, const Matrix4& modelView,
                            const PixelGrid& grid) {
  const Row x = RowOfProduct(grid.projection, modelView, 0);
  const Row y = RowOfProduct(grid.projection, modelView, 1);
  const Row w = RowOfProduct(grid.projection, modelView, 3);
  const float halfWidth = grid.width / 2, halfHeight = grid.height / 2;
  const float middleColumn = grid.left + halfWidth - 0.5f;
  const float middleRow = grid.bottom + halfHeight - 0.5f;
  places_.resize(vertices.size());
  for (std::size_t k = 0; k < vertices.size(); ++k) {
    const Vector3& position = vertices[k].position;
    const float scale = 1 / w.At(position);
    const float column = x.At(position) * scale * halfWidth + middleColumn;
    const float row = y.At(position) * scale * halfHeight + middleRow;
    places_[k] = {WholePixels(column + kUncertainty), WholePixels(row + kUncertainty),
                  static_cast<std::int16_t>(-WholePixels(column - kUncertainty)),
                  static_cast<std::int16_t>(-WholePixels(row - kUncertainty))};
  }
}

void PixelCoverage::AppendShown(std::span<const std::uint32_t> triangles,
                                std::vector<std::uint32_t>& shown) const {
  const std::size_t before = shown.size();
  shown.resize(before + triangles.size());
  std::uint32_t* out = shown.data() + before;
  for (std::size_t at = 0; at + 2 < triangles.size(); at += 3) {
    const Place &a = places_[triangles[at]], &b = places_[triangles[at + 1]],
                &c = places_[triangles[at + 2]];
    const int columns = Largest(a.column, b.column, c.column) +
                        Largest(a.minusColumn, b.minusColumn, c.minusColumn);
    const int rows = Largest(a.row, b.row, c.row) + Largest(a.minusRow, b.minusRow, c.minusRow);
    std::copy_n(&triangles[at], 3, out);
    out += columns > 0 && rows > 0 ? 3 : 0;
  }
  shown.resize(static_cast<std::size_t>(out - shown.data()));
}

}  // namespace mw
