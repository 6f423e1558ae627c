#include "app/level_fixture.h"

#include <filesystem>
#include <fstream>

#include "app/level.h"
#include "app/start_up.h"
#include "data/mods.h"
#include "support/dds_file.h"
#include "terrain/material_map.h"

namespace mw {
namespace {

constexpr std::string_view kMember = "varnhold/levels/";

std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

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
  std::filesystem::create_directories(folder / "Mods/varnhold/Archives/varnhold/levels");
  std::ofstream(folder / "varnhold.cfg")
      << "GamePath=" << GameFolder() << "\nObjectsList=varnhold.lst\nMaterialSize=512\n"
      << "WorldSize=2048\nHeightScale=0.6\nWaterLevel=20\nTeam=First/t1/skin1\nTeam=Second/t2/"
         "skin2\n"
      << "Team=Third/t3/skin3\n";
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
  const std::string base = std::string(kMember) + name + "/";
  Archive archive;
  ASSERT_TRUE(archive.Create(ArchivePath(name)));
  archive.SetMode(StorageMode::Compressed);
  const auto add = [&](const std::string& member, std::string_view text) {
    ASSERT_TRUE(archive.WriteMember(base + member, AsBytes(text)));
  };
  add("Init.con", "rem made by hand\r\ngame.setTeamSkin 1 skin2\r\nrun Init/terrain\r\n");
  add("Init/Terrain.con",
      "GeometryTemplate.materialSize " + std::to_string(materialSize) +
          "\r\nGeometryTemplate.worldSize " + std::to_string(worldSize) +
          "\r\nGeometryTemplate.yScale 0.5\r\nGeometryTemplate.waterLevel 12\r\n"
          "unknown.command stays  as it is\r\n");
  add("Init/SkyAndSun.con", "renderer.fogstart 150\r\n");
  add("StaticObjects.con", "rem none\r\n");
  add("notes.txt", "not the editor's");
  const auto detail = DdsFile{4, 4, 8, 1, "DXT1", UniformBlocks(1, 0xF800)}.Bytes();
  ASSERT_TRUE(archive.WriteMember(base + "Textures/detail.dds", detail));
  ASSERT_TRUE(archive.WriteMember(base + "heightmap.raw", HeightSamples(materialSize)));
  ASSERT_TRUE(archive.WriteMember(base + "materialmap.raw", Materials(materialSize)));
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

void LevelTest::AnswerDialogs(const std::string& level) {
  shell.selectMod = [](bool) { return true; };
  shell.loadLevelDialog = [level] {
    if (level.empty()) return false;
    ChooseLevel(level);
    return true;
  };
}

}  // namespace mw
