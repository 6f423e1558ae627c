// The work of the DXT1 encoders, compiled once for each kind of vector registers; each file that
// includes this gets its own. It calls nothing that is compiled elsewhere for another processor.
//
// Pixels are integers of 16 bits, so that all sums over them are exact; what is computed once per
// block is in floats. A block's end points lie on the principal axis of its colours at first: once
// where the colours end, once further out, so that more pixels choose the mixtures between them.
// From both the best ones for the chosen indices are found by least squares, and the best of the
// four are kept.
#pragma once

#include "terrain/dxt1_colour_pair.h"
#include "terrain/dxt1_encoder.h"
#include "terrain/dxt1_vectors.h"

namespace mw {
namespace {

constexpr int kPixels = 16;
constexpr int kPairs = kPixels / 2;
constexpr float kWidened = 1.5f;  // of the distances from the mean
constexpr float kSteps = 3;       // between the end points of a block

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
inline Colours operator*(const Colours& a, float f) { return a * (Floats{} + f); }
inline Floats Dot(const Colours& a, const Colours& b) { return a.r * b.r + a.g * b.g + a.b * b.b; }

struct IntColours {
  Ints r{}, g{}, b{};
  Colours Floating() const { return {ToFloats(r), ToFloats(g), ToFloats(b)}; }
};

// The blocks' pixels, as 0x00BBGGRR.
struct Packed {
  Ints pixel[kPixels];
};

struct PairColours {
  Pairs r, g, b;
};

inline PairColours Unpack(Ints first, Ints second) {
  const Ints firstRedBlue = first & 0xFF00FF, secondRedBlue = second & 0xFF00FF;
  const Ints red = (firstRedBlue & 0xFF) | secondRedBlue << 16;
  const Ints green = (first >> 8 & 0xFF) | (second << 8 & 0xFF0000);
  const Ints blue = firstRedBlue >> 16 | (secondRedBlue & 0xFF0000);
  return {reinterpret_cast<Pairs>(red), reinterpret_cast<Pairs>(green),
          reinterpret_cast<Pairs>(blue)};
}

struct Covariance {
  Floats rr, rg, rb, gg, gb, bb;
  Colours Times(const Colours& v) const {
    return {rr * v.r + rg * v.g + rb * v.b, rg * v.r + gg * v.g + gb * v.b,
            rb * v.r + gb * v.g + bb * v.b};
  }
};

// The pixels are scaled up, so that the upper halves of products say enough.
constexpr int kScaleBits = 7;
constexpr float kScale = 1 << kScaleBits;

struct Blocks {
  PairColours pairs[kPairs];  // times kScale
  Colours mean;
  Covariance covariance;
};

inline Blocks Analyse(const Packed& from) {
  Blocks blocks;
  PairColours sums{};
  Ints rr{}, rg{}, rb{}, gg{}, gb{}, bb{};
  for (int i = 0; i < kPairs; ++i) {
    const auto [r, g, b] = Unpack(from.pixel[i], from.pixel[i + kPairs]);
    sums = {sums.r + r, sums.g + g, sums.b + b};
    rr += SumOfProducts(r, r);
    rg += SumOfProducts(r, g);
    rb += SumOfProducts(r, b);
    gg += SumOfProducts(g, g);
    gb += SumOfProducts(g, b);
    bb += SumOfProducts(b, b);
    blocks.pairs[i] = {r << kScaleBits, g << kScaleBits, b << kScaleBits};
  }
  const Pairs ones = Pairs{} + 1;
  const Colours sum = IntColours{SumOfProducts(sums.r, ones), SumOfProducts(sums.g, ones),
                                 SumOfProducts(sums.b, ones)}
                          .Floating();
  blocks.mean = sum * (1.0f / kPixels);
  const auto centred = [](Ints products, Floats sumA, Floats meanB) {
    return ToFloats(products) - sumA * meanB;  // exact
  };
  const Colours& mean = blocks.mean;
  blocks.covariance = {centred(rr, sum.r, mean.r), centred(rg, sum.r, mean.g),
                       centred(rb, sum.r, mean.b), centred(gg, sum.g, mean.g),
                       centred(gb, sum.g, mean.b), centred(bb, sum.b, mean.b)};
  return blocks;
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

// Colours as differences from the mean colour of their block.
struct EndPoints {
  Colours first, second;
};

// For each pair of pixels their places along a direction, in upper halves of products.
inline Pairs Along(const PairColours& direction, const PairColours& pixels) {
  return UpperProducts(pixels.r, direction.r) + UpperProducts(pixels.g, direction.g) +
         UpperProducts(pixels.b, direction.b);
}

inline PairColours Twice(const Colours& v) { return {Twice(v.r), Twice(v.g), Twice(v.b)}; }

inline EndPoints ExtentAlong(const Colours& axis, const Blocks& blocks) {
  constexpr float kLongest = 1 << 14;  // of the axis' largest part
  constexpr float kUnit = kScale * kLongest / (1 << 16);
  const PairColours direction = Twice(axis * kLongest);
  Pairs lowest = Along(direction, blocks.pairs[0]), highest = lowest;
  for (int i = 1; i < kPairs; ++i) {
    const Pairs along = Along(direction, blocks.pairs[i]);
    lowest = Min(lowest, along);
    highest = Max(highest, along);
  }
  const Floats low = ToFloats(Min(LowHalves(lowest), HighHalves(lowest))) * (1 / kUnit);
  const Floats high = ToFloats(Max(LowHalves(highest), HighHalves(highest))) * (1 / kUnit);
  const Floats middle = Dot(blocks.mean, axis);
  const Floats scale = 1.0f / Max(Dot(axis, axis), Floats{} + 1e-20f);
  return {axis * ((high - middle) * scale), axis * ((low - middle) * scale)};
}

// A 5-6-5 colour, and what it is expanded to, as a difference from the mean.
struct Quantised {
  Ints packed;
  Colours centred;
};

inline Quantised Expand(const IntColours& c, const Colours& mean) {
  const IntColours full{c.r << 3 | c.r >> 2, c.g << 2 | c.g >> 4, c.b << 3 | c.b >> 2};
  return {c.r << 11 | c.g << 5 | c.b, full.Floating() - mean};
}

inline Quantised Expand(Ints packed, const Colours& mean) {
  return Expand({packed >> 11, packed >> 5 & 63, packed & 31}, mean);
}

inline Ints Quantise(Floats value, std::int32_t most) {
  return Clamp(ToInts(value * (static_cast<float>(most) / 255) + 0.5f), 0, most);
}

inline Quantised Quantise(const Colours& centred, const Colours& mean) {
  const Colours c = centred + mean;
  return Expand({Quantise(c.r, 31), Quantise(c.g, 63), Quantise(c.b, 31)}, mean);
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
    std::int32_t lane[kLanes];
  };
  const auto spread = [](Floats channel) {
    return __builtin_bit_cast(Numbers, ToInts(channel + 0.5f));
  };
  const Numbers r = spread(mean.r), g = spread(mean.g), b = spread(mean.b);
  const Dxt1ColourPairs& pairs = ColourPairs();
  Numbers found;
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    found.lane[lane] = static_cast<std::int32_t>(
        pairs.red[r.lane[lane]] | pairs.green[g.lane[lane]] | pairs.blue[b.lane[lane]]);
  }
  const Ints both = __builtin_bit_cast(Ints, found);
  const Ints first = both & 0xFFFF, second = both >> 16 & 0xFFFF;
  return {Expand(first, mean), Expand(second, mean)};
}

// Blocks with chosen end points and, for each pixel, how many steps it lies from the second.
struct Candidate {
  Ints first{}, second{};
  Ints steps{};           // two bits per pixel
  Floats error{};         // sum of squares, less that of the pixels' differences from the mean
  Floats sum, squares{};  // of the steps
  Colours weighted;       // sum of steps x difference of the pixel from the mean
};

inline Candidate ChooseSteps(const QuantisedEnds& ends, const Blocks& blocks) {
  const Quantised &first = ends.first, &second = ends.second;
  const Colours line = first.centred - second.centred;
  const Floats length = Dot(line, line);
  // At least 4 lie between two different colours, so this fits 16 bits.
  constexpr float kPerStep = 1 << 15;
  const Colours scaled = line * (kSteps * kPerStep / Max(length, Floats{} + 1.0f));
  const PairColours direction = Twice(scaled);
  // Each upper half of a product loses half of its last bit.
  constexpr int kFractionBits = kScaleBits + 15 - 16;
  constexpr float kOne = 1 << kFractionBits, kHalf = kOne / 2 + 1.5f;
  const Floats fromSecond = Dot(second.centred + blocks.mean, scaled) * (kOne / kPerStep);
  const Pairs start = Twice(kHalf - fromSecond);
  Candidate found;
  found.first = first.packed;
  found.second = second.packed;
  Pairs sums{};
  Ints squares{};
  IntColours weighted;
  for (int i = 0; i < kPairs; ++i) {
    const PairColours& pixels = blocks.pairs[i];
    const Pairs place = (Along(direction, pixels) + start) >> kFractionBits;
    const Pairs steps = Min(Max(place, Pairs{}), Pairs{} + static_cast<std::int16_t>(kSteps));
    found.steps |= reinterpret_cast<Ints>(steps) << (2 * i);
    sums += steps;
    squares += SumOfProducts(steps, steps);
    weighted.r += SumOfProducts(pixels.r, steps);
    weighted.g += SumOfProducts(pixels.g, steps);
    weighted.b += SumOfProducts(pixels.b, steps);
  }
  found.sum = ToFloats(SumOfProducts(sums, Pairs{} + 1));
  found.squares = ToFloats(squares);
  found.weighted = weighted.Floating() * (1 / kScale) - blocks.mean * found.sum;
  // |p - second - line x steps / 3| squared and summed, where the pixels' sum is 0.
  found.error = kPixels * Dot(second.centred, second.centred) -
                2 / kSteps * (Dot(found.weighted, line) - Dot(second.centred, line) * found.sum) +
                length * found.squares * (1 / (kSteps * kSteps));
  return found;
}

// Sums over the pixels of products of their steps: from the second end point, and to the first.
struct StepProducts {
  explicit StepProducts(const Candidate& chosen)
      : squares(chosen.squares),
        mixed(kSteps * chosen.sum - chosen.squares),
        restSquares(kSteps * kSteps * kPixels - 2 * kSteps * chosen.sum + chosen.squares) {}
  Floats squares, mixed, restSquares;
};

// The end points that fit the chosen steps best; where all pixels chose the same, none is better.
inline EndPoints LeastSquares(const Candidate& chosen, const StepProducts& p) {
  const Floats determinant = p.squares * p.restSquares - p.mixed * p.mixed;
  const Floats scale = determinant > 0 ? kSteps / determinant : Floats{};
  return {chosen.weighted * ((p.mixed + p.restSquares) * scale),
          chosen.weighted * (-(p.squares + p.mixed) * scale)};
}

// The two levels of a channel of so many bits that a value lies between.
struct Between {
  Between(Floats centred, Floats mean, int bits) {
    const std::int32_t most = (1 << bits) - 1;
    lower = Clamp(ToInts((centred + mean) * (static_cast<float>(most) / 255)), 0, most - 1);
    for (std::int32_t i = 0; i < 2; ++i) {
      const Ints level = lower + i;
      values[i] = ToFloats(level << (8 - bits) | level >> (2 * bits - 8)) - mean;
    }
  }
  Ints lower;
  Floats values[2];  // as differences from the mean
};

// For a channel of both end points. Of the levels around them those that together leave the least
// error with the chosen steps: rounded each by itself, they may leave more.
inline void RoundTogether(const Between& first, const Between& second, const StepProducts& p,
                          Floats weighted, Ints& firstLevel, Ints& secondLevel) {
  const auto error = [&](int i, int j) {
    const Floats f = first.values[i], s = second.values[j];
    return f * (p.squares * f + 2 * p.mixed * s - 2 * kSteps * weighted) +
           s * (p.restSquares * s + 2 * kSteps * weighted);
  };
  Floats least = error(0, 0);
  firstLevel = first.lower;
  secondLevel = second.lower;
  for (int i = 1; i < 4; ++i) {
    const Floats other = error(i & 1, i >> 1);
    const Ints better = other < least;
    least = better ? other : least;
    firstLevel = better ? first.lower + (i & 1) : firstLevel;
    secondLevel = better ? second.lower + (i >> 1) : secondLevel;
  }
}

inline QuantisedEnds BestForSteps(const Candidate& chosen, const Colours& mean) {
  const StepProducts products(chosen);
  const EndPoints ends = LeastSquares(chosen, products);
  IntColours first, second;
  RoundTogether({ends.first.r, mean.r, 5}, {ends.second.r, mean.r, 5}, products, chosen.weighted.r,
                first.r, second.r);
  RoundTogether({ends.first.g, mean.g, 6}, {ends.second.g, mean.g, 6}, products, chosen.weighted.g,
                first.g, second.g);
  RoundTogether({ends.first.b, mean.b, 5}, {ends.second.b, mean.b, 5}, products, chosen.weighted.b,
                first.b, second.b);
  return {Expand(first, mean), Expand(second, mean)};
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
  const Ints both = blocks.first | blocks.second << 16;
  std::uint32_t ends[kLanes], indices[kLanes];
  std::memcpy(ends, &both, sizeof both);
  std::memcpy(indices, &blocks.steps, sizeof blocks.steps);
  for (std::size_t lane = 0; lane < kLanes; ++lane, out += kDxt1BlockSize) {
    const std::uint64_t block = std::uint64_t{indices[lane]} << 32 | ends[lane];
    for (std::size_t byte = 0; byte < kDxt1BlockSize; ++byte) {
      out[byte] = static_cast<std::uint8_t>(block >> (8 * byte));
    }
  }
}

// The end points as they are, or those that suit the steps better which the pixels choose then.
inline Candidate BestFrom(const EndPoints& ends, const Blocks& blocks) {
  Candidate best = ChooseSteps(Quantise(ends, blocks.mean), blocks);
  KeepBetter(best, ChooseSteps(BestForSteps(best, blocks.mean), blocks));
  return best;
}

// Writes the blocks one after the other.
inline void EncodeLanes(const Packed& pixels, std::uint8_t* out) {
  const Blocks blocks = Analyse(pixels);
  const EndPoints extent = ExtentAlong(PrincipalAxis(blocks.covariance), blocks);
  Candidate best = BestFrom(extent, blocks);
  KeepBetter(best, BestFrom({extent.first * kWidened, extent.second * kWidened}, blocks));
  // Above 0 the mean colour alone would be better. Other blocks stay as they are, whatever stands
  // in the lanes beside them.
  const Ints poor = best.error > 0;
  if (AnyLane(poor)) {
    Candidate flat = ChooseSteps(PairsAround(blocks.mean), blocks);
    flat.error = poor ? flat.error : best.error;
    KeepBetter(best, flat);
  }
  PutInOrder(best);
  Store(best, out);
}

}  // namespace
}  // namespace mw
