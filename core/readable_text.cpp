#include "core/readable_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace mw {
namespace {

constexpr char16_t kNoLetter = 0xFFFD;

// Bytes 0x80 to 0x9F; the others are the code points of the same numbers.
constexpr std::array<char16_t, 32> kWindowsLetters{
    0x20AC,    kNoLetter, 0x201A, 0x0192, 0x201E, 0x2026,    0x2020, 0x2021,
    0x02C6,    0x2030,    0x0160, 0x2039, 0x0152, kNoLetter, 0x017D, kNoLetter,
    kNoLetter, 0x2018,    0x2019, 0x201C, 0x201D, 0x2022,    0x2013, 0x2014,
    0x02DC,    0x2122,    0x0161, 0x203A, 0x0153, kNoLetter, 0x017E, 0x0178};

std::uint8_t ByteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<std::uint8_t>(text[at]) : std::uint8_t{0};
}

// Bytes of the UTF-8 character that the text begins with; 0 when it begins with none (Unicode,
// table 3-7, "Well-Formed UTF-8 Byte Sequences").
std::size_t CharacterLength(std::string_view text) {
  const std::uint8_t first = ByteAt(text, 0), second = ByteAt(text, 1);
  const auto continues = [&](std::size_t at) { return (ByteAt(text, at) & 0xC0) == 0x80; };
  const auto between = [&](std::uint8_t low, std::uint8_t high) {
    return second >= low && second <= high;
  };
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
  if ((first & 0xF0) == 0xE0) {
    const std::uint8_t low = first == 0xE0 ? 0xA0 : 0x80, high = first == 0xED ? 0x9F : 0xBF;
    return between(low, high) && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const std::uint8_t low = first == 0xF0 ? 0x90 : 0x80, high = first == 0xF4 ? 0x8F : 0xBF;
    return between(low, high) && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

void AppendWindowsLetter(std::uint8_t byte, std::string& text) {
  const char16_t letter = byte < 0xA0 ? kWindowsLetters[byte - 0x80] : byte;
  if (letter >= 0x800) {
    text += static_cast<char>(0xE0 | letter >> 12);
    text += static_cast<char>(0x80 | (letter >> 6 & 0x3F));
  } else {
    text += static_cast<char>(0xC0 | letter >> 6);
  }
  text += static_cast<char>(0x80 | (letter & 0x3F));
}

}  // namespace

std::string ReadableText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(bytes);
    if (length > 0) {
      text += bytes.substr(0, length);
    } else {
      AppendWindowsLetter(ByteAt(bytes, 0), text);
    }
    bytes.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return text;
}

}  // namespace mw
