#include <gtest/gtest.h>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

// Two archives, both with the member "both": `level` for writing, `content`, the newer one, not.
class ArchiveListTest : public SandboxTest {
 protected:
  ArchiveListTest() {
    for (const char* path : {"old.vra", "new.vra"}) {
      Archive* archive = list.CreateArchive(path);
      archive->WriteMember("both", TextBytes(path));
      archive->WriteMember(path, TextBytes("own"));
    }
    list.Clear();
    level = list.OpenArchive("old.vra", true);
    content = list.OpenArchive("new.vra", false);
  }
  ArchiveList list;
  Archive *level, *content;
};

TEST_F(ArchiveListTest, TheNewestArchiveThatHoldsANameIsFound) {
  EXPECT_EQ(list.FindHolding("BOTH", false), content);
  EXPECT_EQ(list.FindHolding("both", true), level) << "only archives opened for writing";
  EXPECT_EQ(list.FindHolding("new.vra", true), nullptr);
  EXPECT_EQ(list.Last(), content);
  EXPECT_EQ(list.LastWritable(), level);
  EXPECT_EQ(ReadRawArchive("old.vra").mode, 1u) << "created archives compress their members";
}

TEST_F(ArchiveListTest, AnArchiveThatDoesNotOpenIsNotInTheList) {
  std::string error;
  EXPECT_EQ(list.OpenArchive("missing.vra", true, &error), nullptr);
  EXPECT_EQ(error, "No such file or directory");
  EXPECT_EQ(list.CreateArchive("no folder/x.vra"), nullptr);
  EXPECT_EQ(list.CreateArchiveAside("no folder/y.vra", error), nullptr);
  EXPECT_EQ(list.Count(), 2u);
  list.Clear();
  EXPECT_EQ(list.Last(), nullptr);
  EXPECT_EQ(list.LastWritable(), nullptr);
  EXPECT_EQ(list.ReasonNotWritable(), "No archive is open for writing.");
}

TEST_F(ArchiveListTest, WhatIsMeantForAWriteProtectedLevelGoesIntoNoOtherArchive) {
  ArchiveList second;
  Archive* const other = second.CreateArchive("other.vra");
  EXPECT_EQ(second.LastWritable(), other);
  ASSERT_TRUE(second.OpenArchive("old.vra", true));
  EXPECT_EQ(second.LastWritable(), nullptr);
  EXPECT_EQ(second.ReasonNotWritable(),
            "The level is write-protected: Another Mapwright has it open.");
}

TEST_F(ArchiveListTest, ClosingByPathCompactsAndForgettingDoesNot) {
  ASSERT_TRUE(level->WriteMember("both", NoiseBytes(1000, 1)));
  const Bytes before = ReadBytes("old.vra");
  list.Clear();
  EXPECT_EQ(ReadBytes("old.vra"), before);
  for (const char* path : {"old.vra", "new.vra"}) ASSERT_TRUE(list.OpenArchive(path, true));
  ASSERT_TRUE(list.At(0)->WriteMember("both", NoiseBytes(2000, 2)));
  EXPECT_TRUE(list.CloseArchive("OLD.vra"));
  EXPECT_FALSE(list.CloseArchive("old.vra")) << "it is closed already";
  EXPECT_EQ(list.Count(), 1u);
  const RawArchive raw = ReadRawArchive("old.vra");
  EXPECT_EQ(raw.file.size(), raw.directoryEnd);
  EXPECT_EQ(raw.Content("both"), NoiseBytes(2000, 2));
}

}  // namespace
}  // namespace mw
