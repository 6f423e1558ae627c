// An OpenGL context without a window or a display, for tests and benchmarks that draw, and the
// picture they drew. It takes the part of the 3D view's context.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mw {

// Makes the process's one offscreen context (compatibility profile, RGB8, 24-bit depth) current,
// with a surface of this size in pixels and a viewport that covers it, and lets the scripted
// platform hand it out for the rest of the test. The context and its GL state live until the
// program ends; a call with another size only changes the surface. False when the machine has no
// OpenGL; tests then skip:
//   if (!OpenTestGl(320, 240)) GTEST_SKIP() << TestGlError();
bool OpenTestGl(int width, int height);
// Why OpenTestGl answered false.
const std::string& TestGlError();

// Red, green, blue per pixel, rows from the top, no padding.
struct DrawnPicture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgb;
};

// What was drawn on the surface of OpenTestGl.
DrawnPicture ReadPicture();
// How many pixels differ by more than `tolerance` in one of their channels; all of the larger
// picture's pixels when the sizes differ.
std::size_t DifferentPixels(const DrawnPicture& a, const DrawnPicture& b, int tolerance = 0);

}  // namespace mw
