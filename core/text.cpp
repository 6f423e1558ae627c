#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "core/plain_numbers.h"

namespace mw {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(LowerByte(c));
  return lower;
}

int CompareNoCase(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = LowerByte(a[i]) - LowerByte(b[i]);
    if (difference != 0) return difference;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && EqualNoCase(text.substr(0, prefix.size()), prefix);
}

std::optional<std::string_view> Tokenizer::Next(std::string_view separators) {
  const std::size_t start = rest_.find_first_not_of(separators);
  if (start == std::string_view::npos) {
    rest_ = {};
    return std::nullopt;
  }
  const std::size_t end = std::min(rest_.find_first_of(separators, start), rest_.size());
  const std::string_view token = rest_.substr(start, end - start);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  return token;
}

std::int32_t ParseInt(std::optional<std::string_view> token) {
  if (!token) return 0;
  const std::string text(*token);
  const long long value = std::strtoll(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

float ParseFloat(std::optional<std::string_view> token) {
  if (!token) return 0;
  const PlainNumbers plain;
  const std::string text(*token);
  const double value = std::strtod(text.c_str(), nullptr);
  if (std::isnan(value)) return 0;
  const double limit = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -limit, limit));
}

std::string FormatText(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = FormatTextV(format, arguments);
  va_end(arguments);
  return text;
}

std::string FormatTextV(const char* format, std::va_list arguments) {
  const PlainNumbers plain;
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text;
  if (length > 0) {
    text.resize(static_cast<std::size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    text.resize(static_cast<std::size_t>(length));
  }
  va_end(again);
  return text;
}

}  // namespace mw
