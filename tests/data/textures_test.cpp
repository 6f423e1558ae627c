#include "data/textures.h"

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "platform/disk.h"
#include "support/archive_bytes.h"
#include "support/bmp_file.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

class TexturesTest : public SandboxTest {
 protected:
  TexturesTest() {
    textureSet.shared = {};
    textureSet = {};
    CreateFolder("media");
    CreateFolder("set");
  }
  static bool LoadSet(const std::string& index) {
    WriteBytes("set/index.dat", TextBytes(index));
    return LoadTextureSet("set");
  }
  // The set's entries that are named or loaded, a line each.
  static std::string Told() {
    std::string text;
    const auto tell = [&](const char* kind, std::size_t i, const SetTexture& entry) {
      if (entry.name.empty() && entry.file.empty()) return;
      text += std::string(kind) + std::to_string(i) + ": " + entry.name.String() + ", " +
              entry.file.String() + ", " + std::to_string(entry.width) + " x " +
              std::to_string(entry.height) + (entry.loaded ? " loaded" : "");
      for (const int level : entry.rgb) text += " " + std::to_string(level);
      text += "\n";
    };
    for (std::size_t i = 0; i < textureSet.textures.size(); ++i)
      tell("texture ", i, textureSet.textures[i]);
    for (std::size_t i = 0; i < textureSet.environment.size(); ++i)
      tell("sky ", i, textureSet.environment[i]);
    tell("detail ", 0, textureSet.detail);
    return text;
  }
};

// The one pixel of the texture's smallest level.
Bytes SmallestLevel(unsigned texture, int level) {
  glBindTexture(GL_TEXTURE_2D, texture);
  Bytes row(4);  // read in whole words
  glGetTexImage(GL_TEXTURE_2D, level, GL_RGB, GL_UNSIGNED_BYTE, row.data());
  row.resize(3);
  return row;
}

TEST_F(TexturesTest, MissingExtensionsAreNamedInOrder) {
  CaptureStdout();
  EXPECT_TRUE(CheckGlExtensions());
  EXPECT_EQ(GetCapturedStdout(), "");
  scripted::script.missingGlExtensions = {"WGL_EXT_swap_control", "GL_EXT_bgra"};
  CaptureStdout();
  EXPECT_FALSE(LoadSharedTextures());
  EXPECT_EQ(GetCapturedStdout(),
            "I require the GL_EXT_bgra OpenGL extension to work.\n"
            "I require the WGL_EXT_swap_control OpenGL extension to work.\n"
            "\nExiting because required OpenGL extensions are not supported.\n");
}

TEST_F(TexturesTest, SharedPicturesBecomeMipMappedTextures) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  WriteBytes("media/mat_pavedroad.bmp", UniformBmp(2, 2, 200, 100, 50));
  WriteBytes("media/mat_mud.bmp", UniformBmp(3, 4, 200, 100, 50));
  WriteBytes("media/water.bmp", UniformBmp(4, 4, 0, 0, 255));
  WriteBytes("media/nosurface.bmp", UniformBmp(1, 1, 9, 8, 7));
  for (int time = 0; time < 2; ++time) {
    const unsigned water = textureSet.shared.water;
    ASSERT_TRUE(LoadSharedTextures());
    EXPECT_TRUE(time == 0 || textureSet.shared.water == water) << "loaded once per run";
  }
  EXPECT_EQ(textureSet.shared.materials[0], 0u) << "its picture is missing";
  EXPECT_THAT(SmallestLevel(textureSet.shared.noSurface, 0), ElementsAre(9, 8, 7));
  EXPECT_THAT(SmallestLevel(textureSet.shared.water, 2), ElementsAre(0, 0, 255));
  EXPECT_THAT(SmallestLevel(textureSet.shared.materials[15], 1), ElementsAre(200, 100, 50))
      << "rows of 6 bytes must not be skewed";
  EXPECT_THAT(SmallestLevel(textureSet.shared.materials[6], 2), ElementsAre(200, 100, 50))
      << "a side that is no power of two";
}

TEST_F(TexturesTest, IndexFillsTheEntriesItNamesAndNoOthers) {
  WriteBytes("set/grass.bmp", UniformBmp(2, 1, 10, 20, 30));
  WriteBytes("set/fine.bmp", UniformBmp(1, 2, 4, 5, 6));
  const std::string longest(27, 'n');  // 31 bytes with its extension
  WriteBytes("set/" + longest + ".bmp", UniformBmp(1, 1, 1, 2, 3));
  ASSERT_TRUE(LoadSet(
      "Texture=3,Grass,grass.bmp\r\ntexture=4,keys are compared,grass.bmp\r\n"
      "Env=5,Up," +
      longest + ".bmp\nEnv=0,Too long,x" + longest +
      ".bmp\n"
      "Texture=7,Missing,missing.bmp\nTexture=8\nTexture=9,no file\n"
      "Texture=16,A,fine.bmp\nTexture=-1,A,fine.bmp\nEnv=6,A,fine.bmp\n"
      "Env=99999999999,A,fine.bmp\nUnknown line\n\n" +
      std::string(600, 'x') + "\nTexture=15,A very long entry name,fine.bmp\nDetail=fine.bmp"));
  ExpectGolden("data/texture_set.txt", Told());
}

TEST_F(TexturesTest, AnotherSetReplacesTheWholeSet) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  WriteBytes("set/a.bmp", UniformBmp(1, 1, 1, 2, 3));
  ASSERT_TRUE(LoadSet("Texture=0,A,a.bmp\nTexture=1,B,a.bmp\nEnv=1,C,a.bmp\nDetail=a.bmp\n"));
  const unsigned old[] = {textureSet.textures[1].texture, textureSet.environment[1].texture,
                          textureSet.detail.texture};
  for (const unsigned texture : old) EXPECT_TRUE(glIsTexture(texture));
  ASSERT_TRUE(LoadSet("Texture=0,C,a.bmp\n"));
  EXPECT_EQ(Told(), "texture 0: C, a.bmp, 1 x 1 loaded 1 2 3\n");
  for (const unsigned texture : old) EXPECT_FALSE(glIsTexture(texture));
  EXPECT_FALSE(LoadTextureSet("nowhere"));
  EXPECT_EQ(Told(), "");
}

TEST_F(TexturesTest, PalettesAreWrittenAsTheyWereRead) {
  const Bytes ground = NoiseBytes(24 + 1024, 1), objects = NoiseBytes(24 + 1024, 2);
  WriteBytes("set/ground.pal", ground);
  WriteBytes("set/objects.pal", objects);
  WriteBytes("set/short.pal", Bytes(24 + 1023));
  ASSERT_TRUE(LoadSet("TerrainPalette=ground.pal\nObjectPalette=objects.pal\n"));
  EXPECT_TRUE(WriteTerrainPalette("media") && WriteObjectPalette("media"));
  EXPECT_EQ(ReadBytes("media/terrainPalette.pal"), ground);
  EXPECT_EQ(ReadBytes("media/Palette.pal"), objects);
  ASSERT_TRUE(LoadSet("ObjectPalette=short.pal\n"));
  EXPECT_FALSE(WriteObjectPalette("set") || WriteTerrainPalette("set")) << "none was loaded";
  EXPECT_FALSE(FileExists("set/Palette.pal"));
}

}  // namespace
}  // namespace mw
