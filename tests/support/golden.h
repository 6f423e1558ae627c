// Expected texts, scripts, skeletons and pictures that stand as files under tests/golden/. With
// MAPWRIGHT_RENEW_GOLDEN=1 in the environment the tests write them instead of comparing; whoever
// does so reads the difference before keeping it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// What the file holds, for a test that begins with it; empty, which fails, when there is none.
std::string GoldenText(const std::string& name);
// The files of a folder under tests/golden/, by their names, as names for GoldenText.
std::vector<std::string> GoldenFiles(const std::string& folder);
// Fails the test, naming the first line that differs, unless tests/golden/<name> holds `text`. Line
// ends are compared as they are.
void ExpectGolden(const std::string& name, std::string_view text);
// The same for bytes, naming the first offset that differs.
void ExpectGolden(const std::string& name, std::span<const std::uint8_t> bytes);

// A text in which paths of this system look like those in the files, which Linux has written; the
// two systems each have their own way.
std::string ComparableText(std::string_view text);

}  // namespace mw
