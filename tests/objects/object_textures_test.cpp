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
  const auto first = AcquireObjectTexture("texture/wall");
  const auto second = AcquireObjectTexture("Wall");
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->texture, 0u);
  EXPECT_EQ(second->texture, first->texture);
  EXPECT_EQ(second->slot, first->slot);
  EXPECT_EQ(Table().count, 1);
  EXPECT_EQ(Table().slots[0].name, "wall");
  EXPECT_EQ(FindObjectTexture("texture/WALL"), first->texture);
  EXPECT_EQ(References(), 2) << "finding takes no reference";
}

TEST_F(ObjectTexturesTest, AnUnprefixedNameIsFoundInEitherFolder) {
  PutTexture("plain.dds");
  PutTexture("texture/inFolder.dds");
  EXPECT_EQ(Slot("plain"), 0);
  EXPECT_EQ(Slot("infolder"), 1);
  EXPECT_EQ(Slot("texture/plain"), 0) << "the key is loaded already";
}

TEST_F(ObjectTexturesTest, APathOutsideTheModFoldersIsUsedAsItIs) {
  modConfig.TexturePath = "Mods\\other\\texture\\";
  PutTexture("Mods/other/texture/wall.dds");
  EXPECT_EQ(Slot("texture/wall"), 0);
}

TEST_F(ObjectTexturesTest, WhatCannotBeLoadedTakesNoSlot) {
  Put("texture/broken.dds", Bytes(10));
  EXPECT_EQ(Slot("texture/missing"), -1);
  EXPECT_EQ(Slot("texture/broken"), -1);
  EXPECT_EQ(Slot(""), -1);
  EXPECT_EQ(Slot("texture/"), -1);
  PutTexture("texture/" + std::string(64, 'x') + ".dds");
  EXPECT_EQ(Slot("texture/" + std::string(64, 'x')), -1) << "longer than a name can be";
  EXPECT_EQ(Table().count, 0);
}

TEST_F(ObjectTexturesTest, TheLastReferenceDeletesTheTexture) {
  PutTexture("texture/a.dds");
  const auto texture = AcquireObjectTexture("texture/a");
  ASSERT_TRUE(texture && AcquireObjectTexture("texture/a"));
  ReleaseObjectTexture(texture->slot);
  EXPECT_TRUE(glIsTexture(texture->texture));
  ReleaseObjectTexture(texture->slot);
  EXPECT_FALSE(glIsTexture(texture->texture));
  EXPECT_EQ(Table().count, 0);
  ReleaseObjectTexture(texture->slot);
  ReleaseObjectTexture(-1);
}

TEST_F(ObjectTexturesTest, AFreeSlotBetweenOthersIsNoTexture) {
  for (const char* name : {"texture/a.dds", "texture/b.dds", "texture/c.dds"}) PutTexture(name);
  for (const char* name : {"a", "b", "c"}) ASSERT_GE(Slot(name), 0);
  ReleaseObjectTexture(1);
  EXPECT_EQ(Table().count, 3);
  EXPECT_EQ(FindObjectTexture(""), 0u);
  EXPECT_EQ(FindObjectTexture("b"), 0u);
  ReleaseObjectTexture(2);
  EXPECT_EQ(Table().count, 1) << "the highest used slot plus one";
}

TEST_F(ObjectTexturesTest, AFullTableStillSharesWhatItHolds) {
  PutTexture("texture/last.dds");
  Table().count = kMaxObjectTextures - 1;
  EXPECT_EQ(Slot("last"), kMaxObjectTextures - 1);
  EXPECT_EQ(Slot("last"), kMaxObjectTextures - 1);
  PutTexture("texture/more.dds");
  EXPECT_EQ(Slot("more"), -1);
}

}  // namespace
}  // namespace mw
