// session: starts the editor in the current folder, a working folder with a fresh sample game, and
// goes through a user's day: edits of every kind, saving, other levels, a new one. Then it opens
// levels one after another and looks at the memory: that must not go on growing. Ends with 0 when
// all went well; what the program leaks a sanitizer tells at the end.
#include <QApplication>
#include <QTextStream>
#include <algorithm>
#include <array>
#include <malloc.h>
#include <vector>

#include "core/editor_state.h"
#include "core/text.h"
#include "objects/object_store.h"
#include "tests/monkey/editor_steps.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/guided_editor.h"
#include "tools/help_tour/hands.h"

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

const QString kArrow = QStringLiteral(" \u2192 ");

std::int64_t BytesInUse() {
  if (__sanitizer_get_current_allocated_bytes) {
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
  }
  const struct mallinfo2 info = mallinfo2();
  return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

void ExpectSoon(const QString& what, const std::function<bool()>& holds) {
  help::Await(what, holds);
}

void At(const QString& action, const QString& at, const QHash<QString, QString>& more = {}) {
  QHash<QString, QString> data = more;
  data["at"] = at;
  Do(action, {}, data);
}

void Key(const QString& key) { Do("key", {}, {{"key", key}}); }

void LookDownOnMiddle() {
  At("point", "0.6,0.5");
  Key("P");
  At("click", "0.5,0.5", {{"in", "Mini-Map"}});
  At("point", "0.6,0.5");
}

void EditTerrain() {
  Key("F1");
  LookDownOnMiddle();
  Do("button", "Raising Tool");
  At("drag", "0.4,0.5 0.6,0.5", {{"seconds", "0.5"}});
  Do("button", "Smoothing Tool");
  At("drag", "0.4,0.5 0.6,0.5", {{"seconds", "0.3"}});
  Do("button", "Road Tool");
  At("click-with-key", "0.62,0.7 0.6,0.5 0.58,0.3", {{"key", "Ctrl"}});
  Do("dialog", "Create Road");
  Do("button", "OK");
  ExpectSoon("a change", [] { return editor.levelModified; });
}

void Paint() {
  Key("F2");
  Do("choose", "Dry Dirt", {{"in", "Material"}});
  At("drag", "0.45,0.47 0.55,0.53", {{"seconds", "0.3"}});
}

int CountObjects() { return static_cast<int>(objectStore.objects.size()); }

void PlaceAndDeleteObjects() {
  Key("F3");
  LookDownOnMiddle();
  const int before = help::OnGui(CountObjects);
  Do("open-tree", "Add New Object");
  Do("dialog", "Object Browser - Add New Object");
  Do("button", "Structures");
  Do("row", "hangar");
  Do("button", "OK");
  Do("drag-tree", "hangar", {{"at", "0.3,0.36"}});
  Do("menu", "Edit" + kArrow + "Copy");
  Do("menu", "Edit" + kArrow + "Paste");
  At("click", "0.45,0.6");
  At("point", "0.5,0.62");
  Key("X");
  At("drag", "0.5,0.62 0.55,0.6", {{"seconds", "0.2"}});
  ExpectSoon("two objects more", [before] { return CountObjects() == before + 2; });
  Key("Delete");
  ExpectSoon("an object less", [before] { return CountObjects() < before + 2; });
}

void EditEntity() {
  Do("drag-tree", "Drag New Control Point", {{"at", "0.5,0.46"}});
  Do("open-tree", "New_Control_Point1");
  Do("dialog", "Edit Control Point");
  Do("type", "Farm", {{"in", "Name"}});
  Do("button", "OK");
}

void ChangeSettings() {
  Key("Ctrl+Shift+F");
  Do("dialog", "Fog Settings");
  Do("button", "OK");
}

void MakeNewLevel(const QString& name) {
  Do("menu", "File" + kArrow + "New Level");
  Do("dialog", "Select a Mod");
  Do("button", "OK");
  Do("dialog", "New Level");
  Do("type", name, {{"in", "Level Name"}});
  Do("button", "Small");
  Do("check", "Random Map Generator");
  Do("button", "OK");
  Do("dialog", "Random Terrain Generation");
  Do("button", "OK");
  Do("status", "Saved level " + name);
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
 protected:
  void run() override {
    try {
      StartWithLevel(kLevels[0]);
      EditTerrain();
      Paint();
      PlaceAndDeleteObjects();
      EditEntity();
      ChangeSettings();
      SaveByMenu();
      OpenLevelByMenu(kLevels[1]);
      MakeNewLevel("Session_Level");
      OpenLevelsAndWatchMemory();
      ExitByMenu();
    } catch (const std::exception& reason) {
      QTextStream(stderr) << reason.what() << Qt::endl;
      std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
    }
  }
};

}  // namespace
}  // namespace mw::monkey

int main(int argc, char** argv) {
  mw::help::PrepareApplication();
  QApplication application(argc, argv);
  mw::monkey::Session session;
  return mw::help::RunGuidedEditor(session);
}
