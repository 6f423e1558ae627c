#include "objects/mesh_drawing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "objects/pixel_coverage.h"
#include "platform/gl_context.h"
#include "terrain/gl_buffers.h"

namespace mw {
namespace {

constexpr float kUsualLineWidth = 1;

// What one draw call shows.
struct DrawRange {
  GLenum mode = GL_TRIANGLES;
  unsigned texture = 0;
  float lineWidth = kUsualLineWidth;
  std::size_t firstIndex = 0;
  GLsizei indexCount = 0;

  bool Continues(const DrawRange& before) const {
    return mode == before.mode && texture == before.texture && lineWidth == before.lineWidth;
  }
};

struct MeshPicture {
  std::array<GLuint, 2> buffers{};  // vertices, indices
  std::vector<DrawRange> ranges;

  // What the buffers hold, for finding what shows of it and what the mouse touches. Empty where
  // there are lines: they show however short they are.
  std::vector<MeshVertex> vertices;
  std::vector<std::uint32_t> indices;
  BoundingSphere bounds;
};

// A corner of a triangle that was found to show, in eye space.
struct BatchVertex {
  Vector3 position;
  float u, v;
  MeshColour colour;
};

struct MeshPictures {
  std::unordered_map<MeshListId, MeshPicture> byId;
  MeshListId lastId = 0;  // an identifier is never used twice

  // While a picture is bound, and what GL was told last.
  const MeshPicture* bound = nullptr;
  unsigned texture = 0;
  float lineWidth = kUsualLineWidth;

  // Kept so that no frame has to allocate.
  PixelCoverage coverage;
  std::vector<std::uint32_t> shown;
  std::vector<BatchVertex> batch;
};
MeshPictures pictures;  // a cache: what GL holds of the meshes in objectStore

// All surfaces one behind the other.
struct Collected {
  std::vector<MeshVertex> vertices;
  std::vector<std::uint32_t> indices;
  std::vector<DrawRange> ranges;
};

void Append(const MeshSurface& surface, Collected& out) {
  if (surface.indices.empty()) return;
  const bool lines = surface.kind == MeshSurface::Kind::Lines;
  const DrawRange range{.mode = lines ? GLenum{GL_LINES} : GLenum{GL_TRIANGLES},
                        .texture = surface.texture,
                        .lineWidth = surface.lineWidth,
                        .firstIndex = out.indices.size(),
                        .indexCount = static_cast<GLsizei>(surface.indices.size())};
  const auto base = static_cast<std::uint32_t>(out.vertices.size());
  for (const std::uint32_t index : surface.indices) out.indices.push_back(base + index);
  out.vertices.insert(out.vertices.end(), surface.vertices.begin(), surface.vertices.end());
  if (!out.ranges.empty() && range.Continues(out.ranges.back()))
    out.ranges.back().indexCount += range.indexCount;
  else
    out.ranges.push_back(range);
}

template <typename Element>
void FillBuffer(GLenum target, GLuint buffer, const std::vector<Element>& elements) {
  glBindBuffer(target, buffer);
  glBufferData(target, static_cast<GLsizeiptr>(elements.size() * sizeof(Element)), elements.data(),
               GL_STATIC_DRAW);
  glBindBuffer(target, 0);
}

void ForgetOldErrors() {
  constexpr int kMostErrors = 16;  // a lost context answers with errors for ever
  for (int i = 0; i < kMostErrors && glGetError() != GL_NO_ERROR; ++i) continue;
}

void FreeBuffers(const MeshPicture& picture) {
  glDeleteBuffers(static_cast<GLsizei>(picture.buffers.size()), picture.buffers.data());
}

// False when the card has no room; nothing is kept then.
bool Upload(const Collected& collected, MeshPicture& picture) {
  ForgetOldErrors();
  glGenBuffers(static_cast<GLsizei>(picture.buffers.size()), picture.buffers.data());
  FillBuffer(GL_ARRAY_BUFFER, picture.buffers[0], collected.vertices);
  FillBuffer(GL_ELEMENT_ARRAY_BUFFER, picture.buffers[1], collected.indices);
  if (glGetError() == GL_NO_ERROR) return true;
  FreeBuffers(picture);
  return false;
}

void UseLineWidth(float width) {
  if (pictures.lineWidth == width) return;
  glLineWidth(width);
  pictures.lineWidth = width;
}

void PointArrays(const MeshPicture& picture) {
  glBindBuffer(GL_ARRAY_BUFFER, picture.buffers[0]);
  glVertexPointer(3, GL_FLOAT, sizeof(MeshVertex), BufferOffset(offsetof(MeshVertex, position)));
  glTexCoordPointer(2, GL_FLOAT, sizeof(MeshVertex), BufferOffset(offsetof(MeshVertex, u)));
}

// The triangles that were collected, with the texture in use. Changes matrix and colour.
void DrawBatch() {
  if (pictures.batch.empty()) return;
  const BatchVertex& first = pictures.batch.front();
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glVertexPointer(3, GL_FLOAT, sizeof(BatchVertex), &first.position);
  glTexCoordPointer(2, GL_FLOAT, sizeof(BatchVertex), &first.u);
  glColorPointer(3, GL_UNSIGNED_BYTE, sizeof(BatchVertex), first.colour.data());
  glEnableClientState(GL_COLOR_ARRAY);
  glLoadIdentity();
  glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(pictures.batch.size()));
  glDisableClientState(GL_COLOR_ARRAY);
  PointArrays(*pictures.bound);
  pictures.batch.clear();
}

BatchVertex InEyeSpace(const MeshVertex& vertex, const Matrix4& modelView,
                       const MeshColour& colour) {
  const auto& [x, y, z] = vertex.position;
  const Matrix4& m = modelView;
  return {{m[0] * x + m[4] * y + m[8] * z + m[12], m[1] * x + m[5] * y + m[9] * z + m[13],
           m[2] * x + m[6] * y + m[10] * z + m[14]},
          vertex.u,
          vertex.v,
          colour};
}

void UseTexture(unsigned texture) {
  if (pictures.texture == texture) return;
  glBindTexture(GL_TEXTURE_2D, texture);
  pictures.texture = texture;
}

void DrawRangeOfBound(const DrawRange& range) {
  UseTexture(range.texture);
  if (range.mode == GL_LINES) UseLineWidth(range.lineWidth);
  glDrawElements(range.mode, range.indexCount, GL_UNSIGNED_INT,
                 BufferOffset(range.firstIndex * sizeof(std::uint32_t)));
}

// Puts the triangles that may show into the batch.
void CollectShownTriangles(const MeshPicture& picture, const Matrix4& modelView,
                           const MeshColour& colour, const PixelGrid& grid) {
  auto& shown = pictures.shown;
  pictures.coverage.Project(picture.vertices, modelView, grid);
  for (const DrawRange& range : picture.ranges) {
    shown.clear();
    pictures.coverage.AppendShown(
        {&picture.indices[range.firstIndex], static_cast<std::size_t>(range.indexCount)}, shown);
    if (shown.empty()) continue;
    if (pictures.texture != range.texture) DrawBatch();
    UseTexture(range.texture);
    for (const std::uint32_t index : shown)
      pictures.batch.push_back(InEyeSpace(picture.vertices[index], modelView, colour));
  }
}

bool HasLines(std::span<const DrawRange> ranges) {
  return std::ranges::any_of(ranges, [](const DrawRange& range) { return range.mode == GL_LINES; });
}

void KeepTriangles(Collected& collected, MeshPicture& picture) {
  picture.vertices = std::move(collected.vertices);
  picture.indices = std::move(collected.indices);
  picture.bounds = BoundingSphereOf(picture.vertices);
}

}  // namespace

