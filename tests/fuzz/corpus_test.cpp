// Every input of every fuzz target's corpus once more, as an ordinary test: what a fuzz run found
// stays found.
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "fuzz/targets.h"
#include "platform/disk.h"

namespace {

// Fuzz targets end the program when something does not hold; it then says at which input.
std::string inputUnderTest;

void TellInput(int) {
  for (const std::string_view text : {"\nAborted at the input ", inputUnderTest.c_str(), "\n"}) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0) break;
  }
}

// Whole, also of its drive: inputs may lead to another folder.
const std::filesystem::path kCorpora = std::filesystem::absolute(MAPWRIGHT_CORPUS);

class CorpusTest : public ::testing::TestWithParam<FuzzTarget> {};

TEST_P(CorpusTest, HoldsForEveryInput) {
  const std::filesystem::path corpus = kCorpora / GetParam().name;
  std::signal(SIGABRT, TellInput);
  std::error_code none;
  for (const auto& input : std::filesystem::directory_iterator(corpus, none)) {
    inputUnderTest = input.path().string();
    const auto bytes = mw::ReadWholeFile(inputUnderTest);
    ASSERT_TRUE(bytes) << inputUnderTest;
    EXPECT_EQ(GetParam().run(bytes->data(), bytes->size()), 0) << inputUnderTest;
  }
  EXPECT_NE(inputUnderTest.find(corpus.string()), std::string::npos) << "it has no corpus";
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusTest, ::testing::ValuesIn(kFuzzTargets),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace

// The sanitizers end the program by a signal too.
extern "C" const char* __asan_default_options() { return "abort_on_error=1"; }
extern "C" const char* __ubsan_default_options() { return "abort_on_error=1"; }
