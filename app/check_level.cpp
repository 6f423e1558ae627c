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
  const auto count = [&finds](Gravity gravity) {
    const auto number = std::ranges::count_if(
        finds, [gravity](const LevelFind& find) { return find.rule->gravity == gravity; });
    return FormatText("%i %s%s", static_cast<int>(number), NameOf(gravity), number == 1 ? "" : "s");
  };
  return FormatText("%s, %s and %s.", count(Gravity::Error).c_str(),
                    count(Gravity::Warning).c_str(), count(Gravity::Note).c_str());
}

}  // namespace mw
