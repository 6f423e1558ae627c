// A flat level with an open archive, a catalogue of two houses and a tree, and an empty level tree.
// Nothing is drawn: CursorPoint is where a test puts it.
#pragma once

#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/level_archive_test.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {

class ObjectLevelTest : public LevelArchiveTest {
 protected:
  static constexpr float kGround = 63.5f;  // world height of the flat ground
  static constexpr float kSide = 1024;     // world units

  ObjectLevelTest() {
    ResetObjectsState();
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = static_cast<std::int32_t>(kSide);
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    InitGrid();
    LoadCatalogue(
        "[STRUCTURES]\nbunker01=StandardMesh(bunker01_m1)\nhut=StandardMesh(hut_m1)\n"
        "[TREES]\noak=TreeMesh(oak_m1)\n");
    BuildTree();
    objectStore.objects.reserve(kMaxStaticObjects);  // what AddObject gives stays valid
  }
  ~ObjectLevelTest() override {
    DestroyTerrain();
    ResetObjectsState();
  }

  void LoadCatalogue(const std::string& list) {
    std::ofstream(folder / "objects.lst") << list;
    modConfig.ObjectsList = (folder / "objects.lst").string();
    LoadObjectCatalogue();
  }
  // An object that stands in the level, at a place in level coordinates.
  static StaticObject& AddObject(const std::string& name, const Vector3& position) {
    StaticObject object;
    object.name = name;
    object.catalogueIndex = FindCatalogueEntry(name);
    object.position = position;
    object.treeItem = InsertItem(levelTree.fixed.standardMeshes, name);
    return objectStore.objects.emplace_back(object);
  }
  static ObjectSpawn& AddObjectSpawn(const Vector3& position) {
    EntityTables& table = entities.Of(EntityKind::ObjectSpawn);
    if (table.templates.empty()) {
      auto spawner = std::make_unique<ObjectSpawnTemplate>();
      spawner->name = "tank";
      spawner->modes = kModeConquest;
      table.templates.push_back(std::move(spawner));
    }
    auto spawn = std::make_unique<ObjectSpawn>();
    spawn->name = "tank";
    spawn->templateIndex = 0;
    spawn->modes = kModeConquest;
    spawn->position = position;
    spawn->treeItem = InsertItem(levelTree.fixed.objectSpawns, "tank (CQ)");
    table.instances.push_back(std::move(spawn));
    return static_cast<ObjectSpawn&>(*table.instances.back());
  }
  // The pixel 50, 50 shows the ground of a place in level coordinates.
  static void LookDownOn(float levelX, float z) {
    editor.viewWidth = editor.viewHeight = 101;
    camera.position = {kSide - levelX, 300, z};
    camera.pitch = -90;
    camera.UpdateDirection();
    UpdateViewSquare();
  }
  // The view's point over a place in level coordinates.
  static void PutCursorOver(float levelX, float y, float z) {
    objectStore.CursorPoint = {kSide - levelX, y, z};
  }
};

}  // namespace mw
