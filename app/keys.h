// Keys as the input routing knows them, and which of them are held. The window library translates
// its own key codes; letters and digits are their ASCII capitals.
#pragma once

#include <bitset>
#include <cstddef>

namespace mw {

enum Key : int {
  kKeyNone = 0,
  kKeyTab = 9,
  kKeyShift = 16,
  kKeyCtrl = 17,
  kKeyAlt = 18,
  kKeyEscape = 27,
  kKeySpace = 32,
  kKeyPageUp = 33,
  kKeyPageDown = 34,
  kKeyHome = 36,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyDelete = 46,
  // '0' ... '9' and 'A' ... 'Z' stand for themselves.
  kKeyNumpadPlus = 107,
  kKeyNumpadMinus = 109,
  kKeyBracketLeft = 219,
  kKeyBracketRight = 221,
};

inline constexpr std::size_t kKeyCount = 256;

// Keys and mouse buttons that are down now, kept by the window from its events; all are up when the
// window loses the keyboard.
struct HeldInput {
  std::bitset<kKeyCount> keys;
  bool leftButton = false, rightButton = false;
};

}  // namespace mw
