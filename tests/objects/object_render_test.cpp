#include "objects/object_render.h"

#include <array>
#include <cmath>

#include "core/editor_state.h"
#include "objects/object_picture_test.h"
#include "platform/scripted/script.h"

namespace mw {
namespace {

enum Side { kPlusX, kMinusX, kTop, kBottom, kPlusZ, kMinusZ };

const PictureColour& Colour(Side side) { return kSideColours[side]; }

class ObjectRenderTest : public ObjectPictureTest {
 protected:
  // Two boxes side by side with markers on them, as a level's objects have them.
  StaticObject& AddBoxObject(const Vector3& at, MeshKind kind = MeshKind::StandardMesh) {
    if (box_ == 0) {
      MeshSurface surface;
      AddBox(surface, {-2, 0, -2}, {2, 3, 2});
      surface.texture = texture_;
      box_ = MakeSceneMesh({&surface, 1});
    }
    return AddSceneObject(AddSceneEntry(kind, {-2, 0, -2}, {2, 3, 2}), box_, at);
  }
  // On the marker of a box at this place, given as Place takes it.
  static void PointAtMarker(float x, float y, float z) {
    objectStore.CursorPoint = {kMiddle + x, 50 + y + 3.5f, kMiddle + z};
  }

  static MeshSurface ThickLine() {
    MeshSurface line;
    line.kind = MeshSurface::Kind::Lines;
    line.lineWidth = 3;
    line.vertices = {{{-5, 1, 0}}, {{5, 1, 0}}};
    line.indices = {0, 1};
    return line;
  }

  MeshListId box_ = 0;
};

TEST_F(ObjectRenderTest, AMeshIsMirroredIntoViewCoordinates) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  AddLetter(Place(0, 0, 0));
  Draw();
  EXPECT_EQ(At(-3.5f, 4.5f, 1), Colour(kPlusZ)) << "the arms point to the left";
  EXPECT_EQ(At(-2.5f, 2.5f, 1), Colour(kPlusZ));
  EXPECT_EQ(At(-3.5f, 2.5f, 1), kSky) << "the lower arm is the shorter one";
  EXPECT_EQ(At(3.5f, 4.5f, 1), kSky);
}

TEST_F(ObjectRenderTest, TheFirstAngleTurnsAboutTheVerticalTheSecondAboutXTheThirdAboutZ) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  StaticObject& letter = AddLetter(Place(0, 0, 0));
  letter.rotation = {90, 0, 0};  // clockwise, seen from above: the arms point away from the viewer
  Draw({kMiddle, 90, kMiddle, -90, 0});
  EXPECT_EQ(At(-0.5f, 5, -3.5f), Colour(kTop));
  EXPECT_EQ(At(-0.5f, 5, 3.5f), kSky);
  letter.rotation = {0, 90, 0};  // falls forward
  Draw({kMiddle, 90, kMiddle, -90, 0});
  EXPECT_EQ(At(-0.5f, 0, 2.5f), Colour(kMinusZ));
  EXPECT_EQ(At(-0.5f, 0, -2.5f), kSky);
  letter.rotation = {0, 0, 90};  // falls to the right; the arms stand up
  Draw();
  EXPECT_EQ(At(4.5f, 3.5f, 1), Colour(kPlusZ));
  EXPECT_EQ(At(0.5f, 3.5f, 1), kSky);
}

TEST_F(ObjectRenderTest, TheThreeTurnsFollowEachOtherInDrawingOrder) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  StaticObject& letter = AddLetter(Place(0, 0, 0));
  // About Z: the stem lies along +x, the arms stand along +y. About X: the arms lie along +z. About
  // the vertical: the stem lies along +z, the arms along -x.
  letter.rotation = {90, 90, 90};
  Draw({kMiddle, 90, kMiddle, -90, 0});
  EXPECT_NE(At(-0.5f, 0, 2.5f), kSky);
  EXPECT_NE(At(-3.5f, 0, 4.5f), kSky);
  EXPECT_EQ(At(-3.5f, 0, 0.5f), kSky);
  EXPECT_EQ(At(3.5f, 0, 4.5f), kSky);
}

