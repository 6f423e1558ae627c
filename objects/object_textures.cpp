#include "objects/object_textures.h"

namespace mw {

std::optional<AcquiredTexture> AcquireObjectTexture(std::string_view) { return std::nullopt; }
void ReleaseObjectTexture(int) {}
unsigned FindObjectTexture(std::string_view) { return 0; }

}  // namespace mw
