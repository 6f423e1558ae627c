// Any bytes as a standard mesh: what is accepted can be drawn.
#include <cstdint>

#include "fuzz/drawable_mesh.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (const auto mesh = mw::ReadStandardMesh({data, size})) RequireDrawable(*mesh);
  return 0;
}
