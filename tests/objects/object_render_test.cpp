#include "objects/object_render.h"

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <memory>

#include "core/editor_state.h"
#include "objects/mesh_drawing.h"
#include "objects/object_mapper.h"
#include "objects/object_picture_test.h"
#include "platform/scripted/script.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

using ObjectRenderTest = ObjectPictureTest;

// The first angle turns about the vertical, clockwise seen from above, the second about X, the
// third about Z; scale stretches along the mesh's own axes.
TEST_F(ObjectRenderTest, ABodyIsSeenAndTouchedWhereItStands) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  StaticObject& letter = AddLetter(Place(0, 0, 0));  // its arms point along -x
  constexpr Vector3 kUnturned{}, kOwnSize{1, 1, 1};
  const struct {
    Vector3 point, rotation, scale;
    const SceneCamera& from;
    const PictureColour& seen;
  } rows[] = {{{-0.5f, 2, 1}, kUnturned, kOwnSize, kFront, Colour(kPlusZ)},
              {{-3.5f, 4.5f, 1}, kUnturned, kOwnSize, kFront, Colour(kPlusZ)},
              {{-2.5f, 2.5f, 1}, kUnturned, kOwnSize, kFront, Colour(kPlusZ)},
              {{-3.5f, 2.5f, 1}, kUnturned, kOwnSize, kFront, kSky},  // the shorter arm
              {{3.5f, 4.5f, 1}, kUnturned, kOwnSize, kFront, kSky},
              {{-0.5f, 5, -3.5f}, {90, 0, 0}, kOwnSize, kAbove, Colour(kTop)},
              {{-0.5f, 5, 3.5f}, {90, 0, 0}, kOwnSize, kAbove, kSky},
              {{-0.5f, 0, 2.5f}, {0, 90, 0}, kOwnSize, kAbove, Colour(kMinusZ)},
              {{-0.5f, 0, -2.5f}, {0, 90, 0}, kOwnSize, kAbove, kSky},
              {{4.5f, 3.5f, 1}, {0, 0, 90}, kOwnSize, kFront, Colour(kPlusZ)},
              {{0.5f, 3.5f, 1}, {0, 0, 90}, kOwnSize, kFront, kSky},
              {{-3.5f, 0, 0.5f}, {90, 90, 90}, kOwnSize, kAbove, kSky},
              {{3.5f, 0, 4.5f}, {90, 90, 90}, kOwnSize, kAbove, kSky},
              {{-7.5f, 4.5f, 1}, kUnturned, {2, 1, 1}, kFront, Colour(kPlusZ)},
              {{-3.5f, 7, 3}, kUnturned, {1, 1.5f, 3}, kFront, Colour(kPlusZ)},
              {{-3.5f, 7.8f, 3}, kUnturned, {1, 1.5f, 3}, kFront, kSky},
              {{3.5f, 4.5f, 1}, kUnturned, {-1, 1, 1}, kFront, Colour(kPlusZ)}};
  for (const auto& [point, rotation, scale, from, seen] : rows) {
    letter.rotation = rotation;
    letter.scale = scale;
    EXPECT_EQ(HoveredAt(point, from), seen == kSky ? kNone : 0)
        << point.x << ' ' << point.y << ' ' << point.z;
    ExpectAt({point}, seen);
  }
  letter.rotation = {90, 90, 90};  // about Z first, then about X, then about the vertical
  letter.scale = kOwnSize;
  Draw(kAbove);
  ExpectSomethingAt({{-0.5f, 0, 2.5f}, {-3.5f, 0, 4.5f}});
  letter.rotation = {};
  EXPECT_EQ(HoveredAt({-3.5f, 4.5f, 1.2f}), 0) << "nearly on it";
  EXPECT_EQ(HoveredAt({-3.5f, 4.5f, 1.3f}), kNone);
  EXPECT_EQ(HoveredAt({-3.5f, 1, 0.5f}), kNone) << "within its box, below the arms";
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
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    for (const SceneCamera& from : {kFront,
                                    {kMiddle, 110, kMiddle, -60, 20},
                                    {kMiddle - 30, 60, kMiddle - 80, -10, 200},
                                    {kMiddle, 200, kMiddle - 20, -90, 180}})
      ExpectSimilar(Draw(from), DrawPlainly(from));
  }
}

TEST_F(ObjectRenderTest, MeshesFinerThanThePixelsLookAsDrawnWhole) {
  const MeshSurface ball = Ball(300, 2, texture_);
  MeshSurface above = Ball(300, 1, 0);
  for (MeshVertex& vertex : above.vertices) vertex.position.y += 4;
  const MeshListId two = MakeSceneMesh(std::array{ball, above});
  const MeshListId withLine = MakeSceneMesh(std::array{ball, Line({-5, 1, 0}, {5, 1, 0})});
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
    EXPECT_LE(DifferentPixels(frame, DrawPlainly(kFront)), 5u);
  }
}

