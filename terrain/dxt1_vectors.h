// Vectors for the DXT1 encoders, as wide as the registers that the including file is compiled for:
// one block of pixels in each lane. Every operation has the same result at every width.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace mw {
namespace {

#if defined(__AVX2__)
constexpr std::size_t kLanes = 8;
#else
constexpr std::size_t kLanes = 4;
#endif

using Floats = float __attribute__((vector_size(4 * kLanes)));
using Ints = std::int32_t __attribute__((vector_size(4 * kLanes)));
// A lane holds two numbers: those of pixel i and of pixel i + 8 of its block.
using Pairs = std::int16_t __attribute__((vector_size(4 * kLanes)));

inline Floats ToFloats(Ints v) { return __builtin_convertvector(v, Floats); }
inline Ints ToInts(Floats v) { return __builtin_convertvector(v, Ints); }  // towards 0

template <typename Vector>
inline Vector Min(Vector a, Vector b) {
  return a < b ? a : b;
}
template <typename Vector>
inline Vector Max(Vector a, Vector b) {
  return a > b ? a : b;
}
inline Ints Clamp(Ints v, std::int32_t low, std::int32_t high) {
  return Min(Max(v, Ints{} + low), Ints{} + high);
}

// The nearest integer twice in each lane, where it fits 16 bits.
inline Pairs Twice(Floats v) {
  constexpr float kOneMoreBit = 1 << 16;  // above 0 truncation rounds down
  const Ints nearest = ToInts(v + (kOneMoreBit + 0.5f));
  return reinterpret_cast<Pairs>((nearest & 0xFFFF) | nearest << 16);
}
inline Ints LowHalves(Pairs v) { return reinterpret_cast<Ints>(v) << 16 >> 16; }
inline Ints HighHalves(Pairs v) { return reinterpret_cast<Ints>(v) >> 16; }

// The products of the numbers in 32 bits: their upper 16 bits, and their sum in each lane.
#if defined(__AVX2__)
inline Pairs UpperProducts(Pairs a, Pairs b) {
  return reinterpret_cast<Pairs>(
      _mm256_mulhi_epi16(reinterpret_cast<__m256i>(a), reinterpret_cast<__m256i>(b)));
}
inline Ints SumOfProducts(Pairs a, Pairs b) {
  return reinterpret_cast<Ints>(
      _mm256_madd_epi16(reinterpret_cast<__m256i>(a), reinterpret_cast<__m256i>(b)));
}
#elif defined(__SSE2__)
inline Pairs UpperProducts(Pairs a, Pairs b) {
  return reinterpret_cast<Pairs>(
      _mm_mulhi_epi16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
inline Ints SumOfProducts(Pairs a, Pairs b) {
  return reinterpret_cast<Ints>(
      _mm_madd_epi16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
}
#else
inline Pairs UpperProducts(Pairs a, Pairs b) {
  const Ints low = LowHalves(a) * LowHalves(b), high = HighHalves(a) * HighHalves(b);
  return reinterpret_cast<Pairs>((low >> 16 & 0xFFFF) | (high & ~0xFFFF));
}
inline Ints SumOfProducts(Pairs a, Pairs b) {
  return LowHalves(a) * LowHalves(b) + HighHalves(a) * HighHalves(b);
}
#endif

inline bool AnyLane(Ints mask) {
  std::uint64_t words[sizeof mask / 8], any = 0;
  std::memcpy(words, &mask, sizeof mask);
  for (const std::uint64_t word : words) any |= word;
  return any != 0;
}

// Four pixels of each of the blocks that stand side by side from `pixels` on: column by column.
struct Columns {
  Ints column[4];
};

inline Columns LoadColumns(const std::uint32_t* pixels) {
  using Quad = std::int32_t __attribute__((vector_size(16)));
  constexpr std::size_t kQuads = kLanes / 4;
  Quad columns[4][kQuads];
  for (std::size_t quad = 0; quad < kQuads; ++quad) {
    Quad a, b, c, d;  // blocks
    std::memcpy(&a, pixels + 16 * quad, sizeof a);
    std::memcpy(&b, pixels + 16 * quad + 4, sizeof b);
    std::memcpy(&c, pixels + 16 * quad + 8, sizeof c);
    std::memcpy(&d, pixels + 16 * quad + 12, sizeof d);
    const Quad ab = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const Quad cd = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const Quad abRight = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const Quad cdRight = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    columns[0][quad] = __builtin_shufflevector(ab, cd, 0, 1, 4, 5);
    columns[1][quad] = __builtin_shufflevector(ab, cd, 2, 3, 6, 7);
    columns[2][quad] = __builtin_shufflevector(abRight, cdRight, 0, 1, 4, 5);
    columns[3][quad] = __builtin_shufflevector(abRight, cdRight, 2, 3, 6, 7);
  }
  Columns loaded;
  for (std::size_t c = 0; c < 4; ++c) {
#if defined(__AVX2__)
    loaded.column[c] =
        __builtin_shufflevector(columns[c][0], columns[c][1], 0, 1, 2, 3, 4, 5, 6, 7);
#else
    loaded.column[c] = columns[c][0];
#endif
  }
  return loaded;
}

}  // namespace
}  // namespace mw
