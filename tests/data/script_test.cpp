#include "data/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/level_archive_test.h"
#include "platform/disk.h"

namespace mw {
namespace {

class ScriptTest : public LevelArchiveTest {
 protected:
  // What the file becomes when lines that begin with "own" get a new text, those with "gone" go and
  // one is added behind the second line; empty when it could not be rewritten.
  std::string Rewritten(std::string_view script) {
    const AddedLine added[] = {{2, "added"}};
    Put("a.con", script);
    const bool done = RewriteScript(
        LevelPath("a.con"),
        [](std::string_view line) -> std::optional<std::string> {
          if (line.starts_with("gone")) return "";
          if (line.starts_with("own")) return "own new\n";
          return std::nullopt;
        },
        added);
    return done ? Get("a.con") : "";
  }
};

TEST_F(ScriptTest, VectorsRepeatTheComponentBeforeFloatsDoNot) {
  const struct {
    const char* text;
    Vector3 asVector, asFloats;
  } kRows[] = {{"0.5/0.25/1", {0.5f, 0.25f, 1}, {0.5f, 0.25f, 1}},
               {"0.5 0.25 1", {0.5f, 0.25f, 1}, {0.5f, 0.25f, 1}},
               {"0.25", {0.25f, 0.25f, 0.25f}, {0.25f, 0, 0}},
               {"1/2", {1, 2, 2}, {1, 2, 0}},
               {"", {}, {}}};
  for (const auto& row : kRows) {
    Tokenizer tokens(row.text), again(row.text);
    EXPECT_EQ(ParseVector3(tokens, kBlankOrSlash), row.asVector) << row.text;
    EXPECT_EQ(ParseFloats3(again, kBlankOrSlash), row.asFloats) << row.text;
  }
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
  std::vector<std::string> lines;
  const auto keep = [&](std::string_view line) { lines.emplace_back(line); };
  EXPECT_TRUE(ReadScript(LevelPath("a.con"), kSettingsLineBuffer, keep));
  EXPECT_THAT(lines, ::testing::ElementsAre("one", "", "tw\ro", "last"));
  EXPECT_FALSE(ReadScript(LevelPath("none.con"), kSettingsLineBuffer, keep));
  EXPECT_FALSE(RewriteScript(LevelPath("none.con"), [](std::string_view) { return std::nullopt; }));
  EXPECT_EQ(Get("none.con"), "(none)") << "what is missing is not made";
  EXPECT_EQ(GameFileError(), "");
}

TEST_F(ScriptTest, RewritingChangesOnlyOwnedLinesAndKeepsOddLineEnds) {
  using namespace std::string_literals;
  std::string many;
  for (int i = 0; i < 2000; ++i) many += "rem line " + std::to_string(i) + "\r\n";
  many += std::string(5000, 'x') + "\r\n";
  const std::pair<std::string, std::string> kRows[] = {
      {"rem 1\r\nown 1\r\n\r\nrun x\r\nowned 2\r\nend\r\n",
       "rem 1\r\nown new\r\nadded\r\n\r\nrun x\r\nown new\r\nend\r\n"},
      {"unix\n\rmac\rx\r\nthree\r\r\r\n\n\r\n\t tab \0zero\r\nlast\r"s,
       "unix\n\rmac\rx\r\nadded\r\nthree\r\r\r\n\n\r\n\t tab \0zero\r\nlast\r"s},
      {"a\r\nlast line", "a\r\nlast line\r\nadded\r\n"},
      {"gone\r\ngone 2\r\nown", "added\r\nown new\r\n"},
      {"1\n2\n" + many + "own 1\r\n", "1\n2\nadded\r\n" + many + "own new\r\n"}};
  for (const auto& [before, after] : kRows) EXPECT_EQ(Rewritten(before), after);
}

TEST_F(ScriptTest, ADamagedScriptIsLeftAsItIs) {
  Put("a.con", "own 1\r\nrem kept\r\n");
  Damage("a.con");
  const auto before = ReadWholeFile(level->Path());
  EXPECT_FALSE(
      RewriteScript(LevelPath("a.con"), [](std::string_view) { return std::optional("new"); }));
  EXPECT_EQ(GameFileError(), "The script varnhold\\levels\\Island\\a.con is damaged.");
  EXPECT_EQ(ReadWholeFile(level->Path()), before);
}

TEST_F(ScriptTest, AContentScriptIsRewrittenIntoTheLevel) {
  Archive* const content = OpenContent("a.con", "own 1\r\n");
  EXPECT_TRUE(RewriteScript("a.con", [](std::string_view) { return std::optional("new\n"); }));
  EXPECT_EQ(Text(*content->ReadMember("a.con")), "own 1\r\n");
  EXPECT_EQ(Text(*level->ReadMember("a.con")), "new\r\n");
}

}  // namespace
}  // namespace mw
