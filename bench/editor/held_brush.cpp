// held_brush: starts the editor in the current folder, a working folder with a fresh sample game
// that it may spoil, opens the Medium level and prints a row of the table of bench.sh: the
// processor time that a frame takes while the largest brush raises the ground, against that of a
// frame at rest.
#include <QApplication>
#include <QTextStream>
#include <ctime>

#include "bench/table/table.h"
#include "tests/monkey/editor_steps.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/guided_editor.h"
#include "tools/help_tour/hands.h"

namespace mw::bench {
namespace {

constexpr const char* kMediumLevel = "Stone_Ridge";
constexpr double kGoal = 1.05;
constexpr int kRounds = 15, kRoundTime = 1000;  // milliseconds
constexpr int kSettleTime = 200;                // milliseconds

using help::Target;

// Counts the frames that a view draws.
class FrameCounter : public QObject {
 public:
  int frames = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++frames;
    return false;
  }
};

// Of all threads, those that draw among them.
double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Seconds of processor time per frame.
double TimeOfFrame(const FrameCounter& counter) {
  help::Wait(kSettleTime);
  const auto frames = [&] { return counter.frames; };
  const int framesBefore = help::OnGui(frames);
  const double before = ProcessorSeconds();
  help::Wait(kRoundTime);
  const double seconds = ProcessorSeconds() - before;
  const int drawn = help::OnGui(frames) - framesBefore;
  if (drawn < 1) throw help::TourError("no frames are drawn");
  return seconds / drawn;
}

double TimeOfHeldFrame(const FrameCounter& counter, const Target& ground) {
  help::Press(ground);
  const double seconds = TimeOfFrame(counter);
  help::Release(ground);
  return seconds;
}

void Measure() {
  monkey::StartWithLevel(kMediumLevel);
  monkey::Do("key", {}, {{"key", "F1"}});
  monkey::Do("button", "Raising Tool");
  monkey::Do("point", {}, {{"at", "0.5,0.7"}});
  for (const char* key : {"O", "9", "Shift+1"}) monkey::Do("key", {}, {{"key", key}});
  QWidget* const view = help::OnGui(help::FindView);
  const Target ground{view, {view->width() / 2, view->height() * 7 / 10}};
  FrameCounter counter;
  counter.moveToThread(view->thread());
  help::OnGui([&] { view->installEventFilter(&counter); });
  AddTimes("frame of the editor with a held brush of size 9, Medium level", "frame at rest",
           Compare(
               kRounds, [&] { return TimeOfHeldFrame(counter, ground); },
               [&] { return TimeOfFrame(counter); }),
           kGoal);
  help::OnGui([&] { view->removeEventFilter(&counter); });
  Print();
  monkey::SaveByMenu();
  monkey::ExitByMenu();
}

class BrushHolder : public QThread {
 protected:
  void run() override {
    try {
      Measure();
    } catch (const std::exception& reason) {
      QTextStream(stderr) << reason.what() << Qt::endl;
      std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
    }
  }
};

}  // namespace
}  // namespace mw::bench

int main(int argc, char** argv) {
  mw::help::PrepareApplication();
  QApplication application(argc, argv);
  mw::bench::BrushHolder holder;
  return mw::help::RunGuidedEditor(holder);
}
