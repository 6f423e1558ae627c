#include "app/level_fixture.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

#include "app/level.h"
#include "app/recovery.h"
#include "app/session.h"
#include "app/start_up.h"
#include "data/mods.h"
#include "objects/object_store.h"
#include "support/archive_bytes.h"
#include "support/dds_file.h"
#include "terrain/material_map.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMember = "varnhold/levels/";

// A slope along the rows with odd low bytes, so that a lost byte shows.
Bytes HeightSamples(int materialSize) {
  Bytes samples;
  for (int i = 0; i < materialSize * materialSize; ++i) {
    samples.push_back(static_cast<std::uint8_t>(i * 7));
    samples.push_back(static_cast<std::uint8_t>(i / materialSize / 4));
  }
  return samples;
}

// Every material, and bytes that stand for none.
Bytes Materials(int materialSize) {
  Bytes cells;
  for (int i = 0; i < materialSize * materialSize; ++i) {
    cells.push_back(static_cast<std::uint8_t>(i * 3 + i / materialSize));
  }
  return cells;
}

}  // namespace

LevelTest::LevelTest() {
  editor.levelLoaded = false;
  ConnectHooks();
  fs::create_directories(levels);
  std::ofstream(folder / "varnhold.cfg")
      << "GamePath=" << GameFolder() << "\nObjectsList=varnhold.lst\nMaterialSize=512\n"
      << "WorldSize=2048\nHeightScale=0.6\nWaterLevel=20\nTeam=First/t1/skin1\nTeam=Second/t2/"
         "skin2\n"
      << "Team=Third/t3/skin3\nTeam=Axis/German/GermanSoldier\nTeam=Allies/US/USSoldier\n";
  MakeLevel("Island", 256, 1024);
  MakeLevel("Valley", 512, 2048);
  modConfig = ModConfig{};
  EXPECT_TRUE(ParseModConfig("varnhold", modConfig));
}

LevelTest::~LevelTest() {
  CloseLevelArchive();
  archives.Clear();
}

void LevelTest::MakeLevel(const std::string& name, int materialSize, int worldSize) {
  Archive archive;
  ASSERT_TRUE(archive.Create(ArchivePath(name)));
  archive.SetMode(StorageMode::Compressed);
  const auto add = [&](const std::string& member, const Bytes& bytes) {
    ASSERT_TRUE(archive.WriteMember(std::string(kMember) + name + "/" + member, bytes));
  };
  add("Init.con",
      TextBytes("rem made by hand\r\ngame.setTeamSkin 1 skin2\r\nrun Init/terrain\r\n"));
  add("Init/Terrain.con",
      TextBytes("GeometryTemplate.materialSize " + std::to_string(materialSize) +
                "\r\nGeometryTemplate.worldSize " + std::to_string(worldSize) +
                "\r\nGeometryTemplate.yScale 0.5\r\nGeometryTemplate.waterLevel 12\r\n"
                "unknown.command stays  as it is\r\n"));
  add("Init/SkyAndSun.con", TextBytes("renderer.fogstart 150\r\n"));
  add("StaticObjects.con", TextBytes("rem none\r\n"));
  add("notes.txt", TextBytes("not the editor's"));
  add("Textures/detail.dds", DdsFile{4, 4, 8, 1, "DXT1", UniformBlocks(1, 0xF800)}.Bytes());
  add("heightmap.raw", HeightSamples(materialSize));
  add("materialmap.raw", Materials(materialSize));
  ASSERT_TRUE(archive.Close());
}

std::string LevelTest::ArchivePath(const std::string& name) const {
  return GameFolder() + "Mods\\varnhold\\Archives\\varnhold\\levels\\" + name + ".vra";
}

Bytes LevelTest::MemberOnDisk(const std::string& level, const std::string& member) const {
  Archive reader;
  EXPECT_TRUE(reader.Open(ArchivePath(level), false)) << reader.Error();
  return reader.ReadMember(std::string(kMember) + level + "/" + member).value_or(Bytes{});
}

std::string LevelTest::TextOnDisk(const std::string& level, const std::string& member) const {
  const Bytes bytes = MemberOnDisk(level, member);
  return {bytes.begin(), bytes.end()};
}

std::vector<std::string> LevelTest::MembersOnDisk(const std::string& level) const {
  Archive reader;
  EXPECT_TRUE(reader.Open(ArchivePath(level), false)) << reader.Error();
  std::vector<std::string> names;
  for (const auto& [name, entry] : reader.Entries()) {
    names.emplace_back(name.substr(kMember.size() + level.size() + 1));
  }
  return names;
}

int LevelTest::HeightOnDisk(const std::string& level, int i, int j) const {
  const Bytes heights = MemberOnDisk(level, "heightmap.raw");
  const auto high = static_cast<std::size_t>((j * 256 + 256 - i) * 2 + 1);
  return high < heights.size() ? heights[high] : -1;
}

void LevelTest::PutMember(const std::string& member, const Bytes& bytes) {
  Archive archive;
  ASSERT_TRUE(archive.Open(ArchivePath("Island"), true)) << archive.Error();
  ASSERT_TRUE(archive.WriteMember(std::string(kMember) + "Island/" + member, bytes));
  ASSERT_TRUE(archive.Close());
}

