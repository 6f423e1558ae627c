#include "objects/mesh_drawing.h"

#include <GL/gl.h>
#include <array>

#include "objects/object_picture_test.h"

namespace mw {
namespace {

class MeshDrawingTest : public ObjectPictureTest {
 protected:
  // A square that faces the viewer of kFront, from the given place to the right and up.
  static MeshSurface Square(float x, float y, unsigned texture) {
    MeshSurface square;
    square.texture = texture;
    for (const auto& [dx, dy] :
         {std::pair{0, 0}, std::pair{2, 0}, std::pair{2, 2}, std::pair{0, 2}})
      square.vertices.push_back(
          {{kMiddle + x + static_cast<float>(dx), 50 + y + static_cast<float>(dy), kMiddle},
           0.1f,
           0});
    square.indices = {0, 1, 2, 0, 2, 3};
    return square;
  }
  DrawnPicture DrawList(MeshListId list) {
    Begin(kFront);
    glEnable(GL_TEXTURE_2D);
    glColor3ub(255, 255, 255);
    CallMeshList(list);
    glDisable(GL_TEXTURE_2D);
    return ReadPicture();
  }
};

TEST_F(MeshDrawingTest, SurfacesKeepTheirTexturesOrNone) {
  const MeshSurface surfaces[] = {Square(-4, 0, texture_), Square(-1, 0, 0),
                                  Square(2, 0, texture_)};
  const MeshListId list = CreateMeshList(surfaces);
  const DrawnPicture picture = DrawList(list);
  const std::size_t plain = Count(picture, kWhite), textured = Count(picture, kSideColours[0]);
  EXPECT_GT(plain, 100u);
  EXPECT_NEAR(static_cast<double>(textured), 2.0 * static_cast<double>(plain),
              0.2 * static_cast<double>(plain));
  DeleteMeshList(list);
}

TEST_F(MeshDrawingTest, DeletedAndUnknownListsDrawNothingAndComeNotBack) {
  const MeshSurface square = Square(0, 0, 0);
  const MeshListId deleted = CreateMeshList({&square, 1});
  DeleteMeshList(deleted);
  DeleteMeshList(deleted);
  DeleteMeshList(0);
  const MeshListId next = CreateMeshList({&square, 1});
  EXPECT_NE(next, deleted);
  EXPECT_EQ(Count(DrawList(deleted), kSky), kWidth * kHeight);
  EXPECT_EQ(CreateMeshList({}), 0u);
  EXPECT_EQ(Count(DrawList(0), kSky), kWidth * kHeight);
  EXPECT_GT(Count(DrawList(next), kWhite), 100u);
  DeleteMeshList(next);
}

TEST_F(MeshDrawingTest, DeletingFreesTheBuffers) {
  const MeshListId list = CreateMeshList(std::array{Square(0, 0, 0)});
  BindMeshList(list);
  int vertices = 0, indices = 0;
  glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &vertices);
  glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &indices);
  UnbindMeshList();
  EXPECT_TRUE(glIsBuffer(static_cast<GLuint>(vertices)));
  DeleteMeshList(list);
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(vertices)));
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(indices)));
}

TEST_F(MeshDrawingTest, WhenTheContextGoesAllPicturesGo) {
  const MeshSurface square = Square(0, 0, 0);
  const MeshListId list = CreateMeshList({&square, 1});
  DeleteAllMeshLists();
  EXPECT_EQ(Count(DrawList(list), kSky), kWidth * kHeight);
}

}  // namespace
}  // namespace mw
