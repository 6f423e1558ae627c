// mapwright-archive as its user sees it: what it prints, how it ends, and what is on disk then.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/archive_bytes.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class ArchiveCommandTest : public SandboxTest {
 protected:
  ArchiveCommandTest() {
    fs::create_directories("in/objects/hut");
    WriteBytes("in/objects/hut/init.con", TextBytes("game.setName Island\n"));
    WriteBytes("in/objects/hut/heightmap.raw", NoiseBytes(100000, 1));
    EXPECT_EQ(Run("add new.vra in/objects --create"), 0) << printed;
  }
  // The exit code; what was printed, on both outputs, is in `printed`.
  int Run(const std::string& words) {
    const int status =
        std::system((std::string(MAPWRIGHT_ARCHIVE) + " " + words + " >out.txt 2>&1").c_str());
    const Bytes bytes = ReadBytes("out.txt");
    printed.assign(bytes.begin(), bytes.end());
    return WEXITSTATUS(status);
  }
  // An archive of empty members with any names.
  static void WriteStored(const std::string& path, const std::vector<std::string>& names) {
    Bytes file(156), directory;
    PutU32(directory, static_cast<std::uint32_t>(names.size()));
    for (const std::string& name : names) {
      PutU32(directory, static_cast<std::uint32_t>(name.size()));
      directory.insert(directory.end(), name.begin(), name.end());
      for (const std::uint32_t word : {0u, 0u, 156u, 0u, 0u, 0u}) PutU32(directory, word);
    }
    PutU32(directory, 0);
    file[0] = 156;
    file.insert(file.end(), directory.begin(), directory.end());
    WriteBytes(path, file);
  }

  std::string printed;
};

TEST_F(ArchiveCommandTest, EachCommandDoesItsWorkAndEndsWithItsCode) {
  WriteBytes("init.con", TextBytes("game.setName Cove\n"));
  WriteBytes("no.vra", TextBytes("no archive"));
  fs::copy("new.vra", "old.vra");
  std::string told;
  for (const std::string words : {"list new.vra",
                                  "list new.vra '*.CON'",
                                  "list new.vra '*.CON' --json",
                                  "verify new.vra",
                                  "diff new.vra old.vra",
                                  "extract new.vra -C a",
                                  "extract new.vra '*init*' -C a",
                                  "extract new.vra '*init*' -C a --force",
                                  "extract new.vra nothing",
                                  "add new.vra init.con --under objects/HUT",
                                  "diff new.vra old.vra",
                                  "remove new.vra '*height*'",
                                  "diff old.vra new.vra",
                                  "diff new.vra old.vra",
                                  "diff old.vra new.vra --json",
                                  "remove new.vra '*height*'",
                                  "compact new.vra",
                                  "list missing.vra",
                                  "verify no.vra",
                                  "add new.vra missing.con",
                                  "add missing.vra init.con",
                                  "list",
                                  "burn new.vra"}) {
    const int code = Run(words);
    told += "$ mapwright-archive " + words + "\n" + printed + "= " + std::to_string(code) + "\n";
  }
  ExpectGolden("tools/archive_runs.txt", told);
  EXPECT_EQ(Run("--version"), 0);
  EXPECT_THAT(printed, HasSubstr("mapwright-archive "));
  EXPECT_EQ(ReadBytes("a/objects/hut/heightmap.raw"), NoiseBytes(100000, 1));
  const RawArchive left = ReadRawArchive("new.vra");
  ASSERT_EQ(left.entries.size(), 1u);
  EXPECT_EQ(left.Content("objects/hut/init.con"), TextBytes("game.setName Cove\n"));
  EXPECT_EQ(left.directoryEnd, left.file.size()) << "it is compact";
}

