#include "objects/entity_render.h"

namespace mw {

void DrawEntities() {}

}  // namespace mw
