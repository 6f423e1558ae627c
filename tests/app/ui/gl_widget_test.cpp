// The widget that OpenGL draws into, on the display.
#include "app/ui/gl_widget.h"

#include <GL/gl.h>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

namespace mw {
namespace {

// Frames of one colour, with a depth of a half.
class ColouredWidget : public GlWidget {
 public:
  using GlWidget::GlWidget;
  int drawn = 0;
  float green = 0;

 protected:
  void DrawFrame() override {
    ++drawn;
    glClearColor(1, green, 0, 1);
    glClearDepth(0.5);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }
};

class GlWidgetTest : public ::testing::TestWithParam<GlWidget::Frames> {
 protected:
  void SetUp() override {
    around.resize(200, 150);
    auto* const layout = new QVBoxLayout(&around);
    layout->setContentsMargins(0, 40, 0, 0);
    layout->addWidget(view);
    around.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&around));
    ASSERT_TRUE(QTest::qWaitFor([this] { return view->drawn > 0; })) << "shown with the window";
  }
  // What the display shows at a place of the window around the widget.
  QColor Shown(int x, int y) const {
    QTest::qWait(50);
    const QPoint place = around.mapToGlobal(QPoint(x, y));
    const QPixmap pixel =
        QGuiApplication::primaryScreen()->grabWindow(0, place.x(), place.y(), 1, 1);
    return pixel.toImage().pixelColor(0, 0);
  }

  QWidget around;
  ColouredWidget* const view = new ColouredWidget(&around, GetParam());
};

TEST_P(GlWidgetTest, ShowsItsFramesWhereItIs) {
  view->green = 1;
  view->ShowFrame();
  EXPECT_EQ(Shown(100, 45), QColor(Qt::yellow));
  EXPECT_NE(Shown(100, 35), QColor(Qt::yellow)) << "the window around it";
  around.layout()->setContentsMargins(0, 0, 0, 0);
  around.resize(300, 250);
  view->green = 0;
  EXPECT_TRUE(QTest::qWaitFor([this] { return view->width() == 300; }));
  view->ShowFrame();
  EXPECT_EQ(Shown(295, 245), QColor(Qt::red));
  EXPECT_EQ(Shown(5, 5), QColor(Qt::red));
}

TEST_P(GlWidgetTest, KeepsThePictureAndItsDepthAndLeavesInputToTheWidgets) {
  view->ShowFrame();
  ASSERT_TRUE(view->MakeCurrent());
  float depth = 0;
  glReadPixels(5, 5, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  EXPECT_NEAR(depth, 0.5, 1e-4);
  unsigned char colour[4] = {};
  glReadPixels(5, 5, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, colour);
  EXPECT_EQ(colour[0], 255);
  for (const QWindow* window : QGuiApplication::allWindows()) {
    EXPECT_EQ(window->flags().testFlag(Qt::WindowTransparentForInput),
              window->surfaceType() == QSurface::OpenGLSurface);
  }
}

TEST_P(GlWidgetTest, DrawsOnceForManyRequestsAndNotWhileItCannotBeSeen) {
  int shown = 0;
  QObject::connect(view, &GlWidget::frameShown, [&] { ++shown; });
  QTest::qWait(50);
  const auto drawnAfter = [&](auto work) {
    const int before = view->drawn;
    work();
    QTest::qWait(50);
    return view->drawn - before;
  };
  const auto request = [&] {
    view->RequestFrame();
    view->RequestFrame();
  };
  EXPECT_EQ(drawnAfter(request), 1);
  EXPECT_EQ(shown, 1);
  view->hide();
  EXPECT_EQ(drawnAfter(request), 0);
  EXPECT_EQ(drawnAfter([&] { view->ShowFrame(); }), 0);
  EXPECT_GT(drawnAfter([&] { view->show(); }), 0);
  around.hide();
  EXPECT_EQ(drawnAfter(request), 0);
}

INSTANTIATE_TEST_SUITE_P(Frames, GlWidgetTest,
                         ::testing::Values(GlWidget::Frames::kInOwnWindow,
                                           GlWidget::Frames::kPainted),
                         [](const auto& frames) {
                           return frames.param == GlWidget::Frames::kPainted ? "Painted"
                                                                             : "InOwnWindow";
                         });

}  // namespace
}  // namespace mw
