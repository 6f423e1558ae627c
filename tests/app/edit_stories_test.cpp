// Mouse, keys, commands, camera and level tree, by what the level holds and the windows show then:
// the stories in tests/golden/app/edits.
#include <cctype>
#include <cmath>
#include <gtest/gtest.h>

#include "app/camera_control.h"
#include "app/command_table.h"
#include "app/commands.h"
#include "app/edit_story_state.h"
#include "app/editing_fixture.h"
#include "app/level_tree_actions.h"
#include "app/start_up.h"
#include "app/undo.h"
#include "app/wheel.h"
#include "core/history.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/placement.h"
#include "objects/sheet_text.h"
#include "terrain/material_mapper.h"
#include "terrain/roads.h"

namespace mw {
namespace {

const std::map<std::string, EditMode> kModes = {{"terrain", EditMode::TerrainMapper},
                                                {"objects", EditMode::ObjectMapper},
                                                {"materials", EditMode::MaterialMapper}};
const std::map<std::string, int> kNamedKeys = {
    {"Tab", kKeyTab},       {"Shift", kKeyShift},       {"Ctrl", kKeyCtrl},
    {"Escape", kKeyEscape}, {"Space", kKeySpace},       {"PageUp", kKeyPageUp},
    {"Delete", kKeyDelete}, {"PageDown", kKeyPageDown}, {"Plus", kKeyNumpadPlus},
    {"Left", kKeyLeft},     {"Right", kKeyRight},       {"Up", kKeyUp},
    {"Down", kKeyDown},     {"Minus", kKeyNumpadMinus}, {"Home", kKeyHome},
    {"[", kKeyBracketLeft}, {"]", kKeyBracketRight},    {"Alt", kKeyAlt}};
const std::map<std::string, MouseButton> kButtons = {{"left", MouseButton::Left},
                                                     {"middle", MouseButton::Middle},
                                                     {"right", MouseButton::Right},
                                                     {"no", MouseButton::None}};
const std::map<std::string, MouseEvent> kEvents = {{"down", MouseEvent::Press},
                                                   {"up", MouseEvent::Release},
                                                   {"move", MouseEvent::Move},
                                                   {"double", MouseEvent::DoubleClick}};
// Windows that only open here.
const std::pair<const char*, WindowFunction<void()>*> kWindows[] = {
    {"the file adder", &shell.addFileDialog},
    {"the picture", &shell.savePictureDialog},
    {"the statistics", &shell.levelStatisticsDialog},
    {"the check", &shell.checkLevelDialog},
    {"the surface assignments", &shell.surfaceAssignmentsDialog},
    {"the light settings", &shell.lightSettingsDialog},
    {"the fog settings", &shell.fogSettingsDialog},
    {"the shadow settings", &shell.shadowSettingsDialog},
    {"the water settings", &shell.waterSettingsDialog},
    {"the teams", &shell.teamSelectionDialog},
    {"the object browser", &shell.objectBrowserDialog},
    {"the splash", &shell.aboutDialog},
    {"the credits", &shell.creditsDialog},
    {"the tree has the keyboard", &shell.focusTreePanel},
    {"the find field has the keyboard", &shell.focusFindField},
    {"the window closes", &shell.closeMainWindow}};

int KeyOf(const std::string& word) {
  const auto named = kNamedKeys.find(word);
  return named == kNamedKeys.end() ? word.at(0) : named->second;
}
// The letters of a caption, without those of its key.
std::string NameOf(const CommandSpec& command) {
  std::string name;
  for (const char c : command.caption.substr(0, command.caption.find('\t'))) {
    if (std::isalpha(static_cast<unsigned char>(c))) name += c;
  }
  return name;
}
CommandId CommandOf(const std::string& name) {
  const auto found = std::ranges::find(CommandTable(), name, NameOf);
  return found == CommandTable().end() ? throw std::logic_error(name) : found->id;
}

class EditStory : public EditingTest, public testing::WithParamInterface<std::string> {
 protected:
  EditStory() {
    for (const auto& [name, window] : kWindows) *window = [this, what = name] { Happens(what); };
    shell.createRoadDialog =
        shell.terrainShadowsDialog = [this] { return Happens("the dialog"), true; };
    shell.setCommandChecked = [this](CommandId id, bool on) {
      Happens("button " + NameOf(*FindCommand(id)) + (on ? " on" : " off"));
    };
    shell.showModeToolbar = [this](EditMode mode) {
      Happens("toolbar " + std::to_string(static_cast<int>(mode)));
    };
    shell.showUndoSteps = [this](const std::string& undo, const std::string& redo, bool usable) {
      steps = "steps  undo \"" + undo + "\", redo \"" + redo + (usable ? "\"" : "\", grey");
    };
    shell.renderFrameNow = [this] {
      Happens("a frame");
      FollowCamera();
    };
    shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
    hooks.runPropertySheet = [this](PropertySheet& sheet) { return FillIn(sheet), true; };
    hooks.invalidateMiniMap = [this] { Happens("the Mini-Map is drawn anew"); };
    levelTree.view.selectAll = [this](const std::vector<TreeItem>& items) {
      Happens("the tree selects" + TextsOf(items));
    };
    ConnectUndo();
  }
  void SetUp() override {
    EditingTest::SetUp();
    StateAfterStep();  // a story begins with what is changed first
  }