TEST_F(ObjectRenderTest, TheLastMeshIsDrawnTooWhenItIsFinerThanThePixels) {
  const MeshListId ball = MakeSceneMesh(std::array{Ball(300, 2, texture_)});
  const int entry = AddSceneEntry(MeshKind::StandardMesh, {-2, -2, -2}, {2, 2, 2});
  AddSceneObject(entry, ball, Place(0, 0, -280)).boxColour = {200, 90, 150};
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    const DrawnPicture frame = Draw();
    EXPECT_LT(Count(frame, kSky), kWidth * kHeight - 5u);
    EXPECT_LE(DifferentPixels(frame, DrawPlainly(kFront)), 1u);
  }
}

TEST_F(ObjectRenderTest, TheViewModeChoosesThePicture) {
  StaticObject& letter = AddLetter(Place(0, 0, 0));
  letter.lists[1] = MakeMesh(Line({-5, 1, 0}, {5, 1, 0}));
  letter.lists[2] = 0;                              // no picture: nothing is drawn
  AddLetter(Place(0, 0, 0)).boxColour = {1, 2, 3};  // what stands in the first is hidden by it
  objectStore.objects[1].lists = letter.lists;
  for (const auto& [mode, colour] : {std::pair{ViewMode::BoundingBox, letter.boxColour},
                                     {ViewMode::CollisionMesh, kSky},
                                     {ViewMode::DetailMesh, kSky},
                                     {ViewMode::TexturedMesh, Colour(kPlusZ)}}) {
    objectStore.viewMode = mode;
    Draw();
    ExpectAt({{-0.5f, 2.5f, 1}}, colour);
    if (mode == ViewMode::CollisionMesh) ExpectAt({{4, 1, 0}}, letter.boxColour);
  }
}

TEST_F(ObjectRenderTest, ColoursTellHoverAndSelection) {
  StaticObject& object = AddBoxObject(Place(0, 0, 0));
  StaticObject& tree = AddBoxObject(Place(8, 0, 0), MeshKind::TreeMesh);
  const auto expect = [&](const PictureColour& mesh, const PictureColour& marker) {
    Draw();
    ExpectAt({{0, 1.5f, 2}}, mesh);
    ExpectAt({{0, 4.5f, 0}}, marker);
    ExpectAt({{8, 1.5f, 2}}, tree.selected ? kRed : kGreen);
  };
  expect(object.boxColour, kWhite);
  object.selected = true;
  expect(kRed, kRed);
  PointAtMarker(0, 0, 0);
  expect(kYellow, kRed);
  object.selected = false;
  tree.selected = true;
  expect(kGreen, kRed);
  objectStore.viewMode = ViewMode::TexturedMesh;
  Draw();
  ExpectAt({{0, 1.5f, 2}}, Colour(kPlusZ));
  ExpectAt({{0, 4.5f, 0}}, kRed);
}

TEST_F(ObjectRenderTest, MarkersAreTouchedFirstThenTheNearestBodyOfWhatIsShown) {
  AddBoxObject(Place(0, 0, 0));
  AddBoxObject(Place(0.5f, 0, 0));
  const std::pair<Vector3, int> feet[] = {{{0, 3, 0}, 0},  // the first of two
                                          {{1.25f, 4.75f, 0.75f}, 1},
                                          {{-0.7f, 4.7f, 0}, 0},
                                          {{-0.7f, 4.8f, 0}, kNone},
                                          {{-0.8f, 4, 0}, kNone},
                                          {{0, 4, -0.8f}, kNone}};
  for (const auto& [point, hovered] : feet) EXPECT_EQ(HoveredAt(point), hovered);
  const std::pair<Vector3, int> drawn[] = {{{0, 7.7f, 0}, 0},      {{0, 8.4f, 0}, kNone},
                                           {{0.6f, 6, 0}, 1},      {{-0.35f, 6, 0}, 0},
                                           {{-0.5f, 6, 0}, kNone}, {{0, 6, -2}, kNone}};
  for (const auto& [point, hovered] : drawn) EXPECT_EQ(HoveredAt(point), hovered);
  EXPECT_EQ(HoveredAt({0, 7.7f, 0}, kAbove), 0);
  objectStore.objects[1].position = Place(3, 0, 0);
  constexpr Vector3 kBesideTheFirst{2.05f, 1.5f, 2}, kOnItsSide{-2, 1.5f, 0};
  EXPECT_EQ(HoveredAt(kBesideTheFirst), 1);
  EXPECT_EQ(HoveredAt(kOnItsSide), 0);
  AddBoxObject(Place(-2.3f, -2, 0));
  EXPECT_EQ(HoveredAt(kOnItsSide), 2) << "its marker stands there";
  objectStore.objects.pop_back();

  auto soldier = std::make_unique<SoldierSpawn>();
  soldier->position = Place(-2.1f, 0, 0);
  soldier->modes = kModeConquest;
  entities.Of(EntityKind::SoldierSpawn).instances.push_back(std::move(soldier));
  EXPECT_EQ(HoveredAt(kOnItsSide), kNone);
  EXPECT_TRUE(HoveredInstance());
  objectStore.showSoldierSpawns = false;
  EXPECT_EQ(HoveredAt(kOnItsSide), 0);
  objectStore.showStandardMeshes = false;
  EXPECT_EQ(HoveredAt(kOnItsSide), kNone);
}

