#include "objects/placement.h"

#include "core/camera.h"
#include "core/hooks.h"
#include "data/mod_config.h"

namespace mw {

float MirrorX(float x) { return static_cast<float>(modConfig.WorldSize) - x; }

void FocusCameraOn(float x, float y, float z) {
  constexpr float kPitch = -35, kAbove = 35, kBehind = 50;
  camera.pitch = kPitch;
  camera.yaw = 0;
  camera.position.Set(MirrorX(x), y + kAbove, z + kBehind);
  camera.UpdateDirection();
  hooks.invalidateMiniMap();
}

}  // namespace mw
