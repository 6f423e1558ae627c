#include "tests/monkey/invariants.h"

#include <GL/gl.h>
#include <QAction>
#include <QApplication>
#include <cmath>
#include <set>

#include "app/command_table.h"
#include "app/keys.h"
#include "app/level.h"
#include "app/session.h"
#include "app/shell.h"
#include "app/ui/main_window.h"
#include "app/ui/mode_toolbars.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/mods.h"
#include "objects/object_store.h"
#include "platform/disk.h"
#include "platform/gl_context.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"
#include "tools/help_tour/windows.h"

namespace mw::monkey {
namespace {

int GlNumber(GLenum name) {
  GLint value = 0;
  glGetIntegerv(name, &value);
  return value;
}

void CheckGl(Broken& broken) {
  if (!MakeViewContextCurrent()) {
    broken.push_back("the view has no GL context");
    return;
  }
  for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
    broken.push_back(FormatText("GL error 0x%x", error));
  }
  Expect(GlNumber(GL_MODELVIEW_STACK_DEPTH) == 1, "the modelview stack is not balanced", broken);
  Expect(GlNumber(GL_PROJECTION_STACK_DEPTH) == 1, "the projection stack is not balanced", broken);
  Expect(GlNumber(GL_TEXTURE_STACK_DEPTH) == 1, "the texture stack is not balanced", broken);
  Expect(GlNumber(GL_ATTRIB_STACK_DEPTH) == 0, "the attribute stack is not balanced", broken);
  Expect(GlNumber(GL_CLIENT_ATTRIB_STACK_DEPTH) == 0, "the client attribute stack is not balanced",
         broken);
  Expect(GlNumber(GL_MATRIX_MODE) == GL_MODELVIEW, "another matrix mode is left", broken);
}

bool IsWithin(float value, float least, float most) { return value >= least && value <= most; }

void CheckCamera(Broken& broken) {
  const auto side = static_cast<float>(modConfig.WorldSize);
  const Vector3& at = camera.position;
  const std::string where = FormatText(" at %f, %f, %f", static_cast<double>(at.x),
                                       static_cast<double>(at.y), static_cast<double>(at.z));
  Expect(IsWithin(at.x, 0, side) && IsWithin(at.z, 0, side),
         "the camera is outside the level" + where, broken);
  Expect(std::isfinite(at.y), "the camera's height is no number" + where, broken);
  Expect(IsWithin(camera.pitch, -90, 80), "the camera's pitch is out of range", broken);
  Expect(std::isfinite(camera.yaw) && std::isfinite(camera.roll),
         "the camera's angles are no numbers", broken);
  Expect(IsWithin(editor.moveSpeed, 20, 100), "the camera's speed is out of range", broken);
}

bool IsChecked(const QWidget* window, CommandId id) {
  const auto* action = window->findChild<QAction*>(QString("command%1").arg(id));
  return action && action->isChecked();
}

CommandId CommandOf(EditMode mode) {
  switch (mode) {
    case EditMode::TerrainMapper:
      return kCommandTerrainMapper;
    case EditMode::MaterialMapper:
      return kCommandMaterialMapper;
    case EditMode::ObjectMapper:
      break;
  }
  return kCommandObjectMapper;
}

CommandId CommandOf(CameraMode mode) {
  switch (mode) {
    case CameraMode::OnTerrain:
      return kCommandCameraOnTerrain;
    case CameraMode::TopDown:
      return kCommandCameraTopDown;
    case CameraMode::Fly:
      break;
  }
  return kCommandCameraFly;
}

CommandId CommandOfDrawing() {
  if (!editor.ShowTextures) return kCommandWireframe;
  return editor.ShowGrid ? kCommandTexturedWireframe : kCommandTextured;
}

// What the menus and toolbars show as chosen is what is chosen.
void CheckChoices(Broken& broken) {
  const QMainWindow* const window = help::FindMainWindow();
  const auto expectOnly = [&](CommandGroup group, CommandId chosen) {
    for (const CommandId id : GroupMembers(group)) {
      Expect(IsChecked(window, id) == (id == chosen),
             FormatText("command %i is %s", id, id == chosen ? "not checked" : "checked"), broken);
    }
  };
  expectOnly(CommandGroup::Mode, CommandOf(editor.editMode));
  expectOnly(CommandGroup::Camera, CommandOf(editor.cameraMode));
  expectOnly(CommandGroup::Drawing, CommandOfDrawing());
}

// With no button held no stroke, drag or rubber band goes on.
void CheckHeld(Broken& broken) {
  if (QApplication::mouseButtons() != Qt::NoButton || session.heldInput.leftButton) return;
  Expect(!editor.leftHeld, "the left button counts as held", broken);
  Expect(!editor.rubberBandActive, "a rubber band is left", broken);
  Expect(!materialMapper->painting, "painting goes on", broken);
}

}  // namespace

