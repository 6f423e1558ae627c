#include "data/mod_config_parser.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "core/text.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr std::string_view kSeparators = "=/";

void AddOnce(std::vector<std::string_view>& keys, std::string_view key) {
  if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
}

std::string Joined(const std::vector<std::string_view>& keys) {
  std::string text;
  for (const std::string_view key : keys) {
    if (!text.empty()) text += ", ";
    text += key;
  }
  return text;
}

// The next entry of a bounded table, or null when the table is full.
template <typename Entry, std::size_t N>
Entry* Append(std::array<Entry, N>& table, std::int32_t& count) {
  return count < static_cast<std::int32_t>(N) ? &table[static_cast<std::size_t>(count++)] : nullptr;
}

void ShowFormatError() { ShowPrompt("Error in format of cfg file", "Error"); }

class ModConfigParser {
 public:
  explicit ModConfigParser(ModConfig& config) : config_(config) {}

  // `continues`: the line is longer than the line buffer, the next call gets its rest.
  void ApplyLine(std::string_view line, bool continues);
  void SetCounts();
  void ReportIgnored(std::string_view fileName) const;

 private:
  // What a key sets: a field of the record, or what has a rule of its own.
  struct JoinedNames {
    PathText ModConfig::*field;
  };
  using OwnRule = void (ModConfigParser::*)();
  using Target =
      std::variant<PathText ModConfig::*, FixedString<128> ModConfig::*, std::int32_t ModConfig::*,
                   std::uint8_t ModConfig::*, bool ModConfig::*, float ModConfig::*,
                   Floats2 ModConfig::*, Floats3 ModConfig::*, JoinedNames, OwnRule>;
  struct KeyRule {
    std::string_view key;
    Target target;
  };
  static std::span<const KeyRule> KeyRules();

  std::optional<std::string_view> NextValue() { return tokens_.Next(kSeparators); }
  float NextFloat() { return ParseFloat(NextValue()); }

  // The next value into a text, which stays empty when there is none or when it does not fit whole.
  // False when there is none.
  template <std::size_t N>
  bool ReadText(FixedString<N>& text) {
    text.clear();
    const auto value = NextValue();
    if (!value) return false;
    const bool cutByBuffer = continues_ && value->end() == line_.end();
    if (cutByBuffer || !text.Assign(*value)) {
      text.clear();
      AddOnce(tooLong_, key_);
    }
    return true;
  }

  template <std::size_t N>
  void Set(FixedString<N> ModConfig::*field) {
    ReadText(config_.*field);
  }
  void Set(std::int32_t ModConfig::*field) { config_.*field = ParseInt(NextValue()); }
  void Set(std::uint8_t ModConfig::*field) {
    config_.*field = static_cast<std::uint8_t>(ParseInt(NextValue()));
  }
  void Set(bool ModConfig::*field) { config_.*field = ParseInt(NextValue()) == 1; }
  void Set(float ModConfig::*field) { config_.*field = NextFloat(); }
  template <std::size_t N>
  void Set(std::array<float, N> ModConfig::*field) {
    for (float& component : config_.*field) component = NextFloat();
  }
  void Set(JoinedNames names);
  void Set(OwnRule rule) { (this->*rule)(); }

  void SetMaterialSize();
  void StartTeam();
  void AddTeamKit();
  void StartSky();
  void SetSkyMesh();
  void SetSkyDefaults();
  void AddTheatre();

  ModConfig& config_;
  std::string_view line_, key_;
  bool continues_ = false;
  Tokenizer tokens_{{}};
  std::int32_t teamCount_ = 0, kitCount_ = 0, skyCount_ = 0;
  // Null before the first "Team" or "Sky", and after one that the table has no room for.
  Team* team_ = nullptr;
  Sky* sky_ = nullptr;
  std::vector<std::string_view> fullTables_, tooLong_;  // keys
  std::optional<std::int32_t> refusedSize_;
};

