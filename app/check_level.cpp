#include "app/check_level.h"

#include <algorithm>

#include "app/level_tree_actions.h"
#include "app/shell.h"
#include "core/text.h"
#include "objects/placement.h"

namespace mw {

void GoToFind(const LevelFind& find) {
  // The level may have changed since it was looked at.
  const bool isInTree = levelTree.items.contains(find.item);
  if (find.place) FocusCameraOn(find.place->x, find.place->y, find.place->z);
  if (isInTree) {
    SelectItem(find.item);
    LevelTreeItemSelected(find.item);
  }
  shell.renderFrameNow();
}

std::string CountFinds(const std::vector<LevelFind>& finds) {
  if (finds.empty()) return "Nothing was found.";
  std::string counted;
  for (const Gravity gravity : {Gravity::Error, Gravity::Warning, Gravity::Note}) {
    const auto count = std::ranges::count_if(
        finds, [gravity](const LevelFind& find) { return find.rule->gravity == gravity; });
    if (count == 0) continue;
    if (!counted.empty()) counted += ", ";
    counted +=
        FormatText("%i %s%s", static_cast<int>(count), NameOf(gravity), count == 1 ? "" : "s");
  }
  return counted;
}

}  // namespace mw
