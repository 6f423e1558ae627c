#include "data/mod_config.h"

#include <gtest/gtest.h>

#include "data/level_settings_commands.h"
#include "platform/disk.h"
#include "support/golden.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {
namespace {

std::string Repeated(const std::string& line, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += line + std::to_string(i) + "\n";
  return text;
}

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

TEST_F(ModConfigTest, EveryFileBecomesTheRecordAndItsFaultsAreSaid) {
  const std::pair<const char*, std::string> kFiles[] = {
      {"Every key reaches its field", GoldenText("data/every_key.cfg")},
      {"Keys are compared exactly and the later value wins",
       "WorldSize=1024\nworldsize=7\nWorldSize =8\nWorldSize=2048\nUnknown=1\n=\n/\n\n"},
      {"Leading separators are skipped, so a slashed key still counts", "//GamePath=x\n"},
      {"A missing value is empty or zero, and a switch is on at 1 alone",
       "TexturePath=\nTexOffsetX\nFogColor=0.5\nWaterNormalMap\nWaterTexLayer2=alone\n"
       "WaterTexLayer1=a/" +
           std::string(300, 'b') + "\nWaterSpecularEnable=2\n"},
      {"Kits belong to the team before them",
       "TeamKit=nobody's\nTeam=Red/redTeam/redSkin\nTeam=Blue/blueTeam/blueSkin\n"
       "TeamKit=Scout\nTeamKit=Medic\nTeam=Green/greenTeam/greenSkin\nTeamKit=Engineer\n"},
      {"Skies take the lines after them",
       "SkyMesh=nobody's\nSkyDefaults=9/9/9/9/9\nSky=Dawn\nSkyMesh=sky_dawn\n"
       "SkyDefaults=-20/90/0.5/-0.7/0.1\nSky=Noon\nSkyMesh=sky_noon\n"},
      {"A team or sky without its texts is reported line by line",
       "Team=Red/redTeam\nTeamKit=\nSky\nSkyMesh=\n"},
      {"The first eight theatres stay", Repeated("Theatre=", 10)},
      {"Full tables keep what they have and one message names their keys",
       "Team=a/b/c\n" + Repeated("TeamKit=kit", 10) + Repeated("Team=t/x/", 33) +
           "TeamKit=of a team that is not there\n" + Repeated("Sky=s", 33) + "SkyMesh=not there\n"},
      {"A text that does not fit stays empty and is named",
       "Theatre=" + std::string(32, 't') + "\nTheatre=" + std::string(31, 'u') + "\nGamePath=C:\\" +
           std::string(250, 'p') + "\nWorldSize=1024\n"},
      {"The largest size is 1024", "MaterialSize=1024\nMaterialSize=1025\n"},
      {"A size is no debt", "MaterialSize=0\nMaterialSize=-1\n"},
      {"Long lines arrive in pieces of 254 bytes",
       "Unknown=" + std::string(246, '/') + "WorldSize=1024\n" +  // the piece ends before the key
           "Unknown=" + std::string(247, 'x') + "MaterialSize=512\n" +
           "ObjectsList=" + std::string(242, 'y') + "\n"},
      {"Carriage returns never reach a value",
       "GamePath=C:\\Games\\\r\nObjectsList=" + std::string(242, 'y') + "\r\nTheatre=Desert\r"}};
  std::string told;
  for (const auto& [title, text] : kFiles) {
    scripted::script.answers.assign(4, PromptAnswer::Ok);
    ASSERT_TRUE(WriteWholeFile("test.cfg", text));
    ModConfig config;
    config.teams[31].name = "from the mod before";
    config.theatreCount = 3;
    EXPECT_TRUE(ParseModConfig("test", config));
    told += std::string(title) + "\n" + Told(config);
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
