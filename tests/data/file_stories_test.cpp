// Files of a game as the rest of the program reads and writes them, and scripts among them: the
// stories in tests/golden/data/files.
#include "app/story.h"
#include "data/game_path.h"
#include "data/level_archive_test.h"
#include "data/script.h"
#include "platform/disk.h"
#include "support/archive_bytes.h"

namespace mw {
namespace {

// The words from one on, as they stand for a text.
std::string Joined(const std::vector<std::string>& words, std::size_t from) {
  std::string text;
  for (std::size_t i = from; i < words.size(); ++i) text += (i > from ? " " : "") + words[i];
  return Unescaped(text);
}

// Lines that begin with "own" get a new text, those with "gone" go, and one is added behind the
// second line.
bool Rewrite(const std::string& path) {
  const AddedLine added[] = {{2, "added"}};
  const auto rebuild = [](std::string_view line) -> std::optional<std::string> {
    if (line.starts_with("gone")) return "";
    if (line.starts_with("own")) return "own new\n";
    return std::nullopt;
  };
  return RewriteScript(path, rebuild, added);
}

class FileStory : public LevelArchive<StoryTest>, public testing::WithParamInterface<std::string> {
 protected:
  // A path in the level's folder where it begins with "L/".
  static std::string PathOf(const std::string& name) {
    return name.starts_with("L/") ? LevelPath(name.substr(2)) : Unescaped(name);
  }
  // What became of the files and why something failed.
  std::string StateAfterStep() override {
    std::string text;
    for (std::size_t i = 0; i < archives.Count(); ++i) {
      text += i == 0 ? "level: " : "content:";
      for (const auto& [name, entry] : archives.At(i)->Entries())
        text += " " + std::string(name) + "=" + Escaped(Text(*archives.At(i)->ReadMember(name)));
      text += '\n';
    }
    return text + (GameFileError().empty() ? "" : "error: " + Escaped(GameFileError()) + '\n');
  }
  void TellText(const std::optional<std::string>& text) {
    Tell(text ? "  " + Escaped(*text) : "  nothing");
  }
  void TellRead(std::size_t size, std::size_t count) {
    std::string buffer(16, '.');
    const std::size_t read = GameFileRead(buffer.data(), size, count, *file);
    Tell("  " + std::to_string(read) + " of " + buffer);
  }
  template <typename Result>
  void TellResult(Result result) {
    Tell("  " + std::to_string(result) + ", at " + std::to_string(GameFileTell(*file)));
  }
  void TellRewrite(const std::string& path) {
    const mw::Bytes before = ReadBytes(level->Path());
    TellAnswer(Rewrite(path));
    if (ReadBytes(level->Path()) == before) Tell("  the archive stays as it is");
  }
  void TellVectors(const std::string& text) {
    Tokenizer tokens(text), again(text);
    for (const Vector3& v :
         {ParseVector3(tokens, kBlankOrSlash), ParseFloats3(again, kBlankOrSlash)})
      Tell(FormatText("  %g %g %g", v.x, v.y, v.z));
  }

