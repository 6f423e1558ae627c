#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <fstream>

#include "app/ui/load_level_dialog.h"
#include "app/ui/picture_dialog.h"
#include "app/ui/welcome_dialog.h"
#include "app/ui/window_fixture.h"

namespace mw {
namespace {

using WelcomeTest = WindowTest;

TEST_F(WelcomeTest, EachButtonMakesItsChoice) {
  const auto answer = [](const char* button) {
    WhenOpen<WelcomeDialog>([button](WelcomeDialog& dialog) {
      QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    });
    return shell.welcomeDialog({});
  };
  EXPECT_EQ(answer("openButton"), WelcomeChoice::OpenLevel);
  EXPECT_EQ(answer("newButton"), WelcomeChoice::NewLevel);
  EXPECT_EQ(answer("closeButton"), WelcomeChoice::Close);
}

TEST_F(WelcomeTest, EscapeAndCloseBoxChooseANewLevel) {
  WhenOpen<WelcomeDialog>([](auto& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(shell.welcomeDialog({}), WelcomeChoice::NewLevel);
  WhenOpen<WelcomeDialog>([](auto& dialog) { dialog.close(); });
  EXPECT_EQ(shell.welcomeDialog({}), WelcomeChoice::NewLevel);
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
    std::filesystem::create_directories(Levels());
  }
  std::filesystem::path Levels() const { return folder / "Mods/varnhold/Archives/varnhold/levels"; }
  void MakeLevels(const std::vector<std::string>& names) {
    for (const std::string& name : names) std::ofstream(Levels() / (name + ".vra"));
  }
  static QListWidget* List(LoadLevelDialog& dialog) { return dialog.findChild<QListWidget*>(); }
};

TEST_F(LoadLevelTest, ListsTheLevelsSortedAndTakesTheSelectedOne) {
  MakeLevels({"Stone_Ridge", "Harbour", "Harbour_001"});
  WhenOpen<LoadLevelDialog>([](LoadLevelDialog& dialog) {
    ASSERT_EQ(List(dialog)->count(), 2);
    EXPECT_EQ(List(dialog)->item(0)->text(), "Harbour");
    EXPECT_EQ(List(dialog)->currentRow(), 0);
    QTest::keyClick(List(dialog), Qt::Key_Down);
    QTest::mouseClick(dialog.findChild<QPushButton*>("okButton"), Qt::LeftButton);
  });
  EXPECT_TRUE(shell.loadLevelDialog());
  EXPECT_EQ(modConfig.LevelName, "Stone_Ridge");
}

TEST_F(LoadLevelTest, DoubleClickTakesTheEntry) {
  MakeLevels({"Harbour"});
  WhenOpen<LoadLevelDialog>([](LoadLevelDialog& dialog) {
    const QPoint entry = List(dialog)->visualItemRect(List(dialog)->item(0)).center();
    QTest::mouseClick(List(dialog)->viewport(), Qt::LeftButton, {}, entry);
    QTest::mouseDClick(List(dialog)->viewport(), Qt::LeftButton, {}, entry);
  });
  EXPECT_TRUE(shell.loadLevelDialog());
}

TEST_F(LoadLevelTest, EscapeAndCloseBoxDoNothingAndCancelChangesNothing) {
  MakeLevels({"Harbour"});
  WhenOpen<LoadLevelDialog>([](LoadLevelDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    QTest::mouseClick(dialog.findChild<QPushButton*>("cancelButton"), Qt::LeftButton);
  });
  EXPECT_FALSE(shell.loadLevelDialog());
  EXPECT_TRUE(modConfig.LevelName.empty());
}

TEST_F(LoadLevelTest, WithoutLevelsItSaysSo) {
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(shell.loadLevelDialog());
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "No levels were found for this mod.");
  EXPECT_EQ(scripted::script.prompts[0].caption, "Error");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Stop);
}

using PictureDialogTest = WindowTest;

TEST_F(PictureDialogTest, AnyKeyAndEitherClickCloseIt) {
  WhenOpen<SplashDialog>([](auto& dialog) {
    QTest::keyPress(&dialog, Qt::Key_Alt);
    EXPECT_TRUE(dialog.isVisible()) << "the rest of Alt+F4 would close the window behind";
    QTest::keyClick(&dialog, Qt::Key_A);
  });
  shell.aboutDialog();
  WhenOpen<SplashDialog>([](auto& dialog) {
    QTest::mouseClick(dialog.template findChild<QLabel*>(), Qt::RightButton);
  });
  shell.aboutDialog();
  WhenOpen<CreditsDialog>([](auto& dialog) {
    QTest::mouseClick(dialog.template findChild<QLabel*>(), Qt::MiddleButton);
    EXPECT_TRUE(dialog.isVisible());
    QTest::mouseClick(dialog.template findChild<QLabel*>(), Qt::LeftButton);
  });
  shell.creditsDialog();
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
