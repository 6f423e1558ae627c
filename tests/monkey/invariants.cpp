#include "tests/monkey/invariants.h"

#include <GL/gl.h>
#include <QAction>
#include <QApplication>
#include <limits>
#include <set>
#include <tuple>
#include <utility>

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

std::vector<std::string> broken;

void CheckGl() {
  if (!MakeViewContextCurrent()) return Expect(false, "the view has no GL context");
  for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
    Expect(false, FormatText("GL error 0x%x", error));
  }
  constexpr std::tuple<const char*, GLenum, int> kBalanced[] = {
      {"modelview stack", GL_MODELVIEW_STACK_DEPTH, 1},
      {"projection stack", GL_PROJECTION_STACK_DEPTH, 1},
      {"texture stack", GL_TEXTURE_STACK_DEPTH, 1},
      {"attribute stack", GL_ATTRIB_STACK_DEPTH, 0},
      {"client attribute stack", GL_CLIENT_ATTRIB_STACK_DEPTH, 0},
      {"matrix mode", GL_MATRIX_MODE, GL_MODELVIEW}};
  for (const auto& [what, name, usual] : kBalanced) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    Expect(value == usual, FormatText("the %s is left at %i", what, value));
  }
}

// Not when it is no number.
bool IsWithin(float value, float least, float most) { return value >= least && value <= most; }

struct Range {
  const char* what;
  float value, least, most;
};

void ExpectWithin(std::initializer_list<Range> ranges) {
  for (const auto& [what, value, least, most] : ranges) {
    Expect(IsWithin(value, least, most),
           FormatText("the %s is out of range: %f", what, static_cast<double>(value)));
  }
}

void CheckCamera() {
  constexpr float kHuge = std::numeric_limits<float>::max();
  const auto side = static_cast<float>(modConfig.WorldSize);
  ExpectWithin({{"camera's x", camera.position.x, 0, side},
                {"camera's height", camera.position.y, -kHuge, kHuge},
                {"camera's z", camera.position.z, 0, side},
                {"camera's pitch", camera.pitch, -90, 80},
                {"camera's yaw", camera.yaw, -kHuge, kHuge},
                {"camera's roll", camera.roll, -kHuge, kHuge},
                {"camera's speed", editor.moveSpeed, 20, 100}});
}

bool IsChecked(const QWidget* window, CommandId id) {
  const auto* action = window->findChild<QAction*>(QString("command%1").arg(id));
  return action && action->isChecked();
}

// What the menus and toolbars show as chosen is what is chosen.
void CheckChoices() {
  const bool textures = editor.ShowTextures, grid = editor.ShowGrid;
  const std::pair<CommandId, bool> choices[] = {
      {kCommandTerrainMapper, editor.editMode == EditMode::TerrainMapper},
      {kCommandMaterialMapper, editor.editMode == EditMode::MaterialMapper},
      {kCommandObjectMapper, editor.editMode == EditMode::ObjectMapper},
      {kCommandCameraOnTerrain, editor.cameraMode == CameraMode::OnTerrain},
      {kCommandCameraTopDown, editor.cameraMode == CameraMode::TopDown},
      {kCommandCameraFly, editor.cameraMode == CameraMode::Fly},
      {kCommandWireframe, !textures},
      {kCommandTexturedWireframe, textures && grid},
      {kCommandTextured, textures && !grid}};
  for (const auto& [id, chosen] : choices) {
    Expect(IsChecked(help::FindMainWindow(), id) == chosen,
           FormatText("command %i is %s", id, chosen ? "not checked" : "checked"));
  }
}

// With no button held no stroke, drag or rubber band goes on.
void CheckHeld() {
  if (QApplication::mouseButtons() != Qt::NoButton || session.heldInput.leftButton) return;
  Expect(!editor.leftHeld, "the left button counts as held");
  Expect(!editor.rubberBandActive, "a rubber band is left");
  Expect(!materialMapper->painting, "painting goes on");
}

