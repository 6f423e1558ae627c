#include <gtest/gtest.h>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

class ArchiveListTest : public SandboxTest {
 protected:
  ArchiveListTest() {
    for (const char* path : {"old.vra", "new.vra"}) {
      Archive* archive = list.CreateArchive(path);
      archive->WriteMember("both", TextBytes(path));
      archive->WriteMember(path, TextBytes("own"));
    }
    list.Clear();
  }
  ArchiveList list;
};

TEST_F(ArchiveListTest, TheNewestArchiveThatHoldsANameIsFound) {
  Archive* level = list.OpenArchive("old.vra", true);
  Archive* content = list.OpenArchive("new.vra", false);
  ASSERT_TRUE(level && content);
  EXPECT_EQ(list.FindHolding("BOTH", false), content);
  EXPECT_EQ(list.FindHolding("both", true), level) << "only archives opened for writing";
  EXPECT_EQ(list.FindHolding("new.vra", true), nullptr);
  EXPECT_EQ(list.Last(), content);
  EXPECT_EQ(list.LastWritable(), level);
}

TEST_F(ArchiveListTest, AnArchiveThatDoesNotOpenIsNotInTheList) {
  EXPECT_EQ(list.OpenArchive("missing.vra", true), nullptr);
  EXPECT_EQ(list.CreateArchive("no folder/x.vra"), nullptr);
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_EQ(list.Last(), nullptr);
  EXPECT_EQ(list.LastWritable(), nullptr);
}

TEST_F(ArchiveListTest, ClosingByPathCompactsTheFirstArchiveOfThatPath) {
  Archive* level = list.OpenArchive("old.vra", true);
  list.OpenArchive("new.vra", false);
  ASSERT_TRUE(level->WriteMember("both", NoiseBytes(1000, 1)));
  EXPECT_TRUE(list.CloseArchive("OLD.vra"));
  EXPECT_FALSE(list.CloseArchive("old.vra")) << "it is closed already";
  EXPECT_EQ(list.Count(), 1u);
  const RawArchive raw = ReadRawArchive("old.vra");
  EXPECT_EQ(raw.file.size(), raw.directoryEnd);
  EXPECT_EQ(raw.Content("both"), NoiseBytes(1000, 1));
}

TEST_F(ArchiveListTest, ForgottenArchivesAreLeftAsTheyAre) {
  Archive* level = list.OpenArchive("old.vra", true);
  ASSERT_TRUE(level->WriteMember("both", NoiseBytes(1000, 1)));
  const Bytes before = ReadBytes("old.vra");
  list.Clear();
  EXPECT_EQ(ReadBytes("old.vra"), before);
}

TEST_F(ArchiveListTest, ACreatedArchiveStoresItsMembersCompressed) {
  EXPECT_EQ(ReadRawArchive("old.vra").mode, 1u);
}

}  // namespace
}  // namespace mw
