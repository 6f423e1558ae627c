// A fresh state and a private folder for every test: the shared records as at program start, an
// empty script of answers, and a working folder whose name is not plain ASCII.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "platform/scripted/script.h"

namespace mw {

class SandboxTest : public ::testing::Test {
 protected:
  SandboxTest();
  ~SandboxTest() override;

  // The sandbox as a configuration path that ends with `\`.
  std::string GameFolder() const;
  std::filesystem::path folder;

 private:
  std::filesystem::path before_;
};

}  // namespace mw
