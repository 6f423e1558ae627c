// Compiled for processors with AVX2, and only called there.
#ifdef MAPWRIGHT_AVX2

#include "terrain/dxt1_lanes.h"

namespace mw {

void EncodeDxt1Avx2(const Dxt1Pixels& pixels, std::uint8_t* blocks);
void EncodeDxt1Avx2(const Dxt1Pixels& pixels, std::uint8_t* blocks) { EncodeLanes(pixels, blocks); }

}  // namespace mw

#endif
