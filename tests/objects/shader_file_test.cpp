#include "objects/shader_file.h"

#include <gtest/gtest.h>

namespace mw {
namespace {

// What a file gives: each material with its textures and flags, and at the end "malformed".
std::string ToldShaders(const std::string& text) {
  std::string told;
  const bool sound = ParseShaderFile(text, [&told](const ShaderMaterial& material) {
    told += material.name;
    for (const std::string& texture : material.textures) told += " shows " + texture;
    told += material.transparent ? " transparent" : "";
    told += material.twoSided ? " twosided" : "";
    told += material.textureFade ? " fading" : "";
    told += "\n";
  });
  return told + (sound ? "" : "malformed\n");
}

TEST(ShaderFile, EachBlockIsAMaterial) {
  EXPECT_EQ(ToldShaders(
                "subshader \"brick\" \"StandardMesh/Default\"\r\n{\r\n\tlighting true;\r\n"
                "\ttexture \"texture/brick\";\r\n}\r\n\r\nsubshader \"Old glass\" \"x\"\n{\n"
                "\ttransparent true;\n\ttwosided TRUE;\n\ttextureFade true;\n\ttexture \"glass\";\n"
                "\ttexture \"dirt\";\n}"),
            "brick shows texture/brick\n"
            "Old glass shows glass shows dirt transparent twosided fading\n");
  EXPECT_EQ(ToldShaders("  subshader \"a\" \"x\"\nSubshader \"a\" \"x\"\n }\n"), "")
      << "only at the beginning of a line";
}

TEST(ShaderFile, ALineIsReadOrEndsTheReading) {
  const std::string comment(254, '-');
  const std::pair<std::string, const char*> rows[] = {
      {"\tTwoSided True;", "b twosided\n"},
      {"\tTEXTUREFADE true;", "b fading\n"},
      {"\tTransparent true;", "b\n"},  // this one has its case
      {"transparent true; // false", "b transparent\n"},
      {"transparent  true;", "b\n"},
      {"transparent; true", "b\n"},
      {"transparent false;", "b\n"},
      {comment + "-transparent true;", "b transparent\n"},  // in pieces of 255 characters
      {comment + "transparent true;", "b\n"},
      {"texture brick;", "malformed\n"},
      {"texture \"brick;", "malformed\n"},
      {"transparent true", "malformed\n"},
      {"transparent;", "malformed\n"},
      {"twosided;", "malformed\n"},
      {"textureFade true", "malformed\n"}};
  for (const auto& [line, told] : rows)
    EXPECT_EQ(ToldShaders("subshader \"a\" \"x\"\n}\nsubshader \"b\" \"x\"\n{\n" + line + "\n}\n"),
              std::string("a\n") + told)
        << line;
}

}  // namespace
}  // namespace mw
