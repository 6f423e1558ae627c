#include <QAction>
#include <QDialog>
#include <QKeyEvent>

#include "app/keys.h"
#include "app/mini_map.h"
#include "app/modes.h"
#include "app/session.h"
#include "app/ui/frame_loop.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/mode_toolbars.h"
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
  // The key is held for three repeats.
  void Hold(int key) {
    Press(key);
    for (int i = 0; i < 3; ++i) {
      Send(QEvent::KeyRelease, key, {}, true);
      Send(QEvent::KeyPress, key, {}, true);
    }
    Release(key);
  }
  // Of a button of the mode toolbars; their actions hold their commands.
  bool IsChecked(CommandId id) {
    for (const QAction* action : window.modeToolbars()->findChildren<QAction*>()) {
      if (action->data().toInt() == id) return action->isChecked();
    }
    return false;
  }
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

TEST_F(ViewTest, HeldPageUpRaisesTheWaterWithEachRepeatAndHeldTabTogglesOnce) {
  Hold(Qt::Key_PageUp);
  EXPECT_EQ(modConfig.WaterLevel, 4);
  Hold(Qt::Key_Tab);
  EXPECT_TRUE(editor.drawObjectsInMappers);
}

TEST_F(ViewTest, WithoutLatinLettersTheKeysPlaceCountsAndAShiftedDigitIsStillTheDigit) {
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
  constexpr quint32 kScanCodeOf0 = 19;
  Press(Qt::Key_Shift);
  Send(QEvent::KeyPress, Qt::Key_ParenRight, Qt::ShiftModifier, false, kScanCodeOf0);
  EXPECT_EQ(terrain.power, 10);
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

TEST_F(ViewTest, KeysPressTheButtonsOfTheirToolsAndTheListsFollow) {
  SetEditMode(EditMode::TerrainMapper);
  Press(Qt::Key_V);
  EXPECT_EQ(terrain.tool, TerrainTool::Flatten);
  EXPECT_TRUE(IsChecked(kCommandFlatten) && !IsChecked(kCommandPointManipulation));
  Press(Qt::Key_M);
  EXPECT_FALSE(IsChecked(kCommandAutoSmoothing));
  SetEditMode(EditMode::MaterialMapper);
  const auto* list = window.modeToolbars()->findChild<QComboBox*>("materialBrushSize");
  for (const auto& [key, size] : {std::pair{Qt::Key_4, "4"}, {Qt::Key_0, "9"}}) {
    Press(key);
    EXPECT_EQ(list->currentText(), size);
  }
}

class MiniMapWindowTest : public WindowTest {
 protected:
  MiniMapWindowTest() {
    window.view()->resize(600, 400);
    QApplication::processEvents();
  }
  QWidget* const miniMap = window.miniMap();
};

TEST_F(MiniMapWindowTest, ClickMovesTheCameraToThatPlace) {
  auto* const picture = miniMap->findChild<QWidget*>("miniMapPicture");
  camera.position.Set(1, 77, 1);
  QTest::mouseClick(picture, Qt::LeftButton, {}, {32, 96});
  // 1024 units over 128 pixels, mirrored in both axes.
  EXPECT_EQ(camera.position, (Vector3{(128 - 32) * 8, 77, (128 - 96) * 8}));
  QTest::mouseClick(picture, Qt::RightButton, {}, {64, 64});
  EXPECT_EQ(camera.position.x, (128 - 32) * 8);
}

TEST_F(MiniMapWindowTest, TitleBarDragsTheWindowButNotOutOfTheView) {
  const QPoint before = miniMap->pos(), title(20, 8);
  DragFrom(miniMap, title, title + QPoint(30, 40));
  EXPECT_EQ(miniMap->pos(), before + QPoint(30, 40));
  const QPointF drawnAt(session.miniMapWindow.left, session.miniMapWindow.top);
  EXPECT_EQ(drawnAt, QPointF(miniMap->pos()) * miniMap->devicePixelRatioF());
  DragFrom(miniMap, title, title + QPoint(2000, -2000));
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
  void SetUp() override {
    mainWindow.resize(200, 100);
    view.resize(50, 50);
    mainWindow.show();
    mainWindow.activateWindow();
    if (!QTest::qWaitForWindowActive(&mainWindow, 3000)) {
      GTEST_SKIP() << "no window can be activated on this display";
    }
  }
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
  EXPECT_EQ(Frames(), 0) << "not started yet";
  frames.Start();
  EXPECT_GT(Frames(), 1);

  QDialog dialog(&mainWindow);
  dialog.open();
  EXPECT_EQ(Frames(), 0);
  EXPECT_FALSE(frames.IsRunning());
  dialog.done(0);
  mainWindow.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&mainWindow, 3000));
  EXPECT_GT(Frames(), 1);
}

TEST_F(FrameLoopTest, RestsWhileAProcessIsWaitedFor) {
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
