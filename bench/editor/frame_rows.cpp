// What the running editor draws and does from frame to frame.
#include <QMainWindow>
#include <QOpenGLFramebufferObject>
#include <QTreeWidget>
#include <utility>
#include <vector>

#include "app/commands.h"
#include "app/frame.h"
#include "app/ui/gl_widget.h"
#include "bench/editor/level_rows.h"
#include "bench/table/table.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"
#include "platform/clock.h"
#include "tests/monkey/editor_steps.h"
#include "tests/monkey/inputs.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/hands.h"

namespace mw::bench {
namespace {

using help::OnGui;
using help::Target;

constexpr int kRounds = 5, kDragged = 50;

// The mean of some frames, each finished before the next one begins.
Cost FrameOffScreen(GlWidget& view) {
  constexpr int kFrames = 10;
  view.MakeCurrent();
  QOpenGLFramebufferObject target(view.DeviceSize(), QOpenGLFramebufferObject::CombinedDepthStencil,
                                  GL_TEXTURE_2D, GL_RGB8);
  target.bind();
  const auto draw = [] {
    RenderFrame(MillisecondsNow());
    glFinish();
  };
  draw();
  const Cost cost = CostOf([&] {
    for (int k = 0; k < kFrames; ++k) draw();
  });
  view.MakeCurrent();
  return {cost.wall / kFrames, cost.processor / kFrames};
}

void SelectSome() {
  for (int k = 0; k < kDragged; ++k) {
    objectStore.objects[static_cast<std::size_t>(k * 11)].selected = true;
  }
  ComputePivot();
  UpdateToolButtons(true);
  PressObjectControl(ObjectControl::RaiseLower);
}

void ChooseDenseScattering() {
  constexpr std::size_t kKind = 3;
  objectStore.scatter.settings = {};
  objectStore.scatter.settings.kinds[0].name = objectStore.catalogue.entries[kKind].name;
  objectStore.scatter.settings.density = 400;
  objectStore.scatter.settings.distance = 1;
  SetScatterBrush(kLargestScatterBrush);
  PressObjectControl(ObjectControl::Scatter);
}

}  // namespace

void LevelRows::AddFrames() const {
  constexpr std::pair<const char*, const char*> kModes[] = {
      {"Terrain Mapper", "F1"}, {"Material Mapper", "F2"}, {"Object Mapper", "F3"}};
  constexpr std::pair<const char*, CommandId> kShown[] = {
      {"wireframe", kCommandWireframe},
      {"textured wireframe", kCommandTexturedWireframe},
      {"textured", kCommandTextured}};
  for (const auto& [mode, key] : kModes) {
    PressKeys(key);
    for (const auto& [shown, command] : kShown) {
      OnGui([command = command] { RunCommand(command); });
      Add(FormatText("frame, %s, %s", mode, shown), meter_.Frame(), kLocal);
    }
    AddOffScreen(mode);
  }
}

// The frame that is shown now, by the program itself but without the window.
void LevelRows::AddOffScreen(const char* mode) const {
  std::vector<Cost> shown, off;
  for (int round = 0; round < kRounds; ++round) {
    shown.push_back(meter_.MeanFrame());
    off.push_back(OnGui([&] { return FrameOffScreen(*static_cast<GlWidget*>(view_)); }));
  }
  Add(FormatText("the same, %s, off the screen", mode), MedianOf(off), kLocal);
  AddRatio(FormatText("frame, %s", mode), "off the screen", MedianOf(shown).wall,
           MedianOf(off).wall, 1.3);
}

void LevelRows::AddStrokes() const {
  PressKeys("F1");
  monkey::Do("button", "Raising Tool");
  for (const char* key : {"O", "9", "Shift+1"}) PressKeys(key);
  const Target ground = InView(0.5, 0.7);
  help::Move(ground);
  const auto [idle, held] =
      meter_.Frames([&] { help::Press(ground); }, [] {}, [&] { help::Release(ground); });
  Add("frame, Terrain Mapper with its brush", idle, kLocal);
  Add("frame while a brush of size 9 is held", held, kLocal);
  AddRatio("frame, brush of size 9 held", "at rest", held.processor, idle.processor, 1.05);
  std::vector<Cost> presses, undos;
  for (int round = 0; round < kRounds; ++round) {
    // Spread over the time of a frame, as a user's are.
    const double seconds = meter_.PressToPicture(ground, idle.wall * (round + 0.5) / kRounds);
    presses.push_back({seconds, seconds});
    help::WaitForFrames();
    undos.push_back(CostOnGui(UndoLast));
  }
  Add("press to picture (waited, twice)", MedianOf(presses), kLocal);
  AddRatio("press to picture", "frame at rest", MedianOf(presses).wall, idle.wall, 2);
  Add("undo of a stroke", MedianOf(undos), kLocal);
}

void LevelRows::AddObjects() const {
  PressKeys("F3");
  OnGui(SelectSome);
  const Target from = InView(0.5, 0.5);
  int turn = 0;
  const auto [idle, dragged] =
      meter_.Frames([&] { help::Press(from); },
                    [&] { help::Move(InView(0.5, 0.5 + (++turn % 2 == 0 ? 0.02 : -0.02))); },
                    [&] { help::Release(from); });
  Add("frame, Object Mapper, 50 selected", idle, kLocal);
  Add("frame while these are dragged", dragged, kLocal);
  AddRatio("frame, 50 objects dragged", "at rest", dragged.processor, idle.processor, 1.1);
  std::vector<Cost> undos;
  for (int round = 0; round < kRounds; ++round) undos.push_back(CostOnGui(UndoLast));
  Add("undo of a drag", MedianOf(undos), kLocal);
  OnGui(DeselectAll);
}

void LevelRows::AddTree() const {
  auto* const tree =
      OnGui([] { return help::FindMainWindow()->findChild<QTreeWidget*>("levelTree"); });
  OnGui([&] { tree->expandAll(); });
  int turns = 0;
  const auto [idle, scrolled] = meter_.Frames(
      [] {},
      [&] {
        const int notches = ++turns % 40 < 20 ? -1 : 1;
        OnGui([&] {
          monkey::TurnWheel({tree->viewport(), tree->viewport()->rect().center()}, notches);
        });
      },
      [] {});
  Add("frame while the tree is scrolled", scrolled, kLocal);
  OnGui([&] { tree->collapseAll(); });
}

// Against the frame with what was scattered.
void LevelRows::AddScattering() const {
  constexpr int kSteps = 60, kEnough = 1000;
  const auto onTheWay = [&](int step) {
    const double part = static_cast<double>(step) / kSteps;
    return InView(0.1 + 0.8 * part, 0.9 - 0.4 * part);
  };
  const auto count = [] {
    return OnGui([] { return static_cast<int>(objectStore.objects.size()); });
  };
  PressKeys("F3");
  OnGui(ChooseDenseScattering);
  help::Move(onTheWay(0));
  help::WaitForFrames();
  const int before = count();
  const Cost scattering = meter_.FrameDuring([&] {
    help::Press(onTheWay(0));
    for (int step = 1; step <= kSteps && count() < before + kEnough; ++step) {
      help::Move(onTheWay(step));
    }
    help::Release(onTheWay(kSteps));
  });
  const int scattered = count() - before;
  Add("frame while objects are scattered in one stroke", scattering, kLocal);
  AddRatio(FormatText("frame, %i objects scattered in one stroke", scattered), "frame with them",
           scattering.processor, meter_.Frame().processor, 1.1);
  OnGui(UndoLast);
  Require(count() == before, "scattering is undone");
}

}  // namespace mw::bench