void LevelTest::AddMembers() {
  std::ofstream("huts.lst") << "[X]\nhut=StandardMesh(hut_m1)\n";
  modConfig.ObjectsList = "huts.lst";
  LoadObjectCatalogue();
  std::string objects;
  for (int i = 0; i < 1500; ++i) {
    objects += "Object.create hut\r\nObject.absolutePosition " + std::to_string(i) + "/0/0\r\n";
  }
  PutMember("StaticObjects.con", TextBytes(objects));
  for (const std::string mode : {"conquest", "tdm"}) {
    PutMember(mode + "/SoldierSpawnTemplates.con",
              TextBytes("ObjectTemplate.create SpawnPoint s1\r\nObjectTemplate.setGroup 3\r\n"));
    PutMember(mode + "/SoldierSpawns.con", TextBytes("Object.create s1\r\n"));
    PutMember(mode + "/spawnPointManagerSettings.con", TextBytes("spawnPointManager.group 3\r\n"));
  }
  PutMember("Textures/Tx01x01.dds",
            DdsFile{256, 256, 32768, 1, "DXT1", UniformBlocks(4096, 7)}.Bytes());
  PutMember("Menu/thumbnail.dds", NoiseBytes(70'000, 3));
}

void LevelTest::Patch(std::uint64_t at, const Bytes& bytes) const {
  Bytes file = ReadBytes(island);
  std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(at));
  WriteBytes(island, file);
}

void LevelTest::BreakSegment(const std::string& member, std::uint32_t segment) const {
  const RawArchive raw = ReadRawArchive(island);
  const RawEntry& entry = *raw.Find(std::string(kIsland) + member);
  Patch(entry.offset + 4 + 12 * segment + 3, {0x80});  // the highest byte of its size
}

void LevelTest::Remove(const std::string& member) const {
  Archive archive;
  ASSERT_TRUE(archive.Open(ArchivePath("Island"), true) &&
              archive.RemoveMember(std::string(kIsland) + member) && archive.Close());
}

void LevelTest::AnswerDialogs(const std::string& level) {
  shell.selectMod = [](bool) { return true; };
  shell.loadLevelDialog = [level] {
    if (level.empty()) return false;
    ChooseLevel(level);
    return true;
  };
}

void LevelTest::Open(const std::string& level) {
  AnswerDialogs(level);
  ASSERT_TRUE(OpenLevel());
  knownFiles["as opened"] = ReadBytes(levels / (level + ".vra"));
}

void LevelTest::Edit() {
  SetHeight(20, 20, 77);
  editor.levelModified = true;
}

void LevelTest::Mark(int mark) {
  for (int j = 1; j < 100; ++j) SetHeight(30, j, static_cast<float>(mark));
  SetMaterial(static_cast<std::uint32_t>(mark % 16), 40, 40);
  modConfig.fogStart = mark;
  editor.levelModified = true;
}

int LevelTest::Shown() {
  const int mark = modConfig.fogStart;
  for (int j = 1; j < 100; ++j) {
    if (terrain.grid[30][j].h != static_cast<float>(mark)) return -1;
  }
  return materialMapper->grid[40][40] == static_cast<std::uint32_t>(mark % 16) ? mark : -1;
}

void LevelTest::LetTimePass() {
  KeepRecovery(clock);
  clock += session.recovery.interval;
  KeepRecovery(clock);
}

void LevelTest::Restart() {
  archives.Clear();
  session.recovery = Recovery{};
  editor.levelLoaded = editor.levelModified = editor.leftHeld = false;
  editor.savedCameraPosition = {};
  InitGrid();
  FindMods();
  SelectMod(0);
}

// By its name in the story, or by its text where that is short, or by what the level in it holds.
std::string LevelTest::FileState(const fs::path& file) const {
  if (fs::is_directory(file)) return "a folder";
  const Bytes bytes = ReadBytes(file);
  for (const auto& [name, known] : knownFiles) {
    if (bytes == known) return name;
  }
  if (bytes.size() < 100) return "\"" + std::string(bytes.begin(), bytes.end()) + "\"";
  if (file.extension() != ".vra") return "an archive";
  const std::string level = file.stem().string();
  std::string state = HeightOnDisk(level, 20, 20) == 77 ? "edited" : "not edited";
  for (const char* member : {"notes.txt", "theirs.txt"}) {
    if (!MemberOnDisk(level, member).empty()) state += std::string(", with ") + member;
  }
  return state;
}

std::string LevelTest::StateAfterStep() {
  std::string state = editor.levelModified ? "unsaved edits\n" : "";
  std::set<fs::path> files;
  for (const fs::path& place : {levels, folder}) {
    if (!fs::exists(place)) continue;
    for (const fs::path& file : fs::directory_iterator(place)) {
      const bool isShown = place == levels ? file != levels / "Valley.vra"
                                           : file.string().find("recovery") != std::string::npos;
      if (isShown) files.insert(file);
    }
  }
  for (const fs::path& file : files) {
    state += "file   " + file.filename().string() + ": " + FileState(file) + '\n';
  }
  return state;
}

void LevelTest::TellMember(const std::string& level, const std::string& member) {
  std::string content = TextOnDisk(level, member);
  if (std::ranges::all_of(content, [](unsigned char c) { return c >= '\t' && c != 0xAE; })) {
    const auto lines = std::ranges::count(content, '\n');
    if (lines != static_cast<std::ptrdiff_t>(std::erase(content, '\r')))
      content += "(mixed line ends)";
  } else {
    constexpr std::size_t kDdsData = 128;
    const auto byte =
        static_cast<unsigned char>(content.size() > kDdsData ? content[kDdsData] : content[0]);
    const auto same = std::ranges::count(content, static_cast<char>(byte));
    content = std::to_string(content.size()) + " bytes, of the data the first " +
              std::to_string(byte) + ", like " + std::to_string(same);
  }
  Tell("member " + member + ": " + content);
}

}  // namespace mw
