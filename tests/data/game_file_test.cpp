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
  for (const char* path : {
           "C:\\Games\\Varnhold\\Mods\\mymod\\varnhold\\levels\\Island/init.con",
           "c:/games/VARNHOLD/mods/MyMod/varnhold/levels/Island/init.con",
           "C:\\Games\\Varnhold\\Mods\\varnhold\\varnhold\\levels\\Island\\init.con",
           "Mods\\mymod\\varnhold\\levels\\Island\\init.con",
           "varnhold\\levels\\\\Island//init.con",
       }) {
    EXPECT_EQ(NormalGamePath(path), member) << path;
  }
  EXPECT_EQ(NormalGamePath("Mods\\other\\a"), "Mods\\other\\a") << "another mod's folder stays";
  EXPECT_EQ(NormalGamePath("Mods\\mymod\\Mods\\varnhold\\a"), "Mods\\varnhold\\a")
      << "only one mod folder is taken off";
  openLevel.modFolder = "Mods\\other\\";
  EXPECT_EQ(NormalGamePath("Mods\\other\\a"), "a") << "it is the open level's now";
  modConfig.modFolder.clear();
  openLevel.modFolder.clear();
  EXPECT_EQ(NormalGamePath("Mods\\varnhold\\objects\\a.con"), "objects\\a.con") << "no mod chosen";
}

TEST_F(GameFileTest, APathOver255CharactersIsRefusedNotCut) {
  const std::string longest(kMaxGamePath, 'x'), tooLong = longest + "y";
  EXPECT_EQ(NormalGamePath(longest), longest);
  EXPECT_FALSE(GameFileOpen(tooLong, "w"));
  EXPECT_NE(GameFileError().find("too long"), std::string::npos);
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

TEST_F(GameFileTest, ReadsOnlyWhatIsThere) {
  Put("data", "1234567");
  auto file = GameFileOpen(LevelPath("data"), "rb");
  std::array<char, 16> buffer{};
  EXPECT_EQ(GameFileRead(buffer.data(), 2, 8, *file), 3u) << "whole elements";
  EXPECT_STREQ(buffer.data(), "1234567");
  EXPECT_EQ(GameFileRead(buffer.data(), 1, 1, *file), 0u);
}

TEST_F(GameFileTest, SeekingStaysInsideTheFile) {
  Put("data", "0123456789");
  auto file = GameFileOpen(LevelPath("data"), "rb");
  const auto seek = [&](std::int64_t offset, int origin) {
    const int result = GameFileSeek(*file, offset, origin);
    return std::pair(result, GameFileTell(*file));
  };
  EXPECT_EQ(seek(4, 0), std::pair(0, 4u));
  EXPECT_EQ(seek(-1, 1), std::pair(0, 3u));
  EXPECT_EQ(seek(2, 2), std::pair(0, 8u)) << "counted backwards from the end";
  EXPECT_EQ(seek(11, 0), std::pair(-1, 10u));
  EXPECT_EQ(seek(11, 2), std::pair(-1, 10u));
  EXPECT_EQ(seek(5, 7), std::pair(0, 10u)) << "no such origin";
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
  const std::string contentPath = (folder / "content.vra").string();
  archives.CreateArchive(contentPath)->WriteMember("textures/a.dds", Bytes("content"));
  ASSERT_TRUE(archives.CloseArchive(contentPath));
  Archive* const content = archives.OpenArchive(contentPath, false);
  ASSERT_TRUE(content);

  EXPECT_TRUE(GameFileOpen("textures/a.dds", "rb"));
  EXPECT_TRUE(SaveGameFileBytes("textures/a.dds", Bytes("mine")));
  EXPECT_EQ(Text(*level->ReadMember("textures/a.dds")), "mine");
  EXPECT_EQ(Text(*content->ReadMember("textures/a.dds")), "content");
}

TEST_F(GameFileTest, WithoutAWritableArchiveNothingOpensForWriting) {
  archives.Clear();
  EXPECT_FALSE(GameFileOpen(LevelPath("a.con"), "w"));
  EXPECT_EQ(GameFileError(), "No archive is open for writing.");
  EXPECT_FALSE(GameFileOpen(LevelPath("a.con"), "r"));
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
  EXPECT_NE(GameFileError(), "");
  EXPECT_EQ(Get("none.bin"), "(none)");
}

TEST_F(GameFileTest, RemovesTheMembersOfAFolder) {
  Put("objectlightmaps/a.dds", "1");
  Put("ObjectLightmaps/b.dds", "2");
  Put("init.con", "3");
  EXPECT_TRUE(RemoveArchiveFolder(LevelPath("objectlightmaps")));
  EXPECT_EQ(level->Entries().size(), 1u);
  EXPECT_TRUE(RemoveArchiveFolder("Mods\\mymod\\"));
  EXPECT_EQ(Get("init.con"), "3") << "never the whole archive";
}

}  // namespace
}  // namespace mw
