#include "sample/game/game_level.h"

#include <cstdint>
#include <cstdio>

#include "data/archive.h"
#include "data/script.h"
#include "platform/disk.h"

namespace mw::sample {
namespace {

constexpr float kStoredPerUnit = 256;  // steps of the height map per height unit
constexpr const char* kModeScripts[] = {"Conquest", "Ctf", "tdm", "Coop"};

using TextLines = std::vector<std::string>;

class LevelReader {
 public:
  LevelReader(Archive& archive, std::string_view level)
      : archive_(archive), folder_("varnhold/levels/" + std::string(level) + "/") {}

  bool Holds(const std::string& file) const { return archive_.Find(folder_ + file) != nullptr; }
  std::vector<std::uint8_t> Bytes(const std::string& file) const {
    return archive_.ReadMember(folder_ + file).value_or(std::vector<std::uint8_t>{});
  }
  TextLines Lines(const std::string& file) const {
    const std::vector<std::uint8_t> bytes = Bytes(file);
    const std::string text(bytes.begin(), bytes.end());
    TextLines lines;
    Tokenizer tokens(text);
    while (const auto line = tokens.Next("\r\n")) lines.emplace_back(*line);
    return lines;
  }

 private:
  Archive& archive_;
  std::string folder_;
};

std::optional<std::filesystem::path> FindArchive(const std::filesystem::path& gameFolder,
                                                 std::string_view name) {
  std::optional<std::filesystem::path> newest;
  std::filesystem::file_time_type newestTime;
  std::error_code error;
  for (const auto& mod : std::filesystem::directory_iterator(gameFolder / "Mods", error)) {
    const auto path = NativePath(
        (mod.path() / "Archives/varnhold/levels" / (std::string(name) + ".vra")).string());
    const auto time = std::filesystem::last_write_time(path, error);
    if (error || (newest && time <= newestTime)) continue;
    newest = path;
    newestTime = time;
  }
  return newest;
}

void ReadTerrain(const LevelReader& reader, GameLevel& level) {
  for (const std::string& line : reader.Lines("Init/Terrain.con")) {
    Tokenizer words(line);
    const auto command = words.Next(" ");
    const auto value = words.Next(" ");
    if (command && value) level.terrain[std::string(*command)] = *value;
  }
}

void ReadHeights(const LevelReader& reader, GameLevel& level) {
  const int side = ParseInt(level.terrain["GeometryTemplate.materialSize"]);
  const float scale = ParseFloat(level.terrain["GeometryTemplate.yScale"]);
  if (side != 256 && side != 512 && side != 1024) return;
  const std::vector<std::uint8_t> samples = reader.Bytes("heightmap.raw");
  if (samples.size() < static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 2) return;
  Grid height(side);
  std::size_t offset = 0;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column, offset += 2) {
      const int stored = samples[offset] + 256 * samples[offset + 1];
      height.At(column, row) = static_cast<float>(stored) / kStoredPerUnit * scale;
    }
  }
  level.height = std::move(height);
}

void ReadObjects(const LevelReader& reader, GameLevel& level) {
  for (const std::string& line : reader.Lines("StaticObjects.con")) {
    Tokenizer words(line);
    const auto command = words.Next(kBlankOrSlash);
    if (!command) continue;
    if (EqualNoCase(*command, "Object.create")) {
      level.objects.push_back({std::string(words.Next(" ").value_or("")), {}});
    } else if (EqualNoCase(*command, "Object.absolutePosition") && !level.objects.empty()) {
      level.objects.back().position = ParseVector3(words, kBlankOrSlash);
    }
  }
}

Lighting ReadLighting(const LevelReader& reader, const std::string& file) {
  Lighting lighting;
  for (const std::string& line : reader.Lines(file)) {
    Tokenizer words(line);
    const auto command = words.Next(" ");
    if (!command) continue;
    if (EqualNoCase(*command, "GeometryTemplate.shadowPrecision")) {
      lighting.precision = ParseFloat(words.Next(" "));
    } else if (EqualNoCase(*command, "raytracer.light.create")) {
      lighting.lights.emplace_back();
    } else if (lighting.lights.empty()) {
      continue;
    } else if (EqualNoCase(*command, "raytracer.light.direction")) {
      Vector3& direction = lighting.lights.back().direction;
      direction = ParseVector3(words, kBlankOrSlash);
      direction.Normalise();
    } else if (EqualNoCase(*command, "raytracer.light.intensity")) {
      lighting.lights.back().intensity = ParseFloat(words.Next(" "));
    }
  }
  return lighting;
}

}  // namespace

std::optional<GameLevel> LoadGameLevel(const std::filesystem::path& gameFolder,
                                       std::string_view name) {
  const auto path = FindArchive(gameFolder, name);
  Archive archive;
  if (!path || !archive.Open(path->string(), false)) {
    std::fprintf(stderr, "The level %s cannot be opened. %s\n", std::string(name).c_str(),
                 archive.Error().c_str());
    return std::nullopt;
  }
  const LevelReader reader(archive, name);
  GameLevel level;
  level.name = name;
  level.archivePath = path->string();
  level.memberCount = archive.Entries().size();
  ReadTerrain(reader, level);
  ReadHeights(reader, level);
  ReadObjects(reader, level);
  for (const char* const mode : kModeScripts) {
    if (reader.Holds(std::string(mode) + ".con")) level.gameModes.emplace_back(mode);
  }
  level.terrainLighting = ReadLighting(reader, "terrainLightmap.con");
  level.objectLighting = ReadLighting(reader, "objectsLightmap.con");
  return level;
}

}  // namespace mw::sample
