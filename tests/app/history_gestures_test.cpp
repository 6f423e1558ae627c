// Gestures of every kind at random, undone and redone at random: at each step the level is what it
// was there before, byte for byte in what a save would write.
#include <fstream>
#include <gtest/gtest.h>
#include <random>

#include "app/input.h"
#include "app/keys.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "app/level_parts.h"
#include "app/level_tree_actions.h"
#include "app/undo.h"
#include "core/editor_state.h"
#include "core/history.h"
#include "core/hooks.h"
#include "data/game_file.h"
#include "objects/edit_selected.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_clipboard.h"
#include "objects/object_mapper.h"
#include "objects/object_replace.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "objects/property_sheet.h"
#include "objects/scatter.h"
#include "objects/static_objects.h"
#include "terrain/brush_stroke.h"
#include "terrain/height_exchange.h"
#include "terrain/level_textures.h"
#include "terrain/material_generation.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/mini_map_picture.h"
#include "terrain/point_selection.h"
#include "terrain/random_terrain.h"
#include "terrain/roads.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

class HistoryGesturesTest : public LevelTest, public testing::WithParamInterface<unsigned> {
 protected:
  HistoryGesturesTest() {
    hooks.loadObjectCatalogue = [] {};
    auto& catalogue = objectStore.catalogue;
    catalogue.entries[0].name = "hut";
    catalogue.entries[1].name = "oak";
    catalogue.entries[1].meshKind = MeshKind::TreeMesh;
    catalogue.entryCount = 2;
    BuildTree();
    AnswerDialogs("Island");
    EXPECT_TRUE(OpenLevel());
    for (const char* const name : {"hut", "oak"}) {
      CachedMesh mesh;
      mesh.name = mesh.meshName = name;
      mesh.treeItem = InsertItem(levelTree.fixed.cachedObjects, name);
      objectStore.meshes.push_back(mesh);
    }
    scripted::script.answers.assign(4000, PromptAnswer::Ok);
    hooks.runPropertySheet = [this](PropertySheet& sheet) { return FillIn(sheet); };
    camera.position = {512, 200, 512};
    UpdateViewSquare();
    std::ofstream("heightmap.raw") << std::string(256 * 256, 'k');
  }

  int Roll(int sides) { return static_cast<int>(dice_() % static_cast<unsigned>(sides)); }
  auto OneOf(const auto& some) {
    return some[static_cast<std::size_t>(Roll(static_cast<int>(some.size())))];
  }
  float Somewhere() { return static_cast<float>(200 + Roll(600)) + 0.37f; }

  bool FillIn(PropertySheet& sheet) {
    if (Roll(4) == 0) return false;
    PropertyField& field = sheet.fields[static_cast<std::size_t>(Roll(sheet.fieldCount))];
    if (auto* const number = std::get_if<float*>(&field.value))
      (*number)[Roll(field.count)] += static_cast<float>(Roll(3)) * 0.1f;
    if (auto* const number = std::get_if<std::int32_t*>(&field.value)) **number = Roll(3);
    if (auto* const text = std::get_if<TextVariable>(&field.value); text && field.editable)
      text->write("name" + std::to_string(Roll(3)));
    if (auto* const modes = std::get_if<GameModeChoice*>(&field.value)) {
      GameModeChoice& mode = (*modes)[Roll(3)];
      mode = {true, mode.enabled, mode.label, false};
    }
    return true;
  }

  void PickAt(float x, float z) { terrain.pick = {x, 60, z, false}; }

  void Stroke() {
    SelectTool(OneOf(std::array{TerrainTool::Carving, TerrainTool::Raising, TerrainTool::Smoothing,
                                TerrainTool::Flatten}));
    SetBrushSize(1 + Roll(9));
    terrain.flattenSampled = 1;
    terrain.flattenHeight = static_cast<float>(Roll(200));
    PickAt(Somewhere(), Somewhere());
    PressBrush(now_);
    for (int k = Roll(4); k-- > 0;) {
      PickAt(terrain.pick.x + static_cast<float>(Roll(80) - 40), terrain.pick.z + 20);
      MoveBrush();
      HoldBrush(now_ += 20);
    }
    ReleaseBrush(now_ += 20);
  }

  void Paint() {
    SetCurrentMaterial(Roll(16));
    SetMaterialBrushSize(1 + Roll(9));
    materialMapper->materialCellSize = terrain.cellSize;
    materialMapper->pick = {Somewhere(), 60, Somewhere()};
    materialMapper->pickMissed = false;
    StartPainting();
    PaintAlong({materialMapper->pick.x, materialMapper->pick.z, Somewhere(), Somewhere()});
    StopPainting();
  }