  void Happens(const std::string& what) { Tell("       " + what); }

  // The lines that are not as after the step before.
  std::string StateAfterStep() override {
    std::vector<std::string> lines = DescribeEditor(enabled);
    lines.insert(lines.begin(), steps);
    return News(lines);
  }

  // A sheet with what the story typed into it: label, which of its numbers, and the number.
  void FillIn(PropertySheet& sheet) {
    Happens(typed.empty() ? "a sheet" : Described(sheet));
    for (const Words& w : typed) {
      for (const PropertyField& field : sheet.fields) {
        if (!field.label.View().starts_with(w[0])) continue;
        const int index = std::stoi(w[1]);
        if (auto* const* reals = std::get_if<float*>(&field.value))
          (*reals)[index] = std::stof(w[2]);
        if (auto* const* numbers = std::get_if<std::int32_t*>(&field.value))
          (*numbers)[index] = std::stoi(w[2]);
        if (auto* const* modes = std::get_if<GameModeChoice*>(&field.value))
          (*modes)[index] = {w[2] == "1", true, (*modes)[index].label, false};
      }
    }
    typed.clear();
  }

  void Mouse(const Words& w) {
    RouteMouse(kButtons.at(w[0]), kEvents.at(w[1]), std::stoi(w[2]), std::stoi(w[3]));
  }
  TreeItem Item(const std::string& name) const {
    const LevelTree::FixedItems& fixed = levelTree.fixed;
    const std::map<std::string, TreeItem> items = {{"bunker-1", firstBunker},
                                                   {"oak", oak},
                                                   {"bunker-2", secondBunker},
                                                   {"mesh", cachedBunker},
                                                   {"fog", fixed.fog},
                                                   {"world", fixed.world},
                                                   {"meshes", fixed.cachedObjects},
                                                   {"standard-meshes", fixed.standardMeshes},
                                                   {"object-spawns", fixed.objectSpawns},
                                                   {"soldier-spawns", fixed.soldierSpawns},
                                                   {"new-object", fixed.addNewObject},
                                                   {"new-control-point", fixed.newControlPoint},
                                                   {"new-spawn", fixed.newSoldierSpawn},
                                                   {"last", levelTree.lastItem},
                                                   {"nothing", 0}};
    if (name != "control-point") return items.at(name);
    return entities.Of(EntityKind::ControlPoint).instances.at(0)->treeItem;
  }
  std::vector<TreeItem> Items(const Words& w) const {
    std::vector<TreeItem> items;
    for (const std::string& name : w) items.push_back(Item(name));
    return items;
  }
  // What each item of the tree opens, and whether it can be dragged.
  void TryTheTree() {
    std::vector<TreeItem> all{0};
    for (const auto& [item, record] : levelTree.items) all.push_back(item);
    std::ranges::sort(all);
    for (const TreeItem item : all) {
      Happens(NumberedText(item) + (CanDragLevelTreeItem(item) ? ", which can be dragged" : ""));
      TellAnswer(ActivateLevelTreeItem(item));
    }
  }
  // A level of one height but for a place.
  static void Heights(float height, float lowest) {
    for (int i = 1; i <= 256; ++i) {
      for (int j = 0; j < 256; ++j) SetHeight(i, j, height);
    }
    SetHeight(3, 3, lowest);
  }