TEST_F(ArchiveCommandTest, DamagedMembersAreToldAndWhatCanBeReadIsExtracted) {
  // The segment table of the height map says nonsense.
  std::fstream file("new.vra", std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(ReadRawArchive("new.vra").Find("objects/hut/heightmap.raw")->offset + 4);
  file.write("\xFF\xFF\xFF\xFF", 4);
  file.close();
  EXPECT_EQ(Run("verify new.vra"), 1);
  EXPECT_THAT(printed, HasSubstr("damaged: objects/hut/heightmap.raw: "));
  EXPECT_EQ(Run("extract new.vra -C out"), 1);
  EXPECT_EQ(ReadBytes("out/objects/hut/init.con"), TextBytes("game.setName Island\n"));
}

// As the editor's opening does: nothing here fails to decompress.
TEST_F(ArchiveCommandTest, VerifyReadsEachPartOfALevel) {
  const std::string level = "in/varnhold/levels/Isle/";
  fs::create_directories(level + "init");
  fs::create_directories(level + "textures");
  fs::create_directories(level + "Conquest");
  for (const char* script :
       {"init.con", "init/terrain.con", "init/skyandsun.con", "StaticObjects.con"}) {
    WriteBytes(level + script, TextBytes("rem nothing\n"));
  }
  WriteBytes(level + "heightmap.raw", NoiseBytes(2 * 256 * 256, 1));
  WriteBytes(level + "materialmap.raw", Bytes(256 * 256));
  EXPECT_EQ(Run("add Isle.vra in/varnhold --create"), 0);
  EXPECT_EQ(Run("verify Isle.vra"), 0);
  EXPECT_THAT(printed, HasSubstr("6 members, 0 damaged\n1 levels, 0 damaged, "));
  fs::create_directories("mod");
  WriteBytes("mod/a.cfg", TextBytes("ObjectsList=a.lst\nSky=Day\nSkyMesh=day_m1\n"));
  WriteBytes("mod/a.lst", TextBytes("hut=StandardMesh(hut_m1)\n"));
  WriteBytes(level + "materialmap.raw", Bytes(256 * 255));
  WriteBytes(level + "init/terrain.con", TextBytes("GeometryTemplate.materialSize 300\n"));
  WriteBytes(level + "textures/Tx00x00.dds", TextBytes("no picture"));
  WriteBytes(level + "Conquest/SoldierSpawns.con", TextBytes("Object.create nobody\n"));
  EXPECT_EQ(Run("add Isle.vra in/varnhold"), 0);
  EXPECT_EQ(Run("remove Isle.vra */init.con */staticobjects.con"), 0);
  std::string told;
  for (const std::string words :
       {"verify Isle.vra", "verify Isle.vra --json", "verify Isle.vra *.raw",
        "verify Isle.vra --mod missing.cfg", "verify Isle.vra --mod mod/a.cfg"}) {
    const int code = Run(words);
    told += "$ mapwright-archive " + words + "\n" + printed + "= " + std::to_string(code) + "\n";
  }
  ExpectGolden("tools/verified_level.txt", told);
  fs::rename("Isle.vra", "Isle_001.vra");
  EXPECT_EQ(Run("verify Isle_001.vra"), 0) << "a patch needs not hold the whole level";
}

TEST_F(ArchiveCommandTest, ADirectoryOfZerosIsDamaged) {
  WriteStored("holes.vra", {"good", "", ""});
  EXPECT_EQ(Run("verify holes.vra"), 1);
  EXPECT_THAT(printed, HasSubstr("damaged: (a member without a name)"));
}

TEST_F(ArchiveCommandTest, ExtractionNeverLeavesItsFolder) {
  const std::string here = fs::absolute("escaped").string();
  WriteStored("evil.vra", {"../escaped", "a/../../escaped", here, "..\\escaped", "C:/escaped",
                           "link/escaped", "file", "a//b", "good"});
  fs::create_directories("out");
  fs::create_directories("outside");
  fs::create_symlink("../outside", "out/link");
  fs::create_symlink("../outside/escaped", "out/file");
  EXPECT_EQ(Run("extract evil.vra good file '*escaped' 'a*' -C out --force"), 2);
  EXPECT_THAT(printed, HasSubstr("left out: ../escaped: "));
  EXPECT_THAT(printed, HasSubstr("a link leads out of the folder"));
  EXPECT_TRUE(fs::exists("out/good"));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status("out/file")));
  EXPECT_FALSE(fs::exists("escaped") || fs::exists("outside/escaped"));
}

TEST_F(ArchiveCommandTest, AKillLosesNothing) {
  fs::copy("new.vra", "old.vra");
  WriteBytes("big.raw", NoiseBytes(3000000, 2));
  for (int i = 0; i < 20; ++i) {
    fs::copy("old.vra", "new.vra", fs::copy_options::overwrite_existing);
    const pid_t child = fork();
    if (child == 0) {
      execl(MAPWRIGHT_ARCHIVE, "mapwright-archive", "add", "new.vra", "big.raw", nullptr);
      _exit(127);
    }
    usleep(static_cast<useconds_t>(i) * 15000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ASSERT_EQ(Run("verify new.vra"), 0) << "killed after " << i * 15 << " ms: " << printed;
    Run("diff old.vra new.vra");
    EXPECT_THAT(printed, ::testing::AnyOf("", "+ big.raw\n"));
  }
}

}  // namespace
}  // namespace mw