void Expect(bool holds, const std::string& what, Broken& broken) {
  if (!holds) broken.push_back(what);
}

void CheckView(Broken& broken) {
  CheckGl(broken);
  CheckCamera(broken);
  CheckChoices(broken);
  CheckHeld(broken);
  Expect(!editor.browserPreviewActive, "the object browser's preview is left", broken);
  Expect(editor.viewReady, "the view is not ready", broken);
  Expect(!editor.levelLoaded || LevelArchive(), "the open level has no archive", broken);
  Expect(modList.names.size() <= kMaxMods, "too many mods", broken);
  Expect(modList.current < static_cast<int>(modList.names.size()), "the current mod is not listed",
         broken);
}

void CheckTerrain(Broken& broken) {
  const int side = modConfig.MaterialSize;
  if (editor.levelLoaded) {
    Expect(side == 256 || side == 512 || side == 1024, "the level has no usual size", broken);
    Expect(modConfig.WorldSize >= side, "the world is smaller than its samples", broken);
    Expect(terrain.tilesPerSide == side / kTileCells, "the number of tiles is another one", broken);
    Expect(IsWithin(modConfig.HeightScale, 0, 1000), "the height scale is out of range", broken);
  }
  if (!HasUsableTerrain()) return;
  int bad = 0, materials = 0;
  for (int i = 1; i <= side; ++i) {
    for (int j = 0; j < side; ++j) {
      const TerrainVertex& vertex =
          terrain.grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
      if (!IsWithin(vertex.h, 0, kMaxHeight) || vertex.selected > 1 || !(vertex.weight >= 0)) ++bad;
      if (materialMapper->grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] > 255)
        ++materials;
    }
  }
  Expect(bad == 0, FormatText("%i vertices are out of range", bad), broken);
  Expect(materials == 0, FormatText("%i cells have no material", materials), broken);
  Expect(terrain.roadPointCount >= 0 && terrain.roadPointCount <= kMaxRoadPoints,
         "too many road points", broken);
  Expect(terrain.brushSize >= 1 && terrain.brushSize <= kMaxBrushSize, "the brush has no size",
         broken);
  Expect(IsWithin(terrain.power, 1, kMaxToolPower), "the tool's power is out of range", broken);
  Expect(IsWithin(terrain.smoothingRange, 1, kMaxSmoothingRange),
         "the smoothing range is out of range", broken);
  Expect(IsWithin(terrain.flattenHeight, 0, kMaxHeight), "the flatten height is out of range",
         broken);
  Expect(materialMapper->brushSize >= 1 && materialMapper->brushSize <= 9,
         "the material brush has no size", broken);
  Expect(IsWithin(modConfig.WaterLevel, 0, 1000), "the water level is out of range", broken);
  Expect(modConfig.teamCount <= kMaxTeams && modConfig.skyCount <= kMaxSkies &&
             modConfig.theatreCount <= kMaxTheatres,
         "too many teams, skies or theatres", broken);
  for (const std::int32_t team : modConfig.chosenTeam) {
    Expect(team >= 0 && team < kMaxTeams, "a chosen team is not in the list", broken);
  }
}

// One file is open once, and what lies there is whole.
void CheckArchives(Broken& broken) {
  std::set<std::string> paths;
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    const std::string path = LowerCase(archives.At(i)->Path());
    Expect(paths.insert(path).second, path + " is open twice", broken);
  }
  const Archive* const level = LevelArchive();
  if (!level) return;
  // Its folder may have been left by changing that of the game.
  const std::string file = '\\' + LowerCase(modConfig.LevelName) + ".vra";
  Expect(LowerCase(level->Path()).ends_with(file), "the open archive is not that of " + file,
         broken);
  Expect(level->OnDisk() == ArchiveOnDisk::AsLeft, "the level's archive was changed from outside",
         broken);
  Expect(level->StrayJournal().empty(), "a journal lies beside the level's archive", broken);
  Archive onDisk;
  if (!onDisk.Open(level->Path(), false)) {
    broken.push_back("the level's archive cannot be opened: " + onDisk.Error());
    return;
  }
  for (const auto& [name, entry] : onDisk.Entries()) {
    const auto content = onDisk.ReadMember(name);
    Expect(content && content->size() == entry.size, "cannot be read: " + std::string(name),
           broken);
  }
}

std::vector<std::string> BrokenInvariants() {
  Broken broken;
  CheckHeld(broken);
  shell.renderFrameNow();
  CheckView(broken);
  CheckTerrain(broken);
  CheckObjects(broken);
  CheckTree(broken);
  CheckArchives(broken);
  return broken;
}

}  // namespace mw::monkey