  const std::map<std::string, Verb> verbs = {
      {"mode", [](const Words& w) { Show(kModes.at(w[0])); }},
      {"mode-before-a-frame", [](const Words& w) { SetEditMode(kModes.at(w[0])); }},
      {"tool", [](const Words& w) { terrain.tool = static_cast<TerrainTool>(std::stoi(w[0])); }},
      {"from-above", [](const Words&) { editor.cameraMode = CameraMode::TopDown; }},
      {"water", [](const Words& w) { modConfig.WaterLevel = std::stof(w[0]); }},
      {"paint",
       [](const Words&) {
         materialMapper->currentMaterial = 5;
         materialMapper->materialCellSize = terrain.cellSize;  // as the frame before found
       }},
      {"bunker-in-the-middle",
       [](const Words&) {
         Show(EditMode::ObjectMapper);
         const Vector3 ground = GroundUnderCursor(50, 50).value();
         objectStore.objects[0].position = {1024 - ground.x, ground.y, ground.z};
       }},
      {"select-oak",
       [](const Words&) { objectStore.toolsEnabled = objectStore.objects[1].selected = true; }},
      {"type", [this](const Words& w) { typed.push_back(w); }},
      {"replacement",
       [](const Words& w) { shell.replaceDialog = [entry = std::stoi(w[0])] { return entry; }; }},
      {"heights", [](const Words& w) { Heights(std::stof(w[0]), std::stof(w[1])); }},
      {"world",
       [](const Words& w) {
         modConfig.WorldSize = std::stoi(w[0]);
         InitGrid();
       }},
      {"edited", [](const Words& w) { editor.levelModified = w[0] == "yes"; }},
      {"start",
       [](const Words&) {
         editor.levelHasWater = false;  // as a level of an earlier run of the program
         SetInitialValues();
         SeedGameRandom(1);
       }},
      {"version",
       [this](const Words& w) {
         editor.installedGameVersion = ParseGameVersion(w.empty() ? "" : w[0]);
         Happens("version " + std::to_string(editor.installedGameVersion));
       }},
      {"installed",
       [this](const Words& w) {
         if (!w.empty()) scripted::script.gameSettings["INSTALLEDVERSION"] = w[0];
         ReadInstalledVersion();
         Happens("version " + std::to_string(editor.installedGameVersion));
       }},
      // Density, distance, steepest slope, scales, then objects with their shares.
      {"scatter",
       [](const Words& w) {
         ScatterSettings& settings = objectStore.scatter.settings;
         settings = {{}, std::stof(w[0]), std::stof(w[1]), std::stof(w[2])};
         settings.scale = {std::stof(w[3]), std::stof(w[4])};
         for (std::size_t i = 0; 6 + 2 * i < w.size(); ++i)
           settings.kinds[i] = {w[5 + 2 * i], std::stof(w[6 + 2 * i])};
       }},
      {"seed", [](const Words& w) { SeedGameRandom(static_cast<std::uint32_t>(std::stoi(w[0]))); }},
      // Height units for each cell, to the right of the middle.
      {"ramp",
       [](const Words& w) {
         for (int i = 0; i < 128; ++i) {
           for (int j = 0; j < 256; ++j)
             SetHeight(i, j, kFlatHeight + static_cast<float>(128 - i) * std::stof(w[0]));
         }
       }},
      // Objects that stand far away, up to so many.
      {"crowd",
       [](const Words& w) {
         StaticObject distant = objectStore.objects[0];
         distant.treeItem = 0;
         objectStore.objects.resize(static_cast<std::size_t>(std::stoi(w[0])), distant);
       }},
      {"history-of",
       [](const Words& w) { editor.history.limit = static_cast<std::size_t>(std::stoi(w[0])); }},
      {"fill", [](const Words&) { FillWithMaterial(); }},
      {"no-help", [](const Words&) { scripted::script.documentsOpen = false; }},
      // What may forbid it all.
      {"view", [](const Words& w) { editor.viewReady = w[0] == "ready"; }},
      {"level", [](const Words& w) { editor.levelLoaded = w[0] == "open"; }},
      {"window",
       [](const Words& w) {
         shell.mainWindowActive = [active = w[0] == "active"] { return active; };
       }},
      {"focus",
       [](const Words& w) { shell.viewHasFocus = [has = w[0] == "there"] { return has; }; }},
      {"input", [](const Words& w) { scripted::script.inputIgnored = w[0] == "ignored"; }},
      {"pause",
       [](const Words& w) {
         const UndoPause pause;
         RunCommand(CommandOf(w[0]));
       }},
      // Mouse, keys and commands.
      {"mouse", [this](const Words& w) { Mouse(w); }},
      {"wheel",
       [](const Words& w) { RouteWheel(std::stoi(w[0]), std::stoi(w[1]), std::stoi(w[2])); }},
      {"click", [](const Words& w) { Click(std::stoi(w[0]), std::stoi(w[1])); }},
      {"keys",
       [](const Words& w) {
         for (const std::string& key : w) Tap(KeyOf(key));
       }},
      {"keys-with",
       [](const Words& w) {
         for (std::size_t i = 1; i < w.size(); ++i) TapWith(KeyOf(w[0]), KeyOf(w[i]));
       }},
      {"key-down", [](const Words& w) { RouteKey(KeyOf(w[0]), true); }},
      {"key-up", [](const Words& w) { RouteKey(KeyOf(w[0]), false); }},
      {"modifiers",
       [](const Words& w) {
         const auto held = [&w](const char* key) { return std::ranges::count(w, key) > 0; };
         SetModifiers(held("Ctrl"), held("Shift"), held("Alt"));
       }},
      {"run",
       [](const Words& w) {
         for (const std::string& name : w) RunCommand(CommandOf(name));
       }},
      // The camera. A frame takes a tenth of a second.
      {"camera",
       [](const Words& w) {
         camera = Camera();
         camera.position.Set(std::stof(w[0]), std::stof(w[1]), std::stof(w[2]));
         camera.pitch = w.size() > 3 ? std::stof(w[3]) : 0;
         editor.moveSpeed = 20;
         if (w.size() > 3) camera.UpdateDirection();
       }},
      {"forward", [](const Words& w) { MoveCameraForward(std::stof(w[0])); }},
      {"strafe", [](const Words& w) { StrafeCamera(std::stof(w[0])); }},
      {"clamp", [](const Words&) { ClampCamera(); }},
      {"focus-on",
       [](const Words& w) { FocusCameraOn(std::stof(w[0]), std::stof(w[1]), std::stof(w[2])); }},
      {"frame",
       [](const Words& w) {
         editor.frameSeconds = 0.1f;
         session.heldInput.rightButton = std::ranges::count(w, "right") > 0;
         session.heldInput.keys.reset();
         for (const std::string& key : w) {
           if (key != "right") session.heldInput.keys.set(static_cast<std::size_t>(KeyOf(key)));
         }
         UpdateCameraFromInput();
       }},
      // The tree.
      {"choose", [this](const Words& w) { LevelTreeItemSelected(Item(w[0])); }},
      {"choose-all", [this](const Words& w) { LevelTreeItemsSelected(Items(w)); }},
      {"try-the-tree", [this](const Words&) { TryTheTree(); }},
      {"tree",
       [](const Words& w) {
         levelTree.notificationsEnabled = w[0] != "silent";
         levelTree.suppressObjectSelection = w[0] == "selects-nothing";
       }},
      {"filter", [](const Words& w) { ChooseModeFilter(std::stoi(w[0])); }},
      {"insert", [this](const Words& w) { InsertItem(Item(w[0]), w[1]); }},
      {"rename", [this](const Words& w) { SetItemText(Item(w[0]), w[1]); }},
      {"remove", [this](const Words& w) { DeleteItem(Item(w[0])); }},
      {"select-in-the-view", [](const Words&) { UpdateToolButtons(true); }},
      {"delete", [this](const Words& w) { TellAnswer(DeleteLevelTreeItem(Item(w[0]))); }},
      {"delete-all", [this](const Words& w) { DeleteLevelTreeItems(Items(w)); }},
      {"drag", [](const Words&) { BeginLevelTreeDrag(); }},
      {"drop", [this](const Words& w) {
         const bool isPlaced = w.size() > 2;
         DropLevelTreeItem(Item(w[0]), isPlaced ? std::stoi(w[1]) : 30,
                           isPlaced ? std::stoi(w[2]) : 20);
       }}};

  std::string steps;
  std::vector<Words> typed;  // into the next sheet
};

TEST_P(EditStory, IsAsItStands) { ActOut(GetParam(), verbs); }

INSTANTIATE_TEST_SUITE_P(Edits, EditStory, testing::ValuesIn(GoldenFiles("app/edits")), StoryName);

}  // namespace
}  // namespace mw
