#include "platform/file.h"

#include <gtest/gtest.h>

#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

class FileTest : public SandboxTest {
 protected:
  bool Open(FileAccess access) { return file.Open("x", access); }
  File file;
};

TEST_F(FileTest, ReadsAndWritesAnywhereInAFile) {
  ASSERT_TRUE(Open(FileAccess::Create)) << file.Error();
  ASSERT_TRUE(file.WriteAt(3, TextBytes("def")) && file.WriteAt(0, TextBytes("abc")));
  Bytes middle(4);
  ASSERT_TRUE(file.ReadAt(1, middle));
  EXPECT_EQ(middle, TextBytes("bcde"));
  EXPECT_FALSE(file.ReadAt(3, middle)) << "reads beyond the end";
  EXPECT_FALSE(file.Error().empty());
  ASSERT_TRUE(file.Truncate(2) && file.Sync());
  EXPECT_EQ(file.Size(), 2u);
  ASSERT_TRUE(Open(FileAccess::Create));
  EXPECT_EQ(file.Size(), 2u) << "an existing file is not emptied";
}

TEST_F(FileTest, BlocksGoStraightToTheDiskAndTheRestThroughMemory) {
  const Bytes noise = NoiseBytes(2 * DiskBlock::kAlignment, 1), rest = TextBytes("the rest");
  DiskBlock block(noise.size());
  std::ranges::copy(noise, block.First(noise.size()).begin());
  ASSERT_TRUE(Open(FileAccess::CreateNew));
  file.SetStraight(true);  // it goes on through memory where the file system cannot do that
  ASSERT_TRUE(file.WriteAt(0, block.First(noise.size()))) << file.Error();
  Bytes other = noise;
  other.back() ^= 1;
  EXPECT_TRUE(file.Holds(0, noise));
  EXPECT_FALSE(file.Holds(0, other));
  file.SetStraight(false);
  ASSERT_TRUE(file.WriteAt(noise.size(), rest)) << file.Error();
  EXPECT_TRUE(file.Sync() && file.Holds(noise.size(), rest));
  other = noise;
  other.insert(other.end(), rest.begin(), rest.end());
  EXPECT_EQ(ReadBytes("x"), other);
}

TEST_F(FileTest, SaysWhyAFileCannotBeOpened) {
  std::filesystem::create_directory("folder");
  WriteBytes("there", {});
  const struct {
    const char* path;
    FileAccess access;
    const char* error;
  } kRows[] = {{"missing", FileAccess::ReadWrite, "No such file or directory"},
               {"missing", FileAccess::Read, "No such file or directory"},
               {"there", FileAccess::CreateNew, "File exists"},
               {"folder", FileAccess::Read, "Is a directory"}};
  for (const auto& row : kRows) {
    EXPECT_FALSE(file.Open(row.path, row.access));
    EXPECT_EQ(file.Error(), row.error);
    EXPECT_FALSE(file.IsOpen());
  }
  ASSERT_TRUE(file.Open("there", FileAccess::Read));
  EXPECT_FALSE(file.WriteAt(0, TextBytes("x"))) << "not opened for writing";
}

}  // namespace
}  // namespace mw