TEST_F(ObjectRenderTest, BetweenTheLinesOfACollisionMeshItsBoxIsTouched) {
  AddBoxObject(Place(0, 0, 0)).lists[1] = MakeMesh(Line({-2, 0, 0}, {2, 3, 0}));
  EXPECT_EQ(HoveredAt({1, 1, 1}), kNone) << "in the middle of a solid box";
  objectStore.viewMode = ViewMode::CollisionMesh;
  EXPECT_EQ(HoveredAt({1, 1, 1}), 0);
  EXPECT_EQ(HoveredAt({2.5f, 1, 1}), kNone);
}

TEST_F(ObjectRenderTest, TheHoveredObjectIsKnownBetweenFramesAndNamedOnce) {
  AddBoxObject(Place(0, 0, 0)).name = "bunker01";
  auto& texts = scripted::script.status[1];
  for (const bool onIt : {false, true, true, false, true, false}) {
    PointAtMarker(onIt ? 0 : 20, 0, 0);
    Draw();
    EXPECT_EQ(objectStore.lastHoveredObject, onIt ? 0 : kNone);
    if (texts.size() == 3) texts.emplace_back("Saved level");  // which stays readable
  }
  EXPECT_THAT(texts, testing::ElementsAre("Static Object: bunker01", "", "Static Object: bunker01",
                                          "Saved level"));
}

TEST_F(ObjectRenderTest, HiddenKindsAreNeitherDrawnNorHoverable) {
  const PictureColour colour = AddBoxObject(Place(-4, 0, 0)).boxColour = {10, 20, 30};
  AddBoxObject(Place(4, 0, 0), MeshKind::TreeMesh);
  PointAtMarker(4, 0, 0);
  for (const auto& [houses, trees] : {std::pair{true, false}, {false, true}, {false, false}}) {
    objectStore.showStandardMeshes = houses;
    objectStore.showTreeMeshes = trees;
    const DrawnPicture picture = Draw();
    ExpectAt({{-4, 1.5f, 2}}, houses ? colour : kSky);
    ExpectAt({{4, 1.5f, 2}}, trees ? kGreen : kSky);
    EXPECT_EQ(objectStore.lastHoveredObject, trees ? 1 : kNone);
    EXPECT_EQ(Count(picture, kSky) == kWidth * kHeight, !houses && !trees);
  }
}

TEST_F(ObjectRenderTest, OnlyObjectsWithAMeshAreDrawn) {
  AddBoxObject(Place(0, 0, 0)).meshIndex = -1;
  AddBoxObject(Place(0, 0, 0)).catalogueIndex = -1;
  AddBoxObject(Place(0, 0, 0)).catalogueIndex = kMaxCatalogueEntries;
  EXPECT_EQ(Count(Draw(), kSky), kWidth * kHeight);
  AddBoxObject(Place(0, 0, 0)).lists.fill(0);  // its mesh could not be loaded
  Draw();
  ExpectAt({{0, 4.5f, 0}}, kWhite);  // its marker
  ExpectAt({{0, 1.5f, 2}}, kSky);
}

