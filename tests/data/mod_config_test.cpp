#include "data/mod_config.h"

#include <gmock/gmock.h>

#include "platform/disk.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::HasSubstr;

class ModConfigTest : public SandboxTest {
 protected:
  // Parses `text` as the mod "test" into `config`.
  void Parse(const std::string& text) {
    ASSERT_TRUE(WriteWholeFile("test.cfg", text));
    ASSERT_TRUE(ParseModConfig("test", config));
  }
  const scripted::Prompt& OnlyPrompt() {
    EXPECT_EQ(scripted::script.prompts.size(), 1u);
    static const scripted::Prompt none;
    return scripted::script.prompts.empty() ? none : scripted::script.prompts.front();
  }
  void AnswerPrompts(int count) {
    scripted::script.answers.assign(static_cast<std::size_t>(count), PromptAnswer::Ok);
  }

  ModConfig config;
};

std::string Repeated(const std::string& line, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += line + std::to_string(i) + "\n";
  return text;
}

TEST_F(ModConfigTest, ReadsEveryKindOfValue) {
  Parse(
      "// A comment\n"
      "GamePath=C:\\Games\\Varnhold\\\n"
      "MaterialSize=512\n"
      "HeightScale=0.6\n"
      "VertexFogEnable=257\n"
      "FogColor=0.5/0.25/1\n"
      "WaterSpecularEnable=1\n"
      "WaterTexLayer1=texture/water1\n"
      "WaterScrollDirection1=1/-2\n"
      "WaterShallowColor=0.1/0.2/0.3\n"
      "AlternativePath=texture\\winter");
  EXPECT_EQ(config.GamePath, "C:\\Games\\Varnhold\\");
  EXPECT_EQ(config.MaterialSize, 512);
  EXPECT_FLOAT_EQ(config.HeightScale, 0.6f);
  EXPECT_EQ(config.VertexFogEnable, 1) << "the low 8 bits";
  EXPECT_EQ(config.FogColor, (Floats3{0.5f, 0.25f, 1}));
  EXPECT_TRUE(config.WaterSpecularEnable);
  EXPECT_EQ(config.WaterTexLayer1, "texture/water1");
  EXPECT_EQ(config.WaterScrollDirection1, (Floats2{1, -2}));
  EXPECT_EQ(config.WaterColor, (Floats3{0.1f, 0.2f, 0.3f}));
  EXPECT_EQ(config.AlternativePath, "texture\\winter") << "the last line needs no line feed";
  EXPECT_EQ(config.modFolder, "Mods\\test\\");
  EXPECT_EQ(config.levelsFolder, "varnhold\\levels\\");
  EXPECT_EQ(config.configurationName, "test");
}

TEST_F(ModConfigTest, KeysAreComparedExactlyAndTheLaterValueWins) {
  Parse("WorldSize=1024\nworldsize=7\nWorldSize =8\nWorldSize=2048\nUnknown=1\n=\n/\n\n");
  EXPECT_EQ(config.WorldSize, 2048);
}

TEST_F(ModConfigTest, LeadingSeparatorsAreSkippedSoASlashedKeyStillCounts) {
  Parse("//GamePath=x\n");
  EXPECT_EQ(config.GamePath, "x");
}

TEST_F(ModConfigTest, AbsentKeysLeaveTheirFieldsAndMissingValuesAreEmptyOrZero) {
  config.WaterLevel = 3;
  config.TexturePath = "Mods\\a\\texture";
  config.TexOffsetX = 5;
  config.FogColor = {1, 1, 1};
  config.WaterNormalMap = "old";
  Parse("TexturePath=\nTexOffsetX\nFogColor=0.5\nWaterNormalMap\nWaterTexLayer2=alone\n");
  EXPECT_EQ(config.WaterLevel, 3);
  EXPECT_EQ(config.TexturePath, "");
  EXPECT_EQ(config.TexOffsetX, 0);
  EXPECT_EQ(config.FogColor, (Floats3{0.5f, 0, 0}));
  EXPECT_EQ(config.WaterNormalMap, "");
  EXPECT_EQ(config.WaterTexLayer2, "alone");
}

TEST_F(ModConfigTest, KitsBelongToTheTeamBeforeThem) {
  config.teams[2].name = "from the mod before";
  Parse(
      "TeamKit=nobody's\nTeam=Red/redTeam/redSkin\nTeam=Blue/blueTeam/blueSkin\n"
      "TeamKit=Scout\nTeamKit=Medic\nTeamKit=Engineer\n");
  EXPECT_EQ(config.teamCount, 2);
  EXPECT_EQ(config.teams[0].templateName, "redTeam");
  EXPECT_EQ(config.teams[0].kits[0], "");
  EXPECT_EQ(config.teams[1].skin, "blueSkin");
  EXPECT_EQ(config.teams[1].kits[2], "Engineer");
  EXPECT_EQ(config.teams[2].name, "");
  EXPECT_EQ(config.chosenTeam, (std::array<std::int32_t, 2>{0, 1}));
}

