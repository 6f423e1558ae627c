#include "objects/entity_render.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "core/editor_state.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_picture_test.h"
#include "platform/scripted/script.h"

namespace mw {
namespace {

constexpr PictureColour kMarked{200, 0, 0}, kWithoutTemplate{255, 0, 255};

class EntityRenderTest : public ObjectPictureTest {
 protected:
  // An entity with a template of its own in this group; `at` as Place takes it.
  template <typename Instance, typename Template>
  Instance& Add(std::int32_t group, const Vector3& at) {
    auto instance = std::make_unique<Instance>();
    EntityTables& tables = entities.Of(instance->Kind());
    auto spawnTemplate = std::make_unique<Template>();
    spawnTemplate->group = group;
    instance->templateIndex = static_cast<std::int32_t>(tables.templates.size());
    instance->modes = kModeConquest;
    instance->position = Place(at.x, at.y, at.z);
    Instance& added = *instance;
    tables.templates.push_back(std::move(spawnTemplate));
    tables.instances.push_back(std::move(instance));
    return added;
  }
  SoldierSpawn& AddSoldier(std::int32_t group, const Vector3& at) {
    return Add<SoldierSpawn, SoldierSpawnTemplate>(group, at);
  }
  ObjectSpawn& AddObjectSpawn(std::int32_t osId, const Vector3& at) {
    ObjectSpawn& spawn = Add<ObjectSpawn, ObjectSpawnTemplate>(0, at);
    spawn.osId = osId;
    return spawn;
  }
  ControlPoint& AddControlPoint(std::int32_t group, const Vector3& at, int radius = 0) {
    ControlPoint& point = Add<ControlPoint, ControlPointTemplate>(group, at);
    ControlPointTemplateOf(point)->radius = radius;
    return point;
  }
};

TEST_F(EntityRenderTest, EachKindHasAMarkerOfItsSize) {
  SoldierSpawn& soldier = AddSoldier(1, {-6, 0, 0});
  AddObjectSpawn(0, {0, 0, 0});
  AddControlPoint(7, {6, 0, 0});
  glLineWidth(8);  // of what was drawn before
  EXPECT_GT(Count(Draw(), kBlack), 150u) << "their edges";
  ExpectSomethingAt({{-6.4f, 1.9f, 0.5f}, {-0.9f, 0.8f, 1}, {6, 9.5f, 0.15f}});
  ExpectAt({{-6.7f, 1.5f, 0.5f}, {-6, 2.5f, 0}, {0, 2, 0}, {6.4f, 5, 0}}, kSky);
  soldier.rotation = {0, 0, 90};  // falls to the right
  Draw();
  ExpectSomethingAt({{-4.1f, 0, 0.5f}});
  ExpectAt({{-6, 1.5f, 0.5f}}, kSky);
}

TEST_F(EntityRenderTest, ControlPointsAndTheirSoldierSpawnsShareAColour) {
  AddSoldier(3, {-4, 0, 0});
  AddControlPoint(3, {0, 0, 20});
  AddObjectSpawn(0, {4, 0, 0});
  AddSoldier(-125, {8, 0, 0});  // a group beyond the table has a colour, too
  objectStore.showControlPoints = true;
  Draw();
  const PictureColour soldier = At(-4, 1, 0.5f), object = At(4, 0.5f, 1);
  EXPECT_EQ(At(0, 1.8f, 20.15f), soldier);
  EXPECT_GE(soldier[0], 150);
  EXPECT_GE(soldier[1], 150);
  EXPECT_EQ(soldier[2], 0) << "red and green";
  EXPECT_EQ(object[1], 0) << "red and blue";
  EXPECT_GE(object[2], 150);
  Draw();
  EXPECT_EQ(At(-4, 1, 0.5f), soldier) << "in every frame";
}

TEST_F(EntityRenderTest, WhatIsMarkedOrWithoutTemplateHasAColourOfItsOwn) {
  SoldierSpawn& soldier = AddSoldier(1, {0, 0, 0});
  soldier.selected = true;
  Draw();
  EXPECT_EQ(At(0, 1, 0.5f), kMarked);
  soldier.selected = false;
  PointAt({1, 2, -1});
  Draw();
  EXPECT_EQ(At(0, 1, 0.5f), kMarked) << "hovered";
  PointAt({9, 0, 0});
  soldier.templateIndex = -1;
  Draw();
  EXPECT_EQ(At(0, 1, 0.5f), kWithoutTemplate);
}

TEST_F(EntityRenderTest, TheMouseHoversOverTheWholeMarker) {
  AddSoldier(1, {0, 0, 0});
  AddObjectSpawn(0, {5, 0, 0});
  AddControlPoint(2, {10, 0, 0});
  const std::pair<Vector3, int> rows[] = {{{1, 2, -1}, 0},        {{1.1f, 2, -1}, kNone},
                                          {{0, -0.1f, 0}, kNone}, {{6.5f, 1, 1.5f}, 1},
                                          {{5, 1.1f, 0}, kNone},  {{10.39f, 10, -0.39f}, 2},
                                          {{10, 5, 0.5f}, kNone}};
  for (const auto& [point, kind] : rows) {
    HoveredAt(point);
    EXPECT_EQ(HoveredInstance() ? static_cast<int>(entities.hovered.kind) : kNone, kind)
        << point.x << ' ' << point.y << ' ' << point.z;
  }
}

TEST_F(EntityRenderTest, FilterAndSwitchesHideEntities) {
  AddSoldier(1, {-4, 0, 0}).modes = kModeCaptureTheFlag;
  AddObjectSpawn(0, {0, 0, 0}).modes = kModeCaptureTheFlag | kModeTeamDeathMatch;
  AddControlPoint(2, {4, 0, 0}, 3).modes = kModeConquest;
  const auto expectSeen = [&](bool soldier, bool object, bool point) {
    Draw();
    EXPECT_EQ(At(-4, 1, 0.5f) != kSky, soldier);
    EXPECT_EQ(At(0, 0.5f, 1) != kSky, object);
    EXPECT_EQ(At(4, 9, 0.15f) != kSky, point);
  };
  expectSeen(true, true, true);
  entities.ModeFilter = kModeCaptureTheFlag;
  PointAt({4, 1, 0});
  expectSeen(true, true, false);
  EXPECT_EQ(HoveredInstance(), nullptr);
  entities.ModeFilter = kModeTeamDeathMatch;
  expectSeen(false, true, false);
  entities.ModeFilter = kAllModes;
  objectStore.showSoldierSpawns = false;
  expectSeen(false, true, true);
  objectStore.showObjectSpawns = false;
  expectSeen(false, false, true);
  objectStore.showControlPoints = false;
  ExpectNothingDrawn();  // its ring is hidden, too
}

TEST_F(EntityRenderTest, LinksLeadFromTheSpawnsOfAGroupToItsControlPoints) {
  AddSoldier(3, {-8, 0, 0});
  AddObjectSpawn(3, {8, 0, 0});
  ControlPoint& point = AddControlPoint(3, {0, -4, 0});
  AddControlPoint(4, {-12, -4, 0});
  Draw({kMiddle, 52, kMiddle + 30, -3, 0});
  EXPECT_EQ(At(-4, 4, 0), kYellow) << "from 2 above the soldier spawn to 10 above the point";
  EXPECT_EQ(At(4, 3.5f, 0), kYellow) << "from 1 above the object spawn";
  EXPECT_EQ(At(-10, 4, 0), kSky) << "no link to the other group";
  point.modes = kModeTeamDeathMatch;
  entities.ModeFilter = kModeConquest;
  EXPECT_GT(Count(Draw(), kYellow), 50u) << "the links belong to the spawns";
  objectStore.showControlPoints = false;
  EXPECT_EQ(Count(Draw(), kYellow), 0u);
}

TEST_F(EntityRenderTest, ASpawnOutOfSightKeepsItsLink) {
  AddSoldier(3, {-80, 0, 0});
  AddControlPoint(3, {0, -4, 0});
  EXPECT_GT(Count(Draw(), kYellow), 50u);
}

TEST_F(EntityRenderTest, ARingShowsAControlPointsRadius) {
  AddControlPoint(1, {0, 0, 0}, 8);
  const SceneCamera above{kMiddle, 95, kMiddle, -90, 0};
  Draw(above);
  ExpectAt({{7.2f, 2, 0}, {0, 2, -7.2f}, {8, 2, 0}, {0, 2, -8}, {7.6f, 2, 0}}, kYellow);
  ExpectAt({{6, 2, 0}}, kSky);
}

TEST_F(EntityRenderTest, UnderItsLinksAndRingsTheGroundCanBePicked) {
  AddControlPoint(1, {0, 0, 0}, 8);
  Draw({kMiddle, 95, kMiddle, -90, 0});
  std::vector<float> depths(kWidth * kHeight);
  glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
  const auto drawn = std::count_if(depths.begin(), depths.end(), [](float d) { return d < 1; });
  EXPECT_LT(drawn, 60) << "only the post seen from above";
}

TEST_F(EntityRenderTest, TheHoveredEntityIsNamedOnce) {
  const SoldierSpawn& soldier = AddSoldier(1, {0, 0, 0});
  auto& texts = scripted::script.status[1];
  PointAt({0, 1, 0});
  Draw();
  EXPECT_EQ(texts, std::vector{StatusTextOf(soldier)});
  Draw();
  EXPECT_EQ(texts.size(), 1u) << "another text that was set since stays readable";
  PointAt({9, 1, 0});
  Draw();
  PointAt({0, 1, 0});
  Draw();
  EXPECT_EQ(texts, (std::vector{StatusTextOf(soldier), std::string(), StatusTextOf(soldier)}));
}

TEST_F(EntityRenderTest, AClickSelectsWhatItHitsThoughNoFrameCameAfterTheMouse) {
  SoldierSpawn& soldier = AddSoldier(1, {-6, 0, 0});
  ControlPoint& point = AddControlPoint(1, {6, 0, 0});
  StaticObject& object =
      AddSceneObject(AddSceneEntry(MeshKind::StandardMesh, {}, {1, 1, 1}), 0, Place(0, 0, 0));
  Draw();
  const auto click = [this](float x, float y) {
    const Pixel pixel = PixelAt({x, y, 0});
    ToggleSelectAtCursor(pixel.column, pixel.row);
  };
  click(-6, 1);
  EXPECT_TRUE(soldier.selected);
  click(0, 2);
  EXPECT_TRUE(object.selected);
  EXPECT_FALSE(soldier.selected);
  editor.ctrlHeld = true;
  click(6, 1);
  EXPECT_TRUE(point.selected && object.selected);
  editor.ctrlHeld = false;
  click(3, -3);
  EXPECT_FALSE(point.selected || object.selected);
  entities.Of(EntityKind::SoldierSpawn).instances[0]->modes = 0;
  click(-6, 1);
  EXPECT_FALSE(soldier.selected) << "it is not shown";
}

}  // namespace
}  // namespace mw
