// Every input of every fuzz target's corpus once more, as an ordinary test: what a fuzz run found
// stays found.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "fuzz/targets.h"
#include "platform/disk.h"

namespace {

namespace fs = std::filesystem;

// Fuzz targets end the program when something does not hold; it then says at which input.
std::string inputUnderTest;

void TellInput(int) {
  for (const std::string_view text : {"\nAborted at the input ", inputUnderTest.c_str(), "\n"}) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0) break;
  }
}

std::vector<fs::path> InputsOf(const char* target) {
  std::vector<fs::path> inputs;
  std::error_code none;
  for (const auto& file : fs::directory_iterator(fs::path(MAPWRIGHT_CORPUS) / target, none)) {
    inputs.push_back(file.path());
  }
  std::ranges::sort(inputs);
  return inputs;
}

class CorpusTest : public ::testing::TestWithParam<FuzzTarget> {};

TEST_P(CorpusTest, HoldsForEveryInput) {
  const FuzzTarget& target = GetParam();
  std::signal(SIGABRT, TellInput);
  const std::vector<fs::path> inputs = InputsOf(target.name);
  ASSERT_FALSE(inputs.empty()) << "no corpus for " << target.name;
  for (const fs::path& input : inputs) {
    inputUnderTest = input.string();
    const auto bytes = mw::ReadWholeFile(inputUnderTest);
    ASSERT_TRUE(bytes) << inputUnderTest;
    EXPECT_EQ(target.run(bytes->data(), bytes->size()), 0) << inputUnderTest;
  }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusTest, ::testing::ValuesIn(kFuzzTargets),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace

// The sanitizers end the program by a signal too.
extern "C" const char* __asan_default_options() { return "abort_on_error=1"; }
extern "C" const char* __ubsan_default_options() { return "abort_on_error=1"; }