TEST_F(ModConfigTest, SkiesTakeTheLinesAfterThem) {
  Parse(
      "SkyMesh=nobody's\nSkyDefaults=9/9/9/9/9\nSky=Dawn\nSkyMesh=sky_dawn\n"
      "SkyDefaults=-20/90/0.5/-0.7/0.1\nSky=Noon\nSkyMesh=sky_noon\n");
  EXPECT_EQ(config.skyCount, 2);
  EXPECT_EQ(config.skies[0].settings.mesh, "sky_dawn");
  EXPECT_EQ(config.skies[0].settings.heightOffset, -20);
  EXPECT_EQ(config.skies[0].settings.rotationAngle, 90);
  EXPECT_EQ(config.skies[0].settings.sunDirection, (Floats3{0.5f, -0.7f, 0.1f}));
  EXPECT_EQ(config.skies[1].name, "Noon");
  EXPECT_EQ(config.skies[1].settings.heightOffset, 0);
}

TEST_F(ModConfigTest, ATeamOrSkyWithoutItsTextsIsReportedLineByLine) {
  AnswerPrompts(4);
  Parse("Team=Red/redTeam\nTeamKit=\nSky\nSkyMesh=\n");
  ASSERT_EQ(scripted::script.prompts.size(), 4u);
  for (const auto& prompt : scripted::script.prompts) {
    EXPECT_EQ(prompt.text, "Error in format of cfg file");
    EXPECT_EQ(prompt.caption, "Error");
  }
  EXPECT_EQ(config.teams[0].name, "Red");
  EXPECT_EQ(config.teams[0].skin, "");
}

TEST_F(ModConfigTest, TheFirstEightTheatresStay) {
  Parse(Repeated("Theatre=", 10));
  EXPECT_EQ(config.theatreCount, 8);
  EXPECT_EQ(config.theatres[7], "7");
}

TEST_F(ModConfigTest, FullTablesKeepWhatTheyHaveAndOneMessageNamesTheirKeys) {
  AnswerPrompts(1);
  Parse("Team=a/b/c\n" + Repeated("TeamKit=kit", 10) + Repeated("Team=t/x/", 40) +
        "TeamKit=of a team that is not there\n" + Repeated("Sky=s", 40) + "SkyMesh=not there\n");
  EXPECT_EQ(OnlyPrompt().caption, "Warning");
  EXPECT_THAT(OnlyPrompt().text, HasSubstr("test.cfg"));
  EXPECT_THAT(OnlyPrompt().text, HasSubstr("TeamKit, Team, Sky"));
  EXPECT_EQ(config.teamCount, kMaxTeams);
  EXPECT_EQ(config.teams[0].kits[7], "kit7");
  EXPECT_EQ(config.teams[31].skin, "30");
  EXPECT_EQ(config.teams[31].kits[0], "");
  EXPECT_EQ(config.skyCount, kMaxSkies);
  EXPECT_EQ(config.skies[31].settings.mesh, "");
}

TEST_F(ModConfigTest, ATextThatDoesNotFitStaysEmptyAndIsNamed) {
  AnswerPrompts(1);
  config.GamePath = "C:\\old\\";
  Parse("Theatre=" + std::string(32, 't') + "\nTheatre=" + std::string(31, 'u') +
        "\nGamePath=C:\\" + std::string(250, 'p') + "\nWorldSize=1024\n");
  EXPECT_THAT(OnlyPrompt().text, HasSubstr("Theatre, GamePath"));
  EXPECT_EQ(config.theatres[0], "");
  EXPECT_EQ(config.theatres[1], std::string(31, 'u'));
  EXPECT_EQ(config.GamePath, "") << "half a path is another path";
  EXPECT_EQ(config.WorldSize, 1024);
}

TEST_F(ModConfigTest, ASizeThatTheGridsHaveNoRoomForIsRefused) {
  for (const char* size : {"1025", "2147483647", "-1"}) {
    AnswerPrompts(1);
    Parse("MaterialSize=1024\nMaterialSize=" + std::string(size) + "\n");
    EXPECT_THAT(OnlyPrompt().text, HasSubstr(size));
    EXPECT_EQ(config.MaterialSize, 1024);
    scripted::script.prompts.clear();
  }
}

TEST_F(ModConfigTest, LongLinesArriveInPiecesOf254Bytes) {
  Parse("Unknown=" + std::string(246, '/') + "WorldSize=1024\n" +  // the piece ends before the key
        "Unknown=" + std::string(247, 'x') + "MaterialSize=512\n" +
        "ObjectsList=" + std::string(242, 'y') + "\n");
  EXPECT_EQ(config.WorldSize, 1024);
  EXPECT_EQ(config.MaterialSize, 0);
  EXPECT_EQ(config.ObjectsList, std::string(242, 'y')) << "254 bytes and a line feed fit";
}

TEST_F(ModConfigTest, CarriageReturnsNeverReachAValue) {
  Parse("GamePath=C:\\Games\\\r\nObjectsList=" + std::string(242, 'y') + "\r\nTheatre=Desert\r");
  EXPECT_EQ(config.GamePath, "C:\\Games\\");
  EXPECT_EQ(config.ObjectsList.size(), 242u);
  EXPECT_EQ(config.theatres[0], "Desert");
}

TEST_F(ModConfigTest, AMissingFileIsReportedByItsName) {
  AnswerPrompts(1);
  config.WorldSize = 4096;
  EXPECT_FALSE(ParseModConfig("gone", config));
  EXPECT_EQ(OnlyPrompt().text, "Can't load gone.cfg");
  EXPECT_EQ(OnlyPrompt().caption, "Error");
  EXPECT_EQ(config.WorldSize, 4096);
}

}  // namespace
}  // namespace mw
