// Text as the game's files use it: comparison without regard to ASCII case, splitting into tokens,
// and numbers. Nothing here follows the user's locale.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

// ASCII letters as lower case, every other byte as it is.
constexpr unsigned char LowerByte(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}
std::string LowerCase(std::string_view text);

// <0, 0 or >0: compares as unsigned bytes with ASCII letters as lower case ('_' sorts before
// letters).
int CompareNoCase(std::string_view a, std::string_view b);
bool EqualNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);

struct LessNoCase {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return CompareNoCase(a, b) < 0; }
};

// Takes a text apart the way strtok does: runs of separators count as one, leading separators are
// skipped, and each call may use another set of separators. The text must outlive the tokenizer.
class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : rest_(text) {}
  // The next token, or nothing at the end.
  std::optional<std::string_view> Next(std::string_view separators);

 private:
  std::string_view rest_;
};

// Decimal integer in the manner of atoi: blanks, a sign, digits; anything else ends it; a missing
// token or no digits give 0. A value that a 32-bit integer cannot hold becomes the nearest that it
// can.
std::int32_t ParseInt(std::optional<std::string_view> token);
// Number in the manner of atof (decimal or hexadecimal, "inf" and "nan" included), then limited to
// what a float can hold; "nan", a missing token and no number give 0.
float ParseFloat(std::optional<std::string_view> token);

// printf with a decimal point whatever the locale. FormatText has no limit of length.
[[gnu::format(printf, 1, 2)]] std::string FormatText(const char* format, ...);
std::string FormatTextV(const char* format, std::va_list arguments);

}  // namespace mw
