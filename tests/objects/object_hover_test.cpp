#include "objects/object_hover.h"

#include <memory>

#include "core/editor_state.h"
#include "objects/entity_markers.h"
#include "objects/object_mapper.h"
#include "objects/object_picture_test.h"
#include "platform/scripted/script.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

constexpr int kNone = -1;

class ObjectHoverTest : public ObjectPictureTest {
 protected:
  void TearDown() override {
    if (!IsSkipped()) ReleaseEntityMarkers();
    ObjectPictureTest::TearDown();
  }

  // 4 wide and deep and 3 high.
  StaticObject& AddBoxObject(const Vector3& at) {
    if (box_ == 0) {
      MeshSurface surface;
      AddBox(surface, {-2, 0, -2}, {2, 3, 2});
      box_ = MakeSceneMesh({&surface, 1});
    }
    return AddSceneObject(AddSceneEntry(MeshKind::StandardMesh, {-2, 0, -2}, {2, 3, 2}), box_, at);
  }
  int HoveredAt(const Vector3& point) {
    objectStore.CursorPoint = Vector3{kMiddle, 50, kMiddle} + point;
    Draw();
    return objectStore.hoveredObject;
  }

  MeshListId box_ = 0;
};

TEST_F(ObjectHoverTest, ABodyIsTouchedWhereItIsDrawn) {
  objectStore.viewMode = ViewMode::TexturedMesh;
  StaticObject& letter = AddLetter(Place(0, 0, 0));  // its arms point along -x
  constexpr Vector3 kUnturned{}, kOwnSize{1, 1, 1};
  const struct {
    Vector3 point, rotation, scale;
    int hovered;
  } cases[] = {{{-0.5f, 2, 1}, kUnturned, kOwnSize, 0},
               {{-3.5f, 4.5f, 1}, kUnturned, kOwnSize, 0},
               {{-3.5f, 4.5f, 1.2f}, kUnturned, kOwnSize, 0},
               {{-3.5f, 4.5f, 1.3f}, kUnturned, kOwnSize, kNone},
               {{-3.5f, 1, 0.5f}, kUnturned, kOwnSize, kNone},  // within its box, below the arms
               {{-0.5f, 5, -3.5f}, {90, 0, 0}, kOwnSize, 0},
               {{-3.5f, 5, 1}, {90, 0, 0}, kOwnSize, kNone},
               {{4.5f, 3.5f, 1}, {0, 0, 90}, kOwnSize, 0},
               {{-7.5f, 4.5f, 1}, kUnturned, {2, 1, 1}, 0},
               {{3.5f, 4.5f, 1}, kUnturned, {-1, 1, 1}, 0}};
  for (const auto& [point, rotation, scale, hovered] : cases) {
    letter.rotation = rotation;
    letter.scale = scale;
    EXPECT_EQ(HoveredAt(point), hovered) << point.x << ' ' << point.y << ' ' << point.z;
  }
}

TEST_F(ObjectHoverTest, BetweenTheLinesOfACollisionMeshItsBoxIsTouched) {
  MeshSurface line;
  line.kind = MeshSurface::Kind::Lines;
  line.vertices = {{{-2, 0, 0}}, {{2, 3, 0}}};
  line.indices = {0, 1};
  StaticObject& object = AddBoxObject(Place(0, 0, 0));
  object.lists[static_cast<std::size_t>(ViewMode::CollisionMesh)] = MakeSceneMesh({&line, 1});
  EXPECT_EQ(HoveredAt({1, 1, 1}), kNone) << "in the middle of a solid box";
  objectStore.viewMode = ViewMode::CollisionMesh;
  EXPECT_EQ(HoveredAt({1, 1, 1}), 0);
  EXPECT_EQ(HoveredAt({2.5f, 1, 1}), kNone);
}

TEST_F(ObjectHoverTest, MarkersComeFirstThenTheNearestBodyOfWhatIsShown) {
  AddBoxObject(Place(0, 0, 0));
  AddBoxObject(Place(3, 0, 0));
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

TEST_F(ObjectHoverTest, AnObjectThatTheCatalogueDoesNotHaveIsAPlainBoxAndNamed) {
  StaticObject& shed = AddSceneObject(-1, 0, Place(0, 0, 0));
  shed.name = "shed";
  shed.meshIndex = -1;
  shed.unknown = true;
  for (const ViewMode mode :
       {ViewMode::BoundingBox, ViewMode::CollisionMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    EXPECT_EQ(HoveredAt({9, 9, 9}), kNone);
    EXPECT_EQ(At(0, 1, 1), shed.boxColour);
    EXPECT_EQ(At(0, 4.5f, 0), kWhite) << "its marker";
    EXPECT_EQ(HoveredAt({0, 1, 1}), 0);
    EXPECT_EQ(scripted::script.status[1].back(), "Static Object: shed");
  }
}

TEST_F(ObjectHoverTest, ABodyIsMovedOverTheGroundBehindItAndComesNoNearer) {
  editor.viewWidth = kWidth, editor.viewHeight = kHeight;
  const SceneCamera above{kMiddle, 170, kMiddle + 60, -50, 0};
  StaticObject& box = AddBoxObject(Place(0, 0, 0));
  box.position.y = HeightAt(box.position.x, box.position.z);
  Draw(above);
  const Pixel from = PixelAt(0, box.position.y - 50 + 2, 2);
  objectStore.tool = ObjectTool::Translate;
  PressTranslate(from.column, from.row);
  ASSERT_TRUE(box.selected);
  std::vector<Vector3> places;
  for (int frame = 0; frame < 3; ++frame) {
    DragObjects(from.column + 60, from.row + 20, from.column, from.row);
    places.push_back(box.position);
    Draw(above);
  }
  const auto ground = GroundUnderCursor(from.column + 60, from.row + 20);
  ASSERT_TRUE(ground);
  EXPECT_NEAR(box.ViewPosition().x, ground->x, 0.01);
  EXPECT_NEAR(box.ViewPosition().z, ground->z, 0.01);
  EXPECT_EQ(places[1], places[0]);
  EXPECT_EQ(places[2], places[0]);
}

}  // namespace
}  // namespace mw
