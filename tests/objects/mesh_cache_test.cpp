#include "objects/mesh_cache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "objects/content_test.h"
#include "objects/object_catalogue.h"
#include "sample/mesh_files.h"
#include "sample/objects.h"

namespace mw {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;
using Rgb = std::array<int, 3>;

constexpr Rgb kRedSeen{255, 0, 0}, kBlueSeen{0, 0, 255}, kWhiteSeen{255, 255, 255}, kNothing{};

class MeshCacheTest : public ContentTest {
 protected:
  void SetUp() override {
    ContentTest::SetUp();
    objectStore.catalogue = ParseObjectList(
        "House=StandardMesh(house_m1)\nOak=TreeMesh(oak_m1)\nlost=StandardMesh(lost_m1)\n");
  }
  void TearDown() override {
    if (!HasFatalFailure() && !IsSkipped()) ClearMeshes();
    ContentTest::TearDown();
  }

  // A house of two squares side by side.
  void PutHouse(std::string_view left, std::string_view right) {
    Put("standardMesh/house_m1.sm",
        StandardMeshBytes{.materials = {{.name = left, .right = 0}, {.name = right, .left = 0}}}
            .Get());
  }
  // Loads the house or the oak and draws it over black; the colours of its left and right half.
  std::array<Rgb, 2> Draw(CachedMesh& mesh) {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glEnable(GL_TEXTURE_2D);
    CallMeshList(mesh.lists[3]);
    glDisable(GL_TEXTURE_2D);
    const DrawnPicture picture = ReadPicture();
    const auto at = [&](std::size_t column) {
      const std::uint8_t* pixel = &picture.rgb[(4 * 8 + column) * 3];
      return Rgb{pixel[0], pixel[1], pixel[2]};
    };
    return {at(2), at(6)};
  }
  std::array<Rgb, 2> DrawHouse() {
    CachedMesh mesh;
    EXPECT_TRUE(LoadStandardMesh(kHouse, mesh));
    const auto seen = Draw(mesh);
    FreeMesh(mesh);
    return seen;
  }

  void PutSampleMesh(const sample::ObjectKind& object) {
    const sample::Mesh mesh = object.build();
    const std::string name(object.mesh);
    if (object.tree) {
      Put("treeMesh/" + name + ".tm", sample::EncodeTreeMesh(mesh));
    } else {
      Put("standardMesh/" + name + ".sm", sample::EncodeStandardMesh(mesh, 10));
      Put("standardMesh/" + name + ".rs", TextBytes(sample::EncodeShader(mesh)));
    }
    for (const sample::MeshPart& part : mesh.parts) PutTexture("texture/" + part.material + ".dds");
  }

  static void ExpectNotCached(const StaticObject& object) {
    EXPECT_EQ(object.meshIndex, 0);
    EXPECT_THAT(object.lists, Each(0u));
    EXPECT_THAT(ChildrenOf(levelTree.fixed.cachedObjects), SizeIs(1)) << "\"Add New Object\" only";
    EXPECT_EQ(objectStore.textures.count, 0);
  }

