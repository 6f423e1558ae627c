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
  const std::size_t edges = Count(Draw(), kBlack);
  EXPECT_GT(edges, 150u);
  ExpectSomethingAt({{-6.4f, 1.9f, 0.5f}, {-0.9f, 0.8f, 1}, {6, 9.5f, 0.15f}});
  ExpectAt({{-6.7f, 1.5f, 0.5f}, {-6, 2.5f, 0}, {0, 2, 0}, {6.4f, 5, 0}}, kSky);
  soldier.rotation = {0, 0, 90};  // falls to the right
  Draw();
  ExpectSomethingAt({{-4.1f, 0, 0.5f}});
  ExpectAt({{-6, 1.5f, 0.5f}}, kSky);
  AddSoldier(1, {12, 0, 0});
  EXPECT_GT(Count(Draw(), kBlack), edges + 20) << "each has its own";
}

TEST_F(EntityRenderTest, ControlPointsAndTheirSoldierSpawnsShareAColour) {
  AddSoldier(3, {-4, 0, 0});
  AddControlPoint(3, {0, 0, 20});
  AddObjectSpawn(0, {4, 0, 0});
  AddSoldier(-125, {8, 0, 0});  // a group beyond the table has a colour, too
  Draw();
  const PictureColour soldier = At(-4, 1, 0.5f), object = At(4, 0.5f, 1);
  EXPECT_TRUE(soldier[0] >= 150 && soldier[1] >= 150 && soldier[2] == 0) << "red and green";
  EXPECT_TRUE(object[0] >= 150 && object[1] == 0 && object[2] >= 150) << "red and blue";
  ExpectAt({{0, 1.8f, 20.15f}}, soldier);
  Draw();
  ExpectAt({{-4, 1, 0.5f}}, soldier);  // in every frame
}

TEST_F(EntityRenderTest, WhatIsMarkedOrWithoutTemplateHasAColourOfItsOwn) {
  SoldierSpawn& soldier = AddSoldier(1, {0, 0, 0});
  soldier.selected = true;
  Draw();
  ExpectAt({{0, 1, 0.5f}}, kMarked);
  soldier.selected = false;
  HoveredAt({1, 2, -1});
  ExpectAt({{0, 1, 0.5f}}, kMarked);
  soldier.templateIndex = -1;
  HoveredAt({9, 0, 0});
  ExpectAt({{0, 1, 0.5f}}, kWithoutTemplate);
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
  const struct {
    GameModeMask filter;
    bool *off, soldier, object, point;
  } rows[] = {{kAllModes, nullptr, true, true, true},
              {kModeCaptureTheFlag, nullptr, true, true, false},
              {kModeTeamDeathMatch, nullptr, false, true, false},
              {kAllModes, &objectStore.showSoldierSpawns, false, true, true},
              {kAllModes, &objectStore.showObjectSpawns, false, false, true},
              {kAllModes, &objectStore.showControlPoints, false, false, false}};
  PointAt({4, 1, 0});
  for (const auto& [filter, off, soldier, object, point] : rows) {
    entities.ModeFilter = filter;
    if (off) *off = false;
    const DrawnPicture picture = Draw();
    EXPECT_EQ(At(-4, 1, 0.5f) != kSky, soldier);
    EXPECT_EQ(At(0, 0.5f, 1) != kSky, object);
    EXPECT_EQ(At(4, 9, 0.15f) != kSky, point);
    EXPECT_EQ(HoveredInstance() != nullptr, point);
    EXPECT_EQ(Count(picture, kYellow) > 0, point) << "its ring";
  }
}

TEST_F(EntityRenderTest, LinksLeadFromTheSpawnsOfAGroupToItsControlPoints) {
  AddSoldier(3, {-8, 0, 0});
  AddObjectSpawn(3, {8, 0, 0});
  AddControlPoint(4, {-12, -4, 0});
  ControlPoint& point = AddControlPoint(3, {0, -4, 0});
  Draw({kMiddle, 52, kMiddle + 30, -3, 0});
  ExpectAt({{-4, 4, 0}}, kYellow);    // from 2 above the soldier spawn to 10 above the point
  ExpectAt({{4, 3.5f, 0}}, kYellow);  // from 1 above the object spawn
  ExpectAt({{-10, 4, 0}}, kSky);      // none to the other group
  for (const auto& spawns : {EntityKind::SoldierSpawn, EntityKind::ObjectSpawn})
    entities.Of(spawns).instances[0]->position = Place(-80, 0, 0);
  EXPECT_GT(Count(Draw(), kYellow), 50u) << "from out of sight";
  point.modes = kModeTeamDeathMatch;
  entities.ModeFilter = kModeConquest;
  EXPECT_GT(Count(Draw(), kYellow), 50u) << "the links belong to the spawns";
  objectStore.showControlPoints = false;
  EXPECT_EQ(Count(Draw(), kYellow), 0u);
}

TEST_F(EntityRenderTest, ARingShowsAControlPointsRadiusAndTheGroundUnderItCanBePicked) {
  AddControlPoint(1, {0, 0, 0}, 8);
  Draw({kMiddle, 95, kMiddle, -90, 0});
  ExpectAt({{7.2f, 2, 0}, {0, 2, -7.2f}, {8, 2, 0}, {0, 2, -8}, {7.6f, 2, 0}}, kYellow);
  ExpectAt({{6, 2, 0}}, kSky);
  std::vector<float> depths(kWidth * kHeight);
  glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
  EXPECT_LT(std::ranges::count_if(depths, [](float depth) { return depth < 1; }), 60)
      << "only the post seen from above";
}

TEST_F(EntityRenderTest, TheHoveredEntityIsNamedOnce) {
  const std::string name = StatusTextOf(AddSoldier(1, {0, 0, 0}));
  for (const float x : {0.0f, 0.0f, 9.0f, 0.0f}) HoveredAt({x, 1, 0});
  EXPECT_EQ(scripted::script.status[1], (std::vector<std::string>{name, "", name}));
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
  const auto expectSelected = [&](bool soldierIs, bool objectIs, bool pointIs) {
    EXPECT_EQ(soldier.selected, soldierIs);
    EXPECT_EQ(object.selected, objectIs);
    EXPECT_EQ(point.selected, pointIs);
  };
  click(-6, 1);
  expectSelected(true, false, false);
  click(0, 2);
  expectSelected(false, true, false);
  editor.ctrlHeld = true;
  click(6, 1);
  expectSelected(false, true, true);
  editor.ctrlHeld = false;
  click(3, -3);
  expectSelected(false, false, false);
  soldier.modes = 0;  // it is not shown
  click(-6, 1);
  expectSelected(false, false, false);
}

}  // namespace
}  // namespace mw
