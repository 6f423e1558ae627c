// A level of 1024 units with an open archive, a catalogue of two houses and a tree, and an
// empty level tree, in which a user works. Nothing is drawn: CursorPoint is where a test puts it,
// and there is ground only for who asks for it, since that takes longer than all else.
#pragma once

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/level_archive_test.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/level_story.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "objects/property_sheet.h"
#include "support/prompts.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {

class ObjectLevelTest : public LevelArchiveTest {
 protected:
  static constexpr float kGround = 63.5f;  // world height of the flat ground
  static constexpr float kSide = 1024;     // world units

  ObjectLevelTest() {
    ResetObjectsState();
    modConfig.MaterialSize = 64;
    modConfig.WorldSize = static_cast<std::int32_t>(kSide);
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    LoadCatalogue(
        "[TREES]\noak=TreeMesh(oak_m1)\n"
        "[STRUCTURES]\nbunker01=StandardMesh(bunker01_m1)\nhut=StandardMesh(hut_m1)\n");
    BuildTree();
    objectStore.objects.reserve(kMaxStaticObjects);  // what AddObject gives stays valid
  }
  ~ObjectLevelTest() override {
    DestroyTerrain();
    ResetObjectsState();
  }

  static void MakeFlatGround() { InitGrid(); }
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
  static SpawnInstance& Placed(EntityKind kind, std::size_t i) {
    return *entities.Of(kind).instances.at(i);
  }
  static SpawnInstance& Soldier(std::size_t i) { return Placed(EntityKind::SoldierSpawn, i); }
  static SpawnInstance& Point(std::size_t i) { return Placed(EntityKind::ControlPoint, i); }
  static ObjectSpawn& Vehicle(std::size_t i) {
    return static_cast<ObjectSpawn&>(Placed(EntityKind::ObjectSpawn, i));
  }
  static SoldierSpawnTemplate& SoldierTemplate(std::size_t i) {
    return static_cast<SoldierSpawnTemplate&>(*Templates(EntityKind::SoldierSpawn).at(i));
  }
  static ObjectSpawnTemplate& ObjectTemplate(std::size_t i) {
    return static_cast<ObjectSpawnTemplate&>(*Templates(EntityKind::ObjectSpawn).at(i));
  }
  static ControlPointTemplate& PointTemplate(std::size_t i) {
    return static_cast<ControlPointTemplate&>(*Templates(EntityKind::ControlPoint).at(i));
  }
  static std::vector<std::unique_ptr<SpawnTemplate>>& Templates(EntityKind kind) {
    return entities.Of(kind).templates;
  }

  // What the user drags from the tree to a place in level coordinates.
  static SpawnInstance& Drop(EntityKind kind, float x, float z) {
    PutCursorOver(x, 20, z);
    DropNewEntity(kind);
    return *entities.Of(kind).instances.back();
  }
  static SpawnInstance& DropControlPoint(float x, float z) {
    return Drop(EntityKind::ControlPoint, x, z);
  }
  static SpawnInstance& DropSoldierSpawn(float x, float z) {
    return Drop(EntityKind::SoldierSpawn, x, z);
  }
  static void AddVehicleTemplate() {
    AcceptSheets();
    AddObjectSpawnTemplate();
  }
  static ObjectSpawn& DropVehicle(float x, float z) {
    PutCursorOver(x, 20, z);
    DropTemplate(ObjectTemplate(Templates(EntityKind::ObjectSpawn).size() - 1).treeItem);
    return static_cast<ObjectSpawn&>(*entities.Of(EntityKind::ObjectSpawn).instances.back());
  }

  // The user presses OK, after having entered something, as in "Name: hut; Pos: 1 2 3"; or Cancel.
  static void AcceptSheets(std::string_view entries = {}) { AnswerSheets(entries, true); }
  static void CancelSheets(std::string_view entries = {}) { AnswerSheets(entries, false); }

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

  LevelStory story;

 private:
  static void AnswerSheets(std::string_view entries, bool ok) {
    hooks.runPropertySheet = [entries = std::string(entries), ok](PropertySheet& sheet) {
      std::istringstream list(entries);
      for (std::string label, value; std::getline(list >> std::ws, label, ':');) {
        std::getline(list >> std::ws, value, ';');
        const auto field = std::ranges::find_if(
            sheet.fields, [&](const PropertyField& each) { return each.label == label; });
        EXPECT_NE(field, sheet.fields.end()) << "no \"" << label << "\" in " << sheet.title;
        if (field != sheet.fields.end()) Enter(*field, value);
      }
      return ok;
    };
  }
  static void Enter(PropertyField& field, const std::string& value) {
    std::istringstream words(value);
    if (const auto* text = std::get_if<TextVariable>(&field.value)) text->write(value);
    for (int i = 0; i < field.count; ++i) {
      if (auto* const* number = std::get_if<std::int32_t*>(&field.value)) words >> (*number)[i];
      if (auto* const* real = std::get_if<float*>(&field.value)) words >> (*real)[i];
      if (auto* const* mode = std::get_if<GameModeChoice*>(&field.value))
        (*mode)[i].checked = value.find((*mode)[i].label) != std::string::npos;
    }
  }
};

}  // namespace mw
