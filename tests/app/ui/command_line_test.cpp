// The program's own words: what ends it before it has a window.
#include <QCoreApplication>
#include <QProcess>
#include <gtest/gtest.h>

#include "support/sandbox.h"

namespace mw {
namespace {

class CommandLineTest : public SandboxTest {
 protected:
  // Exit code and output of the program that lies beside this one.
  static std::pair<int, std::string> Run(const QStringList& words) {
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QCoreApplication::applicationDirPath() + "/mapwright", words);
    if (!program.waitForFinished()) return {-1, program.errorString().toStdString()};
    return {program.exitCode(), program.readAll().toStdString()};
  }
};

TEST_F(CommandLineTest, WhatIsWrongIsNamedAndEndsWithTwo) {
  const std::pair<QStringList, const char*> kCases[] = {
      {{"gone.vra"}, "There is no file 'gone.vra'."},
      {{"."}, "'.' is a folder, not a level."},
      {{"a.vra", "b.vra"}, "One level can be opened at a time; 'b.vra' is too much."},
      {{"--folder", "gone"}, "There is no folder 'gone'."},
      {{"--unknown"}, "Unknown option 'unknown'."},
  };
  for (const auto& [words, reason] : kCases) {
    EXPECT_EQ(Run(words), std::pair(2, "mapwright: " + std::string(reason) + "\n"));
  }
  const auto [code, text] = Run({"--help"});
  EXPECT_EQ(code, 0);
  EXPECT_NE(text.find("[LEVEL.vra]"), std::string::npos) << text;
}

}  // namespace
}  // namespace mw