TEST_F(ObjectRenderTest, ScaleStretchesAlongTheMeshsOwnAxes) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  StaticObject& letter = AddLetter(Place(0, 0, 0));
  letter.scale = {2, 1, 1};
  Draw();
  EXPECT_EQ(At(-7.5f, 4.5f, 1), Colour(kPlusZ));
  letter.scale = {1, 1.5f, 3};
  Draw();
  EXPECT_EQ(At(-3.5f, 7, 3), Colour(kPlusZ));
  EXPECT_EQ(At(-3.5f, 7.8f, 3), kSky);
  letter.scale = {-1, 1, 1};
  Draw();
  EXPECT_EQ(At(3.5f, 4.5f, 1), Colour(kPlusZ));
}

TEST_F(ObjectRenderTest, ManyObjectsLookAsDrawnOneByOne) {
  for (int i = 0; i < 120; ++i) {
    const auto n = static_cast<float>(i);
    const Vector3 at = Place(std::fmod(n * 7.3f, 60.0f) - 30, std::fmod(n, 3.0f), -n);
    StaticObject& object = i % 3 == 0 ? AddLetter(at) : AddBoxObject(at);
    object.rotation = {n * 11, n * 3, -n * 5};
    object.scale = {1 + std::fmod(n, 4.0f) * 0.3f, 1, 0.7f};
    object.selected = i % 5 == 0;
    object.boxColour = {static_cast<std::uint8_t>(i * 2), 200, static_cast<std::uint8_t>(i)};
  }
  PointAtMarker(std::fmod(7.3f * 4, 60.0f) - 30, 1, -4);
  const SceneCamera cameras[] = {kFront,
                                 {kMiddle, 110, kMiddle, -60, 20},
                                 {kMiddle - 30, 60, kMiddle - 80, -10, 200},
                                 {kMiddle, 200, kMiddle - 20, -90, 180}};
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    for (const SceneCamera& from : cameras) ExpectAsPlain(from);
  }
}

TEST_F(ObjectRenderTest, WhereObjectsStandInOneAnotherTheFirstOneShows) {
  objectStore.viewMode = ViewMode::DetailMesh;
  AddLetter(Place(0, 0, 0)).boxColour = {10, 20, 30};
  AddLetter(Place(0, 0, 0)).boxColour = {90, 20, 30};
  Draw();
  EXPECT_EQ(At(-0.5f, 2, 1), (PictureColour{10, 20, 30}));
}

TEST_F(ObjectRenderTest, TheViewModeChoosesThePicture) {
  StaticObject& letter = AddLetter(Place(0, 0, 0));
  const MeshSurface lines = ThickLine();
  letter.lists[1] = MakeSceneMesh({&lines, 1});
  letter.lists[2] = 0;
  const auto draw = [&](ViewMode mode) {
    objectStore.viewMode = mode;
    Draw();
    return At(-0.5f, 2.5f, 1);
  };
  EXPECT_EQ(draw(ViewMode::BoundingBox), letter.boxColour);
  EXPECT_EQ(draw(ViewMode::CollisionMesh), kSky);
  EXPECT_EQ(At(4, 1, 0), letter.boxColour);
  EXPECT_EQ(draw(ViewMode::DetailMesh), kSky) << "no picture: nothing is drawn";
  EXPECT_EQ(draw(ViewMode::TexturedMesh), Colour(kPlusZ));
}

TEST_F(ObjectRenderTest, ColoursTellHoverAndSelection) {
  objectStore.viewMode = ViewMode::BoundingBox;
  StaticObject& object = AddBoxObject(Place(0, 0, 0));
  StaticObject& tree = AddBoxObject(Place(8, 0, 0), MeshKind::TreeMesh);
  const auto expect = [&](const PictureColour& mesh, const PictureColour& marker) {
    Draw();
    EXPECT_EQ(At(0, 1.5f, 2), mesh);
    EXPECT_EQ(At(0, 4.5f, 0), marker);
  };
  expect(object.boxColour, kWhite);
  EXPECT_EQ(At(8, 1.5f, 2), kGreen) << "a tree";
  object.selected = true;
  expect(kRed, kRed);
  PointAtMarker(0, 0, 0);
  expect(kYellow, kRed);
  object.selected = false;
  expect(kGreen, kRed);
  tree.selected = true;
  Draw();
  EXPECT_EQ(At(8, 1.5f, 2), kRed);
  objectStore.viewMode = ViewMode::TexturedMesh;
  expect(Colour(kPlusZ), kRed);
}