TEST_F(ObjectRenderTest, AnObjectThatTheCatalogueDoesNotHaveIsAPlainBoxAndNamed) {
  StaticObject& shed = AddSceneObject(-1, 0, Place(0, 0, 0));
  shed.name = "shed";
  shed.meshIndex = -1;
  shed.unknown = true;
  for (const ViewMode mode :
       {ViewMode::BoundingBox, ViewMode::CollisionMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    EXPECT_EQ(HoveredAt({9, 9, 9}), kNone);
    ExpectAt({{0, 1, 1}}, shed.boxColour);
    ExpectAt({{0, 4.5f, 0}}, kWhite);  // its marker
    EXPECT_EQ(HoveredAt({0, 1, 1}), 0);
    EXPECT_EQ(scripted::script.status[1].back(), "Static Object: shed");
  }
}

TEST_F(ObjectRenderTest, ABodyIsMovedOverTheGroundBehindItAndComesNoNearer) {
  editor.viewWidth = kWidth, editor.viewHeight = kHeight;
  const SceneCamera above{kMiddle, 170, kMiddle + 60, -50, 0};
  StaticObject& box = AddBoxObject(Place(0, 0, 0));
  box.position.y = HeightAt(box.position.x, box.position.z);
  Draw(above);
  const Pixel from = PixelAt({0, box.position.y - 50 + 2, 2});
  objectStore.tool = ObjectTool::Translate;
  PressTranslate(from.column, from.row);
  ASSERT_TRUE(box.selected);
  const auto ground = GroundUnderCursor(from.column + 60, from.row + 20);
  ASSERT_TRUE(ground);
  for (int frame = 0; frame < 3; ++frame) {
    DragObjects(from.column + 60, from.row + 20, from.column, from.row);
    EXPECT_NEAR(box.ViewPosition().x, ground->x, 0.01);
    EXPECT_NEAR(box.ViewPosition().z, ground->z, 0.01);
    Draw(above);
  }
}

TEST_F(ObjectRenderTest, DrawingLeavesTheStateOfTheOtherRenderers) {
  AddLetter(Place(0, 0, 0));
  AddSceneObject(0, MakeMesh(Line({-5, 1, 0}, {5, 1, 0})), Place(0, 0, 0));
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
  PreviewMesh& preview = objectStore.preview;
  preview.boxA = {0, 0, 0};
  preview.boxB = {4, 5, 1};
  preview.mesh.lists[3] = MakeMesh(LetterF(texture_));
  editor.frameSeconds = 0.5f;
  const auto draw = [&] {
    Begin({0, 0, 0, 0, 0});
    DrawBrowserPreview();
    EXPECT_TRUE(!preview.loaded || !glIsEnabled(GL_TEXTURE_2D));
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

class MeshDrawingTest : public ObjectPictureTest {
 protected:
  // A square that faces the viewer of kFront, from the given place to the right.
  static MeshSurface Square(float x, unsigned texture) {
    MeshSurface square;
    square.texture = texture;
    for (const auto& [dx, y] : {std::pair{0.f, 50.f}, {2.f, 50.f}, {2.f, 52.f}, {0.f, 52.f}})
      square.vertices.push_back({{kMiddle + x + dx, y, kMiddle}, 0.1f, 0});
    square.indices = {0, 1, 2, 0, 2, 3};
    return square;
  }
  static MeshListId MakeSquare() { return CreateMeshList(std::array{Square(0, 0)}); }
  // How many pixels have this colour; for the sky's, how many have another.
  std::size_t Draw(MeshListId list, const PictureColour& colour = kWhite) {
    Begin(kFront);
    glEnable(GL_TEXTURE_2D);
    glColor3ub(255, 255, 255);
    CallMeshList(list);
    glDisable(GL_TEXTURE_2D);
    const DrawnPicture picture = ReadPicture();
    return colour == kSky ? kWidth * kHeight - Count(picture, kSky) : Count(picture, colour);
  }
};

TEST_F(MeshDrawingTest, SurfacesKeepTheirTexturesOrNone) {
  const MeshListId list =
      CreateMeshList(std::array{Square(-4, texture_), Square(-1, 0), Square(2, texture_)});
  const auto plain = static_cast<double>(Draw(list));
  EXPECT_GT(plain, 100);
  EXPECT_NEAR(static_cast<double>(Draw(list, kSideColours[0])), 2 * plain, 0.2 * plain);
  DeleteMeshList(list);
}

TEST_F(MeshDrawingTest, DeletedAndUnknownListsDrawNothingAndComeNotBack) {
  const MeshListId deleted = MakeSquare();
  BindMeshList(deleted);
  int vertices = 0, indices = 0;
  glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &vertices);
  glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &indices);
  UnbindMeshList();
  EXPECT_TRUE(glIsBuffer(static_cast<GLuint>(vertices)));
  for (const MeshListId list : {deleted, deleted, 0u}) DeleteMeshList(list);
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(vertices)));
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(indices)));
  const MeshListId next = MakeSquare();
  EXPECT_NE(next, deleted);
  EXPECT_EQ(Draw(deleted, kSky), 0u);
  EXPECT_EQ(CreateMeshList({}), 0u);
  EXPECT_EQ(Draw(0, kSky), 0u);
  EXPECT_GT(Draw(next), 100u);
  DeleteAllMeshLists();
  EXPECT_EQ(Draw(next, kSky), 0u) << "the context goes";
}

}  // namespace
}  // namespace mw
