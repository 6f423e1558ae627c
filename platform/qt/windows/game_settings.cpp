#include "platform/settings_store.h"
#include "platform/windows/registry.h"

namespace mw {
namespace {

constexpr std::string_view kGameKey = "Software\\Quorrin\\Varnhold";

}  // namespace

std::optional<std::string> ReadGameSetting(std::string_view name) {
  const auto value = ReadRegistryText(kGameKey, name);
  return value && value->size() <= kMaxGameValueBytes ? value : std::nullopt;
}

bool WriteGameSetting(std::string_view name, std::string_view value) {
  return WriteRegistryText(kGameKey, name, value);
}

}  // namespace mw
