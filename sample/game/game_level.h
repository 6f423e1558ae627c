// A level as the stand-in game sees it: read from the level's archive, never changed.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "core/vector3.h"
#include "sample/grid.h"

namespace mw::sample {

struct ObjectOnGround {
  std::string name;
  Vector3 position;  // level coordinates
};

// One light of a lighting script.
struct Light {
  Vector3 direction;  // towards the light
  float intensity = 1;
};
struct Lighting {
  float precision = 1;
  std::vector<Light> lights;
};

struct GameLevel {
  std::string name;
  std::string archivePath;
  std::size_t memberCount = 0;
  // Values of the terrain script by command, as written.
  std::map<std::string, std::string, LessNoCase> terrain;
  std::optional<Grid> height;  // world units; nothing when the height map is missing or short
  std::vector<ObjectOnGround> objects;
  std::vector<std::string> gameModes;  // scripts of the level folder that start a game mode
  Lighting terrainLighting, objectLighting;
};

// The level of that name in the mod where it was saved last. Nothing, with the reason on standard
// error, when there is none or its archive cannot be read.
std::optional<GameLevel> LoadGameLevel(const std::filesystem::path& gameFolder,
                                       std::string_view name);

}  // namespace mw::sample
