#include <QDialog>
#include <QKeyEvent>
#include <QTest>

#include "app/keys.h"
#include "app/mini_map.h"
#include "app/session.h"
#include "app/ui/frame_loop.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/view_widget.h"
#include "app/ui/window_fixture.h"
#include "terrain/point_selection.h"

namespace mw {
namespace {

class ViewTest : public WindowTest {
 protected:
  void Send(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = {}, bool repeat = false,
            quint32 scanCode = 0) {
    QKeyEvent event(type, key, modifiers, scanCode, 0, 0, {}, repeat);
    QApplication::sendEvent(window.view(), &event);
  }
  void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
    Send(QEvent::KeyPress, key, modifiers);
  }
  void Release(int key) { Send(QEvent::KeyRelease, key); }
};

TEST_F(ViewTest, HeldKeysAreKnownUntilTheyAreReleasedOrTheKeyboardGoesElsewhere) {
  Press(Qt::Key_W);
  Press(Qt::Key_Control);
  EXPECT_TRUE(session.heldInput.keys['W']);
  EXPECT_TRUE(editor.ctrlHeld);
  Release(Qt::Key_W);
  EXPECT_FALSE(session.heldInput.keys['W']);

  Press(Qt::Key_D);
  QFocusEvent focusOut(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QApplication::sendEvent(window.view(), &focusOut);
  EXPECT_TRUE(session.heldInput.keys.none());
  EXPECT_FALSE(editor.ctrlHeld);
}

TEST_F(ViewTest, HeldPageUpRaisesTheWaterWithEachRepeat) {
  Press(Qt::Key_PageUp);
  for (int i = 0; i < 3; ++i) {
    Send(QEvent::KeyRelease, Qt::Key_PageUp, {}, true);
    Send(QEvent::KeyPress, Qt::Key_PageUp, {}, true);
  }
  Release(Qt::Key_PageUp);
  EXPECT_EQ(modConfig.WaterLevel, 4);
}

TEST_F(ViewTest, HeldTabTogglesOnce) {
  Press(Qt::Key_Tab);
  Send(QEvent::KeyRelease, Qt::Key_Tab, {}, true);
  Send(QEvent::KeyPress, Qt::Key_Tab, {}, true);
  Release(Qt::Key_Tab);
  EXPECT_TRUE(editor.drawObjectsInMappers);
}

TEST_F(ViewTest, ShiftedDigitIsStillTheDigit) {
  constexpr quint32 kScanCodeOf0 = 19;
  Press(Qt::Key_Shift);
  Send(QEvent::KeyPress, Qt::Key_ParenRight, Qt::ShiftModifier, false, kScanCodeOf0);
  EXPECT_EQ(terrain.power, 10);
}

TEST_F(ViewTest, WithoutLatinLettersTheKeysPlaceCounts) {
  const struct {
    int key;
    quint32 scanCode;
    char letter;
  } keys[] = {{0x0426, 25, 'W'},              // Cyrillic Tse
              {Qt::Key_Apostrophe, 25, 'W'},  // of a Hebrew keyboard
              {0x0424, 38, 'A'},
              {Qt::Key_Q, 38, 'Q'}};  // of a French one
  for (const auto& [key, scanCode, letter] : keys) {
    Send(QEvent::KeyPress, key, {}, false, scanCode);
    EXPECT_TRUE(session.heldInput.keys[static_cast<std::size_t>(letter)]) << key;
    Send(QEvent::KeyRelease, key, {}, false, scanCode);
    EXPECT_TRUE(session.heldInput.keys.none()) << key;
  }
}

TEST_F(ViewTest, OnlyTheKeypadsPlusMovesTheSelection) {
  TerrainVertex& point = terrain.grid[100][100];
  point.selected = true;
  GrowSelectionBox(100, 100);
  Press(Qt::Key_Plus);
  EXPECT_EQ(point.h, kFlatHeight);
  Press(Qt::Key_Plus, Qt::KeypadModifier);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.1f);
  Press(Qt::Key_Minus, Qt::KeypadModifier);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight);
}

