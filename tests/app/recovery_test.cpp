// Unsaved work outlives the program: whenever it is killed, the next start offers what was edited
// up to the last recovery file, whole, and the level on disk is as it was saved.
#include <lzo/lzoconf.h>
#include <regex>

#include "app/recovery_fixture.h"
#include "core/text.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "support/golden.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

TEST_F(RecoveryTest, NothingIsWrittenBeforeItIsTimeOrWhileAButtonIsHeldOrWithoutEdits) {
  KeepRecovery(clock += session.recovery.interval);
  Mark(50);
  KeepRecovery(clock += session.recovery.interval);
  KeepRecovery(clock += session.recovery.interval - 1);
  EXPECT_FALSE(fs::exists(kRecoveryFile)) << "counted from the first edit";
  for (bool* const held : {&editor.leftHeld, &editor.rightHeld}) {
    *held = true;
    KeepRecovery(++clock);
    *held = false;
  }
  EXPECT_FALSE(fs::exists(kRecoveryFile));
  KeepRecovery(++clock);
  EXPECT_TRUE(fs::exists(kRecoveryFile));
  EXPECT_FALSE(HitWhile(FaultKind::Stop, 0, [this] { LetTimePass(); })) << "nothing new to write";
}

TEST_F(RecoveryTest, ADamagedFileIsKeptAndReported) {
  Work(50);
  const Bytes file = ReadBytes(kRecoveryFile);
  for (std::size_t at = 0; at < file.size(); at += at < 400 ? 13 : 40009) {
    SCOPED_TRACE(at);
    const bool reserved = at >= 8 && at < 156 && at % 2 == 1;  // bytes that mean nothing
    if (reserved) continue;
    Bytes damaged = file;
    damaged[at] ^= 4;
    if (at % 2 == 0) damaged.resize(at);
    WriteBytes(kRecoveryFile, damaged);
    Restart();
    Answer({kOk});
    EXPECT_FALSE(OfferRecovery());
    ExpectPrompts({"is damaged"});
    EXPECT_EQ(ReadBytes(kRecoveryFile + ".damaged"), damaged);
  }
}

// Without comments, of which some tell the time.
Bytes WithoutComments(const Bytes& script) {
  const std::string text(script.begin(), script.end());
  return TextBytes(std::regex_replace(text, std::regex("rem[^\n]*\n"), ""));
}

// One golden file for all systems: what is left on one of them, the editor on another takes up.
TEST_F(RecoveryTest, TheFileHasTheSameBytesOnEverySystem) {
  Work(50);
  Archive archive;
  ASSERT_TRUE(archive.Open(kRecoveryFile, false)) << archive.Error();
  std::string told;
  for (const auto& [name, entry] : archive.Entries()) {
    const std::string member(name);
    Bytes bytes = archive.ReadMember(name).value_or(Bytes{});
    if (member.ends_with(".con")) bytes = WithoutComments(bytes);
    told += FormatText("%s, %u bytes", member.c_str(), static_cast<unsigned>(bytes.size()));
    if (member != "recovery.txt") {  // that has the time, and a checksum over it
      told += FormatText(", checksum %08x",
                         lzo_crc32(0, bytes.data(), static_cast<lzo_uint>(bytes.size())));
    }
    told += "\n";
  }
  ExpectGolden("app/recovery_file.txt", told);
}

TEST_F(RecoveryTest, AnInterruptedWritingLeavesTheOneBefore) {
  for (const FaultKind kind : kFailures) {
    Work(20);
    EachChange(3, [&](std::size_t change) {
      const int mark = 60 + static_cast<int>(change);
      Mark(mark);
      scripted::script.status[1].clear();
      const bool hit = HitWhile(kind, change, [this] { LetTimePass(); });
      if (hit) {
        EXPECT_THAT(status(), testing::ElementsAre(testing::MatchesRegex(
                                  "Could not write the recovery file: .*\\w.*")));
      }
      Restart();
      Answer({kYes});
      EXPECT_TRUE(OfferRecovery());
      EXPECT_TRUE(Shown() == mark || (hit && Shown() >= 20)) << Shown();
      return hit;
    });
  }
}

}  // namespace
}  // namespace mw
