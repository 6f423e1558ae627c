#include "assets/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace mw {
namespace {

constexpr int kDirections = 64;

struct Direction {
  float x, y;
};

const std::array<Direction, kDirections>& Directions() {
  static const auto table = [] {
    std::array<Direction, kDirections> directions{};
    for (int i = 0; i < kDirections; ++i) {
      const double angle = 2 * std::numbers::pi * i / kDirections;
      directions[i] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
    return directions;
  }();
  return table;
}

int Wrap(int value, int period) {
  const int rest = value % period;
  return rest < 0 ? rest + period : rest;
}

float Fade(float t) { return t * t * t * (t * (t * 6 - 15) + 10); }

float Blend(float a, float b, float t) { return a + (b - a) * t; }

// Gradient noise is 0 at its lattice points; each octave is shifted its own way so that they do not
// all meet at the edges of the square.
float OctaveNoise(float u, float v, Lattice lattice, std::uint32_t seed) {
  return GradientNoise(u + HashUnit(1, 0, seed), v + HashUnit(0, 1, seed), lattice, seed);
}

}  // namespace

std::uint32_t Hash(int x, int y, std::uint32_t seed) {
  std::uint32_t h = static_cast<std::uint32_t>(x) * 0x9E3779B1u ^
                    static_cast<std::uint32_t>(y) * 0x85EBCA77u ^ seed * 0xC2B2AE3Du;
  h ^= h >> 15;
  h *= 0x2C1B3C6Du;
  h ^= h >> 12;
  h *= 0x297A2D39u;
  return h ^ h >> 15;
}

float HashUnit(int x, int y, std::uint32_t seed) {
  return static_cast<float>(Hash(x, y, seed) >> 8) * (1.0f / (1 << 24));
}

float GradientNoise(float u, float v, Lattice lattice, std::uint32_t seed) {
  const float x = u * static_cast<float>(lattice.across);
  const float y = v * static_cast<float>(lattice.down);
  const float floorX = std::floor(x), floorY = std::floor(y);
  const float dx = x - floorX, dy = y - floorY;
  const int x0 = Wrap(static_cast<int>(floorX), lattice.across);
  const int y0 = Wrap(static_cast<int>(floorY), lattice.down);
  const int x1 = x0 + 1 == lattice.across ? 0 : x0 + 1;
  const int y1 = y0 + 1 == lattice.down ? 0 : y0 + 1;
  const auto& directions = Directions();
  const auto corner = [&](int cornerX, int cornerY, float fromX, float fromY) {
    const Direction& d = directions[Hash(cornerX, cornerY, seed) % kDirections];
    return d.x * fromX + d.y * fromY;
  };
  const float s = Fade(dx), t = Fade(dy);
  const float top = Blend(corner(x0, y0, dx, dy), corner(x1, y0, dx - 1, dy), s);
  const float bottom = Blend(corner(x0, y1, dx, dy - 1), corner(x1, y1, dx - 1, dy - 1), s);
  return Blend(top, bottom, t) * 1.5f;
}

NoiseLines::NoiseLines(std::span<const float> v, Lattice lattice) : lattice_(lattice) {
  fromCell_.reserve(v.size());
  fade_.reserve(v.size());
  for (const float place : v) {
    const float y = place * static_cast<float>(lattice.down);
    const float floorY = std::floor(y);
    const int cell = Wrap(static_cast<int>(floorY), lattice.down);
    if (runs_.empty() || runs_.back().cell != cell) runs_.push_back({cell, 0});
    fromCell_.push_back(y - floorY);
    fade_.push_back(Fade(fromCell_.back()));
    runs_.back().end = fromCell_.size();
  }
}

void NoiseLines::Along(float u, std::uint32_t seed, std::size_t first,
                       std::span<float> noise) const {
  const float x = u * static_cast<float>(lattice_.across);
  const float floorX = std::floor(x), dx = x - floorX, s = Fade(dx);
  const int x0 = Wrap(static_cast<int>(floorX), lattice_.across);
  const int x1 = x0 + 1 == lattice_.across ? 0 : x0 + 1;
  const auto& directions = Directions();
  const auto at = [&](int column, int row) {
    return directions[Hash(column, row, seed) % kDirections];
  };
  const std::size_t end = first + noise.size();
  auto run = std::ranges::upper_bound(runs_, first, {}, &Run::end);
  for (std::size_t place = first; place < end; ++run) {
    const int y0 = run->cell, y1 = y0 + 1 == lattice_.down ? 0 : y0 + 1;
    const Direction a = at(x0, y0), b = at(x1, y0), c = at(x0, y1), d = at(x1, y1);
    const float ax = a.x * dx, bx = b.x * (dx - 1), cx = c.x * dx, ex = d.x * (dx - 1);
    const std::size_t runEnd = std::min(run->end, end);
    for (; place < runEnd; ++place) {
      const float dy = fromCell_[place];
      const float top = Blend(ax + a.y * dy, bx + b.y * dy, s);
      const float bottom = Blend(cx + c.y * (dy - 1), ex + d.y * (dy - 1), s);
      noise[place - first] = Blend(top, bottom, fade_[place]) * 1.5f;
    }
  }
}

float Fbm(float u, float v, const Octaves& octaves) {
  float sum = 0, weight = 1, total = 0;
  Lattice lattice = octaves.lattice;
  for (int i = 0; i < octaves.count; ++i) {
    sum += weight * OctaveNoise(u, v, lattice, octaves.seed + static_cast<std::uint32_t>(i));
    total += weight;
    weight *= octaves.gain;
    lattice = {lattice.across * 2, lattice.down * 2};
  }
  return sum / total * 1.4f;
}

float Ridged(float u, float v, const Octaves& octaves) {
  float sum = 0, weight = 1, total = 0;
  Lattice lattice = octaves.lattice;
  for (int i = 0; i < octaves.count; ++i) {
    const float noise = OctaveNoise(u, v, lattice, octaves.seed + static_cast<std::uint32_t>(i));
    const float crest = 1 - std::fabs(noise);
    sum += weight * crest * crest;
    total += weight;
    weight *= octaves.gain;
    lattice = {lattice.across * 2, lattice.down * 2};
  }
  return sum / total;
}

CellPoint Worley(float u, float v, Lattice lattice, std::uint32_t seed) {
  const float x = u * static_cast<float>(lattice.across);
  const float y = v * static_cast<float>(lattice.down);
  const int cellX = static_cast<int>(std::floor(x)), cellY = static_cast<int>(std::floor(y));
  float nearest = 1e9f, second = 1e9f;
  CellPoint result;
  for (int j = -1; j <= 1; ++j) {
    for (int i = -1; i <= 1; ++i) {
      const std::uint32_t id =
          Hash(Wrap(cellX + i, lattice.across), Wrap(cellY + j, lattice.down), seed);
      const float pointX = static_cast<float>(cellX + i) + static_cast<float>(id & 0xFFFF) / 65536;
      const float pointY = static_cast<float>(cellY + j) + static_cast<float>(id >> 16) / 65536;
      const float dx = x - pointX, dy = y - pointY;
      const float square = dx * dx + dy * dy;
      if (square < nearest) {
        second = nearest;
        nearest = square;
        result.dx = dx;
        result.dy = dy;
        result.id = id;
      } else if (square < second) {
        second = square;
      }
    }
  }
  result.nearest = std::sqrt(nearest);
  result.second = std::sqrt(second);
  return result;
}

Place Warp(float u, float v, float amount, const Octaves& octaves) {
  Octaves other = octaves;
  other.seed += 1000;
  return {u + amount * Fbm(u, v, octaves), v + amount * Fbm(u, v, other)};
}

}  // namespace mw
