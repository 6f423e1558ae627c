// A level that is edited with mouse and keys as they reach the shell: flat ground, which the view
// shows from straight above, two bunkers, an oak, and the mesh of the bunkers in memory.
#pragma once

#include <GL/gl.h>
#include <cmath>

#include "app/input.h"
#include "app/modes.h"
#include "app/shell_fixture.h"
#include "bench/plain/gl_context.h"
#include "objects/level_tree.h"
#include "terrain/terrain_render.h"
#include "terrain/world_point.h"

namespace mw {

inline constexpr int kViewSide = 101;  // of the view, pixels

// The vertex that is nearest to what the view shows at the pixel.
inline TerrainVertex& VertexUnder(int x, int y) {
  const Vector3 ground = GroundUnderCursor(x, y).value();
  return terrain.grid[static_cast<std::size_t>(std::lround(ground.x / terrain.cellSize))]
                     [static_cast<std::size_t>(std::lround(ground.z / terrain.cellSize))];
}

class EditingTest : public ShellTest {
 protected:
  EditingTest() {
    BuildTree();
    CachedMesh mesh;
    mesh.name = "bunker";
    mesh.treeItem = cachedBunker = InsertItem(levelTree.fixed.cachedObjects, "bunker");
    objectStore.meshes.push_back(mesh);
    firstBunker = Place("bunker", 0, {100, 80, 300});
    oak = Place("oak", 1, {200, 10, 200});
    secondBunker = Place("bunker", 0, {400, 5, 50});
    LookDownOn(512, 512);
    FollowCamera();
    shell.renderFrameNow = [this] {
      ++frames;
      FollowCamera();
    };
  }
  // The depth of the picture, which objects are picked from, is that of the ground.
  void SetUp() override {
    if (!OpenTestGl(kViewSide, kViewSide)) GTEST_SKIP() << TestGlError();
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
  }

  // The middle of the view shows the ground there, in world units; a pixel is about 2 wide.
  static void LookDownOn(float x, float z) {
    editor.viewWidth = editor.viewHeight = kViewSide;
    camera.position = {x, 300, z};
    camera.pitch = -90;
    camera.UpdateDirection();
    camera.frustum.fill({0, 0, 0, 1});  // all is in sight
    UpdateViewSquare();
  }
  // Goes to the mode and draws a frame of it.
  static void Show(EditMode mode) {
    SetEditMode(mode);
    FollowCamera();
  }
  static void Choose(TerrainTool tool) {
    Show(EditMode::TerrainMapper);
    terrain.tool = tool;
  }
  static void Press(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Press, x, y); }
  static void Release(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Release, x, y); }
  static void Hover(int x, int y) { RouteMouse(MouseButton::None, MouseEvent::Move, x, y); }
  static void Click(int x, int y) { Press(x, y), Release(x, y); }
  static void Tap(int key) { RouteKey(key, true), RouteKey(key, false); }
  static void TapWith(int modifier, int key) {
    RouteKey(modifier, true), Tap(key), RouteKey(modifier, false);
  }

  static TreeItem Place(const char* name, int entry, Vector3 position) {
    ObjectCatalogue& catalogue = objectStore.catalogue;
    catalogue.entryCount = 2;
    CatalogueEntry& listed = catalogue.entries[static_cast<std::size_t>(entry)];
    listed.name = listed.meshName = name;
    listed.meshKind = entry == 1 ? MeshKind::TreeMesh : MeshKind::StandardMesh;
    listed.boxA = {-2, 0, -2}, listed.boxB = {2, 0, 2};
    StaticObject object;
    object.name = name;
    object.catalogueIndex = entry;
    object.meshIndex = 0;
    object.position = position;
    object.treeItem =
        InsertItem(entry == 1 ? levelTree.fixed.treeMeshes : levelTree.fixed.standardMeshes, name);
    objectStore.objects.push_back(object);
    return object.treeItem;
  }

  TreeItem firstBunker = 0, oak = 0, secondBunker = 0, cachedBunker = 0;
};

}  // namespace mw
