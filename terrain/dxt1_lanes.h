// The work of the DXT1 encoders, compiled once for each kind of vector registers; each file that
// includes this gets its own. It calls nothing that is compiled elsewhere for another processor.
//
// A block's end points lie on the principal axis of its colours at first; then twice the best ones
// for the chosen indices are found by least squares, and the best of the three are kept.
#pragma once

#include <cstdint>
#include <cstring>

#include "terrain/dxt1_colour_pair.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

using Floats = float __attribute__((vector_size(4 * kDxt1Lanes)));
using Ints = std::int32_t __attribute__((vector_size(4 * kDxt1Lanes)));

constexpr int kPixels = 16;
constexpr float kSteps = 3;  // between the end points of a block

inline Floats ToFloats(Ints v) { return __builtin_convertvector(v, Floats); }
inline Ints ToInts(Floats v) { return __builtin_convertvector(v, Ints); }
inline Floats Min(Floats a, Floats b) { return a < b ? a : b; }
inline Floats Max(Floats a, Floats b) { return a > b ? a : b; }
inline Floats Clamp(Floats v, float low, float high) {
  return Min(Max(v, Floats{} + low), Floats{} + high);
}

struct Colours {
  Floats r, g, b;
};
inline Colours operator+(const Colours& a, const Colours& b) {
  return {a.r + b.r, a.g + b.g, a.b + b.b};
}
inline Colours operator-(const Colours& a, const Colours& b) {
  return {a.r - b.r, a.g - b.g, a.b - b.b};
}
inline Colours operator*(const Colours& a, Floats f) { return {a.r * f, a.g * f, a.b * f}; }
inline Floats Dot(const Colours& a, const Colours& b) { return a.r * b.r + a.g * b.g + a.b * b.b; }

// The blocks' pixels as differences from their mean colours.
struct Centred {
  Colours mean;
  Colours pixels[kPixels];
};

inline Centred Centre(const Dxt1Pixels& from) {
  Centred blocks;
  Colours sum{};
  for (int i = 0; i < kPixels; ++i) {
    Ints packed;
    std::memcpy(&packed, from.pixel[i], sizeof packed);
    blocks.pixels[i] = {ToFloats(packed & 255), ToFloats(packed >> 8 & 255),
                        ToFloats(packed >> 16 & 255)};
    sum = sum + blocks.pixels[i];
  }
  blocks.mean = sum * (Floats{} + 1.0f / kPixels);
  for (Colours& pixel : blocks.pixels) pixel = pixel - blocks.mean;
  return blocks;
}

struct Covariance {
  Floats rr, rg, rb, gg, gb, bb;
  Colours Times(const Colours& v) const {
    return {rr * v.r + rg * v.g + rb * v.b, rg * v.r + gg * v.g + gb * v.b,
            rb * v.r + gb * v.g + bb * v.b};
  }
};

inline Covariance CovarianceOf(const Centred& blocks) {
  Covariance c{};
  for (const Colours& p : blocks.pixels) {
    c.rr += p.r * p.r;
    c.rg += p.r * p.g;
    c.rb += p.r * p.b;
    c.gg += p.g * p.g;
    c.gb += p.g * p.b;
    c.bb += p.b * p.b;
  }
  return c;
}

// By power iteration from the channel that varies most; its length means nothing.
inline Colours PrincipalAxis(const Covariance& c) {
  constexpr int kIterations = 4;  // as many as floats hold without a change of scale
  const Ints greenest = c.gg >= c.rr;
  Colours axis{greenest ? c.rg : c.rr, greenest ? c.gg : c.rg, greenest ? c.gb : c.rb};
  const Ints bluest = c.bb > Max(c.rr, c.gg);
  axis = {bluest ? c.rb : axis.r, bluest ? c.gb : axis.g, bluest ? c.bb : axis.b};
  for (int i = 0; i < kIterations; ++i) axis = c.Times(axis);
  const Floats length = Max(Max(Max(axis.r, -axis.r), Max(axis.g, -axis.g)), Max(axis.b, -axis.b));
  return axis * (1.0f / Max(length, Floats{} + 1e-20f));
}

