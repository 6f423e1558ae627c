#include "platform/disk.h"

#include <gmock/gmock.h>

#include "core/editor_state.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

// A working folder beside what the program was installed with.
class SharedFolderTest : public SandboxTest {
 protected:
  SharedFolderTest() {
    fs::create_directories("Geteilte Dateien/Media");
    fs::create_directories("Geteilte Dateien/sets/Default");
    fs::create_directories("working/sets/Own");
    WriteBytes("Geteilte Dateien/mpwr.cfg", TextBytes("brought along"));
    WriteBytes("Geteilte Dateien/Media/Water.bmp", TextBytes("water"));
    editor.sharedFolder = (folder / "Geteilte Dateien").string();
    fs::current_path("working");
  }
  static std::string Read(std::string_view path) {
    const auto bytes = ReadWholeFile(path);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "nothing";
  }
};

TEST_F(SharedFolderTest, WhatTheWorkingFolderLacksIsReadFromTheSharedOne) {
  EXPECT_EQ(Read("mpwr.cfg"), "brought along");
  EXPECT_EQ(Read("MEDIA\\water.BMP"), "water") << "spelled as the game spells it";
  EXPECT_TRUE(FileExists("media/water.bmp"));
  EXPECT_TRUE(FolderExists("media"));
  EXPECT_EQ(ReadablePath("media/water.bmp"), folder / "Geteilte Dateien/Media/Water.bmp");
  EXPECT_EQ(Read("media/sand.bmp"), "nothing");
  EXPECT_FALSE(FileExists((folder / "working/mpwr.cfg").string())) << "asked for by its whole path";
}

TEST_F(SharedFolderTest, WhatTheWorkingFolderHasGoesFirst) {
  WriteBytes("MPWR.CFG", TextBytes("the user's"));
  EXPECT_EQ(Read("mpwr.cfg"), "the user's");
  WriteBytes("../Geteilte Dateien/sets/Default/index.dat", TextBytes("brought along"));
  fs::create_directories("sets/Default");
  EXPECT_EQ(Read("sets/Default/index.dat"), "brought along") << "the folder alone hides nothing";
  EXPECT_THAT(ListFiles(".", ".cfg"), ElementsAre("MPWR.CFG", "mpwr.cfg"));
  EXPECT_THAT(ListFolders("sets"), ElementsAre("Default", "Own"));
}

TEST_F(SharedFolderTest, NothingIsWrittenToTheSharedFolder) {
  ASSERT_TRUE(WriteWholeFile("mpwr.cfg", "changed"));
  EXPECT_EQ(Read("mpwr.cfg"), "changed");
  EXPECT_EQ(ReadBytes("../Geteilte Dateien/mpwr.cfg"), TextBytes("brought along"));
  EXPECT_EQ(CreateFolder("media"), FolderResult::Created);
  EXPECT_FALSE(DeleteDiskFile("media/water.bmp"));
  EXPECT_TRUE(DeleteDiskFile("mpwr.cfg"));
  EXPECT_EQ(Read("mpwr.cfg"), "brought along");
}

TEST_F(SharedFolderTest, WithoutOneAllIsInTheWorkingFolder) {
  editor.sharedFolder.clear();
  EXPECT_EQ(Read("mpwr.cfg"), "nothing");
  EXPECT_THAT(ListFolders("."), ElementsAre("sets"));
}

}  // namespace
}  // namespace mw