TEST_F(ObjectRenderTest, TheMouseHoversOverAMarkersFoot) {
  AddBoxObject(Place(0, 0, 0));
  AddBoxObject(Place(0.5f, 0, 0));
  const auto hovered = [&](float x, float aboveBox, float z) {
    objectStore.CursorPoint = {kMiddle + x, 53 + aboveBox, kMiddle + z};
    Draw();
    return objectStore.hoveredObject;
  };
  EXPECT_EQ(hovered(0, 0, 0), 0) << "the first of two";
  EXPECT_EQ(hovered(1.25f, 1.75f, 0.75f), 1);
  EXPECT_EQ(hovered(0, 1.8f, 0), -1);
  EXPECT_EQ(hovered(-0.8f, 1, 0), -1);
  EXPECT_EQ(hovered(0, 1, -0.8f), -1);
}

TEST_F(ObjectRenderTest, TheHoveredObjectIsKnownBetweenFramesAndNamedOnce) {
  AddBoxObject(Place(0, 0, 0)).name = "bunker01";
  auto& texts = scripted::script.status[1];
  Draw();
  EXPECT_EQ(objectStore.lastHoveredObject, -1);
  PointAtMarker(0, 0, 0);
  Draw();
  EXPECT_EQ(objectStore.lastHoveredObject, 0);
  EXPECT_EQ(texts, std::vector<std::string>{"Static Object: bunker01"});
  Draw();
  EXPECT_EQ(texts.size(), 1u) << "another text that was set since stays readable";
  PointAtMarker(20, 0, 0);
  Draw();
  EXPECT_EQ(objectStore.lastHoveredObject, -1);
  EXPECT_EQ(texts.back(), "") << "it is not there any more";
  texts.emplace_back("Saved level");
  PointAtMarker(0, 0, 0);
  Draw();
  EXPECT_EQ(texts.back(), "Static Object: bunker01");
  texts.emplace_back("Saved level");
  PointAtMarker(20, 0, 0);
  Draw();
  EXPECT_EQ(texts.back(), "Saved level");
}

TEST_F(ObjectRenderTest, HiddenKindsAreNeitherDrawnNorHoverable) {
  AddBoxObject(Place(-4, 0, 0)).boxColour = {10, 20, 30};
  AddBoxObject(Place(4, 0, 0), MeshKind::TreeMesh);
  PointAtMarker(4, 0, 0);
  objectStore.showTreeMeshes = false;
  Draw();
  EXPECT_EQ(At(-4, 1.5f, 2), (PictureColour{10, 20, 30}));
  EXPECT_EQ(At(4, 1.5f, 2), kSky);
  EXPECT_EQ(objectStore.hoveredObject, -1);
  objectStore.showTreeMeshes = true;
  objectStore.showStandardMeshes = false;
  Draw();
  EXPECT_EQ(At(-4, 1.5f, 2), kSky);
  EXPECT_EQ(objectStore.lastHoveredObject, 1);
  objectStore.showTreeMeshes = false;
  const DrawnPicture nothing = Draw();
  EXPECT_EQ(Count(nothing, kSky), kWidth * kHeight);
  EXPECT_EQ(objectStore.lastHoveredObject, -1) << "what was hovered before is out of sight";
}

TEST_F(ObjectRenderTest, OnlyObjectsWithAMeshAreDrawn) {
  AddBoxObject(Place(0, 0, 0)).meshIndex = -1;
  AddBoxObject(Place(0, 0, 0)).catalogueIndex = -1;
  AddBoxObject(Place(0, 0, 0)).catalogueIndex = kMaxCatalogueEntries;
  EXPECT_EQ(Count(Draw(), kSky), kWidth * kHeight);
  AddBoxObject(Place(0, 0, 0)).lists.fill(0);  // its mesh could not be loaded
  Draw();
  EXPECT_EQ(At(0, 4.5f, 0), kWhite) << "its marker";
  EXPECT_EQ(At(0, 1.5f, 2), kSky);
}