  std::unique_ptr<GameFile> file;
};

TEST_P(FileStory, GoesAsItIsTold) {
  const auto number = [](const Words& words, std::size_t at) { return std::stoi(words.at(at)); };
  ActOut(GetParam(),
         {{"put", [&](const Words& w) { Put(w[0], Joined(w, 1)); }},
          {"content", [&](const Words& w) { OpenContent(w[0], Joined(w, 1)); }},
          {"disk", [](const Words& w) { WriteBytes(w[0], TextBytes(Joined(w, 1))); }},
          {"damage", [&](const Words& w) { Damage(w[0]); }},
          {"noarchives", [](const Words&) { archives.Clear(); }},
          {"gamepath", [](const Words& w) { modConfig.GamePath = w[0]; }},
          {"mod", [](const Words& w) { modConfig.modFolder = w.empty() ? "" : w[0]; }},
          {"levelsmod", [](const Words& w) { openLevel.modFolder = w.empty() ? "" : w[0]; }},
          {"path", [&](const Words& w) { TellText(NormalGamePath(Joined(w, 0))); }},
          {"open",
           [&](const Words& w) {
             file = GameFileOpen(PathOf(w[0]), w[1]);
             TellAnswer(file != nullptr);
           }},
          {"write",
           [&](const Words& w) {
             const std::string text = Joined(w, 0);
             TellResult(GameFileWrite(text.data(), 1, text.size(), *file));
           }},
          {"print",
           [&](const Words& w) { TellResult(GameFilePrintf(*file, "%s", Joined(w, 0).c_str())); }},
          {"gets", [&](const Words&) { TellText(GameFileGets(255, *file)); }},
          {"read", [&](const Words& w) { TellRead(std::stoul(w.at(0)), std::stoul(w.at(1))); }},
          {"seek",
           [&](const Words& w) { TellResult(GameFileSeek(*file, number(w, 0), number(w, 1))); }},
          {"close", [&](const Words&) { TellAnswer(GameFileClose(std::move(file))); }},
          {"save",
           [&](const Words& w) {
             TellAnswer(SaveGameFileBytes(PathOf(w[0]), TextBytes(Joined(w, 1))));
           }},
          {"inlevel", [&](const Words& w) { TellAnswer(IsInWritableArchive(PathOf(w[0]))); }},
          {"remove", [&](const Words& w) { TellAnswer(RemoveGameFile(PathOf(w[0]))); }},
          {"removefolder", [&](const Words& w) { TellAnswer(RemoveArchiveFolder(PathOf(w[0]))); }},
          {"import", [&](const Words& w) { TellAnswer(ImportDiskFile(w[0], PathOf(w[1]))); }},
          {"lines",
           [&](const Words& w) {
             TellAnswer(ReadScript(PathOf(w[0]), kSettingsLineBuffer,
                                   [&](std::string_view line) { TellText(std::string(line)); }));
           }},
          {"rewrite", [&](const Words& w) { TellRewrite(PathOf(w[0])); }},
          {"header", [&](const Words&) { WriteScriptHeader(*file); }},
          {"vectors", [&](const Words& w) { TellVectors(Joined(w, 0)); }}});
}

INSTANTIATE_TEST_SUITE_P(All, FileStory, testing::ValuesIn(GoldenFiles("data/files")));

using GameFileTest = LevelArchiveTest;

TEST_F(GameFileTest, WhatIsCapturedReachesNoArchive) {
  Put("kept/a", "1");
  const auto members = CaptureGameFiles([&] {
    return SaveGameFileBytes(LevelPath("A.con"), TextBytes("old")) &&
           SaveGameFileBytes(LevelPath("A.con"), TextBytes("new")) &&
           SaveGameFileBytes(LevelPath("b.con"), TextBytes("b")) &&
           RemoveArchiveFolder(LevelPath("kept"));
  });
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(members[0].name, Member("A.con"));
  EXPECT_EQ(Text(members[0].data), "new");
  EXPECT_EQ(level->Entries().size(), 1u);
}

TEST_F(GameFileTest, ALongScriptIsRewrittenWhole) {
  std::string many;
  for (int i = 0; i < 2000; ++i) many += "rem line " + std::to_string(i) + "\r\n";
  many += std::string(5000, 'x') + "\r\n";
  Put("a.con", "1\n2\n" + many + "own 1\r\n");
  EXPECT_TRUE(Rewrite(LevelPath("a.con")));
  EXPECT_EQ(Get("a.con"), "1\n2\nadded\r\n" + many + "own new\r\n");
}

TEST(NumberedArchive, IsOneWhoseNameEndsWithAnUnderscoreAndThreeDigits) {
  for (const char* name : {"Island_000", "_129"}) EXPECT_TRUE(IsNumberedArchive(name)) << name;
  for (const char* name : {"Island-000", "Island_00", "Island_0a0", "000", ""})
    EXPECT_FALSE(IsNumberedArchive(name)) << name;
}

}  // namespace
}  // namespace mw
