// Mesh files put together by hand, with something in every field that the editor passes over.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "support/archive_bytes.h"

namespace mw {

// Bytes that nobody reads.
struct Junk {
  std::size_t count;
};
struct Name {
  std::string_view text;
};
using Short = std::uint16_t;
using Byte = std::uint8_t;

inline void Put(Bytes& bytes, std::uint32_t number) { PutU32(bytes, number); }
inline void Put(Bytes& bytes, float number) { PutU32(bytes, std::bit_cast<std::uint32_t>(number)); }
inline void Put(Bytes& bytes, Byte byte) { bytes.push_back(byte); }
inline void Put(Bytes& bytes, Short number) {
  bytes.insert(bytes.end(), {static_cast<Byte>(number), static_cast<Byte>(number >> 8)});
}
inline void Put(Bytes& bytes, Junk junk) { bytes.resize(bytes.size() + junk.count, 0xA5); }
inline void Put(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}
inline void Put(Bytes& bytes, Name name) {
  Put(bytes, static_cast<std::uint32_t>(name.text.size()));
  bytes.insert(bytes.end(), name.text.begin(), name.text.end());
}
inline void Put(Bytes& bytes, const std::vector<Short>& numbers) {
  for (const Short number : numbers) Put(bytes, number);
}

template <class... Parts>
void Append(Bytes& bytes, const Parts&... parts) {
  (Put(bytes, parts), ...);
}
template <class... Parts>
Bytes Joined(const Parts&... parts) {
  Bytes bytes;
  Append(bytes, parts...);
  return bytes;
}
template <class Items>
std::uint32_t CountOf(const Items& items) {
  return static_cast<std::uint32_t>(items.size());
}

inline const Bytes kMeshBox = Joined(-1.f, -2.f, -3.f, 4.f, 5.f, 6.f);

// Both sides of a triangle in the plane z = 0: its corners are (0, 0), (1, 0) and (0, 1), each
// times `size`.
inline Bytes CollisionTriangle(float size) {
  Bytes mesh = Joined(3u);
  for (const auto& [x, y] : {std::pair{0.f, 0.f}, {size, 0.f}, {0.f, size}})
    Append(mesh, x, y, 0.f, Junk{4});
  Append(mesh, 2u, std::vector<Short>{0, 1, 2, 0xA5A5, 2, 1, 0, 0xA5A5});
  return mesh;
}

// As one of a standard mesh's, with its size before and `records` unused records behind it.
inline Bytes SizedCollision(float size, std::uint32_t records) {
  const Bytes body = Joined(Junk{8}, CollisionTriangle(size), Junk{3 * 4}, records,
                            Junk{std::size_t{32} * records});
  return Joined(CountOf(body), body);
}

struct MaterialBytes {
  std::string_view name = "wall";
  bool twoCoordinates = false;
  float left = -1, right = 1;  // of its square, which spans y -1 ... 1 at z = 0
  std::vector<Short> indices = {0, 1, 2, 0, 2, 3};
};

struct StandardMeshBytes {
  std::uint32_t version = 10;
  std::vector<Bytes> collisions = {SizedCollision(1, 0)};
  std::uint32_t levels = 1;
  std::vector<MaterialBytes> materials = {{}};

  Bytes Get() const {
    Bytes file =
        Joined(version, Junk{4}, kMeshBox, Junk{version == 10 ? 1u : 0u}, CountOf(collisions));
    for (const Bytes& collision : collisions) Append(file, collision);
    Append(file, levels);
    if (levels == 0) return file;
    Append(file, CountOf(materials));
    for (const MaterialBytes& material : materials) {
      Append(file, Name{material.name}, Junk{4 * 4},
             material.twoCoordinates ? 0xFFFFFFFF : 0xFFFFDFFF, Junk{4}, 4u,
             CountOf(material.indices), Junk{4});
    }
    for (const auto& [name, twoCoordinates, l, r, indices] : materials) {
      for (const auto& [x, y] : {std::pair{l, -1.f}, {r, -1.f}, {r, 1.f}, {l, 1.f}})
        Append(file, x, y, 0.f, Junk{12}, x, y, Junk{twoCoordinates ? 8u : 0u});
      Append(file, indices);
    }
    return file;
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
  Bytes collision = Joined(0u);
  std::vector<Short> indices = {0, 1, 2, 0, 2, 3};

  // The search tree behind the collision mesh follows; a node without anything ends it.
  static Bytes CollisionPart(std::uint32_t records) {
    return Joined(7u, Junk{4}, CollisionTriangle(1), Junk{2 * 4}, records,
                  Junk{std::size_t{32} * records});
  }
  static Bytes Node(std::uint32_t numbers) {
    return Joined(Junk{24}, numbers, Junk{std::size_t{4} * numbers});
  }

  // A square like a standard mesh's, left and right at -1 and 1.
  Bytes Get() const {
    Bytes file = Joined(version, Junk{8}, kMeshBox, Junk{24});
    for (const auto& group : groups) {
      Append(file, CountOf(group));
      for (const TreeItemBytes& item : group)
        Append(file, item.firstIndex, item.triangleCount, Name{item.texture});
    }
    Append(file, collision, 4u);
    for (const auto& [x, y] : {std::pair{-1.f, -1.f}, {1.f, -1.f}, {1.f, 1.f}, {-1.f, 1.f}})
      Append(file, x, y, 0.f, Junk{16}, x, y, Junk{8});
    Append(file, CountOf(indices), indices);
    return file;
  }
};

}  // namespace mw