std::span<const ModConfigParser::KeyRule> ModConfigParser::KeyRules() {
  using C = ModConfig;
  using P = ModConfigParser;
  static const KeyRule kRules[] = {
      {"GamePath", &C::GamePath},
      {"ObjectsPath", &C::ObjectsPath},
      {"StandardMeshPath", &C::StandardMeshPath},
      {"TreeMeshPath", &C::TreeMeshPath},
      {"TexturePath", &C::TexturePath},
      {"ObjectsList", &C::ObjectsList},
      {"LevelName", &C::LevelName},
      {"MaterialSize", &P::SetMaterialSize},
      {"WorldSize", &C::WorldSize},
      {"HeightScale", &C::HeightScale},
      {"TexOffsetX", &C::TexOffsetX},
      {"TexOffsetY", &C::TexOffsetY},
      {"VertexFogEnable", &C::VertexFogEnable},
      {"FogColor", &C::FogColor},
      {"GlobalAmbientColor", &C::GlobalAmbientColor},
      {"AmbientColor", &C::AmbientColor},
      {"DiffuseColor", &C::DiffuseColor},
      {"SpecularColor", &C::SpecularColor},
      {"ShadowColor", &C::ShadowColor},
      {"WaterLevel", &C::WaterLevel},
      {"AlternativePath", &C::AlternativePath},
      {"Team", &P::StartTeam},
      {"TeamKit", &P::AddTeamKit},
      {"Sky", &P::StartSky},
      {"SkyMesh", &P::SetSkyMesh},
      {"SkyDefaults", &P::SetSkyDefaults},
      {"Theatre", &P::AddTheatre},
      {"WaterSpecularEnable", &C::WaterSpecularEnable},
      {"WaterTexLayer1", JoinedNames{&C::WaterTexLayer1}},
      {"WaterTexLayer2", JoinedNames{&C::WaterTexLayer2}},
      {"WaterNormalMap", JoinedNames{&C::WaterNormalMap}},
      {"WaterScrollDirectionNormalmap", &C::WaterScrollDirectionNormalmap},
      {"WaterScrollDirection1", &C::WaterScrollDirection1},
      {"WaterScrollDirection2", &C::WaterScrollDirection2},
      {"WaterSpecularColor", &C::WaterSpecularColor},
      {"WaterScrollLayer1", &C::WaterScrollLayer1},
      {"WaterScrollLayer2", &C::WaterScrollLayer2},
      {"WaterScrollNormalmap", &C::WaterScrollNormalmap},
      {"WaterSpecularStreakFactor", &C::WaterSpecularStreakFactor},
      {"WaterTileLayer1", &C::WaterTileLayer1},
      {"WaterTileLayer2", &C::WaterTileLayer2},
      {"WaterTileNormalMap", &C::WaterTileNormalMap},
      {"WaterLightDirection", &C::WaterLightDirection},
      {"WaterColor", &C::WaterColor},
      {"WaterShallowColor", &C::WaterColor},
      {"WaterDeepColor", &C::WaterDeepColor},
      {"WaterAlphaDepth", &C::WaterAlphaDepth},
      {"WaterShallowAlpha", &C::WaterShallowAlpha},
  };
  return kRules;
}

void ModConfigParser::ApplyLine(std::string_view line, bool continues) {
  line_ = line;
  continues_ = continues;
  tokens_ = Tokenizer(line);
  const auto key = NextValue();
  if (!key) return;
  for (const KeyRule& rule : KeyRules()) {
    if (rule.key != *key) continue;
    key_ = rule.key;
    std::visit([this](auto target) { Set(target); }, rule.target);
    return;
  }
}

// A value cannot hold `/`, so a path of folder and file arrives as two.
void ModConfigParser::Set(JoinedNames names) {
  PathText first, second;
  ReadText(first);
  if (ReadText(second)) {
    const bool whole = !first.empty() && !second.empty();
    config_.*names.field = whole ? first.String() + "/" + second.String() : std::string();
  } else {
    config_.*names.field = first;
  }
}

// No grid has room for a larger one.
void ModConfigParser::SetMaterialSize() {
  const std::int32_t size = ParseInt(NextValue());
  if (size >= 0 && size <= kMaxMaterialSize) {
    config_.MaterialSize = size;
  } else {
    refusedSize_ = size;
  }
}

