#include "data/level_settings_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/script.h"

namespace mw {
namespace {

// Argument values.

std::int32_t Integer(Tokenizer& arguments) { return ParseInt(arguments.Next(kBlankOrSlash)); }

float Float(Tokenizer& arguments) { return ParseFloat(arguments.Next(kBlankOrSlash)); }

bool Switch(Tokenizer& arguments) { return Integer(arguments) != 0; }

std::uint8_t LowEightBits(std::int32_t value) { return static_cast<std::uint8_t>(value & 0xFF); }

std::uint8_t FloatAsByte(Tokenizer& arguments) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  const double value = std::clamp<double>(Float(arguments), kLowest, kHighest);
  return LowEightBits(static_cast<std::int32_t>(value));
}

std::array<std::uint8_t, 3> ThreeBytes(Tokenizer& arguments) {
  std::array<std::uint8_t, 3> values;
  for (std::uint8_t& value : values) value = LowEightBits(Integer(arguments));
  return values;
}

std::array<std::int32_t, 4> FourIntegers(Tokenizer& arguments) {
  std::array<std::int32_t, 4> values;
  for (std::int32_t& value : values) value = Integer(arguments);
  return values;
}

Floats2 TwoFloats(Tokenizer& arguments) {
  Floats2 values;
  for (float& value : values) value = Float(arguments);
  return values;
}

Floats3 ThreeFloats(Tokenizer& arguments) {
  const Vector3 vector = ParseFloats3(arguments, kBlankOrSlash);
  return {vector.x, vector.y, vector.z};
}

Floats3 VectorOf3(Tokenizer& arguments) {
  const Vector3 vector = ParseVector3(arguments, kBlankOrSlash);
  return {vector.x, vector.y, vector.z};
}

std::string Name(Tokenizer& arguments) {
  return std::string(arguments.Next(kBlankOrSlash).value_or(""));
}

std::string Path(Tokenizer& arguments) {
  return std::string(arguments.Next(kBlankOrLineEnd).value_or(""));
}

std::string TwoNames(Tokenizer& arguments) {
  std::string path = Name(arguments);
  if (const auto second = arguments.Next(kBlankOrSlash)) path.append("/").append(*second);
  return path;
}

// Values as text.

std::string Written(std::int32_t value) { return std::to_string(value); }

std::string Written(float value) {
  constexpr float kLimit = std::numeric_limits<float>::max();
  return FormatText("%f", std::isnan(value) ? 0.0 : std::clamp(value, -kLimit, kLimit));
}

template <typename T, std::size_t N>
std::string Joined(const std::array<T, N>& values, char separator) {
  std::string text;
  for (const T value : values) {
    if (!text.empty()) text += separator;
    text += Written(value);
  }
  return text;
}

template <typename T, std::size_t N>
std::string Written(const std::array<T, N>& vector) {
  return Joined(vector, '/');
}

std::string Written(const std::array<std::int32_t, 4>& area) { return Joined(area, ' '); }

// The text of a field, or nothing when the field has no room for all that was read of the line, the
// line's own argument (`whole`) is longer still, or there is none, and the field has not been
// changed since: the line is then better than what would replace it.
template <std::size_t N>
std::optional<std::string> WrittenText(const FixedString<N>& current, std::string_view read,
                                       std::string_view whole) {
  const FixedString<N> asRead = read;
  const bool readWhole = !asRead.empty() && asRead == read && read.size() >= whole.size();
  if (!readWhole && current == asRead.View()) return std::nullopt;
  return current.String();
}

std::string_view FirstArgument(const SettingsLine& line) {
  return Tokenizer(line.allArguments).Next(kBlankOrLineEnd).value_or("");
}

// Kinds of commands. A field is a member of ModConfig or a function that gives a part of it.

template <auto kField>
auto& Field() {
  return std::invoke(kField, modConfig);
}

template <auto kField, auto kParse>
constexpr SettingsCommand Value(std::string_view name) {
  return {
      name,
      [](SettingsLine line, const SettingsContext&) { Field<kField>() = kParse(line.arguments); },
      [](SettingsLine, SettingsContext&) { return std::optional(Written(Field<kField>())); }};
}

template <auto kField>
constexpr SettingsCommand WriteOnlyValue(std::string_view name) {
  return {name, nullptr,
          [](SettingsLine, SettingsContext&) { return std::optional(Written(Field<kField>())); }};
}

template <auto kField, auto kParse>
constexpr SettingsCommand Text(std::string_view name) {
  return {
      name,
      [](SettingsLine line, const SettingsContext&) { Field<kField>() = kParse(line.arguments); },
      [](SettingsLine line, SettingsContext&) {
        return WrittenText(Field<kField>(), kParse(line.arguments), FirstArgument(line));
      }};
}

std::int32_t& SkyHeight(ModConfig& config) { return config.currentSky.heightOffset; }
std::int32_t& SkyRotation(ModConfig& config) { return config.currentSky.rotationAngle; }
Floats3& SunDirection(ModConfig& config) { return config.currentSky.sunDirection; }

// The mesh of the sky: in other scripts the same command names other geometry.
void ReadSkyMesh(SettingsLine line, const SettingsContext& context) {
  if (context.skyScript) modConfig.currentSky.mesh = Name(line.arguments);
}

std::optional<std::string> WriteSkyMesh(SettingsLine line, SettingsContext& context) {
  if (!context.skyScript) return std::nullopt;
  return WrittenText(modConfig.currentSky.mesh, Name(line.arguments), FirstArgument(line));
}

// Teams, numbered from 1 in the scripts.

bool IsSide(std::int32_t team) { return team == 1 || team == 2; }

bool HasTeamEntry(std::int32_t index) {
  return index >= 0 && index < std::min(modConfig.teamCount, kMaxTeams);
}

// The entry of the team table that was chosen for a side, or null.
const Team* ChosenTeam(std::int32_t side) {
  if (!IsSide(side)) return nullptr;
  const std::int32_t index = modConfig.chosenTeam[side - 1];
  return HasTeamEntry(index) ? &modConfig.teams[index] : nullptr;
}

// A text of the team table, or nothing when the entry lacks it or has only the beginning of the one
// that the line goes on with.
std::optional<std::string> TeamText(const NameText& text, SettingsLine& line) {
  const std::string argument = Name(line.arguments);
  return text.empty() ? std::nullopt : WrittenText(text, argument, argument);
}

std::int32_t TakeCurrentTeam(SettingsLine& line, SettingsContext& context) {
  context.currentTeam = Integer(line.arguments);
  return context.currentTeam;
}

std::optional<std::string> WriteTeam(SettingsLine line, SettingsContext& context) {
  const std::int32_t team = TakeCurrentTeam(line, context);
  return IsSide(team) ? std::optional(Written(team)) : std::nullopt;
}

std::optional<std::string> WriteTeamTemplate(SettingsLine line, SettingsContext& context) {
  const Team* const team = ChosenTeam(context.currentTeam);
  return team ? TeamText(team->templateName, line) : std::nullopt;
}

void WarnOfUnknownSkin(const std::string& skin) {
  NoteAtLoad(FormatText("Team skin \"%s\" not available in config file \"%s\"", skin.c_str(),
                        modConfig.configurationName.c_str()));
}

void ReadTeamSkin(SettingsLine line, const SettingsContext&) {
  const std::int32_t side = Integer(line.arguments);
  const std::string name = Name(line.arguments);
  const NameText skin = name;  // cut as the table's texts are
  if (!IsSide(side) || skin.empty()) return;
  std::int32_t index = 0;
  while (HasTeamEntry(index) && !EqualNoCase(modConfig.teams[index].skin, skin)) ++index;
  if (!HasTeamEntry(index)) {
    WarnOfUnknownSkin(name);
    index = side - 1;
  }
  if (HasTeamEntry(index)) modConfig.chosenTeam[side - 1] = index;
}

std::optional<std::string> WriteTeamSkin(SettingsLine line, SettingsContext& context) {
  const std::int32_t side = TakeCurrentTeam(line, context);
  const Team* const team = ChosenTeam(side);
  const auto skin = team ? TeamText(team->skin, line) : std::nullopt;
  if (!skin) return std::nullopt;
  return Written(side) + " " + *skin;
}

std::optional<std::string> WriteTeamKit(SettingsLine line, SettingsContext& context) {
  const std::int32_t side = TakeCurrentTeam(line, context);
  const std::int32_t kit = Integer(line.arguments);
  const Team* const team = ChosenTeam(side);
  if (!team || kit < 0 || kit >= kMaxKits) return std::nullopt;
  const auto name = TeamText(team->kits[kit], line);
  if (!name) return std::nullopt;
  return Written(side) + " " + Written(kit) + " " + *name;
}

void ReadBeforeSpawnCamera(SettingsLine line, const SettingsContext&) {
  const std::int32_t side = Integer(line.arguments);
  if (IsSide(side)) modConfig.beforeSpawnCamera[side - 1] = ThreeFloats(line.arguments);
}

std::optional<std::string> WriteBeforeSpawnCamera(SettingsLine line, SettingsContext& context) {
  const std::int32_t side = TakeCurrentTeam(line, context);
  if (!IsSide(side)) return std::nullopt;
  return Written(side).append(" ").append(Written(modConfig.beforeSpawnCamera[side - 1]));
}

constexpr SettingsCommand kCommands[] = {
    {"GeometryTemplate.file", ReadSkyMesh, WriteSkyMesh},
    Value<SkyHeight, Integer>("sky.changeOfsSkyHeight"),
    Value<SkyRotation, Integer>("sky.setRotAngle"),
    Value<SunDirection, VectorOf3>("sky.sunLightDirectionVec"),
    Value<&ModConfig::VertexFogEnable, FloatAsByte>("renderer.vertexFogEnable"),
    Value<&ModConfig::fogStart, Integer>("renderer.fogstart"),
    Value<&ModConfig::fogEnd, Integer>("renderer.fogend"),
    Value<&ModConfig::FogColor, ThreeFloats>("renderer.fogColorVec"),
    Value<&ModConfig::WaterSpecularEnable, Switch>("water.specularEnable"),
    Text<&ModConfig::WaterTexLayer1, Path>("water.texLayer1"),
    Text<&ModConfig::WaterTexLayer2, Path>("water.texLayer2"),
    Text<&ModConfig::WaterNormalMap, Path>("water.normalMap"),
    Value<&ModConfig::WaterScrollDirectionNormalmap, TwoFloats>("water.scrollDirectionNormalmap"),
    Value<&ModConfig::WaterScrollDirection1, TwoFloats>("water.scrollDirection1"),
    Value<&ModConfig::WaterScrollDirection2, TwoFloats>("water.scrollDirection2"),
    Value<&ModConfig::WaterSpecularColor, VectorOf3>("water.specularColor"),
    Value<&ModConfig::WaterScrollLayer1, Float>("water.scrollLayer1"),
    Value<&ModConfig::WaterScrollLayer2, Float>("water.scrollLayer2"),
    Value<&ModConfig::WaterScrollNormalmap, Float>("water.scrollNormalmap"),
    Value<&ModConfig::WaterSpecularStreakFactor, Float>("water.specularStreakFactor"),
    Value<&ModConfig::WaterTileLayer1, Float>("water.tileLayer1"),
    Value<&ModConfig::WaterTileLayer2, Float>("water.tileLayer2"),
    Value<&ModConfig::WaterTileNormalMap, Float>("water.tileNormalmap"),
    Value<&ModConfig::WaterLightDirection, VectorOf3>("water.lightDirection"),
    Value<&ModConfig::WaterColor, VectorOf3>("water.color"),
    Value<&ModConfig::WaterDeepColor, VectorOf3>("water.deepColor"),
    Value<&ModConfig::WaterAlphaDepth, Float>("water.waterAlphaDepth"),
    Value<&ModConfig::WaterShallowAlpha, Float>("water.waterShallowAlpha"),
    Value<&ModConfig::GlobalAmbientColor, ThreeFloats>("renderer.globalAmbientColor"),
    Value<&ModConfig::AmbientColor, ThreeFloats>("renderer.ambientColor"),
    Value<&ModConfig::DiffuseColor, ThreeFloats>("renderer.diffuseColor"),
    Value<&ModConfig::SpecularColor, ThreeFloats>("renderer.specularColor"),
    Value<&ModConfig::ShadowColor, Float>("shadow.shadowColor"),
    Value<&ModConfig::terrainShadowAmbient, ThreeBytes>("Terrain.ShadowAmbient"),
    Value<&ModConfig::terrainShadowSamplingCull, Integer>("Terrain.ShadowSamplingCullY"),
    Text<&ModConfig::AlternativePath, TwoNames>("textureManager.alternativePath"),
    {"ObjectTemplate.team", nullptr, WriteTeam},
    {"ObjectTemplate.addTemplate", nullptr, WriteTeamTemplate},
    {"game.setTeamSkin", ReadTeamSkin, WriteTeamSkin},
    {"game.setKit", nullptr, WriteTeamKit},
    {"game.setBeforeSpawnCameraPosition", ReadBeforeSpawnCamera, WriteBeforeSpawnCamera},
    Value<&ModConfig::combatArea, FourIntegers>("game.setActiveCombatArea"),
    Value<&ModConfig::MaterialSize, Integer>("GeometryTemplate.materialSize"),
    Value<&ModConfig::WorldSize, Integer>("GeometryTemplate.worldSize"),
    WriteOnlyValue<&ModConfig::WorldSize>("Console.worldSize"),
    Value<&ModConfig::HeightScale, Float>("GeometryTemplate.yScale"),
    Value<&ModConfig::TexOffsetX, Integer>("GeometryTemplate.texOffsetX"),
    Value<&ModConfig::TexOffsetY, Integer>("GeometryTemplate.texOffsetY"),
    Value<&ModConfig::WaterLevel, Float>("GeometryTemplate.waterLevel"),
};

}  // namespace

std::optional<SettingsLine> SettingsLine::Of(std::string_view line) {
  const auto command = Tokenizer(line).Next(kBlankOrSlash);
  if (!command) return std::nullopt;
  Tokenizer firstPiece(line.substr(0, kSettingsLineBuffer - 1));
  firstPiece.Next(kBlankOrSlash);
  const auto commandEnd = static_cast<std::size_t>(command->end() - line.begin());
  return SettingsLine{*command, firstPiece, line.substr(std::min(commandEnd + 1, line.size()))};
}

const SettingsCommand* FindSettingsCommand(std::string_view name) {
  const auto* const found = std::ranges::find_if(kCommands, [name](const SettingsCommand& command) {
    return EqualNoCase(command.name, name);
  });
  return found == std::end(kCommands) ? nullptr : found;
}

}  // namespace mw
