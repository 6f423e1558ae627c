// The operations of mappers, objects and generators as the shell calls them. Start-up fills in
// those that exist; one that does not exist yet does nothing when its command, key or step comes.
#pragma once

#include <functional>

#include "app/command_ids.h"

namespace mw {

struct Operations {
  using Action = std::function<void()>;
  using AtPixel = std::function<void(int x, int y)>;
  using Drag = std::function<void(int x, int y, int previousX, int previousY)>;

  // Level lifecycle.
  Action clearAllObjects = [] {};
  Action buildTree = [] {};
  Action loadMaterialMap = [] {};
  Action loadStaticObjects = [] {};
  std::function<bool()> newLevel = [] { return false; };

  // Terrain Mapper.
  AtPixel pickUnderCursor = [](int, int) {};
  Action pressBrush = [] {};  // at the pick point, as moveBrush
  Action moveBrush = [] {};
  Action holdBrush = [] {};  // once per frame
  Action releaseBrush = [] {};
  Action liftBrush = [] {};  // no way leads to the next pick point
  AtPixel toggleVertex = [](int, int) {};
  AtPixel startSelecting = [](int, int) {};
  AtPixel selectOnTheWay = [](int, int) {};
  std::function<void(float delta)> moveSelection = [](float) {};
  Action clearSelection = [] {};
  AtPixel addRoadPoint = [](int, int) {};
  Action finishRoad = [] {};
  std::function<void(int x0, int y0, int x1, int y1)> selectRectangle = [](int, int, int, int) {};
  std::function<void(CommandId)> terrainToolbarCommand = [](CommandId) {};
  std::function<void(int size)> setTerrainBrushSize = [](int) {};
  std::function<void(int power)> setTerrainPower = [](int) {};

  // Material Mapper.
  Action renderMaterialMode = [] {};
  AtPixel pickMaterialPoint = [](int, int) {};
  Action startPainting = [] {};  // at the point that was picked, and where the next picks lead
  Action stopPainting = [] {};
  std::function<void(int size)> setMaterialBrushSize = [](int) {};
  std::function<int()> currentMaterial = [] { return 0; };

  // Object Mapper.
  Action drawObjectModeScene = [] {
  };  // static objects and entities, between the terrain and the water
  Action drawBrowserPreview = [] {};
  std::function<bool()> objectSelectTool = [] { return true; };
  std::function<bool()> objectTranslateTool = [] { return false; };
  std::function<bool()> objectHoverOption = [] { return false; };
  AtPixel pickCursorPoint = [](int, int) {};
  AtPixel toggleSelectAtCursor = [](int, int) {};
  Drag pressTranslate = [](int, int, int, int) {};
  Drag dragObjects = [](int, int, int, int) {};  // by the current tool
  Action releaseObjects = [] {};
  Action forgetHovered = [] {};
  std::function<bool()> editHovered = [] { return false; };
  std::function<void(int key)> objectKey = [](int) {};
  std::function<void(CommandId)> objectToolbarCommand = [](CommandId) {};
  Action copy = [] {};
  AtPixel paste = [](int, int) {};

  // Commands of the menus and toolbars.
  Action importHeightmap = [] {};
  Action exportHeightmap = [] {};
  // Asks before it replaces the terrain, if told to; true when it did.
  std::function<bool(bool askFirst)> randomTerrain = [](bool) { return false; };
  Action generateMaterialMap = [] {};
  Action testLevel = [] {};
  // Asks before it replaces tiles; true when the level's textures are to be read again.
  std::function<bool()> generateSurfaceMaps = [] { return false; };
  Action openShadowDialog = [] {};
  Action mergeTerrainLightmaps = [] {};
  Action generateObjectLightmaps = [] {};
  Action generateInGameMap = [] {};
  Action snapAllToGround = [] {};
  Action levelStatistics = [] {};
  Action lightSettings = [] {};
  Action fogSettings = [] {};
  Action shadowSettings = [] {};
  Action waterSettings = [] {};
  Action teamSelection = [] {};
  Action objectBrowser = [] {};
  Action openSurfaceAssignments = [] {};
};

extern Operations operations;

}  // namespace mw
