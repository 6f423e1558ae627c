#include "data/textures.h"

#include <GL/gl.h>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "platform/disk.h"
#include "support/bmp_file.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using Bytes = std::vector<std::uint8_t>;
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
  WriteWholeFile("media/mat_pavedroad.bmp", UniformBmp(2, 2, 200, 100, 50));
  WriteWholeFile("media/mat_mud.bmp", UniformBmp(3, 4, 200, 100, 50));
  WriteWholeFile("media/water.bmp", UniformBmp(4, 4, 0, 0, 255));
  ASSERT_TRUE(LoadSharedTextures());
  EXPECT_EQ(textureSet.shared.materials[0], 0u) << "its picture is missing";
  EXPECT_EQ(textureSet.shared.noSurface, 0u);
  EXPECT_NE(textureSet.shared.water, 0u);

  EXPECT_THAT(SmallestLevel(textureSet.shared.materials[15], 1), ElementsAre(200, 100, 50))
      << "rows of 6 bytes must not be skewed";
  EXPECT_THAT(SmallestLevel(textureSet.shared.materials[6], 2), ElementsAre(200, 100, 50))
      << "a side that is no power of two";

  const unsigned water = textureSet.shared.water;
  ASSERT_TRUE(LoadSharedTextures());
  EXPECT_EQ(textureSet.shared.water, water) << "loaded once per run";
}

TEST_F(TexturesTest, IndexFillsTheEntriesItNames) {
  WriteWholeFile("set/grass.bmp", UniformBmp(2, 1, 10, 20, 30));
  WriteWholeFile("set/sky.bmp", UniformBmp(1, 1, 1, 2, 3));
  WriteWholeFile("set/fine.bmp", UniformBmp(1, 2, 4, 5, 6));
  WriteWholeFile("set/index.dat",
                 "Texture=3,Grass,grass.bmp\r\n"
                 "texture=4,Other,grass.bmp\r\n"
                 "Env=5,Up,sky.bmp\n"
                 "Unknown line\n\n"
                 "Texture=7,Missing,missing.bmp\n"
                 "Texture=8\n"
                 "Detail=fine.bmp");
  ASSERT_TRUE(LoadTextureSet("set"));
  const SetTexture& grass = textureSet.textures[3];
  EXPECT_TRUE(grass.loaded);
  EXPECT_EQ(grass.name, "Grass");
  EXPECT_EQ(grass.file, "grass.bmp");
  EXPECT_EQ(grass.width, 2);
  EXPECT_THAT(grass.rgb, ElementsAre(10, 20, 30, 10, 20, 30));
  EXPECT_FALSE(textureSet.textures[4].loaded) << "keys are compared exactly";
  EXPECT_THAT(textureSet.environment[5].rgb, ElementsAre(1, 2, 3));
  EXPECT_EQ(textureSet.textures[7].name, "Missing");
  EXPECT_FALSE(textureSet.textures[7].loaded);
  EXPECT_EQ(textureSet.detail.height, 2) << "the last line needs no line end";
}

TEST_F(TexturesTest, EntriesOutsideTheTablesAreIgnored) {
  WriteWholeFile("set/a.bmp", UniformBmp(1, 1, 1, 2, 3));
  WriteWholeFile("set/index.dat",
                 "Texture=16,A,a.bmp\nTexture=-1,A,a.bmp\nEnv=6,A,a.bmp\nEnv=99999999999,A,a.bmp\n"
                 "Texture=0,A,a-name-that-is-longer-than-the-field.bmp\n" +
                     std::string(600, 'x') + "\nTexture=15,A very long entry name,a.bmp\n");
  ASSERT_TRUE(LoadTextureSet("set"));
  const auto isLoaded = [](const SetTexture& entry) { return entry.loaded; };
  EXPECT_EQ(std::ranges::count_if(textureSet.textures, isLoaded), 1);
  EXPECT_EQ(std::ranges::count_if(textureSet.environment, isLoaded), 0);
  EXPECT_EQ(textureSet.textures[15].name, "A very long ent");
}

TEST_F(TexturesTest, AnotherSetReplacesTheWholeSet) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  WriteWholeFile("set/a.bmp", UniformBmp(1, 1, 1, 2, 3));
  WriteWholeFile("set/index.dat", "Texture=0,A,a.bmp\nTexture=1,B,a.bmp\n");
  ASSERT_TRUE(LoadTextureSet("set"));
  const unsigned old = textureSet.textures[1].texture;
  EXPECT_TRUE(glIsTexture(old));

  WriteWholeFile("set/index.dat", "Texture=0,C,a.bmp\n");
  ASSERT_TRUE(LoadTextureSet("set"));
  EXPECT_EQ(textureSet.textures[0].name, "C");
  EXPECT_FALSE(textureSet.textures[1].loaded);
  EXPECT_FALSE(glIsTexture(old));

  EXPECT_FALSE(LoadTextureSet("nowhere"));
  EXPECT_FALSE(textureSet.textures[0].loaded);
}

TEST_F(TexturesTest, PalettesAreWrittenAsTheyWereRead) {
  Bytes terrainPalette(24 + 1024, 7), tooShort(24 + 1023);
  terrainPalette[0] = 'R';
  WriteWholeFile("set/ground.pal", terrainPalette);
  WriteWholeFile("set/short.pal", tooShort);
  WriteWholeFile("set/index.dat", "TerrainPalette=ground.pal\nObjectPalette=short.pal\n");
  ASSERT_TRUE(LoadTextureSet("set"));
  EXPECT_TRUE(WriteTerrainPalette("media"));
  EXPECT_EQ(ReadWholeFile("media/terrainPalette.pal"), terrainPalette);
  EXPECT_FALSE(WriteObjectPalette("media"));
  EXPECT_FALSE(FileExists("media/Palette.pal")) << "no palette was loaded";
}

}  // namespace
}  // namespace mw
