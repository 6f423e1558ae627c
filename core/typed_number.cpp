#include "core/typed_number.h"

#include <charconv>
#include <cmath>

namespace mw {
namespace {

std::string_view WithoutBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

template <typename Number>
std::optional<Number> WholeNumber(std::string_view text) {
  text = WithoutBlanks(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::optional<std::int32_t> TypedInteger(std::string_view text) {
  return WholeNumber<std::int32_t>(text);
}

std::optional<float> TypedFloat(std::string_view text) {
  const auto number = WholeNumber<float>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace mw