  void MovePoints() {
    for (int k = 1 + Roll(5); k-- > 0;) {
      const int i = 60 + Roll(80), j = 60 + Roll(80);
      terrain.grid[i][j].selected = 1;
      GrowSelectionBox(i, j);
    }
    ComputeSmoothingWeights();
    for (int k = 1 + Roll(4); k-- > 0;) MoveSelection(static_cast<float>(Roll(9) - 4) * 0.3f);
    ClearSelection();
  }

  void BuildRoad() {
    for (int k = 0; k < 2 + Roll(3); ++k) AddRoadPointAt(Somewhere(), Somewhere());
    terrain.roadAutoMaterial = static_cast<std::uint8_t>(Roll(2));
    terrain.roadMaterial = Roll(16);
    terrain.roadWidth = 1 + Roll(4);
    CreateRoad();
  }

  void ReplaceGround() {
    static const MaterialPlugin kPlugin{
        [] { return true; },
        [](auto, unsigned* grid, auto...) { grid[40 * kGridCapacity + 9] += 1; }};
    switch (Roll(4)) {
      case 0:
        return GenerateTerrain({100 + Roll(50), 1 + Roll(25), 1 + Roll(3)});
      case 1:
        return ImportHeightmap([](const char*) { return SampleBits::Eight; });
      case 2:
        return FillWithMaterial();
      default:
        return GenerateMaterialMap(kPlugin);
    }
  }

  void Drop() {
    const LevelTree::FixedItems& fixed = levelTree.fixed;
    objectStore.CursorPoint = {Somewhere(), 50, Somewhere()};
    std::vector<TreeItem> items{fixed.newControlPoint, fixed.newSoldierSpawn};
    for (const CachedMesh& mesh : objectStore.meshes) items.insert(items.end(), 3, mesh.treeItem);
    for (const auto& one : entities.Of(EntityKind::ObjectSpawn).templates)
      items.push_back(one->treeItem);
    DropLevelTreeItem(OneOf(items), 5, 5);
  }

  void SelectSome() {
    DeselectAll();
    ForEachPlacement([this](Placement& item) { item.selected = Roll(3) == 0; });
    UpdateToolButtons(AnySelected());
    ComputePivot();
  }

  void DragSome() {
    SelectSome();
    if (!AnySelected()) return;
    objectStore.snapToGround = Roll(2) == 0;
    objectStore.tool = static_cast<ObjectTool>(1 + Roll(7));
    for (int y = 40, k = Roll(4); k-- > 0; y += 9) DragObjects(30 + y, y + 9, 30, y);
    ReleaseObjects();
  }

  void ScatterSome() {
    editor.viewWidth = editor.viewHeight = 101;
    camera.position = {Somewhere(), 250, Somewhere()};
    camera.pitch = -90;
    camera.UpdateDirection();
    UpdateViewSquare();
    objectStore.scatter.settings = {
        {{{"oak", 2}, {"hut", 1}}}, static_cast<float>(5 + Roll(40)), 4, 60, {1, 2}};
    objectStore.tool = ObjectTool::Scatter;
    editor.ctrlHeld = Roll(3) == 0;
    PressScatter(Roll(100), Roll(100));
    for (int k = Roll(3); k-- > 0;) DragObjects(Roll(100), Roll(100), 0, 0);
    ReleaseObjects();
    editor.ctrlHeld = false;
  }

  // Every item of the level's records.
  std::vector<TreeItem> Items() {
    std::vector<TreeItem> items;
    for (const StaticObject& object : objectStore.objects) items.push_back(object.treeItem);
    for (const EntityTables& table : entities.tables) {
      for (const auto& one : table.instances) items.push_back(one->treeItem);
      for (const auto& one : table.templates) items.push_back(one->treeItem);
    }
    return items;
  }
  TreeItem AnyItem() {
    const auto items = Items();
    return items.empty() ? 0 : OneOf(items);
  }

  void ChangeObjects() {
    switch (Roll(12)) {
      case 0:
        return ActivateLevelTreeItem(levelTree.fixed.addTemplate), void();
      case 1:
      case 2:
        return ActivateLevelTreeItem(AnyItem()), void();
      case 3:
        return DeleteLevelTreeItem(AnyItem()), void();
      case 4:
        SelectSome();
        return Roll(2) == 0 ? DeleteSelected() : DeleteLevelTreeItems({AnyItem(), AnyItem()});
      case 5:
        SelectSome();
        CopySelected();
        objectStore.CursorPoint = {Somewhere(), 50, Somewhere()};
        return PasteCopied(5, 5);
      case 6:
        return SnapAllToGround();
      case 7:
        SelectSome();
        return DuplicateSelected(), void();
      case 8:
        SelectSome();
        return ReplaceSelected(Roll(2)), void();
      case 9:
        SelectSome();
        return EditSelected(), void();
      default:
        return DragSome();
    }
  }

