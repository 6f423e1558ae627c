// The sheet of the scatter brush's settings.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/hooks.h"
#include "core/text.h"
#include "objects/object_store.h"
#include "objects/property_sheet.h"
#include "objects/scatter.h"

namespace mw {
namespace {

// The kinds of the selected objects, the most frequent first.
void OfferSelectedKinds(ScatterSettings& settings) {
  std::map<std::string, int> counts;
  for (const StaticObject& object : objectStore.objects) {
    if (object.selected && !object.unknown) ++counts[object.name.String()];
  }
  std::vector<std::pair<std::string, int>> sorted(counts.begin(), counts.end());
  std::ranges::stable_sort(sorted, std::ranges::greater(), &std::pair<std::string, int>::second);
  for (std::size_t i = 0; i < std::min(sorted.size(), settings.kinds.size()); ++i) {
    settings.kinds[i].name = sorted[i].first;
    settings.kinds[i].share = static_cast<float>(sorted[i].second);
  }
}

// As they can be worked with.
void Limit(ScatterSettings& settings) {
  settings.density = std::clamp(settings.density, kThinnestScatter, kDensestScatter);
  settings.distance = std::clamp(settings.distance, 0.0f, kFarthestScatter);
  settings.steepest = std::clamp(settings.steepest, 0.0f, kSteepestScatter);
  for (float& scale : settings.scale) {
    scale = std::clamp(scale, kSmallestScatter, kLargestScatter);
  }
  if (settings.scale[0] > settings.scale[1]) std::swap(settings.scale[0], settings.scale[1]);
  for (ScatterKind& kind : settings.kinds) kind.share = std::max(kind.share, 0.0f);
}

}  // namespace

bool EditScatter() {
  ScatterSettings settings = objectStore.scatter.settings;
  if (!HasScatterKinds()) OfferSelectedKinds(settings);
  std::array<GameModeChoice, 2> switches{
      {{settings.turned, true, "Turned"}, {settings.aboveWater, true, "Above water"}}};
  PropertySheet sheet;
  sheet.title = "Scatter Settings";
  for (std::size_t i = 0; i < settings.kinds.size(); ++i) {
    ScatterKind& kind = settings.kinds[i];
    const auto number = static_cast<int>(i) + 1;
    AddField(sheet, TextOf(kind.name), static_cast<std::int32_t>(kind.name.kCapacity),
             FieldType::CatalogueObject, FormatText("Object %i", number));
    AddField(sheet, &kind.share, 1, FieldType::Floats, FormatText("Share %i", number));
  }
  AddField(sheet, &settings.density, 1, FieldType::Floats, "Per 100 x 100 units");
  AddField(sheet, &settings.distance, 1, FieldType::Floats, "Least distance");
  AddField(sheet, &settings.steepest, 1, FieldType::Floats, "Steepest slope");
  AddField(sheet, settings.scale.data(), 2, FieldType::Floats, "Scale from, to");
  AddField(sheet, switches.data(), 2, FieldType::GameModes, "Stand");
  if (!hooks.runPropertySheet(sheet)) return false;
  settings.turned = switches[0].checked;
  settings.aboveWater = switches[1].checked;
  Limit(settings);
  objectStore.scatter.settings = settings;
  return true;
}

}  // namespace mw
