#include "support/comma_locale.h"

#include <clocale>
#include <cstdlib>
#include <string>

namespace mw {

bool UseCommaLocale(const std::filesystem::path& folder) {
  const std::string name = (folder / "de_DE.UTF-8").string();
  if (std::system(("localedef -i de_DE -f UTF-8 '" + name + "' >/dev/null 2>&1").c_str()) != 0) {
    return false;
  }
  setenv("LOCPATH", folder.c_str(), 1);
  const bool used = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
  unsetenv("LOCPATH");
  return used;
}

}  // namespace mw
