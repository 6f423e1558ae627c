#include "objects/object_textures.h"

#include <gtest/gtest.h>

#include "objects/content_test.h"

namespace mw {
namespace {

class ObjectTexturesTest : public ContentTest {
 protected:
  static ObjectTextureTable& Table() { return objectStore.textures; }
  static int Slot(std::string_view name) {
    const auto acquired = AcquireObjectTexture(name);
    return acquired ? acquired->slot : -1;
  }
};

TEST_F(ObjectTexturesTest, NamesWithAndWithoutTheFolderShareOneTexture) {
  PutTexture("texture/wall.dds");
  PutTexture("plain.dds");
  const auto first = AcquireObjectTexture("texture/wall");
  const auto second = AcquireObjectTexture("Wall");
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->texture, 0u);
  EXPECT_EQ(second->texture, first->texture);
  EXPECT_EQ(second->slot, first->slot);
  EXPECT_EQ(Table().slots[0].name, "wall");
  EXPECT_EQ(FindObjectTexture("texture/WALL"), first->texture);
  EXPECT_EQ(References(), 2) << "finding takes no reference";
  EXPECT_EQ(Slot("plain"), 1) << "in the other folder";
  EXPECT_EQ(Slot("texture/plain"), 1) << "it is loaded already";
  EXPECT_EQ(Table().count, 2);
  modConfig.TexturePath = "Mods\\other\\texture\\";
  PutTexture("Mods/other/texture/door.dds");
  EXPECT_EQ(Slot("texture/door"), 2) << "a path outside the mod folders is used as it is";
}

TEST_F(ObjectTexturesTest, WhatCannotBeLoadedTakesNoSlot) {
  const std::string tooLong = "texture/" + std::string(64, 'x');
  Put("texture/broken.dds", Bytes(10));
  PutTexture(tooLong + ".dds");
  for (const std::string& name : {std::string("texture/missing"), std::string("texture/broken"),
                                  std::string(), std::string("texture/"), tooLong})
    EXPECT_EQ(Slot(name), -1) << name;
  EXPECT_EQ(Table().count, 0);
}

TEST_F(ObjectTexturesTest, TheLastReferenceDeletesTheTextureAndFreesItsSlot) {
  for (const char* name : {"texture/a.dds", "texture/b.dds", "texture/c.dds"}) PutTexture(name);
  for (const char* name : {"a", "b", "c"}) ASSERT_GE(Slot(name), 0);
  const auto texture = AcquireObjectTexture("b");
  ASSERT_TRUE(texture);
  ReleaseObjectTexture(1);
  EXPECT_TRUE(glIsTexture(texture->texture));
  ReleaseObjectTexture(1);
  EXPECT_FALSE(glIsTexture(texture->texture));
  ReleaseObjectTexture(1);
  ReleaseObjectTexture(-1);
  EXPECT_EQ(Table().count, 3);
  EXPECT_EQ(FindObjectTexture(""), 0u) << "a free slot between others is no texture";
  EXPECT_EQ(FindObjectTexture("b"), 0u);
  ReleaseObjectTexture(2);
  EXPECT_EQ(Table().count, 1) << "the highest used slot plus one";
}

TEST_F(ObjectTexturesTest, AFullTableStillSharesWhatItHolds) {
  PutTexture("texture/last.dds");
  PutTexture("texture/more.dds");
  Table().count = kMaxObjectTextures - 1;
  for (int times = 0; times < 2; ++times) EXPECT_EQ(Slot("last"), kMaxObjectTextures - 1);
  EXPECT_EQ(Slot("more"), -1);
}

}  // namespace
}  // namespace mw
