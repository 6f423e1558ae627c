#include "data/mod_config.h"

#include <gtest/gtest.h>

#include "data/level_settings_commands.h"
#include "platform/disk.h"
#include "support/golden.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {
namespace {

// Every field of the record that is not what it is in a new one, a line each.
std::string Told(const ModConfig& config) {
  const ModConfig fresh;
  std::string text;
  const auto tell = [&text](std::string_view name, const std::string& value,
                            const std::string& before) {
    if (value != before) text.append("  ").append(name).append(": ").append(value).append("\n");
  };
  const std::pair<const char*, PathText ModConfig::*> kPaths[] = {
      {"configuration", &ModConfig::configurationName},
      {"mod folder", &ModConfig::modFolder},
      {"levels folder", &ModConfig::levelsFolder},
      {"level", &ModConfig::LevelName},
      {"game", &ModConfig::GamePath},
      {"objects", &ModConfig::ObjectsPath},
      {"meshes", &ModConfig::StandardMeshPath},
      {"trees", &ModConfig::TreeMeshPath},
      {"textures", &ModConfig::TexturePath},
      {"list", &ModConfig::ObjectsList}};
  for (const auto& [name, path] : kPaths) tell(name, (config.*path).String(), "");
  tell("samples", std::to_string(config.MaterialSize), "0");
  tell("world", std::to_string(config.WorldSize), "0");
  for (const SettingsCommand& command : SettingsCommands()) {
    if (command.value) tell(command.name, command.value(config), command.value(fresh));
  }
  for (int i = 0; i < config.theatreCount; ++i) tell("theatre", config.theatres[i].String(), "-");
  for (int i = 0; i < kMaxTeams; ++i) {
    const Team& team = config.teams[i];
    std::string all =
        team.name.String() + "/" + team.templateName.String() + "/" + team.skin.String();
    for (const NameText& kit : team.kits) all += kit.empty() ? "" : " " + kit.String();
    tell(i < config.teamCount ? "team" : "team beyond the count", all, "//");
  }
  for (int i = 0; i < config.skyCount; ++i) {
    const SkySettings& sky = config.skies[i].settings;
    tell("sky",
         config.skies[i].name.String() + " " + sky.mesh.String() +
             FormatText(" %i %i %g %g %g", sky.heightOffset, sky.rotationAngle, sky.sunDirection[0],
                        sky.sunDirection[1], sky.sunDirection[2]),
         "");
  }
  tell("chosen", std::to_string(config.chosenTeam[0]) + std::to_string(config.chosenTeam[1]), "01");
  return text;
}

struct ModConfigTest : SandboxTest {};

// The files in tests/golden/data/configs are named after what they show.
TEST_F(ModConfigTest, EveryFileBecomesTheRecordAndItsFaultsAreSaid) {
  std::string told;
  for (const std::string& name : GoldenFiles("data/configs")) {
    scripted::script.answers.assign(4, PromptAnswer::Ok);
    ASSERT_TRUE(WriteWholeFile("test.cfg", GoldenText(name)));
    ModConfig config;
    config.teams[31].name = "from the mod before";
    config.theatreCount = 3;
    EXPECT_TRUE(ParseModConfig("test", config));
    told += name + "\n" + Told(config);
    for (const std::string& prompt : TakePrompts()) told += "! " + prompt + "\n";
  }
  ExpectGolden("data/mod_config.txt", told);
}

TEST_F(ModConfigTest, AbsentKeysLeaveTheirFieldsAndAMissingFileIsNamed) {
  ModConfig config;
  config.WaterLevel = 3;
  config.GamePath = "C:\\old\\";
  config.WaterNormalMap = "old";
  ASSERT_TRUE(WriteWholeFile("test.cfg", "WaterNormalMap\n"));
  ASSERT_TRUE(ParseModConfig("test", config));
  EXPECT_EQ(
      Told(config),
      "  configuration: test\n  mod folder: Mods\\test\\\n  levels folder: varnhold\\levels\\\n"
      "  game: C:\\old\\\n  GeometryTemplate.waterLevel: 3.000000\n");
  Answer({PromptAnswer::Ok});
  EXPECT_FALSE(ParseModConfig("gone", config));
  ExpectPrompts({"Error: Can't load gone.cfg"});
  EXPECT_EQ(config.WaterLevel, 3);
}

}  // namespace
}  // namespace mw
