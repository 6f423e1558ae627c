// A level whose files are damaged opens, tells what it could not read, and keeps on disk what was
// there until the user says otherwise.
#include <algorithm>
#include <gtest/gtest.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "support/archive_bytes.h"
#include "terrain/material_map.h"

namespace mw {
namespace {

using Contents = std::map<std::string, Bytes>;

class LevelDamage : public LevelTest {
 protected:
  LevelDamage() {
    AddMembers();
    good = ReadBytes(island);
    AnswerDialogs("Island");
  }

  void CutStored(const std::string& member) const {
    const RawArchive raw = ReadRawArchive(island);
    const Bytes name = TextBytes(std::string(kIsland) + member);
    const auto from = raw.file.begin() + static_cast<std::ptrdiff_t>(raw.directoryOffset);
    const auto found = std::search(from, raw.file.end(), name.begin(), name.end());
    Bytes half;
    PutU32(half, raw.Find(std::string(kIsland) + member)->storedSize / 2);
    Patch(static_cast<std::uint64_t>(found - raw.file.begin()) + name.size(), half);
  }

  // By what each member holds stored, so that a damaged one counts byte for byte too.
  Contents Stored() const {
    const RawArchive raw = ReadRawArchive(island);
    Contents stored;
    for (const RawEntry& entry : raw.entries) stored[entry.name] = raw.Stored(entry.name);
    return stored;
  }
  // Opens, edits, answers every question of saving with No, saves and closes. What was told.
  std::string WorkOnIt() {
    Answer({PromptAnswer::Ok});
    TakePrompts();
    EXPECT_TRUE(OpenLevel());
    const std::vector<std::string> told = TakePrompts();
    EXPECT_LE(told.size(), 1u) << "one message";
    scripted::script.answers.assign(9, PromptAnswer::No);
    Edit();
    SetMaterial(9, 20, 20);
    modConfig.WaterLevel = 33;
    EXPECT_TRUE(SaveLevel());
    CloseLevelArchive();
    return told.empty() ? "" : told[0];
  }

  Bytes good;
};

TEST_F(LevelDamage, NoMemberThatIsDamagedMissingOrCutLosesAByteOrAnother) {
  const Contents before = Stored();
  EXPECT_EQ(WorkOnIt(), "");
  const Contents whole = Stored();
  const auto check = [&](const std::string& name, const char* how, const auto& damage) {
    SCOPED_TRACE(name + how);
    CloseLevelArchive();
    WriteBytes(island, good);
    damage(name.substr(kIsland.size()));
    const Contents damaged = Stored();
    EXPECT_NE(WorkOnIt(), "");
    const Contents now = Stored();
    for (const auto& [other, bytes] : damaged) EXPECT_TRUE(now.contains(other)) << other;
    for (const auto& [other, bytes] : now) {
      if (other == name && !damaged.contains(name)) continue;  // made anew
      const bool edited = other != name && whole.contains(other) && bytes == whole.at(other);
      EXPECT_TRUE(edited || (damaged.contains(other) && bytes == damaged.at(other))) << other;
    }
  };
  for (const auto& [name, bytes] : before) {
    check(name, " with a broken segment", [&](const std::string& m) { BreakSegment(m, 0); });
    check(name, " cut", [&](const std::string& m) { CutStored(m); });
    // Of these nobody can know that the level had them.
    const bool optional = name.ends_with("notes.txt") || name.ends_with("thumbnail.dds") ||
                          name.ends_with("Tx01x01.dds");
    if (!optional) check(name, " missing", [&](const std::string& m) { Remove(m); });
  }
}

}  // namespace
}  // namespace mw
