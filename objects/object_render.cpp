#include "objects/object_render.h"

namespace mw {

void DrawStaticObjects() {}
void DrawObjectModeScene() {}
void DrawBrowserPreview() {}

}  // namespace mw
