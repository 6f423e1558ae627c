// What tools, roads, materials and imported samples make of flat ground: the stories in
// tests/golden/terrain/stories.
#include "app/story.h"
#include "core/game_random.h"
#include "data/load_report.h"
#include "support/archive_bytes.h"
#include "support/test.h"
#include "terrain/brush_stroke.h"
#include "terrain/flat_ground.h"
#include "terrain/height_exchange.h"
#include "terrain/material_generation.h"
#include "terrain/material_mapper.h"
#include "terrain/point_selection.h"
#include "terrain/random_terrain.h"
#include "terrain/roads.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

// A plug-in for material maps that answers with the values it was given, in the first cells.
void Echo(std::int32_t size, std::uint32_t* materials, const MapwrightVertex* vertices, float water,
          float scale) {
  std::uint32_t* row = materials + kGridCapacity;
  row[0] = static_cast<std::uint32_t>(size);
  row[1] = static_cast<std::uint32_t>(vertices[3 * kGridCapacity + 7].h);
  row[2] = static_cast<std::uint32_t>(water);
  row[3] = static_cast<std::uint32_t>(scale * 10);
}
bool Accept() { return true; }
bool Decline() { return false; }

class GroundStory : public FlatGround<StoryTest>, public testing::WithParamInterface<std::string> {
 protected:
  static constexpr std::size_t kSamples = std::size_t{kSide} * kSide;

  static void PickAt(float x, float z) { terrain.pick = {x, 0, z, false}; }
  // The user's choice in the dialog that asks for a number of bits; none: cancelled.
  AskSampleBits Choose(const Words& words) {
    return [this, words](const char* title) -> std::optional<SampleBits> {
      Tell("asked  " + std::string(title));
      if (words.empty()) return std::nullopt;
      return SampleBits{std::stoi(words[0])};
    };
  }
  // Samples at both ends of the file and of its first rows.
  void ShowSamples() {
    const Bytes file = ReadBytes("heightmap.raw");
    const std::size_t width = file.size() / kSamples;
    for (const std::size_t sample :
         {std::size_t{0}, std::size_t{1}, std::size_t{256}, kSamples - 1}) {
      std::string text = FormatText("sample %zu:", sample);
      for (std::size_t at = 0; at < width; ++at)
        text += FormatText(" %02X", file[sample * width + at]);
      Tell(text);
    }
  }
  static std::string RoadPoints() {
    std::string text = FormatText("%i points\n", terrain.roadPointCount);
    for (int k = 0; k < terrain.roadPointCount; ++k) {
      const auto& [x, h, z] = terrain.roadPoints[static_cast<std::size_t>(k)];
      text += FormatText("point at %g, %g, height %g\n", x, z, h);
    }
    return text;
  }
  static std::string Tools() {
    const SelectionBox& box = terrain.selectionBox;
    return FormatText("flatten to %g (%i), the brush at %.0f, %g, %.0f%s\n", terrain.flattenHeight,
                      terrain.flattenSampled, terrain.pick.x, terrain.pick.y, terrain.pick.z,
                      terrain.pick.missed ? ", missed" : "") +
           FormatText("selected in rows %i-%i, columns %i-%i\n", box.SelMinRow, box.SelMaxRow,
                      box.SelMinCol, box.SelMaxCol) +
           FormatText("material %u, brush %u, pick at %.0f, %.0f%s\n",
                      materialMapper->currentMaterial, materialMapper->brushSize,
                      materialMapper->pick.x, materialMapper->pick.z,
                      materialMapper->pickMissed ? ", missed" : "");
  }
  // What an edit said to the rest of the program, and where the ground is not flat and default.
  void Show(const Words& what) {
    std::string text = Told();
    for (const std::string& name : what) {
      if (name == "heights") text += "heights\n" + Heights();
      if (name == "materials") text += "materials\n" + Materials();
      if (name == "weights")
        text += "weights\n" + ListGround(0, [](int i, int j) { return terrain.grid[i][j].weight; });
      if (name == "points")
        text +=
            "points\n" + ListGround(0, [](int i, int j) { return terrain.grid[i][j].selected; });
      if (name == "road") text += RoadPoints();
      if (name == "tools") text += Tools();
      if (name == "water") text += FormatText("water at %g\n", modConfig.WaterLevel);
    }
    text.pop_back();
    Tell(text);
  }
  // Whether the damaged parts of the level may be written again, being replaced.
  void ShowDamage() {
    TellAnswer(MayWrite(LevelPart::HeightMap));
    TellAnswer(MayWrite(LevelPart::MaterialMap));
    ClearLoadReport();
  }
  // The dialog's numbers; none: cancelled.
  void MakeRandomTerrain(const Words& words) {
    hooks.seatObjectsOnGround = [this] {
      Tell(Heights().empty() ? "objects stay on flat ground"
                             : "objects are seated on the new ground");
    };
    TellAnswer(
        RandomTerrain(words[0] == "existing", [&]() -> std::optional<RandomTerrainParameters> {
          Tell("asked  for the terrain");
          if (words.size() < 4) return std::nullopt;
          return RandomTerrainParameters{std::stoi(words[1]), std::stoi(words[2]),
                                         std::stoi(words[3])};
        }));
  }
  void RunMaterialPlugin(const Words& words) {
    const unsigned edits = materialMapper->edits;
    const auto init = words[0] == "accepts" ? Accept : words[0] == "declines" ? Decline : nullptr;
    GenerateMaterialMap({init, words[1] == "echoes" ? Echo : nullptr});
    if (materialMapper->edits != edits) Tell("  the view shows it");
  }
  void FinishRoad(bool confirmed) {
    FinishRoadPoints([&] {
      Tell("asked  about the road");
      terrain.roadWidth = 2;
      return confirmed;
    });
  }
};

