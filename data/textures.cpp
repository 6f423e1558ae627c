#include "data/textures.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <bit>
#include <cstdio>

#include "core/text.h"
#include "platform/gl_context.h"

namespace mw {

const std::array<const char*, kMaterialCount> kMaterialKeys = {
    "default",     "water",      "drygrass", "wetgrass",     "drydirt", "wetdirt",
    "mud",         "outsidemap", "gravel",   "frozenground", "drysand", "wetsand",
    "rocksurface", "sandroad",   "dirtroad", "pavedroad"};

namespace {

constexpr std::array<const char*, 4> kRequiredExtensions = {
    "GL_EXT_bgra", "GL_ARB_texture_compression", "GL_EXT_texture_compression_s3tc",
    "WGL_EXT_swap_control"};

int PowerOfTwoSide(int side) {
  return static_cast<int>(std::bit_ceil(static_cast<unsigned>(side)));
}

// Leaves a texture that is already there alone.
void LoadSharedTexture(const std::string& fileName, unsigned& texture) {
  if (texture != 0) return;
  if (const auto image = LoadBmp(fileName)) texture = MakeMipMappedTexture(*image);
}

}  // namespace

bool CheckGlExtensions() {
  bool complete = true;
  for (const char* name : kRequiredExtensions) {
    if (HasGlExtension(name)) continue;
    std::printf("I require the %s OpenGL extension to work.\n", name);
    complete = false;
  }
  if (!complete) {
    std::printf("\nExiting because required OpenGL extensions are not supported.\n");
    std::fflush(stdout);
  }
  return complete;
}

bool LoadSharedTextures() {
  if (!CheckGlExtensions()) return false;
  if (!MakeViewContextCurrent()) return true;
  for (std::size_t i = 0; i < kMaterialKeys.size(); ++i) {
    LoadSharedTexture(FormatText("media/mat_%s.bmp", kMaterialKeys[i]),
                      textureSet.shared.materials[i]);
  }
  LoadSharedTexture("media/nosurface.bmp", textureSet.shared.noSurface);
  LoadSharedTexture("media/water.bmp", textureSet.shared.water);
  return true;
}

unsigned MakeMipMappedTexture(const Image& image) {
  // GLU scales to powers of two too, but leaves rows black when only one side has to change.
  const int width = PowerOfTwoSide(image.width), height = PowerOfTwoSide(image.height);
  const bool fits = width == image.width && height == image.height;
  const std::vector<std::uint8_t> scaled =
      fits ? std::vector<std::uint8_t>{}
           : ResampleRgb(image.rgb, image.width, image.height, width, height);
  if (!fits && scaled.empty()) return 0;
  unsigned texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  gluBuild2DMipmaps(GL_TEXTURE_2D, 3, width, height, GL_RGB, GL_UNSIGNED_BYTE,
                    fits ? image.rgb.data() : scaled.data());
  glPopClientAttrib();
  return texture;
}

}  // namespace mw