  void ChangeSettings() {
    if (Roll(2) == 0) {
      for (int k = 1 + Roll(3); k-- > 0;) RouteKey(kKeyPageUp, false);
      return;
    }
    const HistoryStep step("Fog Settings");
    KeepSetting(modConfig);
    KeepSetting(levelTextures.SurfaceAssigned);
    modConfig.fogStart += Roll(3);
    modConfig.chosenTeam[0] = Roll(3);
    levelTextures.SurfaceAssigned[1][2] = Roll(2) == 0;
    editor.levelModified = true;
  }

  void GroundAnew() { Roll(3) == 0 ? ReplaceGround() : Stroke(); }
  void Filter() { SetModeFilter(Roll(2) == 0 ? kAllModes : kModeConquest); }
  void Gesture() {
    using Self = HistoryGesturesTest;
    static constexpr void (Self::*kGestures[])() = {
        &Self::Stroke,       &Self::Stroke,      &Self::Paint,          &Self::MovePoints,
        &Self::BuildRoad,    &Self::GroundAnew,  &Self::ChangeSettings, &Self::Drop,
        &Self::Drop,         &Self::ScatterSome, &Self::Filter,         &Self::ChangeObjects,
        &Self::ChangeObjects};
    (this->*kGestures[Roll(static_cast<int>(std::size(kGestures)))])();
  }

  // What a save would write, the Mini-Map, and the rows of the tree.
  struct State {
    std::vector<Bytes> members;
    std::vector<float> heights;
    decltype(MiniMapPicture::grey) miniMap;
    std::vector<std::string> rows;
    bool operator==(const State&) const = default;
  };

  static State Now() {
    State state;
    for (GameMember& member : CaptureGameFiles(WriteEditedParts))
      state.members.push_back(std::move(member.data));
    for (int i = 0; i <= 256; ++i) {
      for (int j = 0; j <= 256; ++j) state.heights.push_back(terrain.grid[i][j].h);
    }
    state.miniMap = terrain.miniMap.grey;
    for (const TreeItem parent : {levelTree.fixed.standardMeshes, levelTree.fixed.treeMeshes}) {
      for (const TreeItem item : ChildrenOf(parent))
        state.rows.push_back(levelTree.items.at(item).text);
    }
    return state;
  }

  // Every record has its row, and no row is left without a record.
  void ExpectTreeIsWhole() {
    SetModeFilter(kAllModes);
    std::size_t shown = 0;
    for (const StaticObject& object : objectStore.objects) {
      EXPECT_EQ(levelTree.items.at(object.treeItem).text, object.name.View());
      ++shown;
    }
    EXPECT_EQ(ChildrenOf(levelTree.fixed.standardMeshes).size() +
                  ChildrenOf(levelTree.fixed.treeMeshes).size(),
              shown);
    for (const EntityTables& table : entities.tables) {
      for (const auto& one : table.instances) EXPECT_TRUE(levelTree.items.contains(one->treeItem));
    }
  }

 private:
  std::mt19937 dice_{GetParam()};
  std::uint32_t now_ = 1000;
};

// Together they make every kind of gesture.
INSTANTIATE_TEST_SUITE_P(Seeds, HistoryGesturesTest, testing::Values(20u, 22u));

TEST_P(HistoryGesturesTest, EveryStateComesBackExactly) {
  std::vector<State> states{Now()};
  std::vector<std::string> names;
  while (editor.history.past.size() < 90) {
    const std::size_t before = editor.history.past.size();
    Gesture();
    ASSERT_FALSE(editor.history.IsRecording());
    if (editor.history.past.size() == before) {
      EXPECT_TRUE(before == 0 || Now() == states.back() || editor.history.past.back().isRun)
          << "a change that is no step, after " << NextUndo();
      states.back() = Now();
      continue;
    }
    states.push_back(Now());
    names.push_back(NextUndo());
  }
  const auto expectState = [&] {
    const std::size_t at = editor.history.past.size();
    EXPECT_TRUE(Now() == states[at])
        << "step " << at << ", " << (at > 0 ? names[at - 1] : "opened");
    EXPECT_EQ(editor.levelModified, at != 0);
    ExpectTreeIsWhole();
    return !HasFailure();
  };
  for (int portion = 0; portion < 12 && !HasFailure(); ++portion) {
    const bool isUndo = Roll(2) == 0;
    for (int k = Roll(40); k-- > 0 && expectState();) isUndo ? UndoStep() : RedoStep();
  }
  while (!NextUndo().empty() && expectState()) UndoStep();
  expectState();
  while (!NextRedo().empty() && expectState()) RedoStep();
  EXPECT_TRUE(Now() == states.back());
  EXPECT_GT(std::ranges::count(names, "Scatter"), 0);
}

}  // namespace
}  // namespace mw
