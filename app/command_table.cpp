#include "app/command_table.h"

#include <algorithm>
#include <array>

namespace mw {
namespace {

using enum CommandGroup;

// The key texts in the captions are what the menus show, "Crtl-V" included.
constexpr auto kCommands = std::to_array<CommandSpec>({
    {kCommandNewLevel, "File", "&New Level\tCtrl-N", "Ctrl+N", "Create New Level", "new_level"},
    {kCommandOpenLevel, "File", "&Open Level\tCtrl-O", "Ctrl+O", "Load Existing Level",
     "open_level"},
    {kCommandSaveLevel, "File", "&Save Level\tCtrl-S", "Ctrl+S", "Save This Level", "save_level"},
    {kCommandNewMod, "File", "New Mod Configuration", "", "", ""},
    {kCommandEditMod, "File", "Edit Current Mod Configuration", "", "", ""},
    {kCommandImportHeightmap, "File/Import", "Heightmap", "", "", ""},
    {kCommandExportHeightmap, "File/Export", "Heightmap", "", "", ""},
    {kCommandExit, "File", "E&xit", "", "", ""},
    {kCommandUndo, "Edit", "&Undo\tCtrl-Z", "", "", ""},
    {kCommandRedo, "Edit", "&Redo\tCtrl-Y", "", "", ""},
    {kCommandCut, "Edit", "&Cut\tCtrl-X", "", "Cut Selected Entities", "cut"},
    {kCommandCopy, "Edit", "C&opy\tCtrl-C", "", "Copy Selected Entities", "copy"},
    {kCommandPaste, "Edit", "&Paste\tCrtl-V", "", "Paste Copied Entities", "paste"},
    {kCommandCameraOnTerrain, "View", "Camera On &Terrain", "", "Camera On Terrain Mode",
     "camera_on_terrain", Camera},
    {kCommandCameraFly, "View", "Camera &Fly Mode", "", "Camera Fly Mode", "camera_fly", Camera},
    {kCommandCameraTopDown, "View", "Camera &Top-down Mode", "", "Camera Top-Down Mode",
     "camera_top_down", Camera},
    {kCommandShowWholeLevel, "View", "&Show Whole Level\tHome", "", "", ""},
    {kCommandWireframe, "View", "&Wireframe Mode", "", "Wireframe Mode", "wireframe", Drawing},
    {kCommandTextured, "View", "Te&xtured Mode", "", "Textured Surface Mode", "textured", Drawing},
    {kCommandTexturedWireframe, "View", "T&extured Wireframe Mode", "", "Textured Wireframe Mode",
     "textured_wireframe", Drawing},
    {kCommandReliefShading, "View", "&Relief Shading", "", "", "", None, true},
    {kCommandLevelStatistics, "View", "&Level Statistics", "", "", ""},
    {kCommandTerrainMapper, "Tools", "&Terrain Mapper", "F1", "Terrain Mapper", "terrain_mapper",
     Mode},
    {kCommandMaterialMapper, "Tools", "&Material Mapper", "F2", "Material Mapper",
     "material_mapper", Mode},
    {kCommandObjectMapper, "Tools", "&Object Mapper", "F3", "Object Mapper", "object_mapper", Mode},
    {kCommandRandomTerrain, "Tools", "&Random Terrain Generator", "", "", ""},
    {kCommandGenerateMaterialMap, "Tools", "Generate Material Map", "", "", ""},
    {kCommandTestLevel, "Tools", "Test This &Level...\tCtrl-L", "Ctrl+L", "", ""},
    {kCommandGenerateSurfaceMaps, "Tools", "&1   Generate Surface Maps", "", "", ""},
    {kCommandGenerateShadows, "Tools", "&2   Generate Terrain Shadows", "", "", ""},
    {kCommandMergeLightmaps, "Tools", "&3   Merge Terrain Lightmaps", "", "", ""},
    {kCommandGenerateObjectLightmaps, "Tools", "&4   Generate Object Lightmaps", "", "", ""},
    {kCommandGenerateInGameMap, "Tools", "&5   Generate In-Game Map", "", "", ""},
    {kCommandAddFile, "Tools", "&Add File To Archive", "", "", ""},
    {kCommandSnapAllToGround, "Tools", "&Snap All Objects to Ground", "", "", ""},
    {kCommandAbout, "Help", "&About ...", "Alt+/ Alt+?", "", ""},
    {kCommandCredits, "Help", "Credits", "", "", ""},
    {kCommandUsersGuide, "Help", "Users Guide", "", "", ""},
    {kCommandTutorial, "Help", "Tutorial", "", "", ""},

    {kCommandFocusTree, "", "Level Tree", "Alt+0", "", ""},
    {kCommandLightSettings, "", "Light Settings", "Ctrl+Shift+L", "Light Settings",
     "light_settings"},
    {kCommandFogSettings, "", "Fog Settings", "Ctrl+Shift+F", "Fog Settings", "fog_settings"},
    {kCommandShadowSettings, "", "Shadow Settings", "Ctrl+Shift+S", "Shadow Settings",
     "shadow_settings"},
    {kCommandWaterSettings, "", "Water Settings", "Ctrl+Shift+W", "Water Settings",
     "water_settings"},
    {kCommandSurfaceAssignments, "", "Surface Map Assignments", "", "Surface Map Assigments",
     "surface_assignments"},
    {kCommandStockLevelLoad, "", "Load All Stock Levels", "Ctrl+Shift+Alt+L", "", ""},
    {kCommandViewBoundingBox, "", "View As Bounding Box", "F5", "", ""},
    {kCommandViewCollisionMesh, "", "View As Collision Mesh", "F6", "", ""},
    {kCommandViewDetailMesh, "", "View As Detail Mesh", "F7", "", ""},
    {kCommandViewTexturedMesh, "", "View As Textured Mesh", "F8", "", ""},
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
    kCommandUndo,
    kCommandRedo,
    kCommandCut,
    kCommandCopy,
    kCommandPaste,
    kCommandLevelStatistics,
    kCommandRandomTerrain,
    kCommandGenerateMaterialMap,
    kCommandTestLevel,
    kCommandGenerateSurfaceMaps,
    kCommandGenerateShadows,
    kCommandMergeLightmaps,
    kCommandGenerateObjectLightmaps,
    kCommandGenerateInGameMap,
    kCommandAddFile,
    kCommandSnapAllToGround,
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
  return std::find(kLevelCommands.begin(), kLevelCommands.end(), id) != kLevelCommands.end();
}

std::span<const CommandId> MainToolbar() { return kToolbar; }

std::span<const CommandId> GroupMembers(CommandGroup group) {
  switch (group) {
    case Camera:
      return kCameraGroup;
    case Drawing:
      return kDrawingGroup;
    case Mode:
      return kModeGroup;
    case None:
      break;
  }
  return {};
}

}  // namespace mw
