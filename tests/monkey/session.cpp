// session PAGE: starts the editor in the current folder, a working folder with a fresh sample game,
// and goes through the user's day that the page tells: edits of every kind, saving, another level,
// a new one. Then it opens levels one after another and looks at the memory: that must not go
// on growing. Ends with 0 when all went well; what the program leaks a sanitizer tells at the end.
//
// session PAGE COUNT: the page saves the first level with at least so many objects more. It tells
// how many there were and how many presses of buttons and keys they took.
#include <QApplication>
#include <QTextStream>
#include <algorithm>
#include <array>
#include <malloc.h>
#include <optional>
#include <utility>
#include <vector>

#include "objects/object_store.h"
#include "tests/monkey/editor_steps.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/guided_editor.h"
#include "tools/help_tour/hands.h"
#include "tools/help_tour/page.h"

// Of the sanitizer, where there is one; it does not fill in the library's own numbers.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

// Libraries stay in memory until the end, so that what they leak has their name.
extern "C" int dlclose(void*) { return 0; }

namespace mw::monkey {
namespace {

constexpr const char* kLevels[] = {"Harbour_Point", "Stone_Ridge"};
constexpr std::size_t kOpened = 12;
constexpr int kRounds = 3;  // what the program leaks grows in each of them, a library's cache once
constexpr std::int64_t kMostGrowth = 128 << 10;  // bytes, in half of the openings

std::int64_t BytesInUse() {
  if (__sanitizer_get_current_allocated_bytes) {
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
  }
  const struct mallinfo2 info = mallinfo2();
  return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

int CountObjects() { return static_cast<int>(objectStore.objects.size()); }

// What the page tells; how many objects more the first level has then.
int FollowPage(const QString& page) {
  QString error;
  const auto steps = help::ReadPage(page, error);
  if (!steps) throw help::TourError(error);
  const int before = help::OnGui(CountObjects);
  for (const help::Step& step : *steps) Do(step.action, step.text, step.data);
  OpenLevelByMenu(kLevels[0]);
  return help::OnGui(CountObjects) - before;
}

void SpendTheDay(const QString& page) {
  if (FollowPage(page) != 1) throw help::TourError("another number of objects");
}

void Build(const QString& page, int count) {
  const int pressesBefore = help::CountPresses();
  const int built = FollowPage(page);
  QTextStream(stdout) << built << " objects with " << help::CountPresses() - pressesBefore
                      << " presses" << Qt::endl;
  if (built < count) throw help::TourError("too few objects");
}

// True when it grew: now and then a library has some megabytes more for a moment, so the least of
// several openings of a level is compared with the least of those before.
bool MemoryGrowsWhileLevelsOpen() {
  constexpr std::size_t kLevelCount = std::size(kLevels);
  std::array<std::vector<std::int64_t>, kLevelCount> bytes;
  for (std::size_t i = 0; i < kOpened; ++i) {
    OpenLevelByMenu(kLevels[i % kLevelCount]);
    help::WaitForFrames(3);  // what the level before had in GL goes, and what this one has comes
    bytes[i % kLevelCount].push_back(help::OnGui(BytesInUse));
  }
  bool grew = false;
  for (std::size_t level = 0; level < kLevelCount; ++level) {
    const auto middle = bytes[level].begin() + kOpened / kLevelCount / 2;
    const std::int64_t before = *std::min_element(bytes[level].begin(), middle);
    const std::int64_t after = *std::min_element(middle, bytes[level].end());
    QTextStream(stdout) << kLevels[level] << ": " << before << " bytes in use, later "
                        << after - before << " more" << Qt::endl;
    grew = grew || after - before > kMostGrowth;
  }
  return grew;
}

void OpenLevelsAndWatchMemory() {
  for (int round = 0; round < kRounds; ++round) {
    if (!MemoryGrowsWhileLevelsOpen()) return;
  }
  throw help::TourError("the memory grew");
}

class Session : public QThread {
 public:
  // No `count`: the page tells a day.
  Session(QString page, std::optional<int> count) : page_(std::move(page)), count_(count) {}

 protected:
  void run() override {
    try {
      StartWithLevel(kLevels[0]);
      if (count_) {
        Build(page_, *count_);
      } else {
        SpendTheDay(page_);
        OpenLevelsAndWatchMemory();
      }
      ExitByMenu();
    } catch (const std::exception& reason) {
      QTextStream(stderr) << reason.what() << Qt::endl;
      std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
    }
  }

 private:
  const QString page_;
  const std::optional<int> count_;
};

}  // namespace
}  // namespace mw::monkey

int main(int argc, char** argv) {
  mw::help::PrepareApplication();
  QApplication application(argc, argv);
  const QStringList words = QApplication::arguments();
  mw::monkey::Session session(words.value(1),
                              words.size() > 2 ? std::optional(words[2].toInt()) : std::nullopt);
  return mw::help::RunGuidedEditor(session);
}
