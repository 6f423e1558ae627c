// The pages for those who work on the program name files: they are there.
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <string>

#include "support/archive_bytes.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class PagesTest : public testing::TestWithParam<const char*> {};

TEST_P(PagesTest, NameOnlyFilesThatAreThere) {
  const fs::path source = MAPWRIGHT_SOURCE, page = source / GetParam();
  const Bytes bytes = ReadBytes(page);
  const std::string text(bytes.begin(), bytes.end());
  int named = 0;
  // `house/file`, where the first part is a folder of the project, and [links](to/files).
  const std::regex mentioned(R"(`([a-z]+/[\w./-]*)`|\]\(([^)#:]+)[#)])");
  for (std::sregex_iterator it(text.begin(), text.end(), mentioned), end; it != end; ++it) {
    const std::string path = (*it)[1], link = (*it)[2];
    const std::string folder = path.substr(0, path.find('/'));
    if (link.empty() && (folder == "build" || !fs::exists(source / folder))) continue;
    ++named;
    EXPECT_TRUE(fs::exists(link.empty() ? source / path : page.parent_path() / link))
        << path << link;
  }
  EXPECT_GT(named, 0);
}

INSTANTIATE_TEST_SUITE_P(, PagesTest,
                         testing::Values("README.md", "CONTRIBUTING.md", "docs/architecture.md",
                                         "docs/help.md", "docs/plugins.md"));

}  // namespace
}  // namespace mw
