// Buildings. An object stands on y = 0; what reaches below it is the foundation that keeps it from
// floating on a slope.
#include "sample/objects.h"

namespace mw::sample {
namespace {

constexpr float kFoundation = -2.0f;

constexpr Skin kConcrete{"concrete", 6}, kBrick{"brick", 4}, kStone{"stone", 5},
    kPlaster{"plaster", 6};
constexpr Skin kPlanks{"planks", 4}, kRoofTiles{"rooftiles", 4}, kCorrugated{"corrugated", 6};
constexpr Skin kWhite{"whitepaint", 5}, kRed{"redpaint", 5}, kSandbag{"sandbag", 3};
constexpr Skin kWindow{"window", 0}, kDoor{"door", 0}, kDark{"tread", 8};

// A picture just in front of a wall that looks to the front (+z), `x` its middle.
void HangOnFront(MeshBuilder& mesh, const Skin& skin, float x, float y, float z, float width,
                 float height) {
  const float front = z + 0.05f, half = width / 2;
  mesh.Quad(skin, {x + half, y + height, front}, {x - half, y + height, front},
            {x - half, y, front}, {x + half, y, front});
}
void HangOnBack(MeshBuilder& mesh, const Skin& skin, float x, float y, float z, float width,
                float height) {
  const float back = z - 0.05f, half = width / 2;
  mesh.Quad(skin, {x - half, y + height, back}, {x + half, y + height, back}, {x + half, y, back},
            {x - half, y, back});
}
void HangOnEast(MeshBuilder& mesh, const Skin& skin, float x, float y, float z, float width,
                float height) {
  const float east = x + 0.05f, half = width / 2;
  mesh.Quad(skin, {east, y + height, z - half}, {east, y + height, z + half}, {east, y, z + half},
            {east, y, z - half});
}
void HangOnWest(MeshBuilder& mesh, const Skin& skin, float x, float y, float z, float width,
                float height) {
  const float west = x - 0.05f, half = width / 2;
  mesh.Quad(skin, {west, y + height, z + half}, {west, y + height, z - half}, {west, y, z - half},
            {west, y, z + half});
}

}  // namespace

Mesh BuildBunker() {
  MeshBuilder mesh;
  mesh.AddBox(kConcrete, {-5, kFoundation, -4}, {5, 1.3f, 4});  // up to the slit
  mesh.AddBox(kConcrete, {-5, 1.3f, -4}, {-3.8f, 2.3f, 4});     // pillars beside it
  mesh.AddBox(kConcrete, {3.8f, 1.3f, -4}, {5, 2.3f, 4});
  mesh.AddBox(kDark, {-3.8f, 1.3f, -3.9f}, {3.8f, 2.3f, 3});               // the room behind
  mesh.AddClosedBox(kConcrete, {-5.4f, 2.3f, -4.4f}, {5.4f, 3.3f, 4.4f});  // roof
  mesh.AddBox(kConcrete, {-2.5f, 3.3f, -2.5f}, {2.5f, 3.9f, 1.5f});
  mesh.SetSolid(false);
  HangOnBack(mesh, kDoor, 2.2f, 0, -4, 1.3f, 2.1f);
  mesh.AddBox(kSandbag, {-6, 0, 4}, {-2.5f, 0.9f, 5});
  mesh.AddBox(kSandbag, {2.5f, 0, 4}, {6, 0.9f, 5});
  return mesh.Take();
}

Mesh BuildFarmhouse() {
  MeshBuilder mesh;
  mesh.AddBox(kStone, {-5.2f, kFoundation, -4.2f}, {5.2f, 0.6f, 4.2f});
  mesh.AddBox(kBrick, {-5, 0.6f, -4}, {5, 6, 4});
  mesh.AddGableRoof(kRoofTiles, kPlanks, {-5.8f, 5.7f, -4.6f}, {5.8f, 9.4f, 4.6f});
  mesh.AddBox(kBrick, {2.6f, 6, -2.6f}, {3.8f, 10.2f, -1.4f});  // chimney
  mesh.SetSolid(false);
  HangOnFront(mesh, kDoor, 0, 0.6f, 4, 1.4f, 2.3f);
  HangOnBack(mesh, kDoor, 2, 0.6f, -4, 1.4f, 2.3f);
  for (const float x : {-3.2f, 3.2f}) {
    HangOnFront(mesh, kWindow, x, 1.5f, 4, 1.3f, 1.5f);
    HangOnFront(mesh, kWindow, x, 3.9f, 4, 1.3f, 1.4f);
    HangOnBack(mesh, kWindow, x, 3.9f, -4, 1.3f, 1.4f);
  }
  for (const float z : {-2.0f, 2.0f}) {
    HangOnEast(mesh, kWindow, 5, 1.5f, z, 1.2f, 1.5f);
    HangOnWest(mesh, kWindow, -5, 1.5f, z, 1.2f, 1.5f);
  }
  return mesh.Take();
}

Mesh BuildBarn() {
  MeshBuilder mesh;
  mesh.AddBox(kStone, {-6.1f, kFoundation, -9.1f}, {6.1f, 1, 9.1f});
  mesh.AddBox(kPlanks, {-6, 1, -9}, {6, 5, 9});
  mesh.AddGableRoof(kCorrugated, kPlanks, {-6.6f, 4.8f, -9.4f}, {6.6f, 9, 9.4f});
  mesh.SetSolid(false);
  HangOnFront(mesh, kDoor, -1.3f, 0.4f, 9.1f, 2.6f, 3.8f);
  HangOnFront(mesh, kDoor, 1.3f, 0.4f, 9.1f, 2.6f, 3.8f);
  for (const float z : {-6.0f, 0.0f, 6.0f}) {
    HangOnEast(mesh, kWindow, 6, 2.4f, z, 1.4f, 1.2f);
    HangOnWest(mesh, kWindow, -6, 2.4f, z, 1.4f, 1.2f);
  }
  return mesh.Take();
}

Mesh BuildFisherHut() {
  MeshBuilder mesh;
  mesh.AddBox(kStone, {-3.6f, kFoundation, -3.1f}, {3.6f, 0.4f, 3.1f});
  mesh.AddBox(kPlaster, {-3.5f, 0.4f, -3}, {3.5f, 3.2f, 3});
  mesh.AddGableRoof(kPlanks, kPlaster, {-4.1f, 3, -3.5f}, {4.1f, 5.6f, 3.5f});
  mesh.AddBox(kStone, {-3.2f, 3.2f, -2.2f}, {-2.2f, 6, -1.2f});  // chimney
  mesh.SetSolid(false);
  HangOnFront(mesh, kDoor, -1.4f, 0.4f, 3, 1.2f, 2);
  HangOnFront(mesh, kWindow, 1.4f, 1.2f, 3, 1.2f, 1.2f);
  HangOnBack(mesh, kWindow, 0, 1.2f, -3, 1.2f, 1.2f);
  HangOnEast(mesh, kWindow, 3.5f, 1.2f, 0, 1.2f, 1.2f);
  return mesh.Take();
}

Mesh BuildLighthouse() {
  MeshBuilder mesh;
  mesh.AddCylinder(kStone, {0, kFoundation, 0}, 5, 4.6f, 3.5f, 16);
  float radius = 3.8f;
  for (int band = 0; band < 5; ++band) {
    const float base = 1.5f + 4 * static_cast<float>(band);
    mesh.AddCylinder(band % 2 == 0 ? kWhite : kRed, {0, base, 0}, radius, radius - 0.35f, 4, 16);
    radius -= 0.35f;
  }
  mesh.AddCylinder(kConcrete, {0, 21.5f, 0}, 3, 3, 0.6f, 16);     // gallery
  mesh.AddCylinder(kWindow, {0, 22.1f, 0}, 1.5f, 1.5f, 2.6f, 8);  // lantern
  mesh.AddCylinder(kRed, {0, 24.7f, 0}, 2, 0.2f, 1.8f, 12);
  mesh.SetSolid(false);
  HangOnFront(mesh, kDoor, 0, 1.5f, 3.8f, 1.4f, 2.4f);
  return mesh.Take();
}

Mesh BuildWatchtower() {
  MeshBuilder mesh;
  for (const float x : {-1.8f, 1.8f}) {
    for (const float z : {-1.8f, 1.8f}) {
      mesh.AddBox(kPlanks, {x - 0.2f, kFoundation, z - 0.2f}, {x + 0.2f, 9, z + 0.2f});
    }
  }
  for (const float y : {2.4f, 4.8f}) {  // braces
    mesh.AddClosedBox(kPlanks, {-1.8f, y, 1.7f}, {1.8f, y + 0.25f, 1.9f});
    mesh.AddClosedBox(kPlanks, {-1.8f, y, -1.9f}, {1.8f, y + 0.25f, -1.7f});
    mesh.AddClosedBox(kPlanks, {1.7f, y, -1.8f}, {1.9f, y + 0.25f, 1.8f});
    mesh.AddClosedBox(kPlanks, {-1.9f, y, -1.8f}, {-1.7f, y + 0.25f, 1.8f});
  }
  mesh.AddClosedBox(kPlanks, {-2.4f, 6.4f, -2.4f}, {2.4f, 6.6f, 2.4f});  // platform
  mesh.AddClosedBox(kPlanks, {-2.4f, 6.6f, 2.25f}, {2.4f, 7.6f, 2.4f});
  mesh.AddClosedBox(kPlanks, {-2.4f, 6.6f, -2.4f}, {2.4f, 7.6f, -2.25f});
  mesh.AddClosedBox(kPlanks, {2.25f, 6.6f, -2.4f}, {2.4f, 7.6f, 2.4f});
  mesh.AddClosedBox(kPlanks, {-2.4f, 6.6f, -2.4f}, {-2.25f, 7.6f, 2.4f});
  mesh.AddGableRoof(kCorrugated, kPlanks, {-2.8f, 9, -2.8f}, {2.8f, 10.6f, 2.8f});
  for (int rung = 0; rung < 9; ++rung) {
    const float y = 0.5f + 0.7f * static_cast<float>(rung);
    mesh.AddClosedBox(kPlanks, {-0.5f, y, 2.5f}, {0.5f, y + 0.1f, 2.6f});
  }
  return mesh.Take();
}

Mesh BuildHangar() {
  MeshBuilder mesh;
  constexpr float kRadius = 11, kDepth = 15;
  mesh.AddBox(kConcrete, {-12, kFoundation, -15.5f}, {12, 0.15f, 15.5f});
  mesh.AddVault(kCorrugated, kRadius, -kDepth, kDepth, 0.1f, 12);
  constexpr int kGableSteps = 6;  // the back wall, as boxes that follow the vault
  for (int k = 0; k < kGableSteps; ++k) {
    const float x = kRadius - 0.4f - 1.6f * static_cast<float>(k);
    const float height = 4.4f + 1.15f * static_cast<float>(k);
    mesh.AddBox(kCorrugated, {-x, 0, -kDepth + 0.2f}, {x, height, -kDepth + 0.5f});
  }
  return mesh.Take();
}

Mesh BuildBridge() {
  // 64 long, along z; the deck lies on y = 0, where the road meets it.
  MeshBuilder mesh;
  mesh.AddClosedBox(kConcrete, {-5.5f, -1.4f, -32}, {5.5f, 0, 32});
  for (const float x : {-5.3f, 5.3f}) {
    mesh.AddBox(kStone, {x - 0.3f, 0, -32}, {x + 0.3f, 1.1f, 32});
  }
  for (const float z : {-24.0f, -8.0f, 8.0f, 24.0f}) {
    mesh.AddBox(kStone, {-5, -16, z - 1.4f}, {5, -1.4f, z + 1.4f});
  }
  return mesh.Take();
}

Mesh BuildPier() {
  // 32 long, running out along z; the deck lies on y = 0.
  MeshBuilder mesh;
  mesh.AddClosedBox(kPlanks, {-2.5f, -0.4f, 0}, {2.5f, 0, 32});
  for (int k = 0; k < 5; ++k) {
    const float z = 1 + 7.5f * static_cast<float>(k);
    for (const float x : {-2.3f, 2.3f}) {
      mesh.AddCylinder(kPlanks, {x, -9, z}, 0.3f, 0.3f, 9.8f, 6);
    }
  }
  return mesh.Take();
}

Mesh BuildStoneWall() {
  MeshBuilder mesh;
  mesh.AddBox(kStone, {-6, kFoundation, -0.4f}, {6, 1.5f, 0.4f});
  mesh.AddBox(kStone, {-6.2f, 1.5f, -0.5f}, {6.2f, 1.7f, 0.5f});
  return mesh.Take();
}

}  // namespace mw::sample
