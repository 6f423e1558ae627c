// Text of bounded size, as the game's formats and tables hold it: at most N - 1 bytes, cut where it
// is longer. Assigning reports whether the text fitted, for those who must refuse instead of
// cutting.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace mw {

template <std::size_t N>
class FixedString {
  static_assert(N > 1);

 public:
  static constexpr std::size_t kCapacity = N - 1;

  FixedString() = default;
  FixedString(std::string_view text) { Assign(text); }         // NOLINT: texts convert as they are
  FixedString(const char* text) { Assign(text ? text : ""); }  // NOLINT
  FixedString(const std::string& text) { Assign(text); }       // NOLINT

  // False when the text had to be cut. A zero byte ends the text.
  bool Assign(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    const std::size_t length = std::min(text.size(), kCapacity);
    if (length > 0) std::memmove(bytes_.data(), text.data(), length);
    bytes_[length] = '\0';
    return length == text.size();
  }

  const char* c_str() const { return bytes_.data(); }
  std::string_view View() const { return bytes_.data(); }
  operator std::string_view() const { return View(); }  // NOLINT
  std::string String() const { return bytes_.data(); }
  bool empty() const { return bytes_[0] == '\0'; }
  std::size_t size() const { return std::strlen(bytes_.data()); }
  void clear() { bytes_[0] = '\0'; }

  friend bool operator==(const FixedString& a, const FixedString& b) {
    return a.View() == b.View();
  }
  template <typename Text>
  requires(!std::same_as<Text, FixedString> &&
           std::convertible_to<const Text&, std::string_view>) friend bool
  operator==(const FixedString& a, const Text& b) {
    return a.View() == std::string_view(b);
  }

 private:
  std::array<char, N> bytes_{};
};

using PathText = FixedString<260>;
using NameText = FixedString<32>;

}  // namespace mw
