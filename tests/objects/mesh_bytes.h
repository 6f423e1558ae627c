// Mesh files put together by hand, with something in every field that the editor passes over.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "support/archive_bytes.h"

namespace mw {

class MeshBytes {
 public:
  MeshBytes& Number(std::uint32_t value) {
    PutU32(bytes_, value);
    return *this;
  }
  MeshBytes& Short(std::uint16_t value) {
    bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF));
    bytes_.push_back(static_cast<std::uint8_t>(value >> 8));
    return *this;
  }
  MeshBytes& Byte(std::uint8_t value) {
    bytes_.push_back(value);
    return *this;
  }
  MeshBytes& Junk(std::size_t count) {
    bytes_.resize(bytes_.size() + count, 0xA5);
    return *this;
  }
  MeshBytes& Floats(std::initializer_list<float> values) {
    for (const float value : values) Number(std::bit_cast<std::uint32_t>(value));
    return *this;
  }
  MeshBytes& Name(std::string_view name) {
    Number(static_cast<std::uint32_t>(name.size()));
    bytes_.insert(bytes_.end(), name.begin(), name.end());
    return *this;
  }
  MeshBytes& Append(const Bytes& other) {
    bytes_.insert(bytes_.end(), other.begin(), other.end());
    return *this;
  }
  const Bytes& Get() const { return bytes_; }

 private:
  Bytes bytes_;
};

// A triangle in the plane z = 0: its corners are (0, 0), (1, 0) and (0, 1), each times `size`.
inline MeshBytes CollisionTriangle(float size) {
  MeshBytes mesh;
  mesh.Number(3);
  for (const auto& corner : {std::array{0.f, 0.f}, std::array{size, 0.f}, std::array{0.f, size}}) {
    mesh.Floats({corner[0], corner[1], 0}).Junk(4);
  }
  return mesh.Number(1).Short(0).Short(1).Short(2).Short(0xA5A5);
}

// As one of a standard mesh's, with its size before and `records` unused records behind it.
inline Bytes SizedCollision(float size, std::uint32_t records) {
  MeshBytes body;
  body.Junk(8).Append(CollisionTriangle(size).Get());
  body.Junk(3 * 4).Number(records).Junk(std::size_t{32} * records);
  return MeshBytes().Number(static_cast<std::uint32_t>(body.Get().size())).Append(body.Get()).Get();
}

struct MaterialBytes {
  std::string_view name = "wall";
  bool twoCoordinates = false;
  float left = -1, right = 1;  // of its square, which spans y -1 ... 1 at z = 0
  std::vector<std::uint16_t> indices = {0, 1, 2, 0, 2, 3};
};

struct StandardMeshBytes {
  std::uint32_t version = 10;
  std::vector<Bytes> collisions = {SizedCollision(1, 0)};
  std::uint32_t levels = 1;
  std::vector<MaterialBytes> materials = {{}};

  Bytes Get() const {
    MeshBytes file;
    file.Number(version).Junk(4).Floats({-1, -2, -3, 4, 5, 6});
    if (version == 10) file.Junk(1);
    file.Number(static_cast<std::uint32_t>(collisions.size()));
    for (const Bytes& collision : collisions) file.Append(collision);
    file.Number(levels);
    if (levels == 0) return file.Get();
    file.Number(static_cast<std::uint32_t>(materials.size()));
    for (const MaterialBytes& material : materials) AddHeader(material, file);
    for (const MaterialBytes& material : materials) AddBody(material, file);
    return file.Get();
  }

 private:
  static void AddHeader(const MaterialBytes& material, MeshBytes& file) {
    file.Name(material.name).Junk(4 * 4).Number(material.twoCoordinates ? 0xFFFFFFFF : 0xFFFFDFFF);
    file.Junk(4).Number(4).Number(static_cast<std::uint32_t>(material.indices.size())).Junk(4);
  }
  static void AddBody(const MaterialBytes& material, MeshBytes& file) {
    const float l = material.left, r = material.right;
    for (const auto& [x, y] : {std::pair{l, -1.f}, {r, -1.f}, {r, 1.f}, {l, 1.f}}) {
      file.Floats({x, y, 0}).Junk(12).Floats({x, y});
      if (material.twoCoordinates) file.Junk(8);
    }
    for (const std::uint16_t index : material.indices) file.Short(index);
  }
};

struct TreeItemBytes {
  std::uint32_t firstIndex = 0, triangleCount = 2;
  std::string_view texture = "texture/leaf";
};

struct TreeMeshBytes {
  std::uint32_t version = 3;
  std::array<std::vector<TreeItemBytes>, 4> groups = {
      {{{}}, {{3, 1, "bark"}}, {{0, 9, "sprite"}}, {}}};
  Bytes collision = MeshBytes().Number(0).Get();
  std::vector<std::uint16_t> indices = {0, 1, 2, 0, 2, 3};

  // The search tree behind the collision mesh follows; a node without anything ends it.
  static MeshBytes CollisionPart(std::uint32_t records) {
    MeshBytes part;
    part.Number(7).Junk(4).Append(CollisionTriangle(1).Get());
    part.Junk(2 * 4).Number(records).Junk(std::size_t{32} * records);
    return part;
  }
  static MeshBytes Node(std::uint32_t numbers) {
    MeshBytes node;
    node.Junk(24).Number(numbers).Junk(std::size_t{4} * numbers);
    return node;
  }

  // A square like a standard mesh's, left and right at -1 and 1.
  Bytes Get() const {
    MeshBytes file;
    file.Number(version).Junk(8).Floats({-1, -2, -3, 4, 5, 6}).Junk(24);
    for (const auto& group : groups) {
      file.Number(static_cast<std::uint32_t>(group.size()));
      for (const TreeItemBytes& item : group) {
        file.Number(item.firstIndex).Number(item.triangleCount).Name(item.texture);
      }
    }
    file.Append(collision).Number(4);
    for (const auto& [x, y] : {std::pair{-1.f, -1.f}, {1.f, -1.f}, {1.f, 1.f}, {-1.f, 1.f}}) {
      file.Floats({x, y, 0}).Junk(16).Floats({x, y}).Junk(8);
    }
    file.Number(static_cast<std::uint32_t>(indices.size()));
    for (const std::uint16_t index : indices) file.Short(index);
    return file.Get();
  }
};

}  // namespace mw
