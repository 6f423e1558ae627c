#include "platform/qt/desktop.h"

namespace mw {

Desktop desktop;

}  // namespace mw