TEST_F(ObjectRenderTest, MeshesFinerThanThePixelsLookAsDrawnWhole) {
  const MeshSurface ball = Ball(300, 2, texture_);
  MeshSurface above = Ball(300, 1, 0), line = ThickLine();
  for (MeshVertex& vertex : above.vertices) vertex.position.y += 4;
  const MeshListId two = MakeSceneMesh(std::array{ball, above});
  const MeshListId withLine = MakeSceneMesh(std::array{ball, line});
  const int entry = AddSceneEntry(MeshKind::StandardMesh, {-200, -200, -200}, {200, 200, 200});
  for (int k = 0; k < 120; ++k) {
    // Near and far ones by turns.
    const float away = static_cast<float>(k * 47 % 120) * 2.5f;
    const float aside = static_cast<float>(k % 9 - 4) * (3 + away / 12);
    StaticObject& object =
        AddSceneObject(entry, k % 7 == 0 ? withLine : two, Place(aside, 0, 15 - away));
    object.rotation = {static_cast<float>(k * 37), static_cast<float>(k * 11), 0};
    object.scale = {1, 0.5f + static_cast<float>(k % 3) / 2, 1};
    object.boxColour = {static_cast<std::uint8_t>(k * 2), 90, 150};
  }
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    const DrawnPicture frame = Draw();
    EXPECT_LT(Count(frame, kSky), kWidth * kHeight * 9u / 10);
    Begin(kFront);
    plain::DrawStaticObjects();
    EXPECT_LE(DifferentPixels(frame, ReadPicture()), 5u);
  }
}

TEST_F(ObjectRenderTest, DrawingLeavesTheStateOfTheOtherRenderers) {
  AddLetter(Place(0, 0, 0));
  const MeshSurface lines = ThickLine();
  AddSceneObject(0, MakeSceneMesh({&lines, 1}), Place(0, 0, 0));
  for (const ViewMode mode : {ViewMode::CollisionMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    Begin(kFront);
    Matrix4 before, after;
    glGetFloatv(GL_MODELVIEW_MATRIX, before.data());
    DrawStaticObjects();
    glGetFloatv(GL_MODELVIEW_MATRIX, after.data());
    EXPECT_EQ(before, after);
    int depth = 0;
    float width = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    glGetFloatv(GL_LINE_WIDTH, &width);
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(width, 1);
    for (const GLenum state :
         {GL_TEXTURE_2D, GL_BLEND, GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_COLOR_ARRAY})
      EXPECT_FALSE(glIsEnabled(state)) << state;
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
  }
}

TEST_F(ObjectRenderTest, TheBrowserTurnsItsMeshInFrontOfTheViewer) {
  const MeshSurface surface = LetterF(texture_);
  PreviewMesh& preview = objectStore.preview;
  preview.boxA = {0, 0, 0};
  preview.boxB = {4, 5, 1};
  preview.mesh.lists[3] = MakeSceneMesh({&surface, 1});
  editor.frameSeconds = 0.5f;
  const auto draw = [&] {
    Begin({0, 0, 0, 0, 0});
    DrawBrowserPreview();
    return ReadPicture();
  };
  EXPECT_EQ(Count(draw(), kSky), kWidth * kHeight) << "nothing is loaded";
  EXPECT_FLOAT_EQ(preview.spin, 10);
  preview.loaded = true;
  preview.spin = 355;
  const DrawnPicture turned = draw();
  EXPECT_FLOAT_EQ(preview.spin, 5);
  EXPECT_GT(Count(turned, Colour(kPlusZ)), 300u);
  EXPECT_GT(Count(turned, Colour(kTop)), 50u) << "seen from above";
  editor.frameSeconds = 9;
  EXPECT_GT(Count(draw(), Colour(kMinusZ)), 300u) << "half a turn later";
}

}  // namespace
}  // namespace mw
