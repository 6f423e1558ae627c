#include "bench/editor/level_memory.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <cstddef>

#include "data/textures.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "platform/gl_context.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw::bench {
namespace {

constexpr unsigned kLastName = 8192;  // of GL's, which are given from 1 on
constexpr double kMegabyte = 1 << 20;

// Of one level of the bound texture.
double BytesOfPicture(GLint level) {
  const auto get = [level](GLenum what) {
    GLint value = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, what, &value);
    return value;
  };
  if (get(GL_TEXTURE_COMPRESSED)) return get(GL_TEXTURE_COMPRESSED_IMAGE_SIZE);
  int bits = 0;
  for (const GLenum part : {GL_TEXTURE_RED_SIZE, GL_TEXTURE_GREEN_SIZE, GL_TEXTURE_BLUE_SIZE,
                            GL_TEXTURE_ALPHA_SIZE, GL_TEXTURE_LUMINANCE_SIZE}) {
    bits += get(part);
  }
  return static_cast<double>(get(GL_TEXTURE_WIDTH)) * get(GL_TEXTURE_HEIGHT) * bits / 8;
}

double BytesOfTextures() {
  constexpr GLint kLevels = 13;
  GLint bound = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
  double bytes = 0;
  for (unsigned name = 1; name <= kLastName; ++name) {
    if (!glIsTexture(name)) continue;
    glBindTexture(GL_TEXTURE_2D, name);
    for (GLint level = 0; level < kLevels; ++level) bytes += BytesOfPicture(level);
  }
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
  return bytes;
}

double BytesOfBuffers() {
  QOpenGLFunctions* const gl = QOpenGLContext::currentContext()->functions();
  double bytes = 0;
  for (unsigned name = 1; name <= kLastName; ++name) {
    if (!gl->glIsBuffer(name)) continue;
    GLint size = 0;
    gl->glBindBuffer(GL_ARRAY_BUFFER, name);
    gl->glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &size);
    bytes += size;
  }
  gl->glBindBuffer(GL_ARRAY_BUFFER, 0);
  return bytes;
}

double BytesOfSetPictures() {
  std::size_t bytes = textureSet.detail.rgb.size();
  for (const SetTexture& texture : textureSet.textures) bytes += texture.rgb.size();
  for (const SetTexture& texture : textureSet.environment) bytes += texture.rgb.size();
  return static_cast<double>(bytes);
}

}  // namespace

std::vector<std::pair<std::string, double>> HeldByLevel() {
  MakeViewContextCurrent();
  const double cells = static_cast<double>(kGridCapacity) * kGridCapacity;
  const double records = static_cast<double>(objectStore.objects.size()) * sizeof(StaticObject);
  return {{"heights", cells * sizeof(TerrainVertex) / kMegabyte},
          {"height map", static_cast<double>(terrain.heightBuffer.size()) / kMegabyte},
          {"materials", cells * sizeof(std::uint32_t) / kMegabyte},
          {"pictures of the texture set", BytesOfSetPictures() / kMegabyte},
          {"objects", records / kMegabyte},
          {"textures in GL", BytesOfTextures() / kMegabyte},
          {"vertices and indices in GL", BytesOfBuffers() / kMegabyte}};
}

}  // namespace mw::bench