const std::map<std::string, TerrainTool> kTools = {{"points", TerrainTool::PointManipulation},
                                                   {"carve", TerrainTool::Carving},
                                                   {"raise", TerrainTool::Raising},
                                                   {"smooth", TerrainTool::Smoothing},
                                                   {"flatten", TerrainTool::Flatten},
                                                   {"road", TerrainTool::Road}};

using Words = std::vector<std::string>;

int Int(const Words& words, std::size_t at) { return std::stoi(words.at(at)); }
float Float(const Words& words, std::size_t at) { return std::stof(words.at(at)); }

// From the place to the place that the words begin with, or at the only one.
BrushWay Way(const Words& words) {
  if (words.size() < 4) return BrushWay::At(Float(words, 0), Float(words, 1));
  return {Float(words, 0), Float(words, 1), Float(words, 2), Float(words, 3)};
}

TEST_P(GroundStory, GoesAsItIsTold) {
  namespace fs = std::filesystem;
  materialMapper->materialCellSize = terrain.cellSize;  // as a frame finds
  SeedGameRandom(1);
  ActOut(GetParam(),
         {{"show", [&](const Words& w) { Show(w); }},
          {"new",
           [&](const Words&) {
             StartFlat();
             camera.frustum[0] = {0, 0, 0, 1};
           }},
          {"height", [](const Words& w) { Height(Int(w, 0), Int(w, 1)) = Float(w, 2); }},
          {"ridge",
           [](const Words&) {
             for (int i = 90; i < 150; ++i) Height(i, i / 2) = 150;
           }},
          {"rows", [](const Words& w) { terrain.viewSquare.ViewRowEnd = Int(w, 0); }},
          {"columns", [](const Words& w) { terrain.viewSquare.ViewColEnd = Int(w, 0); }},
          {"sight",
           [](const Words& w) {
             camera.frustum[0] = {0, 0, 1, -Float(w, 0)};
           }},
          {"look", [](const Words& w) { LookDownOn(Float(w, 0), Float(w, 1)); }},
          {"pitch", [](const Words& w) { camera.pitch = Float(w, 0); }},
          // The tools, by the place on the ground.
          {"tool", [](const Words& w) { SelectTool(kTools.at(w.at(0))); }},
          {"brush", [](const Words& w) { SetBrushSize(Int(w, 0)); }},
          {"edge", [](const Words& w) { SetBrushEdge(static_cast<BrushEdge>(Int(w, 0))); }},
          {"flattento",
           [](const Words& w) {
             terrain.flattenSampled = 1;
             terrain.flattenHeight = Float(w, 0);
           }},
          {"ctrl", [](const Words&) { editor.ctrlHeld = true; }},
          {"sample",
           [](const Words& w) {
             PickAt(Float(w, 0), Float(w, 1));
             UpdateFlattenBrush();
           }},
          {"stroke",
           [](const Words& w) {
             BrushAlong(Way({w.begin(), w.end() - 1}), std::stof(w.back()));
           }},
          {"at", [](const Words& w) { PickAt(Float(w, 0), Float(w, 1)); }},
          {"miss", [](const Words&) { terrain.pick.missed = true; }},
          {"press", [](const Words& w) { PressBrush(static_cast<std::uint32_t>(Int(w, 0))); }},
          {"move", [](const Words&) { MoveBrush(); }},
          {"hold", [](const Words& w) { HoldBrush(static_cast<std::uint32_t>(Int(w, 0))); }},
          {"release", [](const Words& w) { ReleaseBrush(static_cast<std::uint32_t>(Int(w, 0))); }},
          // Points, by their place in the grid or under a pixel.
          {"select",
           [](const Words& w) {
             terrain.grid[Int(w, 0)][Int(w, 1)].selected = 1;
             GrowSelectionBox(Int(w, 0), Int(w, 1));
             ComputeSmoothingWeights();
           }},
          {"range", [](const Words& w) { SetSmoothingRange(Int(w, 0)); }},
          {"autosmoothing", [](const Words&) { ToggleAutoSmoothing(); }},
          {"moveby", [](const Words& w) { MoveSelection(Float(w, 0)); }},
          {"toggle", [](const Words& w) { ToggleVertexUnderCursor(Int(w, 0), Int(w, 1)); }},
          {"start", [](const Words& w) { StartSelecting(Int(w, 0), Int(w, 1)); }},
          {"on", [](const Words& w) { SelectOnTheWayTo(Int(w, 0), Int(w, 1)); }},
          {"rectangle",
           [](const Words& w) { SelectRectangle(Int(w, 0), Int(w, 1), Int(w, 2), Int(w, 3)); }},
          {"pick", [](const Words& w) { PickUnderCursor(Int(w, 0), Int(w, 1)); }},
          // Roads.
          {"roadpoint", [](const Words& w) { AddRoadPointAt(Float(w, 0), Float(w, 1)); }},
          {"road",
           [](const Words& w) {
             terrain.roadWidth = Int(w, 0);
             terrain.roadMaterial = Int(w, 1);
             terrain.roadAutoMaterial = w.size() < 3;
             CreateRoad();
           }},
          {"finish", [&](const Words& w) { FinishRoad(w.at(0) == "OK"); }},
          // Materials.
          {"material", [](const Words& w) { SetCurrentMaterial(Int(w, 0)); }},
          {"materialbrush", [](const Words& w) { SetMaterialBrushSize(Int(w, 0)); }},
          {"paint", [](const Words& w) { PaintAlong(Way(w)); }},
          {"materialpick", [](const Words& w) { PickMaterialPoint(Int(w, 0), Int(w, 1)); }},
          {"startpainting", [](const Words&) { StartPainting(); }},
          {"stoppainting", [](const Words&) { StopPainting(); }},
          {"lift", [](const Words&) { LiftMaterialBrush(); }},
          {"fill", [](const Words&) { FillWithMaterial(); }},
          {"plugin", [&](const Words& w) { RunMaterialPlugin(w); }},
          {"byheight", [](const Words&) { AssignMaterialsByHeight(); }},
          {"random", [&](const Words& w) { MakeRandomTerrain(w); }},
          {"water",
           [](const Words& w) {
             modConfig.WaterLevel = Float(w, 0);
             editor.levelHasWater = w.size() > 1;
           }},
          {"size", [](const Words& w) { modConfig.MaterialSize = Int(w, 0); }},
          // Samples.
          {"export", [&](const Words& w) { ExportHeightmap(Choose(w)); }},
          {"import", [&](const Words& w) { ImportHeightmap(Choose(w)); }},
          {"samples", [&](const Words&) { ShowSamples(); }},
          {"byte",
           [](const Words& w) {
             Bytes file = ReadBytes("heightmap.raw");
             file.at(static_cast<std::size_t>(Int(w, 0))) = static_cast<std::uint8_t>(Int(w, 1));
             WriteBytes("heightmap.raw", file);
           }},
          {"damage",
           [](const Words&) {
             BeginLoadReport();
             NoteDamagedPart(LevelPart::HeightMap, "cut off");
             NoteDamagedPart(LevelPart::MaterialMap, "cut off");
           }},
          {"writable", [&](const Words&) { ShowDamage(); }},
          {"folder", [](const Words& w) { fs::create_directories(w.at(0)); }},
          {"remove", [](const Words& w) { fs::remove_all(w.at(0)); }},
          {"files",
           [&](const Words&) {
             for (const auto& file : fs::directory_iterator(folder))
               Tell("  " + file.path().filename().string());
           }},
          {"resize", [](const Words& w) {
             if (!fs::exists(w.at(0))) WriteBytes(w.at(0), {});
             fs::resize_file(w.at(0), std::stoull(w.at(1)));
           }}});
}

INSTANTIATE_TEST_SUITE_P(All, GroundStory, testing::ValuesIn(GoldenFiles("terrain/stories")));

}  // namespace
}  // namespace mw
