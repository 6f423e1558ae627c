#include "app/mini_map_look.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <string>

#include "app/session.h"
#include "app/shell.h"
#include "core/hooks.h"
#include "core/text.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

constexpr const char* kLookSetting =
    "MiniMap";                      // shown, size, stretched, left and top, with blanks
constexpr int kFarthest = 100'000;  // window units; what is beyond is damage

std::optional<MiniMapLook> KeptLook() {
  const auto text = ReadEditorSetting(kLookSetting);
  if (!text) return std::nullopt;
  Tokenizer words(*text);
  std::array<int, 5> values{};
  for (int& value : values) {
    const auto word = words.Next(" ");
    if (!word) return std::nullopt;
    value = ParseInt(word);
  }
  const auto [shown, size, stretched, left, top] = values;
  const auto isSwitch = [](int value) { return value == 0 || value == 1; };
  if (!isSwitch(shown) || !isSwitch(stretched) || size < static_cast<int>(MiniMapSize::Small) ||
      size > static_cast<int>(MiniMapSize::Large) || std::abs(left) > kFarthest ||
      std::abs(top) > kFarthest) {
    return std::nullopt;
  }
  return MiniMapLook{shown == 1, static_cast<MiniMapSize>(size), stretched == 1, left, top};
}

// Where it cannot be kept, the next run begins as this one did: nothing to tell of.
void Keep() {
  const MiniMapLook& look = session.miniMapLook;
  static_cast<void>(WriteEditorSetting(
      kLookSetting, FormatText("%i %i %i %i %i", look.shown, static_cast<int>(look.size),
                               look.stretched, look.left, look.top)));
}

void Show() {
  const MiniMapLook& look = session.miniMapLook;
  shell.setCommandChecked(kCommandMiniMap, look.shown);
  shell.setCommandChecked(kCommandMiniMapSmall, look.size == MiniMapSize::Small);
  shell.setCommandChecked(kCommandMiniMapMedium, look.size == MiniMapSize::Medium);
  shell.setCommandChecked(kCommandMiniMapLarge, look.size == MiniMapSize::Large);
  shell.setCommandChecked(kCommandMiniMapStretched, look.stretched);
  shell.showMiniMap();
  hooks.invalidateMiniMap();
}

}  // namespace

void RecallMiniMap() {
  session.miniMapLook = KeptLook().value_or(MiniMapLook{});
  Show();
}

void SwitchMiniMap() {
  session.miniMapLook.shown = !session.miniMapLook.shown;
  Show();
  Keep();
}

void SwitchMiniMapStretching() {
  session.miniMapLook.stretched = !session.miniMapLook.stretched;
  Show();
  Keep();
}

void SetMiniMapSize(MiniMapSize size) {
  session.miniMapLook.size = size;
  Show();
  Keep();
}

void PlaceMiniMap(int left, int top) {
  session.miniMapLook.left = left;
  session.miniMapLook.top = top;
  Keep();
}

}  // namespace mw
