// Compiled for processors with AVX2, and only called there.
#ifdef MAPWRIGHT_AVX2

#include "terrain/dxt1_rows.h"

namespace mw {

void EncodeDxt1Avx2(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out);
void EncodeDxt1Avx2(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out) {
  EncodeRow(pixels, blocks, out);
}

}  // namespace mw

#endif
