#include "app/edit_story_state.h"

#include <cmath>
#include <sstream>

#include "app/editing_fixture.h"
#include "objects/entity_editing.h"
#include "terrain/material_mapper.h"

namespace mw {
namespace {

constexpr int kStep = 5;  // pixels between the points of the view that are shown

using Lines = std::vector<std::string>;

float Rounded(float value) { return std::round(value * 100) / 100 + 0.0f; }

void AddTools(const std::map<CommandId, bool>& enabled, Lines& lines) {
  std::ostringstream tools, flags;
  tools << "tools  mode " << static_cast<int>(editor.editMode) << ", terrain "
        << static_cast<int>(terrain.tool) << " size " << terrain.brushSize << " power "
        << terrain.power << (terrain.brushEdge != BrushEdge::Hard ? " edge " : "")
        << (terrain.brushEdge == BrushEdge::Smooth   ? "smooth"
            : terrain.brushEdge == BrushEdge::Linear ? "linear"
                                                     : "")
        << (terrain.autoSmoothing ? " smoothing" : "") << ", objects "
        << static_cast<int>(objectStore.tool) << (objectStore.toolsEnabled ? "" : " grey")
        << (objectStore.snapToGround ? " snapping" : "") << ", materials size "
        << materialMapper->brushSize << ", road points " << terrain.roadPointCount;
  const ScatterBrush& scatter = objectStore.scatter.brush;
  if (objectStore.tool == ObjectTool::Scatter) tools << ", scatter size " << scatter.size;
  lines.push_back(tools.str());
  const auto isOn = [&](CommandId id) { return enabled.contains(id) && enabled.at(id); };
  const std::pair<const char*, bool> kFlags[] = {{", edited", editor.levelModified},
                                                 {", left held", editor.leftHeld},
                                                 {", right held", editor.rightHeld},
                                                 {", Ctrl", editor.ctrlHeld},
                                                 {", Ctrl key", session.heldInput.keys[kKeyCtrl]},
                                                 {", Shift", editor.shiftHeld},
                                                 {", rubber band", editor.rubberBandActive},
                                                 {", objects shown", editor.drawObjectsInMappers},
                                                 {", paste pending", editor.pastePending},
                                                 {", copied", editor.somethingCopied},
                                                 {", can cut", isOn(kCommandCut)},
                                                 {", can paste", isOn(kCommandPaste)}};
  flags << "state  water " << Rounded(modConfig.WaterLevel);
  for (const auto& [text, isSet] : kFlags) flags << (isSet ? text : "");
  lines.push_back(flags.str());
}

void AddView(Lines& lines) {
  std::ostringstream place, view;
  place << "camera";
  for (const Vector3& triple : {camera.position, camera.direction}) {
    place << "  " << Rounded(triple.x) << ' ' << Rounded(triple.y) << ' ' << Rounded(triple.z);
  }
  place << "  pitch " << Rounded(camera.pitch) << " yaw " << Rounded(camera.yaw);
  lines.push_back(place.str());
  view << "view   camera mode " << static_cast<int>(editor.cameraMode) << " speed "
       << Rounded(editor.moveSpeed) << (editor.ShowGrid ? ", grid" : "")
       << (editor.ShowTextures ? ", textures" : "") << (editor.ReliefShading ? ", relief" : "")
       << ", meshes " << static_cast<int>(objectStore.viewMode) << ", filter "
       << static_cast<int>(entities.ModeFilter);
  lines.push_back(view.str());
}

void AddPlacements(Lines& lines) {
  for (const StaticObject& object : objectStore.objects) {
    std::string line = "object " + object.name.String() + (object.selected ? "*" : "");
    for (const Vector3& triple : {object.position, object.rotation}) {
      for (const float part : {triple.x, triple.y, triple.z}) {
        line += ' ' + std::to_string(std::lround(part));
      }
    }
    const Vector3 scale = object.scale;
    if (scale.x != 1 || scale.y != 1 || scale.z != 1) {
      for (const float part : {scale.x, scale.y, scale.z})
        line += " x" + FormatText("%g", static_cast<double>(part));
    }
    lines.push_back(line);
  }
  lines.push_back("object count " + std::to_string(objectStore.objects.size()));
  for (const EntityKind kind : {EntityKind::ControlPoint, EntityKind::SoldierSpawn}) {
    for (const auto& entity : entities.Of(kind).instances) {
      lines.push_back("entity " + StatusTextOf(*entity) + (entity->selected ? "*" : ""));
    }
  }
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  for (const TreeItem parent : {fixed.standardMeshes, fixed.treeMeshes, fixed.cachedObjects,
                                fixed.controlPoints, fixed.soldierSpawns, fixed.objectSpawns}) {
    lines.push_back("rows   " + NumberedText(parent) + ':' + TextsOf(ChildrenOf(parent)));
  }
}

// Rows of the view: what is painted, selected, raised or lowered; the middle's height.
void AddGround(Lines& lines) {
  if (!GroundUnderCursor(kViewSide / 2, kViewSide / 2)) return;
  for (int y = 0; y < kViewSide; y += kStep) {
    std::string row = "ground " + std::to_string(y) + (y < 10 ? "   " : y < 100 ? "  " : " ");
    for (int x = 0; x < kViewSide; x += kStep) {
      const auto ground = GroundUnderCursor(x, y);
      if (!ground) return;
      const TerrainVertex& vertex = VertexUnder(x, y);
      const auto i = static_cast<std::size_t>(std::ceil(ground->x / terrain.cellSize));
      const auto j = static_cast<std::size_t>(ground->z / terrain.cellSize);
      row += materialMapper->grid[i][j] == 5  ? 'm'
             : vertex.selected                ? 's'
             : vertex.h > kFlatHeight + 0.01f ? '+'
             : vertex.h < kFlatHeight - 0.01f ? '-'
                                              : '.';
    }
    lines.push_back(row);
  }
  std::ostringstream middle;
  middle << "middle " << Rounded(VertexUnder(kViewSide / 2, kViewSide / 2).h);
  lines.push_back(middle.str());
}

}  // namespace

std::string TextsOf(const std::vector<TreeItem>& items) {
  std::string texts;
  for (const TreeItem item : items) texts += ' ' + NumberedText(item);
  return texts;
}

std::vector<std::string> DescribeEditor(const std::map<CommandId, bool>& enabled) {
  Lines lines;
  AddTools(enabled, lines);
  AddView(lines);
  AddPlacements(lines);
  AddGround(lines);
  return lines;
}

}  // namespace mw
