#include "sample/objects.h"

namespace mw::sample {
namespace {

constexpr Skin kPlanks{"planks", 2}, kSteel{"steel", 2}, kCamouflage{"camouflage", 4};
constexpr Skin kTread{"tread", 2}, kCanvas{"canvas", 4}, kSandbag{"sandbag", 2.4f};
constexpr Skin kRedBarrel{"redpaint", 2}, kRust{"rust", 2}, kWindow{"window", 0};
constexpr Skin kConcrete{"concrete", 4}, kRed{"redcloth", 0}, kBlue{"bluecloth", 0};

void AddWheels(MeshBuilder& mesh, float halfTrack, float radius,
               std::initializer_list<float> axles) {
  for (const float z : axles) {
    for (const float x : {-halfTrack, halfTrack}) {
      mesh.AddRoller(kTread, kSteel, {x, radius, z}, radius, 0.35f, 10);
    }
  }
}

Mesh BuildFlag(const Skin& cloth) {
  MeshBuilder mesh;
  mesh.SetSolid(false);
  mesh.Quad(cloth, {2.6f, 0.8f, 0}, {0, 0.8f, 0}, {0, -0.8f, 0}, {2.6f, -0.8f, 0});
  mesh.Quad(cloth, {0, 0.8f, 0}, {2.6f, 0.8f, 0}, {2.6f, -0.8f, 0}, {0, -0.8f, 0});
  return mesh.Take();
}

}  // namespace

Mesh BuildCrate() {
  MeshBuilder mesh;
  mesh.AddBox(kPlanks, {-0.75f, 0, -0.75f}, {0.75f, 1.5f, 0.75f});
  mesh.SetSolid(false);
  for (const float y : {0.0f, 1.3f}) {
    mesh.AddClosedBox(kPlanks, {-0.82f, y, -0.82f}, {0.82f, y + 0.2f, 0.82f});
  }
  return mesh.Take();
}

Mesh BuildBarrel() {
  MeshBuilder mesh;
  mesh.AddCylinder(kRedBarrel, {0, 0, 0}, 0.5f, 0.5f, 1.5f, 12);
  mesh.SetSolid(false);
  for (const float y : {0.45f, 0.95f}) mesh.AddCylinder(kRust, {0, y, 0}, 0.54f, 0.54f, 0.1f, 12);
  return mesh.Take();
}

Mesh BuildSandbags() {
  MeshBuilder mesh;
  mesh.AddBox(kSandbag, {-2.5f, -0.5f, -0.5f}, {2.5f, 0.9f, 0.5f});
  mesh.AddBox(kSandbag, {-2.3f, 0.9f, -0.35f}, {2.3f, 1.3f, 0.35f});
  mesh.AddBox(kSandbag, {-2.5f, -0.5f, -2.2f}, {-1.6f, 0.9f, -0.5f});
  mesh.AddBox(kSandbag, {1.6f, -0.5f, -2.2f}, {2.5f, 0.9f, -0.5f});
  return mesh.Take();
}

Mesh BuildTent() {
  MeshBuilder mesh;
  mesh.AddBox(kCanvas, {-2.6f, -0.5f, -3.4f}, {2.6f, 1.1f, 3.4f});
  mesh.AddGableRoof(kCanvas, kCanvas, {-2.9f, 1, -3.6f}, {2.9f, 3.3f, 3.6f});
  mesh.SetSolid(false);
  for (const float z : {-3.6f, 3.6f}) {
    mesh.AddBox(kPlanks, {-0.08f, 0, z - 0.08f}, {0.08f, 3.5f, z + 0.08f});
  }
  return mesh.Take();
}

Mesh BuildFence() {
  MeshBuilder mesh;
  for (const float x : {-4.0f, -2.0f, 0.0f, 2.0f, 4.0f}) {
    mesh.AddBox(kPlanks, {x - 0.1f, -0.6f, -0.1f}, {x + 0.1f, 1.3f, 0.1f});
  }
  for (const float y : {0.45f, 0.95f}) {
    mesh.AddClosedBox(kPlanks, {-4.2f, y, -0.16f}, {4.2f, y + 0.16f, -0.08f});
  }
  return mesh.Take();
}

Mesh BuildFlagBase() {
  MeshBuilder mesh;
  mesh.AddCylinder(kConcrete, {0, -0.5f, 0}, 0.9f, 0.8f, 0.9f, 10);
  mesh.AddCylinder({"whitepaint", 2}, {0, 0.4f, 0}, 0.09f, 0.07f, 9, 6);
  return mesh.Take();
}

Mesh BuildRedFlag() { return BuildFlag(kRed); }
Mesh BuildBlueFlag() { return BuildFlag(kBlue); }

// Stands for an object that the object list does not know.
Mesh BuildMarker() {
  MeshBuilder mesh;
  mesh.AddClosedBox({"redpaint", 0}, {-0.5f, 0, -0.5f}, {0.5f, 1, 0.5f});
  return mesh.Take();
}

Mesh BuildTank() {
  MeshBuilder mesh;
  for (const float x : {-1.35f, 1.35f}) {  // tracks
    mesh.AddClosedBox(kTread, {x - 0.3f, 0.15f, -2.6f}, {x + 0.3f, 1.05f, 2.6f});
    for (const float z : {-2.6f, 2.6f}) {
      mesh.AddRoller(kTread, kSteel, {x, 0.6f, z}, 0.45f, 0.6f, 10);
    }
  }
  mesh.AddClosedBox(kCamouflage, {-1.05f, 0.4f, -2.7f}, {1.05f, 1.35f, 2.7f});
  mesh.AddClosedBox(kCamouflage, {-1.65f, 1.05f, -2.7f}, {1.65f, 1.5f, 1.9f});
  mesh.Quad(kCamouflage, {1.05f, 1.5f, 1.9f}, {-1.05f, 1.5f, 1.9f}, {-1.05f, 1.0f, 2.9f},
            {1.05f, 1.0f, 2.9f});                                            // glacis
  mesh.AddCylinder(kCamouflage, {0, 1.5f, -0.2f}, 1.15f, 0.95f, 0.75f, 10);  // turret
  mesh.AddCylinder(kSteel, {0.35f, 2.25f, -0.5f}, 0.35f, 0.3f, 0.2f, 8);     // hatch
  mesh.AddClosedBox(kSteel, {-0.1f, 1.8f, 0.8f}, {0.1f, 2.0f, 3.9f});        // gun
  return mesh.Take();
}

Mesh BuildJeep() {
  MeshBuilder mesh;
  AddWheels(mesh, 0.75f, 0.38f, {-1.05f, 1.05f});
  mesh.AddClosedBox(kCamouflage, {-0.75f, 0.45f, -1.7f}, {0.75f, 0.85f, 1.6f});
  mesh.AddBox(kCamouflage, {-0.65f, 0.85f, 0.55f}, {0.65f, 1.15f, 1.6f});  // bonnet
  mesh.AddBox(kCamouflage, {-0.75f, 0.85f, -1.7f}, {-0.65f, 1.15f, 0.55f});
  mesh.AddBox(kCamouflage, {0.65f, 0.85f, -1.7f}, {0.75f, 1.15f, 0.55f});
  for (const float x : {-0.38f, 0.38f}) {  // seats
    mesh.AddBox(kCanvas, {x - 0.25f, 0.85f, -0.5f}, {x + 0.25f, 1.05f, 0.05f});
    mesh.AddBox(kCanvas, {x - 0.25f, 0.85f, -0.65f}, {x + 0.25f, 1.5f, -0.5f});
  }
  mesh.SetSolid(false);
  mesh.AddClosedBox(kWindow, {-0.65f, 1.15f, 0.5f}, {0.65f, 1.65f, 0.56f});
  mesh.AddRoller(kTread, kSteel, {0, 0.95f, -1.85f}, 0.34f, 0.2f, 10);  // spare wheel
  return mesh.Take();
}

Mesh BuildTruck() {
  MeshBuilder mesh;
  AddWheels(mesh, 0.95f, 0.5f, {-2.2f, -1.1f, 1.9f});
  mesh.AddClosedBox(kSteel, {-0.8f, 0.5f, -2.9f}, {0.8f, 0.8f, 2.7f});       // frame
  mesh.AddClosedBox(kPlanks, {-1.15f, 0.9f, -3.0f}, {1.15f, 1.5f, 0.5f});    // bed
  mesh.AddClosedBox(kCamouflage, {-1.0f, 0.8f, 0.6f}, {1.0f, 2.3f, 1.8f});   // cab
  mesh.AddClosedBox(kCamouflage, {-0.7f, 0.7f, 1.8f}, {0.7f, 1.55f, 2.9f});  // bonnet
  mesh.AddBox(kCanvas, {-1.15f, 1.5f, -3.0f}, {1.15f, 2.5f, 0.45f});
  mesh.AddGableRoof(kCanvas, kCanvas, {-1.2f, 2.5f, -3.05f}, {1.2f, 3.1f, 0.5f});
  mesh.SetSolid(false);
  mesh.AddClosedBox(kWindow, {-0.8f, 1.6f, 1.8f}, {0.8f, 2.15f, 1.83f});
  return mesh.Take();
}

Mesh BuildLandingBoat() {
  MeshBuilder mesh;
  mesh.AddClosedBox(kSteel, {-2.2f, -0.8f, -5.5f}, {2.2f, 0.2f, 4.6f});  // hull
  mesh.AddBox(kSteel, {-2.2f, 0.2f, -5.5f}, {-1.9f, 1.6f, 4.6f});        // sides
  mesh.AddBox(kSteel, {1.9f, 0.2f, -5.5f}, {2.2f, 1.6f, 4.6f});
  mesh.AddBox(kSteel, {-2.2f, 0.2f, -5.5f}, {2.2f, 1.6f, -3.6f});       // engine house
  mesh.AddBox(kCamouflage, {-0.8f, 1.6f, -5.2f}, {0.8f, 2.7f, -4.0f});  // wheelhouse
  // The ramp at the bow, inside and outside.
  mesh.Quad(kPlanks, {-2.2f, 2.0f, 5.6f}, {2.2f, 2.0f, 5.6f}, {2.2f, -0.4f, 4.6f},
            {-2.2f, -0.4f, 4.6f});
  mesh.Quad(kSteel, {2.2f, 2.0f, 5.6f}, {-2.2f, 2.0f, 5.6f}, {-2.2f, -0.4f, 4.6f},
            {2.2f, -0.4f, 4.6f});
  return mesh.Take();
}

Mesh BuildFieldGun() {
  MeshBuilder mesh;
  AddWheels(mesh, 0.8f, 0.55f, {0.0f});
  mesh.AddClosedBox(kSteel, {-0.8f, 0.5f, -0.08f}, {0.8f, 0.62f, 0.08f});  // axle
  mesh.Quad(kCamouflage, {0.9f, 1.6f, 0.15f}, {-0.9f, 1.6f, 0.15f}, {-0.9f, 0.4f, 0.35f},
            {0.9f, 0.4f, 0.35f});  // shield, both sides
  mesh.Quad(kCamouflage, {-0.9f, 1.6f, 0.13f}, {0.9f, 1.6f, 0.13f}, {0.9f, 0.4f, 0.33f},
            {-0.9f, 0.4f, 0.33f});
  mesh.AddClosedBox(kSteel, {-0.1f, 0.95f, -0.8f}, {0.1f, 1.15f, 2.6f});  // barrel
  for (const float x : {-0.35f, 0.35f}) {                                 // trails
    mesh.AddClosedBox(kSteel, {x - 0.08f, 0.1f, -2.4f}, {x + 0.08f, 0.5f, 0});
  }
  return mesh.Take();
}

}  // namespace mw::sample
