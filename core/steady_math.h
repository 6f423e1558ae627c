// The C library's functions of floats round a little differently on every system. These give the
// same float everywhere: the functions of doubles agree to many more digits, and are rounded once.
// For what must come out with the same bytes wherever it is made, such as the sample game.
#pragma once

#include <cmath>

namespace mw::steady {

inline float Rounded(double value) { return static_cast<float>(value); }

inline float Sin(float x) { return Rounded(std::sin(double{x})); }
inline float Cos(float x) { return Rounded(std::cos(double{x})); }
inline float Exp(float x) { return Rounded(std::exp(double{x})); }
inline float Log2(float x) { return Rounded(std::log2(double{x})); }
inline float Pow(float x, float y) { return Rounded(std::pow(double{x}, double{y})); }
inline float Atan2(float y, float x) { return Rounded(std::atan2(double{y}, double{x})); }
// Squares of floats are exact doubles, and roots are exact on every system.
inline float Hypot(float x, float y) {
  return Rounded(std::sqrt(double{x} * double{x} + double{y} * double{y}));
}

}  // namespace mw::steady
