// A level whose files are damaged opens, tells what it could not read, and keeps on disk what was
// there until the user says otherwise.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "objects/object_store.h"
#include "support/archive_bytes.h"
#include "support/dds_file.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using Contents = std::map<std::string, Bytes>;
constexpr PromptAnswer kYes = PromptAnswer::Yes, kNo = PromptAnswer::No, kOk = PromptAnswer::Ok;

constexpr std::string_view kBase = "varnhold/levels/Island/";

class LevelDamage : public LevelTest {
 protected:
  LevelDamage() {
    std::ofstream("huts.lst") << "[X]\nhut=StandardMesh(hut_m1)\n";
    modConfig.ObjectsList = "huts.lst";
    LoadObjectCatalogue();
    AddMembers();
    good = ReadBytes(island);
    AnswerDialogs("Island");
  }

  // What a level has besides its ground and its settings.
  void AddMembers() {
    std::string objects;
    for (int i = 0; i < 1500; ++i) {
      objects += "Object.create hut\r\nObject.absolutePosition " + std::to_string(i) + "/0/0\r\n";
    }
    PutMember("StaticObjects.con", TextBytes(objects));
    for (const std::string mode : {"conquest", "tdm"}) {
      PutMember(mode + "/SoldierSpawnTemplates.con",
                TextBytes("ObjectTemplate.create SpawnPoint s1\r\nObjectTemplate.setGroup 3\r\n"));
      PutMember(mode + "/SoldierSpawns.con", TextBytes("Object.create s1\r\n"));
      PutMember(mode + "/spawnPointManagerSettings.con",
                TextBytes("spawnPointManager.group 3\r\n"));
    }
    PutMember("Textures/Tx01x01.dds",
              DdsFile{256, 256, 32768, 1, "DXT1", UniformBlocks(4096, 7)}.Bytes());
    PutMember("Menu/thumbnail.dds", NoiseBytes(70'000, 3));
  }

  // Bytes of the file that a damage changes.
  void Patch(std::uint64_t at, const Bytes& bytes) const {
    Bytes file = ReadBytes(island);
    std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(at));
    WriteBytes(island, file);
  }
  // Of a segment of the member nothing can be read any more.
  void BreakSegment(const std::string& member, std::uint32_t segment) const {
    const RawArchive raw = ReadRawArchive(island);
    const RawEntry& entry = *raw.Find(std::string(kBase) + member);
    Patch(entry.offset + 4 + 12 * segment + 3, {0x80});  // the highest byte of its size
  }
  void CutStored(const std::string& member) const {
    const RawArchive raw = ReadRawArchive(island);
    const Bytes name = TextBytes(std::string(kBase) + member);
    const auto from = raw.file.begin() + static_cast<std::ptrdiff_t>(raw.directoryOffset);
    const auto found = std::search(from, raw.file.end(), name.begin(), name.end());
    Bytes half;
    PutU32(half, raw.Find(std::string(kBase) + member)->storedSize / 2);
    Patch(static_cast<std::uint64_t>(found - raw.file.begin()) + name.size(), half);
  }
  void Remove(const std::string& member) const {
    Archive archive;
    ASSERT_TRUE(archive.Open(ArchivePath("Island"), true) &&
                archive.RemoveMember(std::string(kBase) + member) && archive.Close());
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
    Answer({kOk});
    TakePrompts();
    EXPECT_TRUE(OpenLevel());
    const std::vector<std::string> told = TakePrompts();
    EXPECT_LE(told.size(), 1u) << "one message";
    scripted::script.answers.assign(9, kNo);
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
    damage(name.substr(kBase.size()));
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

TEST_F(LevelDamage, OneMessageTellsHowMuchOfEachPartThereIs) {
  BreakSegment("heightmap.raw", 1);
  BreakSegment("materialmap.raw", 1);
  BreakSegment("Init/SkyAndSun.con", 0);
  BreakSegment("StaticObjects.con", 0);
  Remove("tdm/SoldierSpawns.con");
  Do("open", OpenLevel, {kOk});
  EXPECT_FLOAT_EQ(terrain.grid[20][100].h, 127) << "flat where nothing is known";
  EXPECT_NE(terrain.grid[20][200].h, 127) << "whole segments behind keep their place";
  Edit();
  Do("save", [] { return SaveLevel(); }, {kNo, kNo, kNo, kNo});
}

TEST_F(LevelDamage, EachPartIsAskedForOnceAndReplacedOnTheUsersWord) {
  BreakSegment("heightmap.raw", 3);
  BreakSegment("materialmap.raw", 1);
  knownFiles["as opened"] = ReadBytes(island);
  const auto save = [] { return SaveLevel(); };
  Do("open", OpenLevel, {kOk});
  Edit();
  // It asks before it replaces the whole map: no question at the save.
  Do("fill with material", FillWithMaterial, {kOk});
  Do("save", save, {kNo});
  Do("save again", save);
  CloseLevelArchive();
  EXPECT_EQ(MemberOnDisk("Island", "materialmap.raw"), Bytes(256 * 256, 0));

  Do("open again", OpenLevel, {kOk});
  Edit();
  Do("save", save, {kYes});
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw").size(), 256u * 256 * 2);
  CloseLevelArchive();
  Do("open what is whole", OpenLevel);
}

}  // namespace
}  // namespace mw
