#include "data/game_file.h"

#include <array>
#include <gtest/gtest.h>

#include "data/game_path.h"
#include "data/level_archive_test.h"
#include "platform/disk.h"

namespace mw {
namespace {

using GameFileTest = LevelArchiveTest;

TEST_F(GameFileTest, EverySpellingOfAPathNamesTheSameMember) {
  modConfig.GamePath = "C:\\Games\\Varnhold\\";
  const std::string member = "varnhold\\levels\\Island\\init.con";
  const auto expect = [](const std::string& path, const std::string& normal) {
    EXPECT_EQ(NormalGamePath(path), normal) << path;
  };
  expect("C:\\Games\\Varnhold\\Mods\\mymod\\varnhold\\levels\\Island/init.con", member);
  expect("c:/games/VARNHOLD/mods/MyMod/varnhold/levels/Island/init.con", member);
  expect("C:\\Games\\Varnhold\\Mods\\varnhold\\varnhold\\levels\\Island\\init.con", member);
  expect("Mods\\mymod\\varnhold\\levels\\Island\\init.con", member);
  expect("varnhold\\levels\\\\Island//init.con", member);
  expect("Mods\\other\\a", "Mods\\other\\a");  // another mod's folder stays
  expect("Mods\\mymod\\Mods\\varnhold\\a", "Mods\\varnhold\\a");
  openLevel.modFolder = "Mods\\other\\";
  expect("Mods\\other\\a", "a");  // it is the open level's now
  modConfig.modFolder.clear();
  openLevel.modFolder.clear();
  expect("Mods\\varnhold\\objects\\a.con", "objects\\a.con");  // no mod is chosen
}

TEST(NumberedArchive, IsOneWhoseNameEndsWithAnUnderscoreAndThreeDigits) {
  for (const char* name : {"Island_000", "_129"}) EXPECT_TRUE(IsNumberedArchive(name)) << name;
  for (const char* name : {"Island-000", "Island_00", "Island_0a0", "000", ""})
    EXPECT_FALSE(IsNumberedArchive(name)) << name;
}

TEST_F(GameFileTest, APathOver255CharactersIsRefusedNotCut) {
  const std::string longest(255, 'x'), tooLong = longest + "y";
  EXPECT_EQ(NormalGamePath(longest), longest);
  EXPECT_FALSE(GameFileOpen(tooLong, "w"));
  EXPECT_EQ(GameFileError(), "The path is too long: " + tooLong);
  EXPECT_TRUE(level->Entries().empty());
}

TEST_F(GameFileTest, TextGetsACarriageReturnBeforeEachLineFeed) {
  auto file = GameFileOpen(LevelPath("a.con"), "w");
  EXPECT_EQ(GameFileWrite("a\nb\n", 1, 4, *file), 4u);
  EXPECT_EQ(GameFileTell(*file), 6u);
  EXPECT_TRUE(GameFileClose(std::move(file)));
  EXPECT_EQ(Get("a.con"), "a\r\nb\r\n");
  file = GameFileOpen(LevelPath("a.con"), "r");
  EXPECT_EQ(GameFileGets(255, *file), "a\n");
  EXPECT_EQ(GameFileGets(255, *file), "b\n");
  EXPECT_EQ(GameFileGets(255, *file), std::nullopt);
  file = GameFileOpen(LevelPath("a.con"), "rb");
  EXPECT_EQ(GameFileGets(255, *file), "a\r\n") << "a binary file keeps it";
}

TEST_F(GameFileTest, ALongLineArrivesInPiecesThatNeverSplitTheLineEnd) {
  for (const std::size_t length : {252u, 253u, 254u, 255u, 300u}) {
    const std::string line(length, 'x');
    Put("long.con", line + "\r\nnext");
    auto file = GameFileOpen(LevelPath("long.con"), "r");
    std::string read = *GameFileGets(255, *file);
    EXPECT_EQ(read.size(), std::min<std::size_t>(length + 1, 254));
    while (const auto piece = GameFileGets(255, *file)) read += *piece;
    EXPECT_EQ(read, line + "\nnext") << length;
  }
}

TEST_F(GameFileTest, ReadsOnlyWhatIsThereAndSeeksInsideTheFile) {
  Put("data", "0123456789");
  auto file = GameFileOpen(LevelPath("data"), "rb");
  std::array<char, 16> buffer{};
  EXPECT_EQ(GameFileRead(buffer.data(), 3, 2, *file), 2u);
  EXPECT_EQ(GameFileRead(buffer.data(), 3, 8, *file), 1u) << "whole elements";
  EXPECT_STREQ(buffer.data(), "678945");
  EXPECT_EQ(GameFileRead(buffer.data(), 1, 1, *file), 0u);
  const struct {
    std::int64_t offset;
    int origin, result;
    std::uint32_t position;
  } kSeeks[] = {{4, 0, 0, 4},    {-1, 1, 0, 3},   {2, 2, 0, 8},  // counted back from the end
                {10, 0, 0, 10},  {11, 0, -1, 10}, {3, 0, 0, 3},
                {11, 2, -1, 10}, {5, 7, 0, 10}};  // no such origin
  for (const auto& seek : kSeeks) {
    EXPECT_EQ(GameFileSeek(*file, seek.offset, seek.origin), seek.result) << seek.offset;
    EXPECT_EQ(GameFileTell(*file), seek.position) << seek.offset;
  }
}

TEST_F(GameFileTest, WritingReplacesBytesAndShowsOnClosing) {
  Put("data", "old");
  auto file = GameFileOpen(LevelPath("data"), "wb");
  GameFileWrite("0123456789", 1, 10, *file);
  GameFileSeek(*file, 8, 0);
  GameFileWrite("abcd", 2, 2, *file);
  GameFileSeek(*file, 2, 0);
  GameFileWrite("xy", 1, 2, *file);
  EXPECT_EQ(Get("data"), "old");
  EXPECT_TRUE(GameFileClose(std::move(file)));
  EXPECT_EQ(Get("data"), "01xy4567abcd");
}

TEST_F(GameFileTest, NeverWritesIntoAnArchiveThatIsReadOnly) {
  Archive* const content = OpenContent("textures/a.dds", "content");
  EXPECT_TRUE(GameFileOpen("textures/a.dds", "rb"));
  EXPECT_FALSE(IsInWritableArchive("textures/a.dds"));
  EXPECT_TRUE(SaveGameFileBytes("textures/a.dds", Bytes("mine")));
  EXPECT_TRUE(IsInWritableArchive("textures/a.dds"));
  EXPECT_EQ(Text(*level->ReadMember("textures/a.dds")), "mine");
  EXPECT_TRUE(RemoveGameFile("textures/a.dds"));
  EXPECT_FALSE(level->Find("textures/a.dds"));
  EXPECT_EQ(Text(*content->ReadMember("textures/a.dds")), "content");
  archives.Clear();
  EXPECT_FALSE(GameFileOpen(LevelPath("a.con"), "r"));
  EXPECT_EQ(GameFileError(), "");
  EXPECT_FALSE(GameFileOpen(LevelPath("a.con"), "w"));
  EXPECT_EQ(GameFileError(), "No archive is open for writing.");
}

TEST_F(GameFileTest, AFormattedLineTooLongIsRefusedWhole) {
  auto file = GameFileOpen(LevelPath("a.con"), "w");
  const std::string longest(kMaxPrintfText, 'x');
  EXPECT_EQ(GameFilePrintf(*file, "%s", longest.c_str()), 1023);
  EXPECT_EQ(GameFileError(), "");
  EXPECT_LT(GameFilePrintf(*file, "%sy", longest.c_str()), 0);
  EXPECT_NE(GameFileError(), "");
  EXPECT_EQ(file->data.size(), kMaxPrintfText);
}

TEST_F(GameFileTest, ImportsADiskFileByteForByte) {
  ASSERT_TRUE(WriteWholeFile("source.bin", std::string_view("a\nb\0", 4)));
  EXPECT_TRUE(ImportDiskFile("source.bin", LevelPath("added.bin")));
  EXPECT_EQ(Get("added.bin"), std::string("a\nb\0", 4));
  EXPECT_FALSE(ImportDiskFile("missing.bin", LevelPath("none.bin")));
  EXPECT_EQ(GameFileError(), "No such file or directory");
  EXPECT_EQ(Get("none.bin"), "(none)");
  EXPECT_FALSE(ImportDiskFile("source.bin", std::string(256, 'x'))) << "a path that is refused";
}

TEST_F(GameFileTest, WhatIsCapturedReachesNoArchive) {
  Put("kept/a", "1");
  const auto members = CaptureGameFiles([&] {
    return SaveGameFileBytes(LevelPath("A.con"), Bytes("old")) &&
           SaveGameFileBytes(LevelPath("A.con"), Bytes("new")) &&
           SaveGameFileBytes(LevelPath("b.con"), Bytes("b")) &&
           RemoveArchiveFolder(LevelPath("kept"));
  });
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(members[0].name, Member("A.con"));
  EXPECT_EQ(Text(members[0].data), "new");
  EXPECT_EQ(level->Entries().size(), 1u);
}

TEST_F(GameFileTest, RemovesTheMembersOfAFolder) {
  for (const char* file : {"objectlightmaps/a.dds", "ObjectLightmaps/b.dds", "init.con"}) {
    Put(file, "3");
  }
  EXPECT_TRUE(RemoveArchiveFolder(LevelPath("objectlightmaps")));
  EXPECT_EQ(level->Entries().size(), 1u);
  EXPECT_TRUE(RemoveArchiveFolder("Mods\\mymod\\"));
  EXPECT_EQ(Get("init.con"), "3") << "never the whole archive";
}

}  // namespace
}  // namespace mw
