#include <QPushButton>
#include <fstream>

#include "app/ui/load_level_dialog.h"
#include "app/ui/picture_dialog.h"
#include "app/ui/welcome_dialog.h"
#include "app/ui/window_fixture.h"

namespace mw {
namespace {

using WelcomeTest = WindowTest;

TEST_F(WelcomeTest, ButtonsMakeTheirChoicesAndEscapeAndTheCloseBoxChooseANewLevel) {
  const struct {
    std::function<void(WelcomeDialog&)> act;
    WelcomeChoice choice;
  } cases[] = {
      {[](auto& dialog) { Click(dialog, {"openButton"}); }, WelcomeChoice::OpenLevel},
      {[](auto& dialog) { Click(dialog, {"newButton"}); }, WelcomeChoice::NewLevel},
      {[](auto& dialog) { Click(dialog, {"closeButton"}); }, WelcomeChoice::Close},
      {[](auto& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }, WelcomeChoice::NewLevel},
      {[](auto& dialog) { dialog.close(); }, WelcomeChoice::NewLevel}};
  for (const auto& [act, choice] : cases) {
    WhenOpen<WelcomeDialog>(act);
    EXPECT_EQ(shell.welcomeDialog({}), choice);
  }
}

TEST_F(WelcomeTest, OffersTheSampleGameWhereThereIsNoModAndTheNewestThreeLevels) {
  const std::vector<RecentLevel> recent{
      {"/a.vra", "m"}, {"/b&c.vra", "m"}, {"/d.vra", "m"}, {"/e.vra", "m"}};
  WelcomeDialog plain(&window, {});
  EXPECT_TRUE(plain.findChild<QPushButton*>("sampleButton")->isHidden());
  EXPECT_TRUE(plain.findChild<QWidget*>("recentGroup")->isHidden());
  WelcomeDialog full(&window, {true, recent});
  auto* const sample = full.findChild<QPushButton*>("sampleButton");
  EXPECT_FALSE(sample->isHidden());
  const auto buttons = full.findChild<QWidget*>("recentGroup")->findChildren<QPushButton*>();
  ASSERT_EQ(buttons.size(), 3);
  EXPECT_EQ(buttons[1]->text(), "&2  b&&c (m)");
  EXPECT_EQ(buttons[2]->nextInFocusChain(), full.findChild<QWidget*>("closeButton"));
  QTimer::singleShot(0, buttons[1], &QPushButton::click);
  EXPECT_EQ(static_cast<int>(full.Ask()), static_cast<int>(WelcomeChoice::FirstRecentLevel) + 1);
  QTimer::singleShot(0, sample, &QPushButton::click);
  EXPECT_EQ(full.Ask(), WelcomeChoice::SampleGame);
}

class LoadLevelTest : public WindowTest {
 protected:
  LoadLevelTest() {
    modConfig.GamePath = GameFolder();
    modConfig.modFolder = "Mods\\varnhold\\";
    modConfig.levelsFolder = kLevelsFolder;
    const auto levels = folder / "Mods/varnhold/Archives/varnhold/levels";
    std::filesystem::create_directories(levels);
    for (const char* name : {"Stone_Ridge.vra", "Harbour.vra", "Harbour_001.vra"}) {
      std::ofstream(levels / name) << "x";
    }
  }
  void Use(const char* what, const std::function<void(LoadLevelDialog&, QListWidget*)>& act) {
    WhenOpen<LoadLevelDialog>(
        [act](LoadLevelDialog& dialog) { act(dialog, dialog.findChild<QListWidget*>()); });
    Do(what, [] { return shell.loadLevelDialog(); });
    Tell("level \"" + modConfig.LevelName.String() + '"');
  }
};

TEST_F(LoadLevelTest, ListsTheLevelsAndIsLeftByItsButtonsOrADoubleClick) {
  Use("Escape, close box, Cancel", [this](LoadLevelDialog& dialog, QListWidget*) {
    TellControls(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, {"cancelButton"});
  });
  Use("the second one", [](LoadLevelDialog& dialog, QListWidget* list) {
    QTest::keyClick(list, Qt::Key_Down);
    Click(dialog, {"okButton"});
  });
  Use("double click on the first one", [](LoadLevelDialog&, QListWidget* list) {
    const QPoint entry = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, entry);
  });
  std::filesystem::remove_all(folder / "Mods");
  Do("without levels", [] { return shell.loadLevelDialog(); }, {PromptAnswer::Ok});
}

using PictureDialogTest = WindowTest;

TEST_F(PictureDialogTest, AnyKeyAndEitherClickCloseIt) {
  WhenOpen<SplashDialog>([](auto& dialog) {
    QTest::keyPress(&dialog, Qt::Key_Alt);
    EXPECT_TRUE(dialog.isVisible()) << "the rest of Alt+F4 would close the window behind";
    QTest::keyClick(&dialog, Qt::Key_A);
  });
  shell.aboutDialog();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::LeftButton}) {
    WhenOpen<CreditsDialog>([button](auto& dialog) {
      QLabel* const picture = dialog.template findChild<QLabel*>();
      QTest::mouseClick(picture, Qt::MiddleButton);
      EXPECT_TRUE(dialog.isVisible());
      QTest::mouseClick(picture, button);
    });
    shell.creditsDialog();
  }
}

TEST_F(PictureDialogTest, CreditsRiseRestAndStartAgain) {
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
