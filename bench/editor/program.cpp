// program: starts the editor in the current folder, a working folder with a fresh sample game that
// it may spoil, opens levels of every size, bare and full, and prints what a user waits for in
// each, and how that grows from size to size.
#include <QApplication>
#include <QTextStream>
#include <QThread>
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>
#include <vector>

#include "bench/editor/bench_levels.h"
#include "bench/editor/level_rows.h"
#include "bench/table/table.h"
#include "core/game_random.h"
#include "tests/monkey/editor_steps.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/guided_editor.h"

namespace mw::bench {
namespace {

void MeasureLevel(GrowthTable& table, int side, bool full) {
  const LevelRows rows(table, side, full);
  rows.AddOpening();
  rows.AddFrames();
  rows.AddStrokes();
  if (full) {
    rows.AddObjects();
    rows.AddTree();
  } else {
    rows.AddScattering();
  }
  rows.AddSaving();
  rows.AddWholeMap();
  rows.AddClosing();
}

void MeasureAll(const std::vector<int>& sides) {
  monkey::StartWithLevel("Harbour_Point");
  help::OnGui([] { SeedGameRandom(1); });
  GrowthTable table;
  for (const bool full : {false, true}) {
    for (const int side : sides) MeasureLevel(table, side, full);
  }
  table.Print();
  std::printf("\n");
  Print();
  std::fflush(stdout);
  std::_Exit(EXIT_SUCCESS);  // no level is open, and the folder is given up
}

class Guide : public QThread {
 public:
  explicit Guide(std::vector<int> sides) : sides_(std::move(sides)) {}

 protected:
  void run() override {
    try {
      MeasureAll(sides_);
    } catch (const std::exception& reason) {
      QTextStream(stderr) << reason.what() << Qt::endl;
      std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
    }
  }

 private:
  const std::vector<int> sides_;
};

}  // namespace
}  // namespace mw::bench

// Without arguments all sizes, else those that are named.
int main(int argc, char** argv) {
  using namespace mw;
  std::vector<int> sides(std::begin(bench::kLevelSides), std::end(bench::kLevelSides));
  if (argc > 1) sides.clear();
  for (int i = 1; i < argc; ++i) sides.push_back(std::atoi(argv[i]));
  for (const int side : sides) {
    bench::Require(std::ranges::count(bench::kLevelSides, side) == 1, "a size of 256, 512 or 1024");
  }
  bench::WriteBenchLevels(sides);
  help::PrepareApplication();
  QApplication application(argc, argv);
  bench::Guide guide(sides);
  return help::RunGuidedEditor(guide);
}
