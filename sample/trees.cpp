#include "sample/objects.h"

namespace mw::sample {
namespace {

constexpr Skin kBark{"bark", 2}, kBirchBark{"birchbark", 2};
constexpr float kRoots = -1.0f;  // how far a trunk reaches into the ground

}  // namespace

Mesh BuildOak() {
  MeshBuilder tree;
  tree.AddCylinder(kBark, {0, kRoots, 0}, 0.6f, 0.36f, 5.2f, 8);
  tree.AddCrown("leaves", {0, 7.4f, 0}, {3.6f, 2.9f, 3.6f}, 10, 7, 1);
  tree.AddCrown("leaves", {2.3f, 5.9f, 0.8f}, {2.1f, 1.7f, 2.0f}, 9, 6, 2);
  tree.AddCrown("leaves", {-2.0f, 6.1f, -1.3f}, {2.2f, 1.7f, 2.2f}, 9, 6, 3);
  tree.AddCrown("leaves", {-0.8f, 6.3f, 2.2f}, {1.9f, 1.5f, 1.9f}, 9, 6, 4);
  return tree.Take();
}

Mesh BuildPine() {
  MeshBuilder tree;
  tree.AddCylinder(kBark, {0, kRoots, 0}, 0.38f, 0.2f, 5, 7);
  float base = 2.2f, radius = 2.9f;
  for (int whorl = 0; whorl < 5; ++whorl) {
    tree.AddConeOfLeaves("needles", {0, base, 0}, radius, 3.6f, 12);
    base += 1.75f;
    radius *= 0.78f;
  }
  return tree.Take();
}

Mesh BuildBirch() {
  MeshBuilder tree;
  tree.AddCylinder(kBirchBark, {0, kRoots, 0}, 0.24f, 0.14f, 6, 7);
  tree.AddCrown("birchleaves", {0, 6.6f, 0}, {1.7f, 2.9f, 1.7f}, 9, 8, 5);
  tree.AddCrown("birchleaves", {0.7f, 4.9f, 0.4f}, {1.2f, 1.4f, 1.2f}, 8, 6, 6);
  tree.AddCrown("birchleaves", {-0.6f, 5.3f, -0.5f}, {1.1f, 1.4f, 1.1f}, 8, 6, 7);
  return tree.Take();
}

}  // namespace mw::sample
