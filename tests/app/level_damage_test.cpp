// A level whose files are damaged opens, tells what it could not read, and keeps on disk what was
// there until the user says otherwise.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>

#include "app/level.h"
#include "app/level_fixture.h"
#include "app/object_operations.h"
#include "data/load_report.h"
#include "objects/object_store.h"
#include "support/archive_bytes.h"
#include "support/dds_file.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using Contents = std::map<std::string, Bytes>;

constexpr std::string_view kBase = "varnhold/levels/Island/";

class LevelDamage : public LevelTest {
 protected:
  LevelDamage() {
    ConnectObjectOperations();
    std::ofstream("huts.lst") << "[X]\nhut=StandardMesh(hut_m1)\n";
    modConfig.ObjectsList = "huts.lst";
    LoadObjectCatalogue();
    AddMembers();
    good = ReadBytes(path);
    AnswerDialogs("Island");
  }

  // What a level has besides its ground and its settings.
  void AddMembers() {
    Archive archive;
    ASSERT_TRUE(archive.Open(ArchivePath("Island"), true));
    std::string objects;
    for (int i = 0; i < 1500; ++i) {
      objects += "Object.create hut\r\nObject.absolutePosition " + std::to_string(i) + "/0/0\r\n";
    }
    const auto add = [&](const std::string& file, const Bytes& bytes) {
      ASSERT_TRUE(archive.WriteMember(std::string(kBase) + file, bytes));
    };
    add("StaticObjects.con", TextBytes(objects));
    for (const std::string mode : {"conquest", "tdm"}) {
      add(mode + "/SoldierSpawnTemplates.con",
          TextBytes("ObjectTemplate.create SpawnPoint s1\r\nObjectTemplate.setGroup 3\r\n"));
      add(mode + "/SoldierSpawns.con", TextBytes("Object.create s1\r\n"));
      add(mode + "/spawnPointManagerSettings.con", TextBytes("spawnPointManager.group 3\r\n"));
    }
    add("Textures/Tx01x01.dds",
        DdsFile{256, 256, 32768, 1, "DXT1", UniformBlocks(4096, 7)}.Bytes());
    add("Menu/thumbnail.dds", NoiseBytes(70'000, 3));
    ASSERT_TRUE(archive.Close());
  }

  void PutGoodLevel() {
    CloseLevelArchive();
    WriteBytes(path, good);
  }
  // Bytes of the file that a damage changes.
  void Patch(std::uint64_t at, const Bytes& bytes) const {
    Bytes file = ReadBytes(path);
    std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(at));
    WriteBytes(path, file);
  }
  // Of a segment of the member nothing can be read any more.
  void BreakSegment(const std::string& member, std::uint32_t segment) const {
    const RawArchive raw = ReadRawArchive(path);
    const RawEntry& entry = *raw.Find(std::string(kBase) + member);
    Patch(entry.offset + 4 + 12 * segment + 3, {0x80});  // the highest byte of its size
  }
  void CutStored(const std::string& member) const {
    const RawArchive raw = ReadRawArchive(path);
    const std::string name = std::string(kBase) + member;
    const Bytes key = TextBytes(name);
    const auto from = raw.file.begin() + static_cast<std::ptrdiff_t>(raw.directoryOffset);
    const auto found = std::search(from, raw.file.end(), key.begin(), key.end());
    Bytes half;
    PutU32(half, raw.Find(name)->storedSize / 2);
    Patch(static_cast<std::uint64_t>(found - raw.file.begin()) + name.size(), half);
  }
  void Remove(const std::string& member) const {
    Archive archive;
    ASSERT_TRUE(archive.Open(ArchivePath("Island"), true));
    ASSERT_TRUE(archive.RemoveMember(std::string(kBase) + member));
    ASSERT_TRUE(archive.Close());
  }

  static void Edit() {
    SetHeight(20, 20, 77);
    SetMaterial(9, 20, 20);
    modConfig.WaterLevel = 33;
    editor.levelModified = true;
  }
  // By what each member holds stored, so that a damaged one counts byte for byte too.
  Contents Stored() const {
    const RawArchive raw = ReadRawArchive(path);
    Contents stored;
    for (const RawEntry& entry : raw.entries) stored[entry.name] = raw.Stored(entry.name);
    return stored;
  }
  // Opens, edits, answers every question of saving with No, saves and closes. What was told.
  std::string WorkOnIt() {
    scripted::ResetScript();
    scripted::script.answers = {PromptAnswer::Ok};
    EXPECT_TRUE(OpenLevel());
    const auto& prompts = scripted::script.prompts;
    std::string told = prompts.empty() ? "" : prompts.front().text;
    EXPECT_LE(prompts.size(), 1u) << "one message";
    scripted::script.answers = std::vector(9, PromptAnswer::No);
    Edit();
    EXPECT_TRUE(SaveLevel());
    CloseLevelArchive();
    scripted::script.answers.clear();
    return told;
  }

  const fs::path path = folder / "Mods/varnhold/Archives/varnhold/levels/Island.vra";
  Bytes good;
};

TEST_F(LevelDamage, NoMemberThatIsDamagedMissingOrCutLosesAByteOrAnother) {
  EXPECT_EQ(WorkOnIt(), "");
  const Contents whole = Stored();
  PutGoodLevel();
  const Contents before = Stored();
  const auto check = [&](const std::string& name, const char* how, const auto& damage) {
    const std::string member = name.substr(kBase.size());
    SCOPED_TRACE(member + how);
    PutGoodLevel();
    damage(member);
    const Contents damaged = Stored();
    const std::string told = WorkOnIt();
    EXPECT_FALSE(told.empty());
    std::size_t lost = 0;
    for (const auto& [other, bytes] : Stored()) {
      if (other == name && !damaged.contains(name)) continue;  // made anew
      const bool edited = whole.contains(other) && bytes == whole.at(other);
      const bool kept = damaged.contains(other) && bytes == damaged.at(other);
      if (!edited && !kept) lost += bytes.size();
      EXPECT_TRUE(other != name || kept || !damaged.contains(name));
    }
    EXPECT_EQ(lost, 0u);
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
  const std::string told = WorkOnIt();
  for (const char* line : {"The height map could not be read in rows 65 to 128 of 256.",
                           "The material map could be read to row 128 of 256.",
                           "The settings script init/skyandsun.con is damaged",
                           "Could not load all objects - StaticObjects.con is damaged!",
                           "The file tdm/SoldierSpawns.con is missing."}) {
    EXPECT_THAT(told, HasSubstr(line));
  }
  EXPECT_EQ(status().back(),
            "Saved level Island. Not saved: height map, material map, "
            "init/skyandsun.con, static objects, Team DeathMatch entities");
  EXPECT_FLOAT_EQ(terrain.grid[20][100].h, 127) << "flat where nothing is known";
  EXPECT_NE(terrain.grid[20][200].h, 127) << "whole segments behind keep their place";
}

TEST_F(LevelDamage, EachPartIsAskedForOnceAndReplacedOnTheUsersWord) {
  BreakSegment("heightmap.raw", 3);
  BreakSegment("materialmap.raw", 1);
  const Bytes heights = Stored().at(std::string(kBase) + "heightmap.raw");
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Ok, PromptAnswer::No};
  ASSERT_TRUE(OpenLevel());
  Edit();
  FillWithMaterial();  // asks before it replaces the whole map: no question at the save
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(scripted::script.prompts.back().text,
            "Replace the damaged height map on disk by the one in the editor?");
  ASSERT_TRUE(SaveLevel()) << "the answer holds";
  CloseLevelArchive();
  EXPECT_EQ(Stored().at(std::string(kBase) + "heightmap.raw"), heights);
  EXPECT_EQ(MemberOnDisk("Island", "materialmap.raw"), Bytes(256 * 256, 0));

  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Yes};
  ASSERT_TRUE(OpenLevel()) << "opened again, it asks again";
  Edit();
  ASSERT_TRUE(SaveLevel());
  EXPECT_THAT(status().back(), EndsWith("Saved level Island"));
  const Bytes replaced = MemberOnDisk("Island", "heightmap.raw");
  ASSERT_EQ(replaced.size(), 256u * 256 * 2);
  EXPECT_EQ(replaced[(20 * 256 + 256 - 20) * 2 + 1], 77);
  CloseLevelArchive();
  ASSERT_TRUE(OpenLevel()) << "without a message";
}

}  // namespace
}  // namespace mw
