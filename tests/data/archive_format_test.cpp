#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"

namespace mw {
namespace {

constexpr std::uint32_t kHeader = 156;

class ArchiveFormat : public SandboxTest {
 protected:
  void CreateCompressed(Archive& archive) {
    ASSERT_TRUE(archive.Create("level.vra")) << archive.Error();
    ASSERT_TRUE(archive.SetMode(StorageMode::Compressed));
  }
  RawArchive Raw() const { return ReadRawArchive(folder / "level.vra"); }
};

TEST_F(ArchiveFormat, ANewArchiveIsAHeaderAndAnEmptyDirectory) {
  Archive archive;
  CreateCompressed(archive);
  Bytes expected(kHeader, 0);
  expected[0] = kHeader;
  expected.resize(kHeader + 8, 0);
  EXPECT_EQ(ReadBytes(folder / "level.vra"), expected);
}

TEST_F(ArchiveFormat, StoredMembersLieInTheFileAsTheyAre) {
  Archive archive;
  ASSERT_TRUE(archive.Create("level.vra"));
  ASSERT_TRUE(archive.WriteMember("b\\Two.con", TextBytes("second")));
  ASSERT_TRUE(archive.WriteMember("A/one.con", TextBytes("first")));
  ASSERT_TRUE(archive.WriteMember("a_/under", {}));

  const RawArchive raw = Raw();
  EXPECT_EQ(raw.mode, 0u);
  EXPECT_EQ(raw.directoryOffset, kHeader + 11);
  ASSERT_EQ(raw.entries.size(), 3u);
  EXPECT_EQ(raw.entries[0].name, "A/one.con") << "'/' sorts before '_'";
  EXPECT_EQ(raw.entries[1].name, "a_/under");
  EXPECT_EQ(raw.entries[2].name, "b/Two.con");
  EXPECT_EQ(raw.entries[2].offset, kHeader);
  EXPECT_EQ(raw.entries[2].size, 6u);
  EXPECT_EQ(raw.Content("A/one.con"), TextBytes("first"));
  EXPECT_EQ(raw.endMark, 0u);
}

TEST_F(ArchiveFormat, CompressedMembersAreSegmentsOf32768Bytes) {
  const Bytes two = NoiseBytes(65536, 1), three = NoiseBytes(65537, 2);
  Archive archive;
  CreateCompressed(archive);
  ASSERT_TRUE(archive.WriteMember("two", two));
  ASSERT_TRUE(archive.WriteMember("three", three));
  ASSERT_TRUE(archive.WriteMember("empty", {}));

  const RawArchive raw = Raw();
  EXPECT_EQ(raw.mode, 1u);
  EXPECT_EQ(raw.Stored("two")[0], 2);
  EXPECT_EQ(raw.Stored("three")[0], 3);
  EXPECT_EQ(raw.Stored("empty"), Bytes(4, 0)) << "a segment count of 0 and nothing else";
  EXPECT_EQ(raw.Content("two"), two);
  EXPECT_EQ(raw.Content("three"), three);
  EXPECT_LT(raw.Find("two")->storedSize, two.size());
  EXPECT_EQ(archive.ReadMember("two"), two);
  EXPECT_EQ(archive.ReadMember("empty"), Bytes{});
}

TEST_F(ArchiveFormat, NamesMeanTheSameMemberInAnyCaseAndWithAnySeparator) {
  Archive archive;
  CreateCompressed(archive);
  ASSERT_TRUE(archive.WriteMember("Varnhold/Levels/X/Init.con", TextBytes("old")));
  ASSERT_TRUE(archive.WriteMember("varnhold\\levels\\x\\init.con", TextBytes("new")));

  EXPECT_EQ(archive.ReadMember("VARNHOLD\\levels/X/INIT.CON"), TextBytes("new"));
  const RawArchive raw = Raw();
  ASSERT_EQ(raw.entries.size(), 1u);
  EXPECT_EQ(raw.entries[0].name, "Varnhold/Levels/X/Init.con") << "the first spelling stays";
}

TEST_F(ArchiveFormat, AGrowingMemberMovesToTheEndAndAShrinkingOneStaysInPlace) {
  Archive archive;
  ASSERT_TRUE(archive.Create("level.vra"));
  ASSERT_TRUE(archive.WriteMember("a", TextBytes("aaaa")));
  ASSERT_TRUE(archive.WriteMember("b", TextBytes("bbbb")));
  ASSERT_TRUE(archive.WriteMember("a", TextBytes("AAAAAA")));
  ASSERT_TRUE(archive.WriteMember("b", TextBytes("B")));

  RawArchive raw = Raw();
  EXPECT_EQ(raw.Find("a")->offset, kHeader + 8);
  EXPECT_EQ(raw.Find("b")->offset, kHeader + 4);
  EXPECT_EQ(Bytes(raw.file.begin() + kHeader, raw.file.begin() + kHeader + 8),
            TextBytes("aaaaBbbb"))
      << "old bytes stay until the archive is closed";

  ASSERT_TRUE(archive.Close());
  raw = Raw();
  EXPECT_EQ(raw.Find("b")->offset, kHeader) << "in the order of the former offsets";
  EXPECT_EQ(raw.Find("a")->offset, kHeader + 1);
  EXPECT_EQ(raw.directoryOffset, kHeader + 7);
  EXPECT_EQ(raw.file.size(), raw.directoryEnd);
  EXPECT_EQ(raw.Content("a"), TextBytes("AAAAAA"));
}

TEST_F(ArchiveFormat, RemovingKeepsTheBytesUntilTheArchiveIsClosed) {
  Archive archive;
  ASSERT_TRUE(archive.Create("level.vra"));
  for (const char* name : {"Keep/x", "menu/a", "MENU/b", "menu2"}) {
    ASSERT_TRUE(archive.WriteMember(name, TextBytes(name)));
  }
  EXPECT_FALSE(archive.RemoveMember("missing"));
  EXPECT_TRUE(archive.RemoveMembersWithPrefix("Menu\\"));
  RawArchive raw = Raw();
  EXPECT_EQ(raw.entries.size(), 2u);
  EXPECT_EQ(raw.Content("Keep/x"), TextBytes("Keep/x"));
  const auto name = TextBytes("MENU/b");
  EXPECT_NE(std::search(raw.file.begin(), raw.file.end(), name.begin(), name.end()),
            raw.file.end());

  EXPECT_TRUE(archive.RemoveMember("keep/X"));
  EXPECT_TRUE(archive.RemoveMember("menu2"));
  ASSERT_TRUE(archive.Close());
  raw = Raw();
  EXPECT_TRUE(raw.entries.empty());
  EXPECT_EQ(raw.file.size(), kHeader + 8u);
}

// An archive as another program might have written it.
Bytes ForeignArchive() {
  Bytes file;
  PutU32(file, kHeader + 10);
  PutU32(file, 0);
  for (int i = 0; i < 148; ++i) file.push_back(static_cast<std::uint8_t>(i));
  for (const char c : std::string("0123456789")) file.push_back(static_cast<std::uint8_t>(c));
  const RawEntry entries[] = {{"z\\last", 4, 4, kHeader + 6, {7, 8, 9}},
                              {"shared", 6, 6, kHeader, {}},
                              {"Also/shared", 6, 6, kHeader, {1, 2, 3}},
                              {"empty", 0, 0, kHeader + 3, {}},
                              {"SHARED", 5, 5, kHeader, {4, 5, 6}}};
  PutU32(file, 5);
  for (const RawEntry& entry : entries) {
    PutU32(file, static_cast<std::uint32_t>(entry.name.size()));
    for (const char c : entry.name) file.push_back(static_cast<std::uint8_t>(c));
    for (const std::uint32_t word : {entry.storedSize, entry.size, entry.offset})
      PutU32(file, word);
    for (const std::uint32_t word : entry.reserved) PutU32(file, word);
  }
  PutU32(file, 0xFFFFFFFF);  // an end mark that readers do not look at
  return file;
}

TEST_F(ArchiveFormat, WhatTheProgramDoesNotKnowIsKept) {
  const Bytes before = ForeignArchive();
  WriteBytes(folder / "level.vra", before);
  Archive archive;
  ASSERT_TRUE(archive.Open("level.vra", true)) << archive.Error();
  EXPECT_EQ(archive.ReadMember("Z/LAST"), TextBytes("6789"));
  EXPECT_EQ(archive.ReadMember("shared"), TextBytes("01234")) << "the later record counts";
  ASSERT_TRUE(archive.WriteMember("new", TextBytes("n")));
  ASSERT_TRUE(archive.Close());

  const RawArchive raw = Raw();
  EXPECT_EQ(raw.mode, 0u);
  EXPECT_EQ(raw.reserved, Bytes(before.begin() + 8, before.begin() + kHeader));
  ASSERT_EQ(raw.entries.size(), 5u);
  EXPECT_EQ(raw.Find("z/last")->reserved[2], 9u);
  EXPECT_EQ(raw.Find("shared")->reserved[0], 4u) << "first spelling, last record";
  EXPECT_EQ(raw.Content("Also/shared"), TextBytes("012345"));
  EXPECT_EQ(raw.Content("shared"), TextBytes("01234"));
  EXPECT_EQ(raw.Content("z/last"), TextBytes("6789"));
  EXPECT_NE(raw.Find("Also/shared")->offset, raw.Find("shared")->offset)
      << "members that shared bytes each have theirs";
  EXPECT_EQ(raw.Find("new")->reserved[0], 0u);
}

TEST_F(ArchiveFormat, AMemberThatSharesItsBytesIsNotOverwrittenInPlace) {
  WriteBytes(folder / "level.vra", ForeignArchive());
  Archive archive;
  ASSERT_TRUE(archive.Open("level.vra", true));
  ASSERT_TRUE(archive.WriteMember("shared", TextBytes("xx")));
  EXPECT_EQ(archive.ReadMember("also/shared"), TextBytes("012345"));
  EXPECT_EQ(archive.ReadMember("shared"), TextBytes("xx"));
}

TEST_F(ArchiveFormat, AReadOnlyArchiveRefusesEveryChange) {
  WriteBytes(folder / "level.vra", ForeignArchive());
  Archive archive;
  ASSERT_TRUE(archive.Open("LEVEL.VRA", false)) << "found without regard to case";
  EXPECT_FALSE(archive.WriteMember("x", TextBytes("x")));
  EXPECT_FALSE(archive.RemoveMember("shared"));
  EXPECT_FALSE(archive.RemoveMembersWithPrefix(""));
  EXPECT_FALSE(archive.BeginSave());
  EXPECT_TRUE(archive.Close());
  EXPECT_EQ(ReadBytes(folder / "level.vra"), ForeignArchive());
}

TEST_F(ArchiveFormat, CompactingKeepsLinksAndPermissions) {
  using std::filesystem::perms;
  constexpr perms kMode = perms::owner_read | perms::owner_write | perms::group_read;
  WriteBytes(folder / "real.vra", ForeignArchive());
  std::filesystem::permissions("real.vra", kMode);
  std::filesystem::create_symlink("real.vra", "level.vra");
  Archive archive;
  ASSERT_TRUE(archive.Open("level.vra", true));
  ASSERT_TRUE(archive.RemoveMember("shared"));
  ASSERT_TRUE(archive.Close()) << archive.Error();
  EXPECT_TRUE(std::filesystem::is_symlink("level.vra"));
  EXPECT_EQ(std::filesystem::status("real.vra").permissions(), kMode);
  EXPECT_EQ(Raw().file.size(), Raw().directoryEnd);
}

TEST_F(ArchiveFormat, TheModeStaysWhileMembersAreStoredInIt) {
  Archive archive;
  CreateCompressed(archive);
  ASSERT_TRUE(archive.WriteMember("m", TextBytes("text")));
  EXPECT_FALSE(archive.SetMode(StorageMode::Stored));
  EXPECT_EQ(archive.ReadMember("m"), TextBytes("text"));
}

TEST_F(ArchiveFormat, CreatingTakesOverAnExistingFile) {
  WriteBytes(folder / "level.vra", ForeignArchive());
  Archive archive;
  CreateCompressed(archive);
  EXPECT_TRUE(Raw().entries.empty());
  ASSERT_TRUE(archive.Close());
  EXPECT_EQ(ReadBytes(folder / "level.vra").size(), kHeader + 8u);
}

}  // namespace
}  // namespace mw
