#include "app/ui/level_operations.h"

#include "app/new_level.h"
#include "app/operations.h"
#include "app/test_level.h"
#include "app/ui/level_statistics_dialog.h"
#include "app/ui/new_level_dialog.h"

namespace mw {

void ConnectLevelOperations(QWidget& owner) {
  operations.newLevel = [&owner] {
    return NewLevel([&owner] { return RunNewLevelDialog(&owner); });
  };
  operations.testLevel = TestLevel;
  operations.levelStatistics = [&owner] { LevelStatisticsDialog(&owner); };
}

}  // namespace mw
