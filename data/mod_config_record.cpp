#include "data/mod_config.h"

namespace mw {

std::string ModFolderOf(std::string_view modName) {
  return "Mods\\" + std::string(modName.substr(0, modName.rfind('.'))) + "\\";
}

}  // namespace mw
