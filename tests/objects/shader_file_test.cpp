#include "objects/shader_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Parsed {
  std::vector<ShaderMaterial> materials;
  bool sound = false;
};

Parsed Parse(std::string_view text) {
  Parsed parsed;
  parsed.sound = ParseShaderFile(
      text, [&](const ShaderMaterial& material) { parsed.materials.push_back(material); });
  return parsed;
}

// One block with these lines, which must be sound.
ShaderMaterial Material(std::string_view lines) {
  const Parsed parsed = Parse("subshader \"m\" \"x\"\n{\n" + std::string(lines) + "}\n");
  EXPECT_TRUE(parsed.sound);
  return parsed.materials.size() == 1 ? parsed.materials[0] : ShaderMaterial{};
}

TEST(ShaderFile, EachBlockIsAMaterial) {
  const Parsed parsed = Parse(
      "subshader \"brick\" \"StandardMesh/Default\"\r\n{\r\n\tlighting true;\r\n"
      "\ttexture \"texture/brick\";\r\n}\r\n\r\nsubshader \"Old glass\" \"x\"\n{\n"
      "\ttransparent true;\n\ttwosided TRUE;\n\ttextureFade true;\n\ttexture \"glass\";\n}");
  EXPECT_TRUE(parsed.sound);
  ASSERT_EQ(parsed.materials.size(), 2u);
  EXPECT_EQ(parsed.materials[0].name, "brick");
  EXPECT_THAT(parsed.materials[0].textures, ElementsAre("texture/brick"));
  EXPECT_FALSE(parsed.materials[0].transparent || parsed.materials[0].twoSided);
  EXPECT_EQ(parsed.materials[1].name, "Old glass");
  EXPECT_THAT(parsed.materials[1].textures, ElementsAre("glass"));
  EXPECT_TRUE(parsed.materials[1].transparent && parsed.materials[1].twoSided &&
              parsed.materials[1].textureFade);
}

TEST(ShaderFile, FlagNamesAfterTransparentComeInAnyCase) {
  EXPECT_TRUE(Material("\tTwoSided True;\n").twoSided);
  EXPECT_TRUE(Material("\tTEXTUREFADE true;\n").textureFade);
  EXPECT_FALSE(Material("\tTransparent true;\n").transparent);
}

TEST(ShaderFile, AFlagIsWhatStandsBetweenTheFirstBlankAndTheFirstSemicolon) {
  EXPECT_TRUE(Material("transparent true; // false\n").transparent);
  EXPECT_FALSE(Material("transparent  true;\n").transparent);
  EXPECT_FALSE(Material("transparent; true\n").transparent);
}

TEST(ShaderFile, AMalformedLineEndsTheReading) {
  for (const char* line : {"texture brick;", "texture \"brick;", "transparent true", "transparent;",
                           "twosided;", "textureFade true"}) {
    const Parsed parsed =
        Parse("subshader \"a\" \"x\"\n}\nsubshader \"b\" \"x\"\n" + std::string(line) + "\n}\n");
    EXPECT_FALSE(parsed.sound) << line;
    EXPECT_EQ(parsed.materials.size(), 1u) << line;
  }
}

TEST(ShaderFile, OnlyTheBeginningOfALineStartsOrEndsABlock) {
  const Parsed parsed = Parse("  subshader \"a\" \"x\"\nSubshader \"a\" \"x\"\n }\n");
  EXPECT_TRUE(parsed.sound);
  EXPECT_THAT(parsed.materials, IsEmpty());
}

TEST(ShaderFile, ALongLineIsReadInPiecesOf255Characters) {
  const std::string comment(255, '-');
  EXPECT_TRUE(Material(comment + "transparent true;\n").transparent);
  EXPECT_FALSE(Material(comment.substr(1) + "transparent true;\n").transparent)
      << "the piece that begins with \"ransparent\"";
}

}  // namespace
}  // namespace mw
