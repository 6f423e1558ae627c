// An empty level of 1024 units with its tree, in which tests drop entities and answer their sheets.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "objects/property_sheet.h"
#include "support/sandbox.h"

namespace mw {

class EntityTest : public SandboxTest {
 protected:
  EntityTest() {
    modConfig = ModConfig{};
    modConfig.WorldSize = 1024;
    ResetObjectsState();
    BuildTree();
  }
  ~EntityTest() override { ResetObjectsState(); }

  static EntityTables& Of(EntityKind kind) { return entities.Of(kind); }
  static EntityTables& SoldierSpawns() { return Of(EntityKind::SoldierSpawn); }
  static EntityTables& ObjectSpawns() { return Of(EntityKind::ObjectSpawn); }
  static EntityTables& ControlPoints() { return Of(EntityKind::ControlPoint); }
  static SoldierSpawnTemplate& SoldierTemplate(std::size_t i) {
    return static_cast<SoldierSpawnTemplate&>(*SoldierSpawns().templates.at(i));
  }
  static ObjectSpawnTemplate& ObjectTemplate(std::size_t i) {
    return static_cast<ObjectSpawnTemplate&>(*ObjectSpawns().templates.at(i));
  }
  static ControlPointTemplate& PointTemplate(std::size_t i) {
    return static_cast<ControlPointTemplate&>(*ControlPoints().templates.at(i));
  }
  static ObjectSpawn& Vehicle(std::size_t i) {
    return static_cast<ObjectSpawn&>(*ObjectSpawns().instances.at(i));
  }

  // At a place of the level, x in level coordinates.
  static void PointAt(float x, float z) { objectStore.CursorPoint = {1024 - x, 20, z}; }
  static SpawnInstance& Drop(EntityKind kind, float x, float z) {
    PointAt(x, z);
    DropNewEntity(kind);
    return *Of(kind).instances.back();
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
    PointAt(x, z);
    DropTemplate(ObjectSpawns().templates.back()->treeItem);
    return static_cast<ObjectSpawn&>(*ObjectSpawns().instances.back());
  }
  static void DeleteLast(EntityKind kind) {
    DeleteInstance(kind, static_cast<int>(Of(kind).instances.size()) - 1);
  }

  static std::vector<std::string> TextsUnder(TreeItem parent) {
    std::vector<std::string> texts;
    for (const TreeItem child : ChildrenOf(parent)) texts.push_back(ItemText(child));
    return texts;
  }
  static std::vector<std::string> Messages() {
    std::vector<std::string> texts;
    for (const scripted::Prompt& prompt : scripted::script.prompts) {
      EXPECT_EQ(prompt.caption, "Error");
      EXPECT_EQ(prompt.icon, PromptIcon::Stop);
      texts.push_back(prompt.text);
    }
    return texts;
  }
  static void ExpectMessages(std::size_t count) {
    scripted::script.answers.assign(count, PromptAnswer::Ok);
  }

  // The user presses OK, after having done `change`; or Cancel.
  static void AcceptSheets(std::function<void(PropertySheet&)> change = [](PropertySheet&) {}) {
    hooks.runPropertySheet = [change](PropertySheet& sheet) { return change(sheet), true; };
  }
  static void CancelSheets(std::function<void(PropertySheet&)> change = [](PropertySheet&) {}) {
    hooks.runPropertySheet = [change](PropertySheet& sheet) { return change(sheet), false; };
  }
  static PropertyField& Field(PropertySheet& sheet, std::string_view label) {
    for (PropertyField& field : sheet.fields) {
      if (field.label == label) return field;
    }
    ADD_FAILURE() << "no field \"" << label << "\" in " << sheet.title;
    return sheet.fields.back();
  }
  static void Type(PropertySheet& sheet, std::string_view label, std::string_view text) {
    std::get<TextVariable>(Field(sheet, label).value).write(text);
  }
  static void Enter(PropertySheet& sheet, std::string_view label, std::int32_t number) {
    *std::get<std::int32_t*>(Field(sheet, label).value) = number;
  }
  static void Enter(PropertySheet& sheet, std::string_view label, const Vector3& vector) {
    float* values = std::get<float*>(Field(sheet, label).value);
    values[0] = vector.x, values[1] = vector.y, values[2] = vector.z;
  }
  static void ChooseModes(PropertySheet& sheet, GameModeMask modes) {
    GameModeChoice* rows = std::get<GameModeChoice*>(Field(sheet, "Game Modes").value);
    const GameModeChoices chosen = ChoicesOf(modes);
    for (std::size_t i = 0; i < chosen.size(); ++i) rows[i].checked = chosen[i].checked;
  }
};

}  // namespace mw
