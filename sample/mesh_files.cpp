#include "sample/mesh_files.h"

#include <bit>
#include <string_view>

#include "core/text.h"

namespace mw::sample {
namespace {

// Little-endian bytes of a file that is being put together.
class ByteWriter {
 public:
  void U8(std::uint8_t value) { bytes_.push_back(value); }
  void U16(std::uint16_t value) {
    U8(static_cast<std::uint8_t>(value & 0xFF));
    U8(static_cast<std::uint8_t>(value >> 8));
  }
  void U32(std::uint32_t value) {
    U16(static_cast<std::uint16_t>(value & 0xFFFF));
    U16(static_cast<std::uint16_t>(value >> 16));
  }
  void Count(std::size_t value) { U32(static_cast<std::uint32_t>(value)); }
  void Float(float value) { U32(std::bit_cast<std::uint32_t>(value)); }
  void Vector(const Vector3& v) {
    Float(v.x);
    Float(v.y);
    Float(v.z);
  }
  void Text(std::string_view text) {
    Count(text.size());
    bytes_.insert(bytes_.end(), text.begin(), text.end());
  }
  void Zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
  void Append(const ByteWriter& other) {
    bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
  }
  std::size_t Size() const { return bytes_.size(); }
  std::vector<std::uint8_t> Take() { return std::move(bytes_); }

