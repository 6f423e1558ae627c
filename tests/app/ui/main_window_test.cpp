#include "app/ui/main_window.h"

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <fstream>
#include <gmock/gmock.h>
#include <set>

#include "app/ui/picture_dialog.h"
#include "app/ui/sample_game_window.h"
#include "app/ui/view_widget.h"
#include "app/ui/window_fixture.h"
#include "support/golden.h"
#include "support/prompts.h"

namespace mw {
namespace {

// What a row of entries shows, an entry a line: the captions of menus or the tips of buttons.
std::string Listing(const QList<QAction*>& actions, const std::string& indent = {}) {
  std::string text;
  for (const QAction* action : actions) {
    const bool inMenu = action->menu() || !indent.empty();
    const QString shown = inMenu ? action->text() : action->toolTip();
    text += indent + (action->isSeparator() ? "-" : shown.toStdString());
    if (action->isCheckable()) text += " (can be checked)";
    const QVariant control = action->property("controlId");
    if (control.isValid()) text += " " + std::to_string(control.toInt());
    text += '\n';
    if (action->menu()) text += Listing(action->menu()->actions(), indent + "  ");
  }
  return text;
}

TEST_F(WindowTest, AFileThatIsDroppedIsOpenedOneAtATime) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile("/no/a.vra"), QUrl("http://no/b.vra")});
  const auto isTaken = [&] {
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    return enter.isAccepted();
  };
  const auto drop = [&] {
    EXPECT_TRUE(isTaken());
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &event);
    QApplication::processEvents();
  };
  Answer({PromptAnswer::Ok, PromptAnswer::Ok});
  drop();
  data.setUrls({QUrl::fromLocalFile("/no/a.vra"), QUrl::fromLocalFile("/no/b.vra")});
  drop();
  ExpectPrompts({"There is no such file", "These are 2 files"});
  data.setUrls({QUrl("http://no/b.vra")});
  EXPECT_FALSE(isTaken());
}

TEST_F(WindowTest, WritingTheSampleGameIsCancelledOrTellsWhyItFailed) {
  const std::string game = (folder / "game").string(), work = (folder / "work").string();
  QTimer::singleShot(0, qApp, [this] { Scope().findChild<QPushButton*>("cancelButton")->click(); });
  const SampleGameWriting cancelled = WriteSampleGame(&window, game, work);
  EXPECT_FALSE(cancelled.complete);
  EXPECT_EQ(cancelled.failure, "");
  std::ofstream(folder / "file") << "x";
  const SampleGameWriting failed = WriteSampleGame(&window, (folder / "file").string(), work);
  EXPECT_FALSE(failed.complete);
  EXPECT_THAT(failed.failure, testing::HasSubstr((folder / "file").string()));
}

// Saves what is offered, there.
void SavePictureAs(const std::string& path) {
  QTimer clicks;
  QObject::connect(&clicks, &QTimer::timeout, [&path] {
    QWidget* const dialog = QApplication::activeModalWidget();
    if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
      files->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
      QMetaObject::invokeMethod(files, "accept");
    } else if (dialog) {
      dialog->findChild<QPushButton*>("okButton")->click();
    }
  });
  clicks.start(10);
  shell.savePictureDialog();
}

TEST_F(WindowTest, APictureIsAPngOfTheSizeThatWasChosenOrWhyItIsNot) {
  window.show();
  QApplication::processEvents();
  const std::string viewPath = (folder / "view").string();
  SavePictureAs(viewPath);
  const QImage view(QString::fromStdString(viewPath + ".png"));
  EXPECT_EQ(view.size(), window.view()->size());
  editor.cameraMode = CameraMode::TopDown;
  const std::string levelPath = (folder / "level.png").string();
  SavePictureAs(levelPath);
  const QImage level(QString::fromStdString(levelPath));
  EXPECT_EQ(level.size(), QSize(1024, 1024));
  QImage empty(level.size(), level.format());
  empty.fill(view.pixelColor(0, 0));  // of the sky
  EXPECT_NE(level, empty);
  Answer({PromptAnswer::Ok});
  SavePictureAs((folder / "missing" / "picture.png").string());
  ExpectPrompts({"The picture could not be saved"});
}

TEST_F(WindowTest, MenusToolbarsAndKeysAreAsTheGuideShowsThem) {
  std::string text = Listing(window.menuBar()->actions());
  for (const QToolBar* toolbar : window.findChildren<QToolBar*>()) {
    text += "==== " + toolbar->objectName().toStdString() + '\n' + Listing(toolbar->actions());
  }
  text += "==== keys\n";
  std::set<std::string> keys;
  for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
    const auto key = shortcut->key().toString(QKeySequence::PortableText).toStdString();
    EXPECT_TRUE(keys.insert(key).second) << key << " stands for two";
  }
  for (const std::string& key : keys) text += key + '\n';
  ExpectGolden("app/main_window.txt", text);
}

TEST_F(WindowTest, CreditsRiseRestAndStartAgain) {
  CreditsDialog dialog(nullptr);
  const QLabel* picture = dialog.findChild<QLabel*>();
  const auto yAfter = [&](int ticks) {
    for (int i = 0; i < ticks; ++i) dialog.Tick();
    return picture->y();
  };
  EXPECT_EQ(yAfter(1), -1);
  EXPECT_EQ(yAfter(1278), -1279);
  EXPECT_EQ(yAfter(171), -1279);  // at rest down to -1450
  EXPECT_EQ(yAfter(2), -1);       // back to the top, and on
  EXPECT_EQ(picture->size(), QSize(256, 1455));
}

}  // namespace
}  // namespace mw
