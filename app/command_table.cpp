#include "app/command_table.h"

#include <algorithm>
#include <array>

#include "app/bookmarks.h"
#include "app/camera_control.h"
#include "app/camera_places.h"
#include "app/command_deeds.h"
#include "app/level.h"
#include "app/mini_map_look.h"
#include "app/modes.h"
#include "app/selection_commands.h"
#include "app/shell.h"
#include "app/test_level.h"
#include "app/undo.h"
#include "objects/object_mapper.h"
#include "objects/scatter.h"
#include "objects/static_objects.h"
#include "terrain/height_exchange.h"
#include "terrain/in_game_map.h"
#include "terrain/random_terrain.h"

namespace mw {
namespace {

using Group = CommandGroup;

// How the Object Mapper shows the placed objects.
template <ObjectControl kView>
void View() {
  if (IsEditMode(EditMode::ObjectMapper)) PressObjectControl(kView);
}

template <int kNumber>
void Keep() {
  KeepBookmark(kNumber);
}

template <int kNumber>
void GoTo() {
  GoToBookmark(kNumber);
}

// The key texts in the captions are what the menus show, "Crtl-V" included.
constexpr auto kCommands = std::to_array<CommandSpec>({
    {kCommandNewLevel, CreateLevelOnCommand, "File", "&New Level\tCtrl-N", "Ctrl+N",
     "Create New Level", "new_level"},
    {kCommandOpenLevel, OpenLevelOnCommand, "File", "&Open Level\tCtrl-O", "Ctrl+O",
     "Load Existing Level", "open_level"},
    {kCommandSaveLevel, [] { SaveLevel(); }, "File", "&Save Level\tCtrl-S", "Ctrl+S",
     "Save This Level", "save_level"},
    {kCommandNewMod, [] { shell.newModConfig(true); }, "File", "New Mod Configuration", "", "", ""},
    {kCommandEditMod, [] { shell.editModSettings(true); }, "File", "Edit Current Mod Configuration",
     "", "", ""},
    {kCommandImportHeightmap, [] { ImportHeightmap(shell.sampleBitsDialog); }, "File/Import",
     "Heightmap", "", "", ""},
    {kCommandExportHeightmap, [] { ExportHeightmap(shell.sampleBitsDialog); }, "File/Export",
     "Heightmap", "", "", ""},
    {kCommandSavePicture, [] { shell.savePictureDialog(); }, "File",
     "Save &Picture...\tCtrl-Shift-P", "Ctrl+Shift+P", "", ""},
    {kCommandExit, ExitOnCommand, "File", "E&xit", "", "", ""},
    {kCommandUndo, UndoStep, "Edit", "&Undo\tCtrl-Z", "Ctrl+Z", "", ""},
    {kCommandRedo, RedoStep, "Edit", "&Redo\tCtrl-Y", "Ctrl+Y Ctrl+Shift+Z", "", ""},
    {kCommandCut, CopyOnCommand, "Edit", "&Cut\tCtrl-X", "", "Cut Selected Entities", "cut"},
    {kCommandCopy, CopyOnCommand, "Edit", "C&opy\tCtrl-C", "", "Copy Selected Entities", "copy"},
    {kCommandPaste, PasteOnCommand, "Edit", "&Paste\tCrtl-V", "", "Paste Copied Entities", "paste"},
    {kCommandDuplicate, DuplicateOnCommand, "Edit", "&Duplicate\tCtrl-D", "Ctrl+D", "", ""},
    {kCommandReplaceWith, ReplaceOnCommand, "Edit", "Replace &With...\tCtrl-R", "Ctrl+R", "", ""},
    {kCommandEditSelected, EditSelectedOnCommand, "Edit", "&Edit Selected...\tCtrl-E", "Ctrl+E", "",
     ""},
    {kCommandSelectKind, SelectKindOnCommand, "Edit", "Select All of This &Kind\tCtrl-K", "Ctrl+K",
     "", ""},
    {kCommandInvertSelection, InvertOnCommand, "Edit", "&Invert Selection\tCtrl-I", "Ctrl+I", "",
     ""},
    {kCommandFind, [] { shell.focusFindField(); }, "Edit", "&Find in Level Tree\tCtrl-F", "Ctrl+F",
     "", ""},
    {kCommandCameraOnTerrain, [] { SetCameraMode(CameraMode::OnTerrain); }, "View",
     "Camera On &Terrain", "", "Camera On Terrain Mode", "camera_on_terrain", Group::Camera},
    {kCommandCameraFly, [] { SetCameraMode(CameraMode::Fly); }, "View", "Camera &Fly Mode", "",
     "Camera Fly Mode", "camera_fly", Group::Camera},
    {kCommandCameraTopDown, [] { SetCameraMode(CameraMode::TopDown); }, "View",
     "Camera &Top-down Mode", "", "Camera Top-Down Mode", "camera_top_down", Group::Camera},
    {kCommandShowWholeLevel, ShowWholeLevel, "View", "&Show Whole Level\tHome", "", "", ""},
    {kCommandKeepBookmark1, Keep<1>, "View/Keep Bookmark", "Keep Bookmark &1\tCtrl-Shift-1",
     "Ctrl+Shift+1", "", ""},
    {kCommandKeepBookmark2, Keep<2>, "View/Keep Bookmark", "Keep Bookmark &2\tCtrl-Shift-2",
     "Ctrl+Shift+2", "", ""},
    {kCommandKeepBookmark3, Keep<3>, "View/Keep Bookmark", "Keep Bookmark &3\tCtrl-Shift-3",
     "Ctrl+Shift+3", "", ""},
    {kCommandKeepBookmark4, Keep<4>, "View/Keep Bookmark", "Keep Bookmark &4\tCtrl-Shift-4",
     "Ctrl+Shift+4", "", ""},
    {kCommandKeepBookmark5, Keep<5>, "View/Keep Bookmark", "Keep Bookmark &5\tCtrl-Shift-5",
     "Ctrl+Shift+5", "", ""},
    {kCommandKeepBookmark6, Keep<6>, "View/Keep Bookmark", "Keep Bookmark &6\tCtrl-Shift-6",
     "Ctrl+Shift+6", "", ""},
    {kCommandKeepBookmark7, Keep<7>, "View/Keep Bookmark", "Keep Bookmark &7\tCtrl-Shift-7",
     "Ctrl+Shift+7", "", ""},
    {kCommandKeepBookmark8, Keep<8>, "View/Keep Bookmark", "Keep Bookmark &8\tCtrl-Shift-8",
     "Ctrl+Shift+8", "", ""},
    {kCommandKeepBookmark9, Keep<9>, "View/Keep Bookmark", "Keep Bookmark &9\tCtrl-Shift-9",
     "Ctrl+Shift+9", "", ""},
    {kCommandGoToBookmark1, GoTo<1>, "View/Go to Bookmark", "Go to Bookmark &1\tAlt-1", "Alt+1", "",
     ""},
    {kCommandGoToBookmark2, GoTo<2>, "View/Go to Bookmark", "Go to Bookmark &2\tAlt-2", "Alt+2", "",
     ""},
    {kCommandGoToBookmark3, GoTo<3>, "View/Go to Bookmark", "Go to Bookmark &3\tAlt-3", "Alt+3", "",
     ""},
    {kCommandGoToBookmark4, GoTo<4>, "View/Go to Bookmark", "Go to Bookmark &4\tAlt-4", "Alt+4", "",
     ""},
    {kCommandGoToBookmark5, GoTo<5>, "View/Go to Bookmark", "Go to Bookmark &5\tAlt-5", "Alt+5", "",
     ""},
    {kCommandGoToBookmark6, GoTo<6>, "View/Go to Bookmark", "Go to Bookmark &6\tAlt-6", "Alt+6", "",
     ""},
    {kCommandGoToBookmark7, GoTo<7>, "View/Go to Bookmark", "Go to Bookmark &7\tAlt-7", "Alt+7", "",
     ""},
    {kCommandGoToBookmark8, GoTo<8>, "View/Go to Bookmark", "Go to Bookmark &8\tAlt-8", "Alt+8", "",
     ""},
    {kCommandGoToBookmark9, GoTo<9>, "View/Go to Bookmark", "Go to Bookmark &9\tAlt-9", "Alt+9", "",
     ""},
    {kCommandShowSelection, ShowSelection, "View", "Show Sele&ction\tF", "", "", ""},
    {kCommandWireframe, ShowWireframe, "View", "&Wireframe Mode", "", "Wireframe Mode", "wireframe",
     Group::Drawing},
    {kCommandTextured, ShowTextured, "View", "Te&xtured Mode", "", "Textured Surface Mode",
     "textured", Group::Drawing},
    {kCommandTexturedWireframe, ShowTexturedWireframe, "View", "T&extured Wireframe Mode", "",
     "Textured Wireframe Mode", "textured_wireframe", Group::Drawing},
    {kCommandReliefShading, SwitchReliefShading, "View", "&Relief Shading", "", "", "", Group::None,
     true},
    {kCommandMiniMap, SwitchMiniMap, "View/Mini-Map", "Show &Mini-Map\tCtrl-M", "Ctrl+M", "", "",
     Group::None, true},
    {kCommandMiniMapSmall, [] { SetMiniMapSize(MiniMapSize::Small); }, "View/Mini-Map",
     "&Small Mini-Map", "", "", "", Group::MiniMapSize},
    {kCommandMiniMapMedium, [] { SetMiniMapSize(MiniMapSize::Medium); }, "View/Mini-Map",
     "Me&dium Mini-Map", "", "", "", Group::MiniMapSize},
    {kCommandMiniMapLarge, [] { SetMiniMapSize(MiniMapSize::Large); }, "View/Mini-Map",
     "&Large Mini-Map", "", "", "", Group::MiniMapSize},
    {kCommandMiniMapStretched, SwitchMiniMapStretching, "View/Mini-Map", "S&tretch Heights", "", "",
     "", Group::None, true},
    {kCommandLevelStatistics, [] { shell.levelStatisticsDialog(); }, "View", "&Level Statistics",
     "", "", ""},
    {kCommandTerrainMapper, [] { SetEditMode(EditMode::TerrainMapper); }, "Tools",
     "&Terrain Mapper", "F1", "Terrain Mapper", "terrain_mapper", Group::Mode},
    {kCommandMaterialMapper, [] { SetEditMode(EditMode::MaterialMapper); }, "Tools",
     "&Material Mapper", "F2", "Material Mapper", "material_mapper", Group::Mode},
    {kCommandObjectMapper, [] { SetEditMode(EditMode::ObjectMapper); }, "Tools", "&Object Mapper",
     "F3", "Object Mapper", "object_mapper", Group::Mode},
    {kCommandRandomTerrain, [] { RandomTerrain(true, shell.randomTerrainDialog); }, "Tools",
     "&Random Terrain Generator", "", "", ""},
    {kCommandGenerateMaterialMap, GenerateMaterialMapOnCommand, "Tools", "Generate Material Map",
     "", "", ""},
    {kCommandTestLevel, TestLevel, "Tools", "Test This &Level...\tCtrl-L", "Ctrl+L", "", ""},
    {kCommandCheckLevel, [] { shell.checkLevelDialog(); }, "Tools", "&Check Level...\tF9", "F9", "",
     ""},
    {kCommandGenerateSurfaceMaps, GenerateSurfaceMapsOnCommand, "Tools",
     "&1   Generate Surface Maps", "", "", ""},
    {kCommandGenerateShadows, GenerateTerrainShadowsOnCommand, "Tools",
     "&2   Generate Terrain Shadows", "", "", ""},
    {kCommandMergeLightmaps, MergeTerrainLightmapsOnCommand, "Tools",
     "&3   Merge Terrain Lightmaps", "", "", ""},
    {kCommandGenerateObjectLightmaps, GenerateObjectLightmapsOnCommand, "Tools",
     "&4   Generate Object Lightmaps", "", "", ""},
    {kCommandGenerateInGameMap, GenerateInGameMap, "Tools", "&5   Generate In-Game Map", "", "",
     ""},
    {kCommandAddFile, [] { shell.addFileDialog(); }, "Tools", "&Add File To Archive", "", "", ""},
    {kCommandSnapAllToGround, SnapAllToGround, "Tools", "&Snap All Objects to Ground", "", "", ""},
    {kCommandScatterSettings, [] { EditScatter(); }, "Tools", "Scatter Settings...\tCtrl-H",
     "Ctrl+H", "", ""},
    {kCommandAbout, [] { shell.aboutDialog(); }, "Help", "&About ...", "Alt+/ Alt+?", "", ""},
    {kCommandCredits, [] { shell.creditsDialog(); }, "Help", "Credits", "", "", ""},
    {kCommandUsersGuide, OpenUsersGuide, "Help", "Users Guide", "", "", ""},
    {kCommandTutorial, OpenTutorial, "Help", "Tutorial", "", "", ""},

    {kCommandFocusTree, [] { shell.focusTreePanel(); }, "", "Level Tree", "Alt+0", "", ""},
    {kCommandLightSettings, [] { shell.lightSettingsDialog(); }, "", "Light Settings",
     "Ctrl+Shift+L", "Light Settings", "light_settings"},
    {kCommandFogSettings, [] { shell.fogSettingsDialog(); }, "", "Fog Settings", "Ctrl+Shift+F",
     "Fog Settings", "fog_settings"},
    {kCommandShadowSettings, [] { shell.shadowSettingsDialog(); }, "", "Shadow Settings",
     "Ctrl+Shift+S", "Shadow Settings", "shadow_settings"},
    {kCommandWaterSettings, [] { shell.waterSettingsDialog(); }, "", "Water Settings",
     "Ctrl+Shift+W", "Water Settings", "water_settings"},
    {kCommandSurfaceAssignments, [] { shell.surfaceAssignmentsDialog(); }, "",
     "Surface Map Assignments", "", "Surface Map Assigments", "surface_assignments"},
    {kCommandStockLevelLoad, RunStockLevelLoad, "", "Load All Stock Levels", "Ctrl+Shift+Alt+L", "",
     ""},
    {kCommandViewBoundingBox, View<ObjectControl::ViewBoundingBox>, "", "View As Bounding Box",
     "F5", "", ""},
    {kCommandViewCollisionMesh, View<ObjectControl::ViewCollisionMesh>, "",
     "View As Collision Mesh", "F6", "", ""},
    {kCommandViewDetailMesh, View<ObjectControl::ViewDetailMesh>, "", "View As Detail Mesh", "F7",
     "", ""},
    {kCommandViewTexturedMesh, View<ObjectControl::ViewTexturedMesh>, "", "View As Textured Mesh",
     "F8", "", ""},
});

constexpr auto kToolbar = std::to_array<CommandId>({
    kCommandNone,           kCommandNewLevel,
    kCommandOpenLevel,      kCommandSaveLevel,
    kCommandNone,           kCommandCut,
    kCommandCopy,           kCommandPaste,
    kCommandNone,           kCommandLightSettings,
    kCommandFogSettings,    kCommandShadowSettings,
    kCommandWaterSettings,  kCommandSurfaceAssignments,
    kCommandNone,           kCommandCameraOnTerrain,
    kCommandCameraFly,      kCommandCameraTopDown,
    kCommandNone,           kCommandWireframe,
    kCommandTextured,       kCommandTexturedWireframe,
    kCommandNone,           kCommandTerrainMapper,
    kCommandMaterialMapper, kCommandObjectMapper,
});

constexpr auto kLevelCommands = std::to_array<CommandId>({
    kCommandSaveLevel,
    kCommandImportHeightmap,
    kCommandExportHeightmap,
    kCommandSavePicture,
    kCommandUndo,
    kCommandRedo,
    kCommandCut,
    kCommandCopy,
    kCommandPaste,
    kCommandDuplicate,
    kCommandReplaceWith,
    kCommandEditSelected,
    kCommandSelectKind,
    kCommandInvertSelection,
    kCommandFind,
    kCommandShowSelection,
    kCommandLevelStatistics,
    kCommandRandomTerrain,
    kCommandGenerateMaterialMap,
    kCommandTestLevel,
    kCommandCheckLevel,
    kCommandGenerateSurfaceMaps,
    kCommandGenerateShadows,
    kCommandMergeLightmaps,
    kCommandGenerateObjectLightmaps,
    kCommandGenerateInGameMap,
    kCommandAddFile,
    kCommandSnapAllToGround,
    kCommandScatterSettings,
    kCommandLightSettings,
    kCommandFogSettings,
    kCommandShadowSettings,
    kCommandWaterSettings,
    kCommandSurfaceAssignments,
});

constexpr auto kCameraGroup =
    std::to_array<CommandId>({kCommandCameraOnTerrain, kCommandCameraFly, kCommandCameraTopDown});
constexpr auto kDrawingGroup =
    std::to_array<CommandId>({kCommandWireframe, kCommandTextured, kCommandTexturedWireframe});
constexpr auto kMiniMapSizeGroup =
    std::to_array<CommandId>({kCommandMiniMapSmall, kCommandMiniMapMedium, kCommandMiniMapLarge});
constexpr auto kModeGroup =
    std::to_array<CommandId>({kCommandTerrainMapper, kCommandMaterialMapper, kCommandObjectMapper});

}  // namespace

std::span<const CommandSpec> CommandTable() { return kCommands; }

const CommandSpec* FindCommand(CommandId id) {
  const auto found = std::find_if(kCommands.begin(), kCommands.end(),
                                  [id](const CommandSpec& spec) { return spec.id == id; });
  return found == kCommands.end() ? nullptr : &*found;
}

bool NeedsLevel(CommandId id) {
  if (id >= kCommandKeepBookmark1 && id <= kCommandGoToBookmark9) return true;
  return std::find(kLevelCommands.begin(), kLevelCommands.end(), id) != kLevelCommands.end();
}

std::span<const CommandId> MainToolbar() { return kToolbar; }

std::span<const CommandId> GroupMembers(CommandGroup group) {
  switch (group) {
    case Group::Camera:
      return kCameraGroup;
    case Group::Drawing:
      return kDrawingGroup;
    case Group::Mode:
      return kModeGroup;
    case Group::MiniMapSize:
      return kMiniMapSizeGroup;
    case Group::None:
      break;
  }
  return {};
}

}  // namespace mw
