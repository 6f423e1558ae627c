// OpenGL with the buffer objects of version 1.5, for the code that draws terrain from kept buffers.
#pragma once

#include <GL/gl.h>
#include <GL/glext.h>
#include <cstddef>

namespace mw {

// GL's functions take a place in the bound buffer as a pointer.
inline const void* BufferOffset(std::size_t bytes) {
  return reinterpret_cast<const void*>(bytes);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace mw
