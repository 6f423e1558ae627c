#include "objects/mesh_drawing.h"

#include <array>

#include "objects/object_picture_test.h"

namespace mw {
namespace {

class MeshDrawingTest : public ObjectPictureTest {
 protected:
  // A square that faces the viewer of kFront, from the given place to the right.
  static MeshSurface Square(float x, unsigned texture) {
    MeshSurface square;
    square.texture = texture;
    for (const auto& [dx, y] : {std::pair{0.f, 50.f}, {2.f, 50.f}, {2.f, 52.f}, {0.f, 52.f}})
      square.vertices.push_back({{kMiddle + x + dx, y, kMiddle}, 0.1f, 0});
    square.indices = {0, 1, 2, 0, 2, 3};
    return square;
  }
  static MeshListId MakeSquare() { return CreateMeshList(std::array{Square(0, 0)}); }
  // How many pixels have this colour; for the sky's, how many have another.
  std::size_t Draw(MeshListId list, const PictureColour& colour = kWhite) {
    Begin(kFront);
    glEnable(GL_TEXTURE_2D);
    glColor3ub(255, 255, 255);
    CallMeshList(list);
    glDisable(GL_TEXTURE_2D);
    const DrawnPicture picture = ReadPicture();
    return colour == kSky ? kWidth * kHeight - Count(picture, kSky) : Count(picture, colour);
  }
};

TEST_F(MeshDrawingTest, SurfacesKeepTheirTexturesOrNone) {
  const MeshListId list =
      CreateMeshList(std::array{Square(-4, texture_), Square(-1, 0), Square(2, texture_)});
  const auto plain = static_cast<double>(Draw(list));
  EXPECT_GT(plain, 100);
  EXPECT_NEAR(static_cast<double>(Draw(list, kSideColours[0])), 2 * plain, 0.2 * plain);
  DeleteMeshList(list);
}

TEST_F(MeshDrawingTest, DeletedAndUnknownListsDrawNothingAndComeNotBack) {
  const MeshListId deleted = MakeSquare();
  BindMeshList(deleted);
  int vertices = 0, indices = 0;
  glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &vertices);
  glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &indices);
  UnbindMeshList();
  EXPECT_TRUE(glIsBuffer(static_cast<GLuint>(vertices)));
  for (const MeshListId list : {deleted, deleted, 0u}) DeleteMeshList(list);
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(vertices)));
  EXPECT_FALSE(glIsBuffer(static_cast<GLuint>(indices)));
  const MeshListId next = MakeSquare();
  EXPECT_NE(next, deleted);
  EXPECT_EQ(Draw(deleted, kSky), 0u);
  EXPECT_EQ(CreateMeshList({}), 0u);
  EXPECT_EQ(Draw(0, kSky), 0u);
  EXPECT_GT(Draw(next), 100u);
  DeleteAllMeshLists();
  EXPECT_EQ(Draw(next, kSky), 0u) << "the context goes";
}

}  // namespace
}  // namespace mw
