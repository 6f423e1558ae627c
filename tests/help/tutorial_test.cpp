// The tutorial, followed to the letter in the running editor, and what its level then holds: read
// by a plain reader of archives that shares no code with the program.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>

#include "support/archive_bytes.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr int kSide = 256;  // samples of a small level
constexpr int kTiles = 4;   // per side
constexpr std::size_t kTgaHeader = 18, kDdsHeader = 128;

std::string LowerCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

double Mean(const Bytes& bytes, std::size_t from) {
  return std::accumulate(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(), 0.0) /
         static_cast<double>(bytes.size() - from);
}

// Followed once for all tests of the file.
class TutorialTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    work = fs::temp_directory_path() / "mapwright tutorial";
    fs::remove_all(work);
    const std::string script = MAPWRIGHT_SOURCE "/tools/help_tour/run_tour.sh";
    followed =
        std::system((script + " '" MAPWRIGHT_BUILD "' '" MAPWRIGHT_SOURCE "/help/tutorial.htm' '" +
                     work.string() + "'")
                        .c_str()) == 0;
    const fs::path archive = work / "game/Mods/varnhold/Archives/varnhold/levels/First_Steps.vra";
    if (followed) level = ReadRawArchive(archive);
  }
  static void TearDownTestSuite() { fs::remove_all(work); }

  void SetUp() override { ASSERT_TRUE(followed) << "a step of the tutorial could not be done"; }

  // A file of the level, whatever the case of its name.
  static Bytes Member(const std::string& file) {
    const std::string name = LowerCase("varnhold/levels/First_Steps/" + file);
    for (const RawEntry& entry : level.entries) {
      if (LowerCase(entry.name) == name) return level.Content(entry.name);
    }
    ADD_FAILURE() << "the level has no " << file;
    return {};
  }
  // In lower case.
  static std::string Script(const std::string& file) {
    const Bytes bytes = Member(file);
    return LowerCase({bytes.begin(), bytes.end()});
  }
  static int Height(const Bytes& heights, int row, int column) {
    const auto at = static_cast<std::size_t>(row * kSide + column) * 2;
    return heights[at] + 256 * heights[at + 1];
  }
  static std::string TileName(const std::string& format, int row, int column) {
    std::string name = format;
    name[name.find('R')] = static_cast<char>('0' + row);
    name[name.find('C')] = static_cast<char>('0' + column);
    return name;
  }

  static inline fs::path work;
  static inline bool followed = false;
  static inline RawArchive level;
};

TEST_F(TutorialTest, ScriptsHoldWhatTheTutorialPlaces) {
  const struct {
    const char *file, *part;
    int times;
  } kRows[] = {{"Conquest/ControlPoints.con", "object.create ", 3},
               {"Conquest/ControlPoints.con", "object.create farm\r\n", 1},
               {"Conquest/ControlPointTemplates.con", "setcontrolpointname farm\r\n", 1},
               {"Conquest/SoldierSpawns.con", "object.create ", 3},
               {"Conquest/SoldierSpawns.con", "object.create farm_spawn1\r\n", 1},
               {"Conquest/ObjectSpawns.con", "object.create jeeps\r\n", 1},
               {"Conquest/ObjectSpawnTemplates.con", " jeep\r\n", 2},
               {"StaticObjects.con", "object.create farmhouse\r\n", 1},
               {"StaticObjects.con", "object.create oak\r\n", 3},
               {"StaticObjects.con", "object.create ", 4},
               {"Init.con", "renderer.fogstart 100\r\n", 1},
               {"Init.con", "renderer.fogend 350\r\n", 1},
               {"Init/SkyAndSun.con", "sky_evening_m1", 1}};
  for (const auto& row : kRows) {
    EXPECT_EQ(Count(Script(row.file), row.part), row.times) << row.file << ": " << row.part << "\n"
                                                            << Script(row.file);
  }
  const Bytes list = ReadBytes(work / "game/Mods/varnhold/Settings/maplist.con");
  EXPECT_EQ(std::string(list.begin(), list.end()),
            "game.addLevel FIRST_STEPS\r\ngame.setCurrentLevel FIRST_STEPS\r\n");
}

TEST_F(TutorialTest, MiddleIsFlatAndOfDirtWithARoadBesideIt) {
  const Bytes materials = Member("materialmap.raw");
  ASSERT_EQ(materials.size(), static_cast<std::size_t>(kSide * kSide));
  constexpr int kDryDirt = 4, kDirtRoad = 14;
  EXPECT_EQ(materials[kSide / 2 * kSide + kSide / 2], kDryDirt);
  EXPECT_GT(std::ranges::count(materials, kDirtRoad), 60);

  const Bytes heights = Member("heightmap.raw");
  ASSERT_EQ(heights.size(), 2 * materials.size());
  int alike = 0;
  for (int row = kSide / 2 - 5; row < kSide / 2 + 5; ++row) {
    for (int column = kSide / 2 - 5; column < kSide / 2 + 5; ++column) {
      alike += Height(heights, row, column) == Height(heights, kSide / 2, kSide / 2);
    }
  }
  EXPECT_GT(alike, 50) << "of 100 samples around the middle";
}

TEST_F(TutorialTest, ALakeFillsTheHollowAndNotTheLevel) {
  const std::string script = Script("Init/Terrain.con");
  const auto number = [&](const std::string& command) {
    const std::size_t at = script.find(command);
    return at == script.npos ? 0 : std::stod(script.substr(at + command.size()));
  };
  const double water = number("geometrytemplate.waterlevel ");
  const double unit = number("geometrytemplate.yscale ");  // world units
  const Bytes heights = Member("heightmap.raw");
  int wet = 0;
  for (int at = 0; at < kSide * kSide; ++at) wet += Height(heights, 0, at) / 256.0 * unit < water;
  EXPECT_GT(wet, 60) << script;
  EXPECT_LT(wet, kSide * kSide / 10);
}

TEST_F(TutorialTest, EveryTileIsPaintedAndDarkerWithItsShadows) {
  constexpr std::size_t kBlocks = 1024 * 1024 / 2;  // bytes of the largest picture
  const fs::path textures = work / "game/ShadowWork/varnhold/levels/First_Steps/textures";
  int darker = 0;
  for (int row = 0; row < kTiles; ++row) {
    for (int column = 0; column < kTiles; ++column) {
      const Bytes tile = Member(TileName("Textures/Tx0Rx0C.dds", row, column));
      ASSERT_GT(tile.size(), kDdsHeader + kBlocks);
      EXPECT_GT(Mean(tile, kDdsHeader), 1) << "a tile is black";
      const Bytes painted = ReadBytes(textures / TileName("Tx0Rx0C.tga", row, column));
      const Bytes merged = ReadBytes(textures / "merged" / TileName("Tx0Rx0C.tga", row, column));
      ASSERT_EQ(painted.size(), merged.size());
      if (Mean(merged, kTgaHeader) < Mean(painted, kTgaHeader)) ++darker;
    }
  }
  EXPECT_GT(darker, 0);
  EXPECT_FALSE(Member("Textures/LightmapShadowBits.lsb").empty());
  EXPECT_GT(Mean(Member("Textures/ingamemap.dds"), kDdsHeader), 1) << "the map is black";
}

}  // namespace
}  // namespace mw
