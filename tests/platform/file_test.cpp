#include "platform/file.h"

#include <gtest/gtest.h>

#include "support/archive_bytes.h"
#include "support/disk_faults.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class FileTest : public SandboxTest {};

TEST_F(FileTest, ReadsAndWritesAnywhereInAFile) {
  File file;
  ASSERT_TRUE(file.Open("x", FileAccess::Create)) << file.Error();
  ASSERT_TRUE(file.WriteAt(3, TextBytes("def")));
  ASSERT_TRUE(file.WriteAt(0, TextBytes("abc")));
  Bytes middle(4);
  ASSERT_TRUE(file.ReadAt(1, middle));
  EXPECT_EQ(middle, TextBytes("bcde"));
  EXPECT_FALSE(file.ReadAt(3, middle)) << "reads beyond the end";
  EXPECT_FALSE(file.Error().empty());
  ASSERT_TRUE(file.Truncate(2));
  EXPECT_TRUE(file.Sync());
  EXPECT_EQ(file.Size(), 2u);
  ASSERT_TRUE(file.Open("x", FileAccess::Create));
  EXPECT_EQ(file.Size(), 2u) << "an existing file is not emptied";
}

TEST_F(FileTest, BlocksGoStraightToTheDiskAndTheRestThroughMemory) {
  const Bytes noise = NoiseBytes(2 * DiskBlock::kAlignment, 1), rest = TextBytes("the rest");
  DiskBlock block(noise.size());
  std::ranges::copy(noise, block.First(noise.size()).begin());
  File file;
  ASSERT_TRUE(file.Open("x", FileAccess::CreateNew));
  file.SetStraight(true);  // it goes on through memory where the file system cannot do that
  ASSERT_TRUE(file.WriteAt(0, block.First(noise.size()))) << file.Error();
  EXPECT_TRUE(file.Holds(0, noise));
  Bytes other = noise;
  other.back() ^= 1;
  EXPECT_FALSE(file.Holds(0, other));
  file.SetStraight(false);
  ASSERT_TRUE(file.WriteAt(noise.size(), rest)) << file.Error();
  ASSERT_TRUE(file.Sync() && file.Holds(noise.size(), rest));
  Bytes whole = noise;
  whole.insert(whole.end(), rest.begin(), rest.end());
  EXPECT_EQ(ReadBytes("x"), whole);
}

TEST_F(FileTest, SaysWhyAFileCannotBeOpened) {
  fs::create_directory("folder");
  WriteBytes("there", {});
  File file;
  EXPECT_FALSE(file.Open("missing", FileAccess::ReadWrite));
  EXPECT_EQ(file.Error(), "No such file or directory");
  EXPECT_FALSE(file.Open("there", FileAccess::CreateNew));
  EXPECT_EQ(file.Error(), "File exists");
  EXPECT_FALSE(file.Open("folder", FileAccess::Read));
  EXPECT_EQ(file.Error(), "Is a directory");
  ASSERT_TRUE(file.Open("there", FileAccess::Read));
  EXPECT_FALSE(file.WriteAt(0, TextBytes("x"))) << "not opened for writing";
}

TEST_F(FileTest, RenamingPutsOneFileInThePlaceOfAnother) {
  WriteBytes("from", TextBytes("new"));
  WriteBytes("to", TextBytes("old"));
  EXPECT_TRUE(RenameFile("from", "to"));
  EXPECT_TRUE(SyncFolderOf("to"));
  EXPECT_EQ(ReadBytes("to"), TextBytes("new"));
  EXPECT_TRUE(RemoveFile("to"));
  EXPECT_TRUE(RemoveFile("to")) << "it is gone, which is what was asked for";
  std::string error;
  EXPECT_FALSE(RenameFile("from", "to", &error));
  EXPECT_EQ(error, "No such file or directory");
}

TEST_F(FileTest, AFaultPlanStopsAWriteHalfWay) {
  File file;
  ASSERT_TRUE(file.Open("x", FileAccess::Create));
  {
    const DiskFaults faults(FaultKind::Full, 1);
    EXPECT_TRUE(file.WriteAt(0, TextBytes("....")));
    EXPECT_FALSE(file.WriteAt(0, TextBytes("abcd")));
    EXPECT_EQ(file.Error(), "No space left on device");
    EXPECT_TRUE(faults.Hit());
  }
  EXPECT_EQ(ReadBytes("x"), TextBytes("ab.."));
  EXPECT_TRUE(file.WriteAt(0, TextBytes("abcd")));
}

}  // namespace
}  // namespace mw