void ModConfigParser::StartTeam() {
  team_ = Append(config_.teams, teamCount_);
  kitCount_ = 0;
  if (!team_) return AddOnce(fullTables_, key_);
  bool complete = true;
  for (NameText* text : {&team_->name, &team_->templateName, &team_->skin}) {
    complete = ReadText(*text) && complete;
  }
  if (!complete) ShowFormatError();
}

void ModConfigParser::AddTeamKit() {
  if (!team_) return;
  NameText* kit = Append(team_->kits, kitCount_);
  if (!kit) return AddOnce(fullTables_, key_);
  if (!ReadText(*kit)) ShowFormatError();
}

void ModConfigParser::StartSky() {
  sky_ = Append(config_.skies, skyCount_);
  if (!sky_) return AddOnce(fullTables_, key_);
  if (!ReadText(sky_->name)) ShowFormatError();
}

void ModConfigParser::SetSkyMesh() {
  if (sky_ && !ReadText(sky_->settings.mesh)) ShowFormatError();
}

void ModConfigParser::SetSkyDefaults() {
  if (!sky_) return;
  sky_->settings.heightOffset = ParseInt(NextValue());
  sky_->settings.rotationAngle = ParseInt(NextValue());
  for (float& component : sky_->settings.sunDirection) component = NextFloat();
}

void ModConfigParser::AddTheatre() {
  if (NameText* theatre = Append(config_.theatres, config_.theatreCount)) ReadText(*theatre);
}

void ModConfigParser::SetCounts() {
  config_.teamCount = teamCount_;
  config_.chosenTeam = {0, 1};
  config_.skyCount = skyCount_;
}

void ModConfigParser::ReportIgnored(std::string_view fileName) const {
  if (!fullTables_.empty()) {
    ShowPrompt("The file " + std::string(fileName) +
                   " has more entries than there is room for, the last ones are ignored: " +
                   Joined(fullTables_),
               "Warning");
  }
  if (!tooLong_.empty()) {
    ShowPrompt("The file " + std::string(fileName) +
                   " has values that are too long, they are left empty: " + Joined(tooLong_),
               "Warning");
  }
  if (refusedSize_) {
    ShowPrompt(FormatText("The file %s has a MaterialSize of %i. The editor has room for sizes up "
                          "to %i, the line is ignored.",
                          std::string(fileName).c_str(), *refusedSize_, kMaxMaterialSize),
               "Warning");
  }
}

}  // namespace

void ApplyModConfigText(std::string_view text, std::string_view fileName, ModConfig& config) {
  std::string plain(text);
  std::erase(plain, '\r');
  ModConfigParser parser(config);
  for (std::string_view rest = plain; !rest.empty();) {
    const std::string_view piece = rest.substr(0, kConfigLineBuffer - 1);
    const std::size_t lineFeed = piece.find('\n');
    const std::string_view line = piece.substr(0, lineFeed);
    rest.remove_prefix(std::min(rest.size(), line.size() + (lineFeed != piece.npos ? 1 : 0)));
    const bool continues = lineFeed == piece.npos && !rest.empty() && rest.front() != '\n';
    parser.ApplyLine(line.substr(0, line.find('\0')), continues);
  }
  parser.SetCounts();
  parser.ReportIgnored(fileName);
}

std::string GamePathIn(std::string_view text) {
  std::string plain(text), path;
  std::erase(plain, '\r');
  Tokenizer lines(plain);
  while (const auto line = lines.Next("\n")) {
    Tokenizer tokens(*line);
    if (tokens.Next(kSeparators) == "GamePath") path = tokens.Next(kSeparators).value_or("");
  }
  return path;
}

bool ParseModConfig(std::string_view modName, ModConfig& config) {
  config.configurationName = modName;
  config.modFolder = ModFolderOf(modName);
  config.levelsFolder = kLevelsFolder;
  config.teams.fill(Team{});
  config.theatres.fill(NameText{});
  config.theatreCount = 0;

  const std::string fileName = std::string(modName) + ".cfg";
  const auto bytes = ReadWholeFile(fileName);
  if (!bytes) {
    ShowPrompt("Can't load " + fileName, "Error");
    return false;
  }
  ApplyModConfigText({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, fileName,
                     config);
  return true;
}

}  // namespace mw
