#include "objects/mesh_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>

#include "core/bytes.h"
#include "core/little_endian.h"

namespace mw {
namespace {

constexpr std::size_t kPositionSize = 12;  // x, y, z
constexpr std::size_t kCollisionVertexSize = 16, kFaceSize = 8;
constexpr std::size_t kRecordSize = 32;  // after the faces of a collision mesh; not used
constexpr float kCollisionLineWidth = 2;

constexpr std::uint32_t kVersionWithExtraByte = 10;   // of standard meshes
constexpr std::uint32_t kTwoCoordinates = 1u << 13;   // of a material's flags
constexpr std::size_t kNormalSize = 12, kUvSize = 8;  // of a standard mesh's vertices

constexpr std::uint32_t kTreeVersion = 3;
constexpr std::size_t kTreeVertexSize = 44, kTreeUvOffset = 28;
constexpr std::size_t kTreeNodeSize = 24;
constexpr int kTreeGroups = 4, kDrawnTreeGroups = 2;
constexpr std::uint32_t kMaxGroupItems = 24;
// Ranges of indices may overlap; what they draw together is bounded all the same.
constexpr std::uint64_t kMaxDrawnTreeIndices = std::uint64_t{1} << 24;

float FiniteFloat(ByteView bytes, std::size_t offset) {
  const auto value = std::bit_cast<float>(LoadU32(bytes, offset));
  return std::isfinite(value) ? value : 0.0f;
}

Vector3 Position(ByteView bytes, std::size_t offset) {
  return {FiniteFloat(bytes, offset), FiniteFloat(bytes, offset + 4),
          FiniteFloat(bytes, offset + 8)};
}

// Reads a file from its start. What lies beyond its end reads as 0 and sets `failed`, for good.
class MeshFile {
 public:
  explicit MeshFile(ByteView bytes) : bytes_(bytes) {}

  // Exactly `count` bytes, or none.
  ByteView Take(std::uint64_t count) {
    if (failed || count > bytes_.size()) {
      failed = true;
      return {};
    }
    const ByteView taken = bytes_.first(static_cast<std::size_t>(count));
    bytes_ = bytes_.subspan(taken.size());
    return taken;
  }
  void Skip(std::uint64_t count) { Take(count); }
  std::uint32_t Number() {
    const ByteView bytes = Take(4);
    return failed ? 0 : LoadU32(bytes);
  }
  bool Flag() {
    const ByteView bytes = Take(1);
    return !failed && bytes[0] != 0;
  }
  Vector3 Vector() {
    const ByteView bytes = Take(kPositionSize);
    return failed ? Vector3{} : Position(bytes, 0);
  }
  // A length and as many bytes; a zero byte ends the text.
  std::string Name() {
    const ByteView bytes = Take(Number());
    return {bytes.begin(), std::ranges::find(bytes, std::uint8_t{0})};
  }

  bool failed = false;

