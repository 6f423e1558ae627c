// What the scripts of levels that this project makes have in common: those of a new level and those
// of the sample's.
#pragma once

#include <string>
#include <string_view>

namespace mw {

// Of Init.con: the flags, teams and kits.
extern const std::string_view kFlagsTeamsAndKits;

struct WaterLook {
  int texture1 = 0, texture2 = 0;                  // numbers of the game's pictures
  std::string tileLayer2;                          // how often the second one repeats
  std::string lightDirection, colour, deepColour;  // "x/y/z"
  int alphaDepth = 0;                              // world units
};
// Of Init.con: the water; ends with an empty line.
std::string LevelWaterText(const WaterLook& look);

// Of Init/Terrain.con: the ground's files, sizes and heights, as texts in world units.
std::string LevelGroundText(const std::string& level, int samples, int worldSize,
                            const std::string& heightScale, const std::string& waterLevel);
// The same: the shadows on it.
extern const std::string_view kShadowsOnGround;

// Of Init/SkyAndSun.con: the sun, and then the sky with its clouds. Angle in degrees.
extern const std::string_view kSun;
std::string LevelSkyText(const std::string& mesh, int height, int angle,
                         const std::string& sunDirection);

// All of Menu/Init.con.
std::string LevelMenuText(const std::string& mod);

}  // namespace mw
