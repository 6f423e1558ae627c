#include "platform/prompts.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "platform/qt/status_labels.h"

namespace mw {
namespace {

// Does something with the box that is about to open.
void WhenOpen(const std::function<void(QMessageBox&)>& act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_TRUE(box);
    act(*box);
    if (box->isVisible()) {
      ADD_FAILURE() << "the box is still open";
      box->done(0);
    }
  });
}

TEST(PromptTest, ShowsTextCaptionAndIcon) {
  const std::pair<PromptIcon, QMessageBox::Icon> icons[] = {
      {PromptIcon::Stop, QMessageBox::Critical}, {PromptIcon::Question, QMessageBox::Question}};
  for (const auto& [icon, shown] : icons) {
    WhenOpen([shown = shown](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Error");
      EXPECT_EQ(box.text(), "Can't load <b>x</b>.cfg");
      EXPECT_EQ(box.icon(), shown);
      QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(ShowPrompt("Can't load <b>x</b>.cfg", "Error", PromptButtons::Ok, icon),
              PromptAnswer::Ok);
  }
}

TEST(PromptTest, ClosingAnswersOkOrCancel) {
  WhenOpen([](QMessageBox& box) { box.close(); });
  EXPECT_EQ(ShowPrompt("Done.", "Warning"), PromptAnswer::Ok);
  for (const PromptButtons buttons : {PromptButtons::OkCancel, PromptButtons::YesNoCancel}) {
    WhenOpen([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(ShowPrompt("Delete?", "Warning", buttons), PromptAnswer::Cancel);
  }
}

TEST(PromptTest, QuestionCanBeNeitherEscapedNorClosed) {
  WhenOpen([](QMessageBox& box) {
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(box.isVisible());
    box.close();
    EXPECT_TRUE(box.isVisible());
    QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
  });
  EXPECT_EQ(ShowPrompt("Save?", "Save?", PromptButtons::YesNo, PromptIcon::Information),
            PromptAnswer::No);
}

TEST(StatusTextTest, HasTwoSpacesBeforeItAndFitsTheBuffer) {
  QLabel progress, frameRate, reading;
  UseStatusLabels(&progress, &frameRate, &reading);
  SetStatusText(1, "Loading Terrain...");
  SetStatusText(2, "FPS: 60");
  SetStatusText(0, "nowhere");
  SetStatusText(3, "Cell 3, 4");
  SetStatusText(4, "nowhere");
  EXPECT_EQ(progress.text(), "  Loading Terrain...");
  EXPECT_EQ(frameRate.text(), "  FPS: 60");
  EXPECT_EQ(reading.text(), "  Cell 3, 4");

  // 284 bytes and a character of two: with the spaces one byte too many, and no half character.
  SetStatusText(1, std::string(284, 'x') + "ä");
  EXPECT_EQ(progress.text().toUtf8(), "  " + QByteArray(284, 'x'));
  SetStatusText(1, std::string(283, 'x') + "ä" + "y");
  EXPECT_EQ(progress.text().toUtf8(), "  " + QByteArray(283, 'x') + "ä");
}

TEST(StatusTextTest, LabelsThatAreGoneArePassedOver) {
  {
    QLabel progress, frameRate, reading;
    UseStatusLabels(&progress, &frameRate, &reading);
  }
  SetStatusText(1, "Saved level x");
}

TEST(WaitCursorTest, StaysUntilItIsEndedHoweverOftenItWasShown) {
  ShowWaitCursor();
  ShowWaitCursor();
  ASSERT_TRUE(QApplication::overrideCursor());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  ShowArrowCursor();
  EXPECT_FALSE(QApplication::overrideCursor());
}

TEST(WaitCursorTest, EndsWhenTheMouseReallyMoves) {
  QWidget widget;
  const auto report = [&widget] {  // a move of the mouse, as the widget hears of it
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QCursor::pos(), Qt::NoButton, Qt::NoButton,
                     {});
    QApplication::sendEvent(&widget, &move);
  };
  QCursor::setPos(100, 100);
  ShowWaitCursor();
  report();
  EXPECT_TRUE(QApplication::overrideCursor()) << "a window moved under the resting mouse";
  QCursor::setPos(140, 120);
  if (QCursor::pos() == QPoint(100, 100)) GTEST_SKIP() << "the mouse cannot be moved here";
  report();
  EXPECT_FALSE(QApplication::overrideCursor());
}

}  // namespace
}  // namespace mw
