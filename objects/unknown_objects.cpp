#include "objects/unknown_objects.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/load_report.h"
#include "objects/object_store.h"

namespace mw {
namespace {

constexpr std::size_t kMostListed = 12;

// "hut (3)" for each name, in their order.
std::vector<std::string> CountedNames() {
  std::map<std::string, int> counts;
  for (const StaticObject& object : objectStore.objects) {
    if (object.unknown) ++counts[object.name.String()];
  }
  std::vector<std::string> names;
  names.reserve(counts.size());
  for (const auto& [name, count] : counts)
    names.push_back(count == 1 ? name : FormatText("%s (%i)", name.c_str(), count));
  return names;
}

}  // namespace

void NoteUnknownObjects() {
  const std::vector<std::string> names = CountedNames();
  if (names.empty()) return;
  std::string list;
  const std::size_t listed = std::min(names.size(), kMostListed);
  for (std::size_t i = 0; i < listed; ++i) list += (i > 0 ? ", " : "") + names[i];
  if (names.size() > listed) list += FormatText(" and %zu more names", names.size() - listed);
  NoteAtLoad("Not in the mod's object list and drawn as plain boxes: " + list + ".");
}

}  // namespace mw
