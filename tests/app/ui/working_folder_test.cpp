// Where the editor works when it is started from somewhere.
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "app/ui/command_line.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

// A user with a data folder of their own, whose path has blanks and letters beyond ASCII.
class WorkingFolderTest : public SandboxTest {
 protected:
  WorkingFolderTest() {
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(data.string()));
    fs::create_directory("started here");
    fs::current_path("started here");
  }
  ~WorkingFolderTest() override {
    if (before.isNull()) {
      qunsetenv("XDG_DATA_HOME");
    } else {
      qputenv("XDG_DATA_HOME", before);
    }
  }
  // Where it then works; empty when it refuses.
  static fs::path Entered(const QString& asked = {}) {
    CommandLine line;
    line.folder = asked;
    return EnterWorkingFolder(line) ? fs::current_path() : fs::path();
  }

  const QByteArray before = qgetenv("XDG_DATA_HOME");
  const fs::path data = folder / "Jörg Müller/свои файлы";
};

TEST_F(WorkingFolderTest, IsTheCurrentOneWhenThatHoldsTheTemplate) {
  WriteBytes("mpwr.cfg", {});
  EXPECT_EQ(Entered(), folder / "started here");
  EXPECT_FALSE(fs::exists(data)) << "nothing is made that is not needed";
}

TEST_F(WorkingFolderTest, IsElseTheUsersOwnAndMadeAtTheFirstStart) {
  EXPECT_EQ(Entered(), data / "mapwright");
  WriteBytes("winter.cfg", TextBytes("of the first start"));
  fs::current_path(folder);
  EXPECT_EQ(Entered(), data / "mapwright");
  EXPECT_TRUE(fs::exists("winter.cfg"));
}

TEST_F(WorkingFolderTest, IsTheOneThatWasAskedForEvenWithoutATemplate) {
  WriteBytes("mpwr.cfg", {});
  fs::create_directory("Größe 2");
  EXPECT_EQ(Entered(QStringLiteral("Größe 2")), folder / "started here/Größe 2");
}

TEST_F(WorkingFolderTest, OneThatCannotBeMadeIsSaidAndNotWorkedAround) {
  WriteBytes(folder / "Jörg Müller", TextBytes("a file, where the folder would have to be"));
  testing::internal::CaptureStderr();
  EXPECT_EQ(Entered(), fs::path());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "mapwright: The folder " + (data / "mapwright").string() + " cannot be made.\n");
  EXPECT_EQ(fs::current_path(), folder / "started here");
}

}  // namespace
}  // namespace mw
