// Feeds any bytes to the reader of mod configuration files.
#include <cstdint>
#include <string_view>

#include "data/mod_config_parser.h"
#include "platform/scripted/script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  mw::scripted::ResetScript();
  mw::ModConfig config;
  mw::ApplyModConfigText({reinterpret_cast<const char*>(data), size}, "fuzz.cfg", config);
  return 0;
}