 private:
  std::vector<std::uint8_t> bytes_;
};

constexpr std::uint32_t kVertexSize = 32;            // position, normal, one texture coordinate
constexpr std::uint32_t kTwoCoordinates = 1u << 13;  // flag of materials with a second coordinate
constexpr std::size_t kSkippedBoxBytes = 24;
constexpr int kTreeTextureGroups = 4;

void WriteBox(ByteWriter& file, const Box& box) {
  file.Vector(box.low);
  file.Vector(box.high);
}

void WriteCollision(ByteWriter& file, const CollisionMesh& collision) {
  file.Count(collision.vertices.size());
  for (const Vector3& vertex : collision.vertices) {
    file.Vector(vertex);
    file.U32(0);
  }
  file.Count(collision.faces.size());
  for (const auto& face : collision.faces) {
    for (const std::uint16_t index : face) file.U16(index);
    file.U16(0);
  }
}

void WriteSizedCollision(ByteWriter& file, const CollisionMesh& collision) {
  ByteWriter body;
  body.Zeros(8);
  WriteCollision(body, collision);
  body.Zeros(3 * 4);
  body.U32(0);  // records that follow
  file.Count(body.Size());
  file.Append(body);
}

void WriteMaterialHeader(ByteWriter& file, const MeshPart& part, bool twoCoordinates) {
  file.Text(part.material);
  file.Zeros(4 * 4);
  file.U32(twoCoordinates ? kTwoCoordinates : 0);
  file.U32(twoCoordinates ? kVertexSize + 8 : kVertexSize);
  file.Count(part.vertices.size());
  file.Count(part.indices.size());
  file.U32(0);
}

void WriteMaterialBody(ByteWriter& file, const MeshPart& part, bool twoCoordinates) {
  for (const MeshVertex& vertex : part.vertices) {
    file.Vector(vertex.position);
    file.Vector(vertex.normal);
    file.Float(vertex.u);
    file.Float(vertex.v);
    if (!twoCoordinates) continue;
    file.Float(vertex.u * 0.25f);
    file.Float(vertex.v * 0.25f);
  }
  for (const std::uint16_t index : part.indices) file.U16(index);
}

// Buildings carry a second texture coordinate, for light maps.
bool HasTwoCoordinates(const MeshPart& part) {
  return part.material == "brick" || part.material == "brick_shade";
}

bool IsLeaves(const MeshPart& part) { return part.material.find("bark") == std::string::npos; }

// All parts of one group as texture items; `firstIndex` counts through the tree's indices.
void WriteTreeGroup(ByteWriter& file, const Mesh& mesh, bool leaves, std::uint32_t& firstIndex) {
  std::uint32_t items = 0;
  for (const MeshPart& part : mesh.parts) items += IsLeaves(part) == leaves ? 1 : 0;
  file.U32(items);
  for (const MeshPart& part : mesh.parts) {
    if (IsLeaves(part) != leaves) continue;
    file.U32(firstIndex);
    file.Count(part.indices.size() / 3);
    file.Text("texture/" + part.material);
    firstIndex += static_cast<std::uint32_t>(part.indices.size());
  }
}

void WriteTreeCollision(ByteWriter& file, const Mesh& mesh) {
  file.U32(1);
  file.U32(0);
  WriteCollision(file, mesh.collision);
  file.Zeros(3 * 4);  // the third is the number of records that follow
  // A search tree of one node without entries and children.
  file.Zeros(24);
  file.U32(0);
  file.U8(0);
  file.U8(0);
}

// Indices follow the order of the texture groups: leaves, then trunk.
void WriteTreeGeometry(ByteWriter& file, const Mesh& mesh) {
  ByteWriter vertices, indices;
  std::size_t vertexCount = 0, indexCount = 0;
  for (const bool leaves : {true, false}) {
    for (const MeshPart& part : mesh.parts) {
      if (IsLeaves(part) != leaves) continue;
      for (const std::uint16_t index : part.indices) {
        indices.U16(static_cast<std::uint16_t>(vertexCount + index));
      }
      for (const MeshVertex& vertex : part.vertices) {
        vertices.Vector(vertex.position);
        vertices.Vector(vertex.normal);
        vertices.U32(0xFFFFFFFF);  // white
        vertices.Float(vertex.u);
        vertices.Float(vertex.v);
        vertices.Zeros(8);
      }
      vertexCount += part.vertices.size();
      indexCount += part.indices.size();
    }
  }
  file.Count(vertexCount);
  file.Append(vertices);
  file.Count(indexCount);
  file.Append(indices);
}

}  // namespace

std::vector<std::uint8_t> EncodeStandardMesh(const Mesh& mesh, std::uint32_t version) {
  const Box bounds = BoundsOf(mesh);
  ByteWriter file;
  file.U32(version);
  file.U32(0);
  WriteBox(file, bounds);
  if (version == 10) file.U8(0);

  file.U32(2);
  WriteSizedCollision(file, mesh.collision);
  WriteSizedCollision(file, CollisionOf(bounds));

  file.U32(1);  // levels of detail
  file.Count(mesh.parts.size());
  for (const MeshPart& part : mesh.parts) WriteMaterialHeader(file, part, HasTwoCoordinates(part));
  for (const MeshPart& part : mesh.parts) WriteMaterialBody(file, part, HasTwoCoordinates(part));
  return file.Take();
}

std::string EncodeShader(const Mesh& mesh) {
  std::string text;
  for (const MeshPart& part : mesh.parts) {
    text += FormatText(
        "subshader \"%s\" \"StandardMesh/Default\"\n"
        "{\n"
        "\tlighting true;\n"
        "\tlightingSpecular false;\n"
        "\tmaterialDiffuse 1 1 1;\n"
        "\ttransparent false;\n"
        "\ttwosided false;\n"
        "\ttexture \"texture/%s\";\n"
        "}\n\n",
        part.material.c_str(), part.material.c_str());
  }
  return text;
}

std::vector<std::uint8_t> EncodeTreeMesh(const Mesh& mesh) {
  const Box bounds = BoundsOf(mesh);
  ByteWriter file;
  file.U32(3);
  file.Zeros(8);
  WriteBox(file, bounds);
  file.Zeros(kSkippedBoxBytes);
  std::uint32_t firstIndex = 0;
  WriteTreeGroup(file, mesh, true, firstIndex);
  WriteTreeGroup(file, mesh, false, firstIndex);
  for (int group = 2; group < kTreeTextureGroups; ++group) file.U32(0);
  WriteTreeCollision(file, mesh);
  WriteTreeGeometry(file, mesh);
  return file.Take();
}

}  // namespace mw::sample