MeshListId CreateMeshList(std::span<const MeshSurface> surfaces) {
  Collected collected;
  for (const MeshSurface& surface : surfaces) Append(surface, collected);
  if (collected.ranges.empty() || !MakeViewContextCurrent()) return 0;
  MeshPicture picture;
  if (!Upload(collected, picture)) return 0;
  picture.ranges = std::move(collected.ranges);
  if (!HasLines(picture.ranges)) KeepTriangles(collected, picture);
  pictures.byId.emplace(++pictures.lastId, std::move(picture));
  return pictures.lastId;
}

void DeleteMeshList(MeshListId list) {
  const auto found = pictures.byId.find(list);
  if (found == pictures.byId.end()) return;
  if (MakeViewContextCurrent()) FreeBuffers(found->second);
  pictures.byId.erase(found);
}

void DeleteAllMeshLists() {
  if (MakeViewContextCurrent()) {
    for (const auto& [list, picture] : pictures.byId) FreeBuffers(picture);
  }
  pictures.byId.clear();
}

MeshTriangles TrianglesOf(MeshListId list) {
  const auto found = pictures.byId.find(list);
  if (found == pictures.byId.end()) return {};
  return {found->second.vertices, found->second.indices};
}

void CallMeshList(MeshListId list) {
  BindMeshList(list);
  DrawBoundMeshList();
  UnbindMeshList();
}

void BindMeshList(MeshListId list) {
  const auto found = pictures.byId.find(list);
  if (found == pictures.byId.end()) return;
  const MeshPicture& picture = found->second;
  pictures.bound = &picture;
  pictures.texture = picture.ranges.front().texture;
  pictures.lineWidth = kUsualLineWidth;
  glBindTexture(GL_TEXTURE_2D, pictures.texture);
  glLineWidth(pictures.lineWidth);
  PointArrays(picture);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, picture.buffers[1]);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_TEXTURE_COORD_ARRAY);
}

void DrawBoundMeshList() {
  if (!pictures.bound) return;
  for (const DrawRange& range : pictures.bound->ranges) DrawRangeOfBound(range);
}

void DrawBoundMeshListAt(const Matrix4& modelView, const MeshColour& colour,
                         const PixelGrid& grid) {
  if (!pictures.bound) return;
  const MeshPicture& picture = *pictures.bound;
  if (!picture.indices.empty() &&
      IsFinerThanPixels(picture.indices.size() / 3, picture.bounds, modelView, grid))
    return CollectShownTriangles(picture, modelView, colour, grid);
  DrawBatch();
  glColor3ubv(colour.data());
  glLoadMatrixf(modelView.data());
  DrawBoundMeshList();
}

void UnbindMeshList() {
  if (!pictures.bound) return;
  DrawBatch();
  pictures.bound = nullptr;
  UseLineWidth(kUsualLineWidth);
  glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

}  // namespace mw