 private:
  ByteView bytes_;
};

std::vector<MeshVertex> VerticesOf(ByteView bytes, std::size_t stride, std::size_t uvOffset) {
  std::vector<MeshVertex> vertices;
  vertices.reserve(bytes.size() / stride);
  for (std::size_t at = 0; at < bytes.size(); at += stride) {
    vertices.push_back({Position(bytes, at), FiniteFloat(bytes, at + uvOffset),
                        FiniteFloat(bytes, at + uvOffset + 4)});
  }
  return vertices;
}

// False when an index is not below `vertexCount`.
bool ReadIndices(ByteView bytes, std::size_t vertexCount, std::vector<std::uint32_t>& indices) {
  indices.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    indices.push_back(LoadU16(bytes, at));
    if (indices.back() >= vertexCount) return false;
  }
  return true;
}

// The three edges of each face, whose fourth number is not used.
bool ReadFaceEdges(ByteView faces, MeshSurface& edges) {
  edges.indices.reserve(faces.size() / kFaceSize * 6);
  for (std::size_t at = 0; at < faces.size(); at += kFaceSize) {
    const std::uint32_t a = LoadU16(faces, at), b = LoadU16(faces, at + 2),
                        c = LoadU16(faces, at + 4);
    if (std::max({a, b, c}) >= edges.vertices.size()) return false;
    edges.indices.insert(edges.indices.end(), {a, b, b, c, c, a});
  }
  return true;
}

// Vertices and faces of a collision mesh, as both kinds of files have them.
void ReadCollision(MeshFile& file, MeshSurface& edges) {
  edges.kind = MeshSurface::Kind::Lines;
  edges.lineWidth = kCollisionLineWidth;
  const ByteView vertices = file.Take(std::uint64_t{kCollisionVertexSize} * file.Number());
  const ByteView faces = file.Take(std::uint64_t{kFaceSize} * file.Number());
  edges.vertices.reserve(vertices.size() / kCollisionVertexSize);
  for (std::size_t at = 0; at < vertices.size(); at += kCollisionVertexSize) {
    edges.vertices.push_back({Position(vertices, at), 0, 0});
  }
  if (!ReadFaceEdges(faces, edges)) file.failed = true;
}

// Each collision mesh has its size before it; only the first is read.
void ReadSizedCollisions(MeshFile& file, MeshSurface& edges) {
  const std::uint32_t count = file.Number();
  for (std::uint32_t k = 0; k < count && !file.failed; ++k) {
    MeshFile mesh(file.Take(file.Number()));
    if (k > 0 || file.failed) continue;
    mesh.Skip(8);
    ReadCollision(mesh, edges);
    file.failed = mesh.failed;
  }
}

struct MaterialHeader {
  std::string name;
  std::uint32_t flags = 0, vertexCount = 0, indexCount = 0;
};

MaterialHeader ReadMaterialHeader(MeshFile& file) {
  MaterialHeader header;
  header.name = file.Name();
  file.Skip(4 * 4);
  header.flags = file.Number();
  file.Skip(4);
  header.vertexCount = file.Number();
  header.indexCount = file.Number();
  file.Skip(4);
  return header;
}

void ReadMaterialBody(MeshFile& file, const MaterialHeader& header, MeshSurface& surface) {
  constexpr std::size_t kUvOffset = kPositionSize + kNormalSize;
  const bool twoCoordinates = (header.flags & kTwoCoordinates) != 0;
  const std::size_t vertexSize = kUvOffset + (twoCoordinates ? 2 : 1) * kUvSize;
  const ByteView vertices = file.Take(std::uint64_t{vertexSize} * header.vertexCount);
  const ByteView indices = file.Take(std::uint64_t{2} * header.indexCount);
  if (file.failed) return;
  surface.vertices = VerticesOf(vertices, vertexSize, kUvOffset);
  if (!ReadIndices(indices, surface.vertices.size(), surface.indices)) file.failed = true;
  // What is left over makes no triangle.
  surface.indices.resize(surface.indices.size() / 3 * 3);
}

void ReadFirstLevelOfDetail(MeshFile& file, std::vector<MaterialSurface>& surfaces) {
  const std::uint32_t materialCount = file.Number();
  std::vector<MaterialHeader> headers;
  for (std::uint32_t k = 0; k < materialCount && !file.failed; ++k) {
    headers.push_back(ReadMaterialHeader(file));
  }
  for (MaterialHeader& header : headers) {
    if (file.failed) return;
    MaterialSurface& made = surfaces.emplace_back();
    made.material = std::move(header.name);
    ReadMaterialBody(file, header, made.surface);
  }
}

// A run of a tree's triangles with one texture.
struct TextureItem {
  std::uint32_t firstIndex = 0, triangleCount = 0;
  std::string texture;
};

std::vector<TextureItem> ReadTextureGroup(MeshFile& file) {
  const std::uint32_t count = file.Number();
  if (count > kMaxGroupItems) file.failed = true;
  std::vector<TextureItem> items;
  for (std::uint32_t k = 0; k < count && !file.failed; ++k) {
    TextureItem item;
    item.firstIndex = file.Number();
    item.triangleCount = file.Number();
    item.texture = file.Name();
    items.push_back(std::move(item));
  }
  return items;
}

// A node, then whether its first child follows, that child, whether its second child follows, that
// child. Trees can be deep, so the way back is counted instead of called.
void SkipSearchTree(MeshFile& file) {
  std::uint64_t firstChildrenOpen = 0;  // nodes whose second child has not been asked for
  for (bool atNode = true; atNode && !file.failed;) {
    file.Skip(kTreeNodeSize);
    file.Skip(std::uint64_t{4} * file.Number());
    if (file.Flag()) {
      ++firstChildrenOpen;
      continue;
    }
    atNode = file.Flag();
    for (; !atNode && firstChildrenOpen > 0; --firstChildrenOpen) atNode = file.Flag();
  }
}

void ReadTreeCollision(MeshFile& file, MeshSurface& edges) {
  file.Skip(4);
  ReadCollision(file, edges);
  file.Skip(2 * 4);
  file.Skip(std::uint64_t{kRecordSize} * file.Number());
  SkipSearchTree(file);
}

// The triangles of some of a tree's indices, with the vertices that they use.
MeshSurface SurfaceOf(std::span<const MeshVertex> vertices,
                      std::span<const std::uint32_t> indices) {
  constexpr std::uint32_t kUnused = 0xFFFFFFFF;
  std::vector<std::uint32_t> numbers(vertices.size(), kUnused);
  MeshSurface surface;
  surface.indices.reserve(indices.size());
  for (const std::uint32_t index : indices) {
    std::uint32_t& number = numbers[index];
    if (number == kUnused) {
      number = static_cast<std::uint32_t>(surface.vertices.size());
      surface.vertices.push_back(vertices[index]);
    }
    surface.indices.push_back(number);
  }
  return surface;
}

void ReadTreeSurfaces(MeshFile& file, std::vector<TextureItem>& items,
                      std::vector<MaterialSurface>& surfaces) {
  const ByteView vertexBytes = file.Take(std::uint64_t{kTreeVertexSize} * file.Number());
  const ByteView indexBytes = file.Take(std::uint64_t{2} * file.Number());
  if (file.failed) return;
  const std::vector<MeshVertex> vertices = VerticesOf(vertexBytes, kTreeVertexSize, kTreeUvOffset);
  std::vector<std::uint32_t> indices;
  file.failed = !ReadIndices(indexBytes, vertices.size(), indices);
  std::uint64_t drawn = 0;
  for (TextureItem& item : items) {
    const std::uint64_t count = std::uint64_t{3} * item.triangleCount;
    drawn += count;
    if (item.firstIndex + count > indices.size() || drawn > kMaxDrawnTreeIndices) {
      file.failed = true;
    }
    if (file.failed) return;
    const auto range = std::span(indices).subspan(item.firstIndex, static_cast<std::size_t>(count));
    surfaces.push_back({std::move(item.texture), SurfaceOf(vertices, range)});
  }
}

}  // namespace