// Colours in centred coordinates.
struct EndPoints {
  Colours first, second;
};

inline EndPoints ExtentAlong(const Colours& axis, const Centred& blocks) {
  Floats lowest{}, highest{};  // the mean lies at 0
  for (const Colours& pixel : blocks.pixels) {
    const Floats along = Dot(pixel, axis);
    lowest = Min(lowest, along);
    highest = Max(highest, along);
  }
  const Floats scale = 1.0f / Max(Dot(axis, axis), Floats{} + 1e-20f);
  return {axis * (highest * scale), axis * (lowest * scale)};
}

inline Ints Quantise(Floats value, float most) {
  return ToInts(Clamp(value * (most / 255.0f) + 0.5f, 0, most));
}

inline Colours Expand(Ints packed) {
  const Ints r = packed >> 11, g = packed >> 5 & 63, b = packed & 31;
  return {ToFloats(r << 3 | r >> 2), ToFloats(g << 2 | g >> 4), ToFloats(b << 3 | b >> 2)};
}

// A 5-6-5 colour, and what it is expanded to, in centred coordinates.
struct Quantised {
  Ints packed;
  Colours centred;
};

inline Quantised Quantise(const Colours& centred, const Colours& mean) {
  const Ints packed = Quantise(centred.r + mean.r, 31) << 11 |
                      Quantise(centred.g + mean.g, 63) << 5 | Quantise(centred.b + mean.b, 31);
  return {packed, Expand(packed) - mean};
}

struct QuantisedEnds {
  Quantised first, second;
};

inline QuantisedEnds Quantise(const EndPoints& ends, const Colours& mean) {
  return {Quantise(ends.first, mean), Quantise(ends.second, mean)};
}

// The pairs with a mixture near the mean colours.
inline QuantisedEnds PairsAround(const Colours& mean) {
  struct alignas(Ints) Numbers {
    std::int32_t lane[kDxt1Lanes];
  };
  const auto spread = [](Floats channel) {
    return __builtin_bit_cast(Numbers, ToInts(channel + 0.5f));
  };
  const Numbers r = spread(mean.r), g = spread(mean.g), b = spread(mean.b);
  const Dxt1ColourPairs& pairs = ColourPairs();
  Numbers found;
  for (std::size_t lane = 0; lane < kDxt1Lanes; ++lane) {
    found.lane[lane] = static_cast<std::int32_t>(
        pairs.red[r.lane[lane]] | pairs.green[g.lane[lane]] | pairs.blue[b.lane[lane]]);
  }
  const Ints both = __builtin_bit_cast(Ints, found);
  const Ints first = both & 0xFFFF, second = both >> 16 & 0xFFFF;
  return {{first, Expand(first) - mean}, {second, Expand(second) - mean}};
}

// Blocks with chosen end points and, for each pixel, how many steps it lies from the second.
struct Candidate {
  Ints first{}, second{};
  Ints steps{};             // two bits per pixel
  Floats error{};           // sum of squares, less that of the centred pixels
  Floats sum{}, squares{};  // of the steps
  Colours weighted{};       // sum of steps x pixel
};

inline Candidate ChooseSteps(const QuantisedEnds& ends, const Centred& blocks) {
  const Quantised &first = ends.first, &second = ends.second;
  const Colours line = first.centred - second.centred;
  const Floats length = Dot(line, line);
  const Colours scaled = line * (kSteps / Max(length, Floats{} + 1e-6f));
  const Floats start = 0.5f - Dot(second.centred, scaled);
  Candidate found;
  found.first = first.packed;
  found.second = second.packed;
  for (int i = 0; i < kPixels; ++i) {
    const Colours& pixel = blocks.pixels[i];
    const Ints step = ToInts(Clamp(Dot(pixel, scaled) + start, 0.5f, kSteps + 0.5f));
    const Floats steps = ToFloats(step);
    found.steps |= step << (2 * i);
    found.sum += steps;
    found.squares += steps * steps;
    found.weighted = found.weighted + pixel * steps;
  }
  // |p - second - line x steps / 3| squared and summed, where the pixels' sum is 0.
  found.error = kPixels * Dot(second.centred, second.centred) -
                2 / kSteps * (Dot(found.weighted, line) - Dot(second.centred, line) * found.sum) +
                length * found.squares * (1 / (kSteps * kSteps));
  return found;
}

