#include "support/golden.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>

namespace mw {
namespace {

std::filesystem::path PathOf(const std::string& name) {
  return std::filesystem::path(MAPWRIGHT_GOLDEN) / name;
}

// What the file holds; nothing, which fails, when there is none.
std::optional<std::string> Read(const std::string& name) {
  std::ifstream file(PathOf(name), std::ios::binary);
  if (file) return std::string(std::istreambuf_iterator<char>(file), {});
  ADD_FAILURE() << "tests/golden/" << name << " is missing";
  return std::nullopt;
}

// Nothing also when the test has written the file instead.
std::optional<std::string> ReadOrRenew(const std::string& name, std::string_view actual) {
  if (!std::getenv("MAPWRIGHT_RENEW_GOLDEN")) return Read(name);
  std::filesystem::create_directories(PathOf(name).parent_path());
  std::ofstream(PathOf(name), std::ios::binary) << actual;
  return std::nullopt;
}

std::size_t FirstDifference(std::string_view a, std::string_view b) {
  return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first -
                                  a.begin());
}

std::string LineAt(std::string_view text, std::size_t offset) {
  const std::size_t begin = text.rfind('\n', offset == 0 ? 0 : offset - 1);
  text.remove_prefix(begin == std::string_view::npos || offset == 0 ? 0 : begin + 1);
  return std::string(text.substr(0, text.find('\n')));
}

}  // namespace

std::string GoldenText(const std::string& name) { return Read(name).value_or(""); }

std::vector<std::string> GoldenFiles(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(PathOf(folder))) {
    names.push_back(folder + "/" + file.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

void ExpectGolden(const std::string& name, std::string_view actual) {
  auto expected = ReadOrRenew(name, actual);
  if (!expected || *expected == actual) return;
  expected = ComparableText(*expected);
  const std::string text = ComparableText(actual);
  if (*expected == text) return;
  const std::size_t at = FirstDifference(*expected, text);
  ADD_FAILURE() << "tests/golden/" << name << ":"
                << 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at),
                                  '\n')
                << "\n  expected: " << LineAt(*expected, at)
                << "\n  actual:   " << LineAt(text, at);
}

void ExpectGolden(const std::string& name, std::span<const std::uint8_t> bytes) {
  const std::string_view actual(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const auto expected = ReadOrRenew(name, actual);
  if (!expected || *expected == actual) return;
  ADD_FAILURE() << "tests/golden/" << name << " holds " << expected->size() << " bytes, not these "
                << bytes.size() << "; the first difference is at "
                << FirstDifference(*expected, actual);
}

}  // namespace mw