std::optional<StandardMeshGeometry> ReadStandardMesh(ByteView bytes) {
  MeshFile file(bytes);
  StandardMeshGeometry mesh;
  const std::uint32_t version = file.Number();
  file.Skip(4);
  mesh.boxA = file.Vector();
  mesh.boxB = file.Vector();
  if (version == kVersionWithExtraByte) file.Skip(1);
  ReadSizedCollisions(file, mesh.collision);
  mesh.hasDetail = file.Number() > 0;
  if (mesh.hasDetail) ReadFirstLevelOfDetail(file, mesh.surfaces);
  if (file.failed) return std::nullopt;
  return mesh;
}

std::optional<TreeMeshGeometry> ReadTreeMesh(ByteView bytes) {
  MeshFile file(bytes);
  TreeMeshGeometry mesh;
  mesh.shown = file.Number() == kTreeVersion;
  if (file.failed) return std::nullopt;
  if (!mesh.shown) return mesh;
  file.Skip(8);
  mesh.boxA = file.Vector();
  mesh.boxB = file.Vector();
  file.Skip(24);
  std::vector<TextureItem> drawn;
  for (int group = 0; group < kTreeGroups; ++group) {
    for (TextureItem& item : ReadTextureGroup(file)) {
      if (group < kDrawnTreeGroups) {
        drawn.push_back(std::move(item));
      } else {
        mesh.otherTextures.push_back(std::move(item.texture));
      }
    }
  }
  if (file.Number() != 0) ReadTreeCollision(file, mesh.collision);
  ReadTreeSurfaces(file, drawn, mesh.surfaces);
  if (file.failed) return std::nullopt;
  return mesh;
}

MeshSurface BoxFaces(const Vector3& a, const Vector3& b) {
  // A corner's number has a bit for each coordinate that is taken from b: x 1, y 2, z 4.
  constexpr std::array<std::array<std::uint32_t, 4>, 6> kFaces = {
      {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4}, {2, 6, 7, 3}}};
  MeshSurface box;
  for (unsigned corner = 0; corner < 8; ++corner) {
    const Vector3 position{corner & 1 ? b.x : a.x, corner & 2 ? b.y : a.y, corner & 4 ? b.z : a.z};
    box.vertices.push_back({position, 0, 0});
  }
  for (const auto& face : kFaces) {
    box.indices.insert(box.indices.end(), {face[0], face[1], face[2], face[0], face[2], face[3]});
  }
  return box;
}

}  // namespace mw