void CheckFlags() {
  Expect(!editor.browserPreviewActive, "the object browser's preview is left");
  Expect(editor.viewReady, "the view is not ready");
  Expect(!editor.levelLoaded || LevelArchive(), "the open level has no archive");
  Expect(modList.names.size() <= kMaxMods, "too many mods");
  Expect(modList.current < static_cast<int>(modList.names.size()), "the current mod is not listed");
}

void CheckGround() {
  const int side = modConfig.MaterialSize;
  int bad = 0, materials = 0;
  for (std::size_t i = 1; i <= static_cast<std::size_t>(side); ++i) {
    for (std::size_t j = 0; j < static_cast<std::size_t>(side); ++j) {
      const TerrainVertex& vertex = terrain.grid[i][j];
      if (!IsWithin(vertex.h, 0, kMaxHeight) || vertex.selected > 1 || !(vertex.weight >= 0)) ++bad;
      if (materialMapper->grid[i][j] > 255) ++materials;
    }
  }
  Expect(bad == 0, FormatText("%i vertices are out of range", bad));
  Expect(materials == 0, FormatText("%i cells have no material", materials));
}

void CheckSettings() {
  const int side = modConfig.MaterialSize;
  if (editor.levelLoaded) {
    Expect(side == 256 || side == 512 || side == 1024, "the level has no usual size");
    Expect(modConfig.WorldSize >= side, "the world is smaller than its samples");
    Expect(terrain.tilesPerSide == side / kTileCells, "the number of tiles is another one");
    ExpectWithin({{"height scale", modConfig.HeightScale, 0, 1000}});
  }
  if (!HasUsableTerrain()) return;
  CheckGround();
  const auto number = [](int value) { return static_cast<float>(value); };
  ExpectWithin({{"number of road points", number(terrain.roadPointCount), 0, kMaxRoadPoints},
                {"brush's size", number(terrain.brushSize), 1, kMaxBrushSize},
                {"tool's power", number(terrain.power), 1, kMaxToolPower},
                {"smoothing range", number(terrain.smoothingRange), 1, kMaxSmoothingRange},
                {"flatten height", terrain.flattenHeight, 0, kMaxHeight},
                {"material brush's size", number(materialMapper->brushSize), 1, 9},
                {"water level", modConfig.WaterLevel, 0, 1000},
                {"number of teams", number(modConfig.teamCount), 0, kMaxTeams},
                {"number of skies", number(modConfig.skyCount), 0, kMaxSkies},
                {"number of theatres", number(modConfig.theatreCount), 0, kMaxTheatres},
                {"first chosen team", number(modConfig.chosenTeam[0]), 0, kMaxTeams - 1},
                {"second chosen team", number(modConfig.chosenTeam[1]), 0, kMaxTeams - 1}});
}

// One file is open once, and what lies there is whole.
void CheckArchives() {
  std::set<std::string> paths;
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    const std::string path = LowerCase(archives.At(i)->Path());
    Expect(paths.insert(path).second, path + " is open twice");
  }
  const Archive* const level = LevelArchive();
  if (!level) return;
  // Its folder may have been left by changing that of the game.
  const std::string file = '\\' + LowerCase(modConfig.LevelName) + ".vra";
  Expect(LowerCase(level->Path()).ends_with(file), "the open archive is not that of " + file);
  Expect(level->OnDisk() == ArchiveOnDisk::AsLeft, "the level's archive was changed from outside");
  Expect(level->StrayJournal().empty(), "a journal lies beside the level's archive");
  Archive onDisk;
  Expect(onDisk.Open(level->Path(), false),
         "the level's archive cannot be opened: " + onDisk.Error());
  for (const auto& [name, entry] : onDisk.Entries()) {
    const auto content = onDisk.ReadMember(name);
    Expect(content && content->size() == entry.size, "cannot be read: " + std::string(name));
  }
}

}  // namespace

void Expect(bool holds, const std::string& what) {
  if (!holds) broken.push_back(what);
}

std::vector<std::string> TakeBroken() { return std::exchange(broken, {}); }

void CheckInvariants() {
  CheckHeld();
  shell.renderFrameNow();
  CheckGl();
  CheckCamera();
  CheckChoices();
  CheckHeld();
  CheckFlags();
  CheckSettings();
  CheckObjects();
  CheckArchives();
}

}  // namespace mw::monkey
