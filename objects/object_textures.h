// Textures of meshes, shared by name and counted.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/fixed_string.h"

namespace mw {

inline constexpr int kMaxObjectTextures = 2000;

struct ObjectTexture {
  FixedString<64> name;  // without "texture/"; empty in a free slot
  unsigned texture = 0;  // GL name; 0 in a free slot
  std::int32_t references = 0;
};

struct ObjectTextureTable {
  std::array<ObjectTexture, kMaxObjectTextures> slots;
  int count = 0;  // index of the highest used slot plus one

  bool IsFull() const;
};

struct AcquiredTexture {
  unsigned texture = 0;
  int slot = -1;
};

// The texture of that name, one reference more; loaded when it is new. Nothing when it cannot be
// loaded, the table is full or the name is too long.
std::optional<AcquiredTexture> AcquireObjectTexture(std::string_view name);
// One reference less; the last one frees the slot and deletes the texture.
void ReleaseObjectTexture(int slot);
// Deletes every texture, however many references it has.
void ClearObjectTextures();
// The GL texture in the slot; 0 for a free slot and for -1.
unsigned TextureInSlot(int slot);
// The GL texture of that name if it is loaded, else 0.
unsigned FindObjectTexture(std::string_view name);

}  // namespace mw
