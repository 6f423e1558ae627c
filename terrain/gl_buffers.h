// OpenGL with the buffer objects of version 1.5, for the code that draws terrain from kept buffers.
#pragma once

#include <GL/gl.h>
#include <GL/glext.h>
#include <cstddef>

namespace mw {

// A place in the bound buffer, where GL's functions take a pointer.
inline const void* BufferOffset(std::size_t bytes) {
  return reinterpret_cast<const void*>(
      bytes);  // NOLINT(performance-no-int-to-ptr): what GL expects
}

}  // namespace mw
