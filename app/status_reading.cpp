#include "app/status_reading.h"

#include <cstddef>
#include <optional>

#include "app/frame.h"
#include "app/session.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "objects/object_store.h"
#include "objects/select_many.h"
#include "platform/prompts.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

constexpr std::uint32_t kReadingPeriod = 200;  // milliseconds

// The cell of the ground that the last mouse position shows.
std::optional<Cell> CellUnderCursor() {
  constexpr auto kSky = static_cast<float>(kFarPlane) - 1;
  const auto point = WorldPointUnderCursor(editor.lastMouseX, editor.lastMouseY);
  if (!point || !HasUsableTerrain()) return std::nullopt;
  const Vector3 sight = *point - camera.position;
  const Vector3& ahead = camera.direction;
  if (sight.x * ahead.x + sight.y * ahead.y + sight.z * ahead.z > kSky) return std::nullopt;
  const Cell cell = CellOf(point->x, point->z);
  const int size = modConfig.MaterialSize;
  if (point->x < 0 || point->z < 0 || cell.i >= size || cell.j >= size) return std::nullopt;
  return cell;
}

void Add(std::string& text, const std::string& part) {
  if (!text.empty()) text += "   ";
  text += part;
}

// The height is that of the cell's own corner, which Flatten would take there.
void AddGround(std::string& text) {
  const auto cell = CellUnderCursor();
  if (!cell) return;
  const float height = DrawnHeight(cell->i + 1, cell->j);
  Add(text, FormatText("Cell %i, %i", cell->i, cell->j));
  Add(text, FormatText("Height %.2f (%.2f in the world)", static_cast<double>(height),
                       static_cast<double>(height * modConfig.HeightScale)));
}

void AddTerrainTool(std::string& text) {
  if (UsesPower(terrain.tool)) {
    Add(text, FormatText("Power %g", static_cast<double>(terrain.power)));
  }
  if (UsesBrushSize(terrain.tool)) Add(text, FormatText("Size %i", terrain.brushSize));
  if (IsBrush(terrain.tool) && terrain.brushEdge != BrushEdge::Hard) {
    const auto edge = static_cast<std::size_t>(terrain.brushEdge);
    Add(text, FormatText("%s Edge", kBrushEdgeNames.at(edge)));
  }
  if (terrain.tool == TerrainTool::Flatten && terrain.flattenSampled) {
    Add(text, FormatText("Flatten to %.2f", static_cast<double>(terrain.flattenHeight)));
  }
}

// First, where the ground's reading cannot push it out of the status bar.
void AddSelection(std::string& text) {
  const int count = SelectedCount();
  if (count > 0) Add(text, FormatText("%i selected", count));
}

}  // namespace

std::string StatusReading() {
  std::string text;
  if (IsEditMode(EditMode::ObjectMapper)) AddSelection(text);
  AddGround(text);
  if (IsEditMode(EditMode::TerrainMapper) && terrain.grid) AddTerrainTool(text);
  if (IsEditMode(EditMode::MaterialMapper) && materialMapper) {
    Add(text, FormatText("Size %u", materialMapper->brushSize));
  }
  if (IsEditMode(EditMode::ObjectMapper) && objectStore.tool == ObjectTool::Scatter) {
    Add(text, FormatText("Size %i", objectStore.scatter.brush.size));
  }
  return text;
}

void UpdateStatusReading(std::uint32_t now) {
  if (!editor.viewReady || now < session.nextReading) return;
  session.nextReading = now + kReadingPeriod;
  if (IsEditMode(EditMode::ObjectMapper) && editor.leftHeld) return;
  SetStatusText(3, StatusReading());
}

}  // namespace mw