class MiniMapWindowTest : public WindowTest {
 protected:
  MiniMapWindowTest() {
    window.view()->resize(600, 400);
    QApplication::processEvents();
    picture = window.miniMap()->findChild<QWidget*>("miniMapPicture");
  }
  QWidget* picture = nullptr;
};

TEST_F(MiniMapWindowTest, ClickMovesTheCameraToThatPlace) {
  camera.position.Set(1, 77, 1);
  QTest::mouseClick(picture, Qt::LeftButton, {}, {32, 96});
  // 1024 units over 128 pixels, mirrored in both axes.
  EXPECT_EQ(camera.position, (Vector3{(128 - 32) * 8, 77, (128 - 96) * 8}));
  QTest::mouseClick(picture, Qt::RightButton, {}, {64, 64});
  EXPECT_EQ(camera.position.x, (128 - 32) * 8);
}

TEST_F(MiniMapWindowTest, TitleBarDragsTheWindowButNotOutOfTheView) {
  QWidget* miniMap = window.miniMap();
  const QPoint before = miniMap->pos(), title(20, 8);
  const auto dragBy = [&](QPoint distance) {
    QTest::mousePress(miniMap, Qt::LeftButton, {}, title);
    QMouseEvent move(QEvent::MouseMove, title + distance, miniMap->mapToGlobal(title + distance),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(miniMap, &move);
    QTest::mouseRelease(miniMap, Qt::LeftButton, {}, title);
  };
  dragBy({30, 40});
  EXPECT_EQ(miniMap->pos(), before + QPoint(30, 40));
  const QPointF drawnAt(session.miniMapWindow.left, session.miniMapWindow.top);
  EXPECT_EQ(drawnAt, QPointF(miniMap->pos()) * miniMap->devicePixelRatioF());
  dragBy({2000, -2000});
  EXPECT_EQ(miniMap->pos(), QPoint(window.view()->width() - miniMap->width(), 0));
}

// Counts its paintings.
class PaintedWidget : public QWidget {
 public:
  using QWidget::QWidget;
  int paintings = 0;

 protected:
  void paintEvent(QPaintEvent*) override { ++paintings; }
};

class FrameLoopTest : public SandboxTest {
 protected:
  FrameLoopTest() {
    mainWindow.resize(200, 100);
    view.resize(50, 50);
    mainWindow.show();
    mainWindow.activateWindow();
  }
  bool Activate() { return QTest::qWaitForWindowActive(&mainWindow, 3000); }
  // Frames drawn in a while.
  int Frames() {
    QTest::qWait(20);
    const int before = view.paintings;
    QTest::qWait(50);
    return view.paintings - before;
  }

  QWidget mainWindow;
  PaintedWidget view{&mainWindow};
  FrameLoop frames{&mainWindow, &view};
};

TEST_F(FrameLoopTest, DrawsWhileTheWindowIsInUseAndRestsDuringDialogs) {
  if (!Activate()) GTEST_SKIP() << "no window can be activated on this display";
  EXPECT_EQ(Frames(), 0) << "not started yet";
  frames.Start();
  EXPECT_GT(Frames(), 1);

  QDialog dialog(&mainWindow);
  dialog.open();
  EXPECT_EQ(Frames(), 0);
  EXPECT_FALSE(frames.IsRunning());
  dialog.done(0);
  mainWindow.activateWindow();
  ASSERT_TRUE(Activate());
  EXPECT_GT(Frames(), 1);
}

TEST_F(FrameLoopTest, RestsWhileAProcessIsWaitedFor) {
  if (!Activate()) GTEST_SKIP() << "no window can be activated on this display";
  frames.Start();
  frames.Rest(true);
  frames.Rest(true);
  frames.Rest(false);
  EXPECT_EQ(Frames(), 0);
  frames.Rest(false);
  EXPECT_GT(Frames(), 1);
}

}  // namespace
}  // namespace mw