  static constexpr int kHouse = 0, kOak = 1, kLost = 2;
};

TEST_F(MeshCacheTest, MaterialsAreFoundWhateverTheCase) {
  PutHouse("brick", "ROOF");
  PutShader("house_m1", {"brick", "roof"});
  PutTexture("texture/brick.dds", kRed);
  PutTexture("texture/roof.dds", kBlue);
  EXPECT_THAT(DrawHouse(), ElementsAre(kRedSeen, kBlueSeen));
}

TEST_F(MeshCacheTest, AnUnknownMaterialLooksLikeTheFirst) {
  PutHouse("brick", "unknown");
  PutShader("house_m1", {"roof", "brick"});
  PutTexture("texture/brick.dds", kRed);
  PutTexture("texture/roof.dds", kBlue);
  EXPECT_THAT(DrawHouse(), ElementsAre(kRedSeen, kBlueSeen));
}

TEST_F(MeshCacheTest, AMaterialWithoutItsTextureIsNone) {
  PutHouse("brick", "roof");
  PutShader("house_m1", {"brick", "roof"});
  PutTexture("texture/roof.dds", kBlue);
  EXPECT_THAT(DrawHouse(), ElementsAre(kBlueSeen, kBlueSeen));
}

TEST_F(MeshCacheTest, FadingMaterialsAreNotDrawn) {
  PutHouse("smoke", "brick");
  PutTexture("texture/brick.dds", kRed);
  Put("standardMesh/house_m1.rs",
      TextBytes("subshader \"smoke\" \"x\"\n\ttextureFade true;\n\ttexture \"brick\";\n}\n"
                "subshader \"brick\" \"x\"\n\ttexture \"brick\";\n}\n"));
  EXPECT_THAT(DrawHouse(), ElementsAre(kNothing, kRedSeen));
}

TEST_F(MeshCacheTest, AMeshWithoutMaterialsIsWhite) {
  PutHouse("brick", "roof");
  EXPECT_THAT(DrawHouse(), ElementsAre(kWhiteSeen, kWhiteSeen)) << "no shader file";
  PutTexture("texture/brick.dds");
  Put("standardMesh/house_m1.rs",
      TextBytes("subshader \"brick\" \"x\"\n\ttexture \"brick\";\n}\ntransparent\n"));
  EXPECT_THAT(DrawHouse(), ElementsAre(kWhiteSeen, kWhiteSeen)) << "a malformed one";
  EXPECT_EQ(References(), 0);
}

TEST_F(MeshCacheTest, ViewModesWithoutAPictureOfTheirOwnShowTheNextSimpler) {
  CachedMesh mesh;
  Put("standardMesh/house_m1.sm", StandardMeshBytes{}.Get());
  ASSERT_TRUE(LoadStandardMesh(kHouse, mesh));
  EXPECT_THAT(mesh.lists, Each(::testing::Ne(0u)));
  EXPECT_NE(mesh.lists[1], mesh.lists[2]);
  EXPECT_EQ(mesh.lists[2], mesh.lists[3]);
  FreeMesh(mesh);
  Put("standardMesh/house_m1.sm", StandardMeshBytes{.levels = 0}.Get());
  ASSERT_TRUE(LoadStandardMesh(kHouse, mesh));
  EXPECT_NE(mesh.lists[1], 0u);
  EXPECT_EQ(mesh.lists[2], mesh.lists[1]);
  EXPECT_EQ(mesh.lists[3], mesh.lists[1]);
  FreeMesh(mesh);
  Put("standardMesh/house_m1.sm", StandardMeshBytes{.collisions = {}, .levels = 0}.Get());
  ASSERT_TRUE(LoadStandardMesh(kHouse, mesh));
  EXPECT_THAT(std::span(mesh.lists).subspan(1), Each(0u));
  FreeMesh(mesh);
}

TEST_F(MeshCacheTest, ATreeShowsTheTexturesOfItsItems) {
  TreeMeshBytes tree;
  tree.groups = {{{{0, 1, "texture/leaf"}}, {{3, 1, "missing"}}, {{0, 0, "sprite"}}, {}}};
  tree.indices = {0, 1, 2, 0, 2, 3};
  Put("treeMesh/oak_m1.tm", tree.Get());
  PutTexture("texture/leaf.dds", kRed);
  PutTexture("texture/sprite.dds", kBlue);
  CachedMesh mesh;
  ASSERT_TRUE(LoadTreeMesh(kOak, mesh));
  EXPECT_THAT(Draw(mesh), ElementsAre(kWhiteSeen, kRedSeen))
      << "the lower right triangle with its texture, the other without";
  EXPECT_EQ(References(), 2) << "the textures that are not drawn are held, too";
  FreeMesh(mesh);
  EXPECT_EQ(objectStore.textures.count, 0);
}

TEST_F(MeshCacheTest, ATreeOfAnotherVersionIsCachedWithoutAPicture) {
  Put("treeMesh/oak_m1.tm", TreeMeshBytes{.version = 2}.Get());
  StaticObject object;
  CacheMeshForObject(kOak, object);
  EXPECT_THAT(objectStore.meshes, SizeIs(1));
  EXPECT_THAT(object.lists, Each(0u));
}

TEST_F(MeshCacheTest, AnObjectGetsTheMeshThatIsCachedForIt) {
  Put("standardMesh/house_m1.sm", StandardMeshBytes{}.Get());
  Put("treeMesh/oak_m1.tm", TreeMeshBytes{}.Get());
  StaticObject house, oak;
  CacheMeshForObject(kHouse, house);
  CacheMeshForObject(kOak, oak);
  EXPECT_EQ(oak.meshIndex, 1);
  EXPECT_EQ(oak.lists, objectStore.meshes.at(1).lists);
  EXPECT_NE(oak.lists[3], 0u);
  EXPECT_EQ(FindCachedMesh("OAK"), 1);
  EXPECT_EQ(FindCachedMesh("House_M1"), 0);
  EXPECT_EQ(FindCachedMesh("lost"), -1);
  EXPECT_EQ(objectStore.catalogue.entries[kOak].boxB, (Vector3{4, 5, 6}));
  const std::vector<TreeItem> items = ChildrenOf(levelTree.fixed.cachedObjects);
  ASSERT_THAT(items, SizeIs(3));
  EXPECT_EQ(ItemText(items[2]), "oak");
  EXPECT_EQ(FindMeshByTreeItem(items[2]), 1);
  EXPECT_EQ(FindMeshByTreeItem(items[0]), -1);
  EXPECT_EQ(FindMeshByTreeItem(0), -1);
}

TEST_F(MeshCacheTest, AfterAFailedLoadTheObjectHasNoMesh) {
  StaticObject object;
  object.meshIndex = 7;
  object.lists = {1, 2, 3, 4};
  CacheMeshForObject(kLost, object);
  ExpectNotCached(object);
  ClearMeshes();
  PutShader("lost_m1", {"brick"});
  PutTexture("texture/brick.dds");
  Put("standardMesh/lost_m1.sm", Bytes(30));
  CacheMeshForObject(kLost, object);
  ExpectNotCached(object);
  CacheMeshForObject(-1, object);
  CacheMeshForObject(3, object);
  ExpectNotCached(object);
  EXPECT_THAT(objectStore.meshes, SizeIs(0));
}

// A level may have hundreds of objects of one broken mesh.
TEST_F(MeshCacheTest, AMeshThatFailedIsTriedAgainWhenTheMeshesWereCleared) {
  StaticObject object;
  CacheMeshForObject(kHouse, object);
  Put("standardMesh/house_m1.sm", StandardMeshBytes{}.Get());
  CacheMeshForObject(kHouse, object);
  ExpectNotCached(object);
  ClearMeshes();
  CacheMeshForObject(kHouse, object);
  EXPECT_EQ(object.meshIndex, 0);
  EXPECT_NE(object.lists[3], 0u);
}

TEST_F(MeshCacheTest, TablesThatAreFullRefuseTheMesh) {
  PutHouse("m0", "m1");
  PutTexture("texture/brick.dds");
  std::string shader;
  for (int k = 0; k < 64; ++k) {
    shader += FormatText("subshader \"m%d\" \"x\"\n\ttexture \"brick\";\n}\n", k);
  }
  StaticObject object;
  Put("standardMesh/house_m1.rs", TextBytes(shader + "subshader \"m64\" \"x\"\n}\n"));
  CacheMeshForObject(kHouse, object);
  ExpectNotCached(object);
  ClearMeshes();
  Put("standardMesh/house_m1.rs", TextBytes(shader));
  objectStore.textures.count = kMaxObjectTextures;
  CacheMeshForObject(kHouse, object);
  objectStore.textures.count = 0;
  ExpectNotCached(object);
  ClearMeshes();
  objectStore.meshes.resize(kMaxCachedMeshes);
  CacheMeshForObject(kHouse, object);
  ExpectNotCached(object);
  objectStore.meshes.pop_back();
  CacheMeshForObject(kHouse, object);
  EXPECT_EQ(object.meshIndex, kMaxCachedMeshes - 1);
  EXPECT_EQ(References(), 64);
}

TEST_F(MeshCacheTest, ClearingTheMeshesLeavesNothingBehind) {
  Put("standardMesh/house_m1.sm", StandardMeshBytes{}.Get());
  PutShader("house_m1", {"wall"});
  PutTexture("texture/wall.dds");
  StaticObject object;
  CacheMeshForObject(kHouse, object);
  const auto texture = AcquireObjectTexture("wall");
  ASSERT_TRUE(texture);
  ClearMeshes();
  EXPECT_THAT(objectStore.meshes, SizeIs(0));
  EXPECT_EQ(objectStore.textures.count, 0);
  EXPECT_FALSE(glIsTexture(texture->texture)) << "whoever holds it";
  EXPECT_THAT(ChildrenOf(levelTree.fixed.cachedObjects), SizeIs(1));
  EXPECT_THAT(Draw(objectStore.preview.mesh), Each(kNothing));
}

TEST_F(MeshCacheTest, EveryObjectOfTheSampleGameGetsItsMeshAndTextures) {
  std::string list;
  for (const sample::ObjectKind& object : sample::ObjectKinds()) {
    list += std::string(object.name) + (object.tree ? "=TreeMesh(" : "=StandardMesh(") +
            std::string(object.mesh) + ")\n";
    PutSampleMesh(object);
  }
  objectStore.catalogue = ParseObjectList(list);
  for (int entry = 0; entry < objectStore.catalogue.entryCount; ++entry) {
    StaticObject object;
    CacheMeshForObject(entry, object);
    SCOPED_TRACE(objectStore.catalogue.entries[static_cast<std::size_t>(entry)].name.String());
    EXPECT_EQ(object.meshIndex, entry);
    EXPECT_TRUE(object.lists[0] != 0 && object.lists[3] != 0);
    const CachedMesh& mesh = objectStore.meshes.back();
    const std::size_t parts =
        sample::ObjectKinds()[static_cast<std::size_t>(entry)].build().parts.size();
    EXPECT_EQ(mesh.subshaders.size() + mesh.treeTextures.size(), parts);
  }
}

}  // namespace
}  // namespace mw
