#include "terrain/material_map.h"

#include <gtest/gtest.h>

#include "data/level_archive_test.h"
#include "data/load_report.h"
#include "data/open_level.h"

namespace mw {
namespace {

// A level of 256 x 256 cells with its archive open.
class MaterialMapTest : public LevelArchiveTest {
 protected:
  MaterialMapTest() {
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    CreateMaterialMapper();
  }
  ~MaterialMapTest() override { DestroyMaterialMapper(); }

  // Rows and columns differ, and all 256 bytes occur.
  static std::string DistinctMap() {
    std::string file(256 * 256, '\0');
    for (std::size_t cell = 0; cell < file.size(); ++cell) {
      file[cell] = static_cast<char>(cell * 3 + cell / 256);
    }
    return file;
  }
  static std::uint32_t& Cell(int i, int j) { return materialMapper->grid[i][j]; }
};

TEST_F(MaterialMapTest, FileRowsRunAlongTheColumnsOfTheGrid) {
  std::string file(256 * 256, '\0');
  file[0] = 1;
  file[255] = 2;
  file[256] = 3;
  file[256 * 256 - 1] = 4;
  Put("materialmap.raw", file);
  LoadMaterialMap();
  EXPECT_EQ(Cell(256, 0), 1u) << "first cell of the file";
  EXPECT_EQ(Cell(1, 0), 2u) << "last cell of the first row";
  EXPECT_EQ(Cell(256, 1), 3u) << "first cell of the second row";
  EXPECT_EQ(Cell(1, 255), 4u) << "last cell";
}

TEST_F(MaterialMapTest, SavingWithoutAnEditGivesTheSameFileWithItsUnknownMaterials) {
  const std::string file = DistinctMap();
  Put("materialmap.raw", file);
  LoadMaterialMap();
  EXPECT_TRUE(SaveMaterialMap());
  EXPECT_TRUE(Get("materialmap.raw") == file);
}

TEST_F(MaterialMapTest, CellsThatTheFileLacksBecomeDefault) {
  Cell(254, 0) = Cell(1, 255) = 9;  // of the level before
  Put("materialmap.raw", "\x05\x06");
  LoadMaterialMap();
  EXPECT_EQ(Cell(256, 0), 5u);
  EXPECT_EQ(Cell(255, 0), 6u);
  EXPECT_EQ(Cell(254, 0), 0u);
  EXPECT_EQ(Cell(1, 255), 0u);
}

TEST_F(MaterialMapTest, AMissingFileIsToldAndOnlyTheLevelsCellsBecomeDefault) {
  Cell(1, 0) = Cell(256, 255) = 9;
  Cell(0, 0) = Cell(1, 256) = 7;
  BeginLoadReport();
  LoadMaterialMap();
  EXPECT_EQ(openLevel.loadReport.lines.at(0),
            "Can't Find The Height Map! (The material map, materialmap.raw, is missing.)");
  ClearLoadReport();
  EXPECT_EQ(Cell(1, 0), 0u);
  EXPECT_EQ(Cell(256, 255), 0u);
  EXPECT_EQ(Cell(0, 0), 7u);
  EXPECT_EQ(Cell(1, 256), 7u);
}

TEST_F(MaterialMapTest, ASetCellIsSavedInItsPlace) {
  SetMaterial(15, 256, 1);
  SetMaterial(8, 0, 1);   // no data row: not in the file
  SetMaterial(8, -1, 0);  // outside the grid: nothing happens
  SetMaterial(8, 0, kGridCapacity);
  SetMaterial(0x80000003u, 255, 0);  // as a plug-in may leave it: the low byte of 2^31 - 3
  SetMaterial(static_cast<std::uint32_t>(-2), 254, 0);
  EXPECT_TRUE(SaveMaterialMap());
  std::string expected(256 * 256, '\0');
  expected[256] = 15;
  expected[1] = '\xFD';
  expected[2] = 2;
  EXPECT_TRUE(Get("materialmap.raw") == expected);
}

TEST_F(MaterialMapTest, AnImpossibleSizeIsNeitherReadNorWritten) {
  for (const int size : {0, -256, 2048}) {
    modConfig.MaterialSize = size;
    LoadMaterialMap();
    EXPECT_FALSE(SaveMaterialMap());
    EXPECT_EQ(Get("materialmap.raw"), "(none)") << size;
  }
}

}  // namespace
}  // namespace mw