// The end points that fit the chosen steps best; where all pixels chose the same, none is better.
inline EndPoints LeastSquares(const Candidate& chosen) {
  const Floats a = chosen.squares, b = kSteps * chosen.sum - chosen.squares;
  const Floats c = kSteps * kSteps * kPixels - 2 * kSteps * chosen.sum + chosen.squares;
  const Floats determinant = a * c - b * b;
  const Floats scale = determinant > 0 ? kSteps / determinant : Floats{};
  return {chosen.weighted * ((b + c) * scale), chosen.weighted * (-(a + b) * scale)};
}

inline void KeepBetter(Candidate& best, const Candidate& other) {
  const Ints better = other.error < best.error;
  best.first = better ? other.first : best.first;
  best.second = better ? other.second : best.second;
  best.steps = better ? other.steps : best.steps;
  best.error = better ? other.error : best.error;
}

// From steps to the format's indices (first, second, and two thirds of either), with the larger
// colour first: the order that says that a block has four opaque colours. Where both are the same
// all pixels take the first.
inline void PutInOrder(Candidate& blocks) {
  const Ints swap = blocks.first < blocks.second;
  const Ints first = swap ? blocks.second : blocks.first;
  blocks.second = swap ? blocks.first : blocks.second;
  blocks.first = first;
  const Ints steps = blocks.steps ^ swap;
  constexpr std::int32_t kLowBits = 0x55555555;
  const Ints high = steps >> 1 & kLowBits, low = steps & kLowBits;
  const Ints indices = (high ^ low) << 1 | (high ^ kLowBits);
  blocks.steps = blocks.first == blocks.second ? Ints{} : indices;
}

inline void Store(const Candidate& blocks, std::uint8_t* out) {
  for (std::size_t lane = 0; lane < kDxt1Lanes; ++lane, out += kDxt1BlockSize) {
    const auto first = static_cast<std::uint64_t>(static_cast<std::uint32_t>(blocks.first[lane]));
    const auto second = static_cast<std::uint64_t>(static_cast<std::uint32_t>(blocks.second[lane]));
    const auto indices = static_cast<std::uint64_t>(static_cast<std::uint32_t>(blocks.steps[lane]));
    const std::uint64_t block = indices << 32 | second << 16 | first;
    for (std::size_t byte = 0; byte < kDxt1BlockSize; ++byte) {
      out[byte] = static_cast<std::uint8_t>(block >> (8 * byte));
    }
  }
}

inline bool AnyLane(Ints mask) {
  std::int32_t any = 0;
  for (std::size_t lane = 0; lane < kDxt1Lanes; ++lane) any |= mask[lane];
  return any != 0;
}

inline void EncodeLanes(const Dxt1Pixels& pixels, std::uint8_t* out) {
  const Centred blocks = Centre(pixels);
  const auto choose = [&blocks](const EndPoints& ends) {
    return ChooseSteps(Quantise(ends, blocks.mean), blocks);
  };
  Candidate best = choose(ExtentAlong(PrincipalAxis(CovarianceOf(blocks)), blocks));
  const Candidate second = choose(LeastSquares(best));
  const Candidate third = choose(LeastSquares(second));
  KeepBetter(best, second);
  KeepBetter(best, third);
  // Above 0 the mean colour alone would be better.
  if (AnyLane(best.error > 0)) KeepBetter(best, ChooseSteps(PairsAround(blocks.mean), blocks));
  PutInOrder(best);
  Store(best, out);
}

}  // namespace
}  // namespace mw
