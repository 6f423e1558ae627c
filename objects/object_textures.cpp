#include "objects/object_textures.h"

#include <GL/gl.h>
#include <string>

#include "core/text.h"
#include "data/dds.h"
#include "data/mod_config.h"
#include "objects/object_store.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

constexpr std::string_view kPrefix = "texture/";

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// The name under which a texture is shared.
std::string_view KeyOf(std::string_view name) {
  if (name.starts_with(kPrefix)) name.remove_prefix(kPrefix.size());
  return name;
}

int FindSlot(std::string_view key) {
  const ObjectTextureTable& table = objectStore.textures;
  if (key.empty()) return -1;
  for (int slot = 0; slot < table.count; ++slot) {
    if (EqualNoCase(table.slots[static_cast<std::size_t>(slot)].name, key)) return slot;
  }
  return -1;
}

// The folder above the one that TexturePath names, since names bring their folder along.
std::string TextureFolder() {
  std::string path = modConfig.GamePath.String() + modConfig.TexturePath.String();
  if (!path.empty() && IsSeparator(path.back())) path.pop_back();
  std::size_t cut = path.rfind('\\');
  if (cut == path.npos) cut = path.rfind('/');
  if (cut != path.npos) path.resize(cut);
  if (path.empty() || !IsSeparator(path.back())) path += '\\';
  return path;
}

// As the name says; one without "texture/" is also looked for there. 0 when there is none.
unsigned LoadTexture(std::string_view name) {
  const std::string folder = TextureFolder();
  const std::string file = std::string(name) + ".DDS";
  unsigned texture = 0;
  if (LoadDdsTexture(folder + file, texture) || name.starts_with(kPrefix)) return texture;
  LoadDdsTexture(folder + std::string(kPrefix) + file, texture);
  return texture;
}

// Slots in the middle may stay free; those at the end do not count.
void ShrinkToLastUsed(ObjectTextureTable& table) {
  while (table.count > 0 && table.slots[static_cast<std::size_t>(table.count - 1)].name.empty()) {
    --table.count;
  }
}

}  // namespace

bool ObjectTextureTable::IsFull() const { return count >= kMaxObjectTextures; }

std::optional<AcquiredTexture> AcquireObjectTexture(std::string_view name) {
  ObjectTextureTable& table = objectStore.textures;
  const std::string_view key = KeyOf(name);
  int slot = FindSlot(key);
  if (slot < 0) {
    ObjectTexture added;
    if (table.IsFull() || key.empty() || !added.name.Assign(key)) return std::nullopt;
    added.texture = LoadTexture(name);
    if (added.texture == 0) return std::nullopt;
    slot = table.count++;
    table.slots[static_cast<std::size_t>(slot)] = added;
  }
  ObjectTexture& shared = table.slots[static_cast<std::size_t>(slot)];
  ++shared.references;
  return AcquiredTexture{shared.texture, slot};
}

void ReleaseObjectTexture(int slot) {
  ObjectTextureTable& table = objectStore.textures;
  if (slot < 0 || slot >= table.count) return;
  ObjectTexture& shared = table.slots[static_cast<std::size_t>(slot)];
  if (shared.references == 0 || --shared.references > 0) return;
  if (MakeViewContextCurrent()) glDeleteTextures(1, &shared.texture);
  shared = ObjectTexture{};
  ShrinkToLastUsed(table);
}

void ClearObjectTextures() {
  ObjectTextureTable& table = objectStore.textures;
  const bool hasContext = MakeViewContextCurrent();
  for (int slot = 0; slot < table.count; ++slot) {
    ObjectTexture& shared = table.slots[static_cast<std::size_t>(slot)];
    if (hasContext && shared.texture != 0) glDeleteTextures(1, &shared.texture);
    shared = ObjectTexture{};
  }
  table.count = 0;
}

unsigned TextureInSlot(int slot) {
  const ObjectTextureTable& table = objectStore.textures;
  const bool used = slot >= 0 && slot < table.count;
  return used ? table.slots[static_cast<std::size_t>(slot)].texture : 0;
}

unsigned FindObjectTexture(std::string_view name) { return TextureInSlot(FindSlot(KeyOf(name))); }

}  // namespace mw
