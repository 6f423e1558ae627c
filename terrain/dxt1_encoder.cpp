#include "terrain/dxt1_encoder.h"

#include "terrain/dxt1_lanes.h"

namespace mw {

#ifdef MAPWRIGHT_AVX2
void EncodeDxt1Avx2(const Dxt1Pixels& pixels, std::uint8_t* blocks);  // in dxt1_encoder_avx2.cpp
#endif

namespace {

// With the vector registers that every processor of this kind has.
void EncodeDxt1Plain(const Dxt1Pixels& pixels, std::uint8_t* blocks) {
  EncodeLanes(pixels, blocks);
}

}  // namespace

std::span<const Dxt1Encoder> Dxt1Encoders() {
#ifdef MAPWRIGHT_AVX2
  static constexpr Dxt1Encoder kEncoders[] = {EncodeDxt1Plain, EncodeDxt1Avx2};
  static const bool hasAvx2 = __builtin_cpu_supports("avx2");
  return std::span(kEncoders).first(hasAvx2 ? 2 : 1);
#else
  static constexpr Dxt1Encoder kEncoders[] = {EncodeDxt1Plain};
  return kEncoders;
#endif
}

}  // namespace mw
