#include "data/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/level_archive_test.h"
#include "platform/disk.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

class ScriptTest : public LevelArchiveTest {
 protected:
  std::vector<std::string> ReadLines(std::string_view file) {
    std::vector<std::string> lines;
    EXPECT_TRUE(ReadScript(LevelPath(file), kSettingsLineBuffer,
                           [&](std::string_view line) { lines.emplace_back(line); }));
    return lines;
  }
  // Rewrites the file, giving lines that begin with "own" a new text.
  bool Rewrite(std::string_view file) {
    return RewriteScript(LevelPath(file), [](std::string_view line) -> std::optional<std::string> {
      if (!line.starts_with("own")) return std::nullopt;
      return "own new\n";
    });
  }
};

TEST_F(ScriptTest, VectorsRepeatTheComponentBeforeFloatsDoNot) {
  const auto vector = [](std::string_view text) {
    Tokenizer tokens(text);
    return ParseVector3(tokens, kBlankOrSlash);
  };
  const auto floats = [](std::string_view text) {
    Tokenizer tokens(text);
    return ParseFloats3(tokens, kBlankOrSlash);
  };
  EXPECT_EQ(vector("0.5/0.25/1"), (Vector3{0.5f, 0.25f, 1}));
  EXPECT_EQ(vector("0.5 0.25 1"), vector("0.5/0.25/1"));
  EXPECT_EQ(vector("0.25"), (Vector3{0.25f, 0.25f, 0.25f}));
  EXPECT_EQ(vector("1/2"), (Vector3{1, 2, 2}));
  EXPECT_EQ(vector(""), Vector3{});
  EXPECT_EQ(floats("1/2"), (Vector3{1, 2, 0}));
}

TEST_F(ScriptTest, NewScriptsBeginWithTheHeader) {
  auto file = GameFileOpen(LevelPath("new.con"), "w");
  WriteScriptHeader(*file);
  EXPECT_TRUE(GameFileClose(std::move(file)));
  const std::string stars = "rem " + std::string(45, '*') + "\r\n";
  EXPECT_EQ(Get("new.con"), stars + "rem Created by Mapwright\r\n" + stars);
}

TEST_F(ScriptTest, ReadsEveryLineWithoutItsEnd) {
  Put("a.con", "one\r\n\r\ntw\ro\nlast");
  EXPECT_THAT(ReadLines("a.con"), ElementsAre("one", "", "tw\ro", "last"));
}

TEST_F(ScriptTest, AMissingScriptIsNeitherReadNorMade) {
  EXPECT_FALSE(ReadScript(LevelPath("none.con"), kSettingsLineBuffer, [](std::string_view) {}));
  EXPECT_FALSE(Rewrite("none.con"));
  EXPECT_EQ(Get("none.con"), "(none)");
  EXPECT_EQ(GameFileError(), "");
}

TEST_F(ScriptTest, RewritingChangesOnlyOwnedLines) {
  Put("a.con", "rem one\r\nown 1\r\n\r\nrun x\r\nowned 2\r\nend\r\n");
  EXPECT_TRUE(Rewrite("a.con"));
  EXPECT_EQ(Get("a.con"), "rem one\r\nown new\r\n\r\nrun x\r\nown new\r\nend\r\n");
}

TEST_F(ScriptTest, KeptLinesKeepTheirOddLineEnds) {
  using namespace std::string_literals;
  const std::string odd = "unix\n\rmac\rx\r\nthree\r\r\r\n\n\r\n\t tab \0zero\r\nlast\r"s;
  Put("odd.con", odd);
  EXPECT_TRUE(Rewrite("odd.con"));
  EXPECT_EQ(Get("odd.con"), odd);

  Put("end.con", "a\r\nlast line");
  EXPECT_TRUE(Rewrite("end.con"));
  EXPECT_EQ(Get("end.con"), "a\r\nlast line");
}

TEST_F(ScriptTest, FilesAndLinesOfAnyLengthSurvive) {
  std::string script;
  for (int i = 0; i < 2000; ++i) script += "rem line " + std::to_string(i) + "\r\n";
  script += std::string(5000, 'x') + "\r\n";
  Put("big.con", script + "own 1\r\n");
  EXPECT_TRUE(Rewrite("big.con"));
  EXPECT_EQ(Get("big.con"), script + "own new\r\n");
}

TEST_F(ScriptTest, ADamagedScriptIsLeftAsItIs) {
  Put("a.con", "own 1\r\nrem kept\r\n");
  Damage("a.con");
  const auto before = ReadWholeFile(level->Path());
  EXPECT_FALSE(Rewrite("a.con"));
  EXPECT_EQ(GameFileError(), "The script varnhold\\levels\\Island\\a.con is damaged.");
  EXPECT_EQ(ReadWholeFile(level->Path()), before);
}

TEST_F(ScriptTest, AContentScriptIsRewrittenIntoTheLevel) {
  const std::string contentPath = (folder / "content.vra").string();
  archives.CreateArchive(contentPath)->WriteMember("a.con", Bytes("own 1\r\n"));
  ASSERT_TRUE(archives.CloseArchive(contentPath));
  Archive* const content = archives.OpenArchive(contentPath, false);
  ASSERT_TRUE(content);
  EXPECT_TRUE(
      RewriteScript("a.con", [](std::string_view) { return std::optional<std::string>("new\n"); }));
  EXPECT_EQ(Text(*content->ReadMember("a.con")), "own 1\r\n");
  EXPECT_EQ(Text(*level->ReadMember("a.con")), "new\r\n");
}

}  // namespace
}  // namespace mw
