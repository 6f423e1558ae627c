#include "platform/prompts.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "platform/qt/status_labels.h"

namespace mw {
namespace {

using Act = std::function<void(QMessageBox&)>;

// Does something with the box that is about to open.
void WhenOpen(const Act& act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_TRUE(box);
    act(*box);
    if (!box->isVisible()) return;
    ADD_FAILURE() << "the box is still open";
    box->done(0);
  });
}

TEST(PromptTest, ShowsItsTextAndAnswersWhatTheUserDoes) {
  const Act press = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); };
  const Act escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  const Act close = [](QMessageBox& box) { box.close(); };
  const Act insist = [&](QMessageBox& box) {  // a question can be neither escaped nor closed
    escape(box);
    close(box);
    EXPECT_TRUE(box.isVisible());
    QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
  };
  const Act yes = [](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); };
  const struct {
    PromptButtons buttons;
    PromptIcon icon;
    QMessageBox::Icon shown;
    Act act;
    PromptAnswer answer;
  } kRows[] = {
      {PromptButtons::Ok, PromptIcon::Stop, QMessageBox::Critical, press, PromptAnswer::Ok},
      {PromptButtons::Ok, PromptIcon::None, QMessageBox::NoIcon, close, PromptAnswer::Ok},
      {PromptButtons::OkCancel, PromptIcon::Question, QMessageBox::Question, escape,
       PromptAnswer::Cancel},
      {PromptButtons::OkCancel, PromptIcon::Exclamation, QMessageBox::Warning, press,
       PromptAnswer::Ok},
      {PromptButtons::YesNoCancel, PromptIcon::None, QMessageBox::NoIcon, escape,
       PromptAnswer::Cancel},
      {PromptButtons::YesNoCancel, PromptIcon::None, QMessageBox::NoIcon, yes, PromptAnswer::Yes},
      {PromptButtons::YesNo, PromptIcon::Information, QMessageBox::Information, insist,
       PromptAnswer::No}};
  for (const auto& row : kRows) {
    WhenOpen([&row](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Error");
      EXPECT_EQ(box.text(), "Can't load <b>x</b>.cfg");
      EXPECT_EQ(box.icon(), row.shown);
      row.act(box);
    });
    EXPECT_EQ(ShowPrompt("Can't load <b>x</b>.cfg", "Error", row.buttons, row.icon), row.answer);
  }
}

TEST(StatusTextTest, HasTwoSpacesBeforeItAndFitsTheBuffer) {
  {
    QLabel progress, frameRate, reading;
    UseStatusLabels(&progress, &frameRate, &reading);
    SetStatusText(1, "Loading Terrain...");
    SetStatusText(2, "FPS: 60");
    SetStatusText(3, "Cell 3, 4");
    for (const int nowhere : {0, 4}) SetStatusText(nowhere, "nowhere");
    EXPECT_EQ(progress.text(), "  Loading Terrain...");
    EXPECT_EQ(frameRate.text(), "  FPS: 60");
    EXPECT_EQ(reading.text(), "  Cell 3, 4");

    // 284 bytes and a character of two: with the spaces one byte too many, and no half character.
    SetStatusText(1, std::string(284, 'x') + "ä");
    EXPECT_EQ(progress.text().toUtf8(), "  " + QByteArray(284, 'x'));
    SetStatusText(1, std::string(283, 'x') + "ä" + "y");
    EXPECT_EQ(progress.text().toUtf8(), "  " + QByteArray(283, 'x') + "ä");
  }
  SetStatusText(1, "Saved level x");  // labels that are gone are passed over
}

TEST(WaitCursorTest, StaysUntilItIsEndedOrTheMouseReallyMoves) {
  for (int time = 0; time < 2; ++time) ShowWaitCursor();
  ASSERT_TRUE(QApplication::overrideCursor());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  ShowArrowCursor();
  EXPECT_FALSE(QApplication::overrideCursor()) << "however often it was shown";
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
