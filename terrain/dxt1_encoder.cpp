#include "terrain/dxt1_encoder.h"

#include "terrain/dxt1_rows.h"

namespace mw {

#ifdef MAPWRIGHT_AVX2
// In dxt1_encoder_avx2.cpp.
void EncodeDxt1Avx2(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out);
#endif

namespace {

// With the vector registers that every processor of this kind has.
void EncodeDxt1Plain(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out) {
  EncodeRow(pixels, blocks, out);
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
