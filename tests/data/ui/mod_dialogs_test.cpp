#include "data/ui/mod_dialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <gmock/gmock.h>

#include "data/mod_sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The user of the tests: each dialog that opens is handled by the next step, which must close it.
class ModDialogsTest : public ModSandboxTest {
 protected:
  using Step = std::function<void(QDialog&)>;

  ModDialogsTest() {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, [this] { HandleOpenDialog(); });
    timer_.start();
  }
  ~ModDialogsTest() override { EXPECT_TRUE(steps.empty()) << "a dialog did not open"; }

  std::deque<Step> steps;

 private:
  // The step runs outside the timer's own call, so that a dialog opened by it is handled as well.
  void HandleOpenDialog() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || dialog->property("handled").toBool()) return;
    dialog->setProperty("handled", true);
    QTimer::singleShot(0, dialog, [this, dialog] { RunStep(*dialog); });
  }

  void RunStep(QDialog& dialog) {
    if (steps.empty()) {
      ADD_FAILURE() << "unexpected dialog " << dialog.windowTitle().toStdString();
    } else {
      const Step step = std::move(steps.front());
      steps.pop_front();
      step(dialog);
      EXPECT_FALSE(dialog.isVisible()) << "still open: " << dialog.windowTitle().toStdString();
    }
    if (dialog.isVisible()) dialog.done(QDialog::Rejected);
  }

  QTimer timer_;
};

template <typename Widget = QPushButton>
Widget* Find(QDialog& dialog, const char* name) {
  auto* widget = dialog.findChild<Widget*>(name);
  EXPECT_TRUE(widget) << name;
  return widget;
}

void Click(QDialog& dialog, const char* button) {
  QTest::mouseClick(Find(dialog, button), Qt::LeftButton);
}

std::vector<std::string> Entries(QDialog& dialog) {
  std::vector<std::string> entries;
  auto* list = Find<QListWidget>(dialog, "modListBox");
  for (int i = 0; i < list->count(); ++i) entries.push_back(list->item(i)->text().toStdString());
  return entries;
}

TEST_F(ModDialogsTest, TheFirstModIsSelectedAndOkMakesItCurrent) {
  WriteMod("desert");
  WriteMod("winter");
  steps = {[](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Select a Mod");
    EXPECT_THAT(Entries(dialog), ElementsAre("desert", "winter"));
    EXPECT_FALSE(Find(dialog, "cancelButton")->isVisible());
    EXPECT_FALSE(Find(dialog, "cancelButton")->isEnabled());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible()) << "a mod must be chosen at start-up";
    QTest::keyClick(Find<QListWidget>(dialog, "modListBox"), Qt::Key_Return);
  }};
  ListMods(nullptr);
  EXPECT_EQ(CurrentModName(), "desert");
  EXPECT_EQ(modList.picked, 0);
}

TEST_F(ModDialogsTest, ADoubleClickSelectsAndCancelChangesNothing) {
  WriteMod("desert");
  WriteMod("winter");
  FindMods();
  steps = {[](QDialog& dialog) {
             auto* list = Find<QListWidget>(dialog, "modListBox");
             const QPoint entry = list->visualItemRect(list->item(1)).center();
             QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry);
             QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, entry);
           },
           [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }};
  EXPECT_TRUE(SelectModDialog(nullptr, true));
  EXPECT_EQ(CurrentModName(), "winter");
  EXPECT_FALSE(SelectModDialog(nullptr, true));
  EXPECT_EQ(modList.picked, -1);
  EXPECT_EQ(CurrentModName(), "winter");
}

TEST_F(ModDialogsTest, DeleteRefillsTheList) {
  WriteMod("desert");
  WriteMod("winter");
  FindMods();
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Ok};
  steps = {[](QDialog& dialog) {
    Find<QListWidget>(dialog, "modListBox")->setCurrentRow(1);
    Click(dialog, "deleteButton");
    EXPECT_THAT(Entries(dialog), ElementsAre("desert"));
    EXPECT_EQ(Find<QListWidget>(dialog, "modListBox")->currentRow(), 0);
    Click(dialog, "deleteButton");
    Click(dialog, "okButton");
  }};
  EXPECT_TRUE(SelectModDialog(nullptr, false));
  EXPECT_EQ(scripted::script.prompts.back().text, "You must always have at least one mod.");
  EXPECT_EQ(CurrentModName(), "desert");
}

TEST_F(ModDialogsTest, AModThatCannotBeReadKeepsTheDialogOpen) {
  WriteMod("desert");
  WriteMod("winter");
  FindMods();
  DeleteDiskFile("desert.cfg");
  scripted::script.answers = {PromptAnswer::Ok};
  steps = {[](QDialog& dialog) {
    Click(dialog, "okButton");
    EXPECT_TRUE(dialog.isVisible());
    Find<QListWidget>(dialog, "modListBox")->setCurrentRow(1);
    Click(dialog, "okButton");
  }};
  EXPECT_TRUE(SelectModDialog(nullptr, false));
  EXPECT_EQ(CurrentModName(), "winter");
}

TEST_F(ModDialogsTest, WithoutModsTheFirstOneIsMadeFromTheTemplate) {
  Write("mpwr.cfg", "GamePath=\nObjectsList=b.lst\nTexturePath=Mods\\varnhold\\texture\n");
  Write("a.lst", "");
  Write("b.lst", "");
  std::filesystem::create_directories(folder / "Mods");
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
  steps = {
      [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "New Mod");
        EXPECT_EQ(Find<QLineEdit>(dialog, "modNameEdit")->text(), "varnhold");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClicks(Find<QLineEdit>(dialog, "modNameEdit"), "My Mod!");
        Click(dialog, "okButton");
      },
      [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Edit Mod Settings - My_Mod_");
        EXPECT_EQ(Find<QComboBox>(dialog, "objectListBox")->currentText(), "b.lst");
        Find<QComboBox>(dialog, "objectListBox")->setCurrentIndex(0);
        Find<QLineEdit>(dialog, "gamePathEdit")->setText(QString::fromStdString(folder.string()));
        Click(dialog, "okButton");
      }};
  EXPECT_TRUE(ListMods(nullptr));
  EXPECT_EQ(scripted::script.prompts.size(), 2u);
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("texture.vra: "));
  EXPECT_EQ(scripted::script.prompts.at(0).caption, "New MOD Configuration");
  EXPECT_THAT(scripted::script.prompts.at(0).text, HasSubstr("Do you wish to proceed?"));
  EXPECT_EQ(scripted::script.prompts.at(0).buttons, PromptButtons::YesNo);
  EXPECT_EQ(CurrentModName(), "My_Mod_");
  EXPECT_EQ(modConfig.GamePath, GameFolder());
  EXPECT_EQ(modConfig.ObjectsList, "a.lst");
  EXPECT_TRUE(FileExists("Mods\\My_Mod_\\Init.con"));
  EXPECT_EQ(HeldContentArchives()[3], GameFolder() + "Mods\\varnhold\\Archives\\texture.vra");
}

TEST_F(ModDialogsTest, DecliningTheOnlyNewModLeavesNone) {
  Write("mpwr.cfg", "");
  scripted::script.answers = {PromptAnswer::No};
  EXPECT_TRUE(ListMods(nullptr));
  EXPECT_EQ(modList.current, -1);
}

TEST_F(ModDialogsTest, AFolderInWhichNoModCanBeMadeIsNamedAndCanBeLeft) {
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Yes, PromptAnswer::Ok};
  EXPECT_FALSE(ListMods(nullptr)) << "no template";
  Write("mpwr.cfg", "");
  std::filesystem::create_directories(folder / "varnhold.cfg");  // cannot be written over
  steps = {[](QDialog& dialog) {
    Click(dialog, "okButton");
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, "cancelButton");
  }};
  EXPECT_TRUE(ListMods(nullptr));
  EXPECT_EQ(modList.current, -1);
  ASSERT_EQ(scripted::script.prompts.size(), 3u);
  for (const std::size_t prompt : {0u, 2u}) {
    EXPECT_THAT(scripted::script.prompts[prompt].text, HasSubstr(folder.string()));
  }
}

TEST_F(ModDialogsTest, ANewModIsSelectedInTheListItWasMadeFrom) {
  Write("mpwr.cfg", "");
  WriteMod("winter");
  FindMods();
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok, PromptAnswer::Ok};
  steps = {[](QDialog& dialog) {
             Click(dialog, "newButton");
             EXPECT_THAT(Entries(dialog), ElementsAre("winter", "desert"));
             EXPECT_EQ(Find<QListWidget>(dialog, "modListBox")->currentRow(), 1);
             Click(dialog, "okButton");
           },
           [](QDialog& dialog) {
             Find<QLineEdit>(dialog, "modNameEdit")->setText("winter");
             Click(dialog, "okButton");
             EXPECT_TRUE(dialog.isVisible()) << "the name exists";
             Find<QLineEdit>(dialog, "modNameEdit")->setText("desert");
             Click(dialog, "okButton");
           },
           [](QDialog& dialog) { Click(dialog, "cancelButton"); }};
  EXPECT_TRUE(SelectModDialog(nullptr, true));
  EXPECT_EQ(scripted::script.prompts.at(1).text, "A mod with this name exists already.");
  EXPECT_THAT(scripted::script.prompts.at(2).text, HasSubstr("No game path is set."));
  EXPECT_EQ(CurrentModName(), "desert");
}

TEST_F(ModDialogsTest, BrowsingTakesTheChosenFolder) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  std::filesystem::create_directories(folder / "Game" / "Mods");
  steps = {[](QDialog& dialog) {
             Click(dialog, "browseButton");
             EXPECT_THAT(Find<QLineEdit>(dialog, "gamePathEdit")->text().toStdString(),
                         ::testing::EndsWith("\\Game\\"));
             Click(dialog, "cancelButton");
           },
           [this](QDialog& dialog) {
             EXPECT_EQ(dialog.windowTitle(), "Choose your root Varnhold directory:");
             auto& chooser = dynamic_cast<QFileDialog&>(dialog);
             EXPECT_EQ(chooser.directory().absolutePath().toStdString(), folder.string());
             Find<QLineEdit>(dialog, "fileNameEdit")->setText("Game");
             QTest::keyClick(Find<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
           }};
  EXPECT_FALSE(EditModSettings(nullptr, true));
  EXPECT_EQ(modConfig.GamePath, GameFolder()) << "cancelled";
}

// A screen reader reads a field by its label, and everything by its text.
TEST_F(ModDialogsTest, EveryFieldHasItsLabelAndNothingIsCutOff) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  scripted::script.answers = {PromptAnswer::Yes};
  Write("mpwr.cfg", "");
  const Step check = [](QDialog& dialog) {
    for (const auto* label : dialog.findChildren<QLabel*>()) {
      EXPECT_TRUE(label->buddy()) << label->text().toStdString();
    }
    for (const auto* widget : dialog.findChildren<QWidget*>()) {
      if (!widget->isVisible() || !qobject_cast<const QPushButton*>(widget)) continue;
      EXPECT_GE(widget->width(), widget->sizeHint().width());
      EXPECT_TRUE(widget->property("controlId").isValid());
    }
    Click(dialog, "okButton");
  };
  steps = {
      check,
      [](QDialog& dialog) {
        Find<QLineEdit>(dialog, "modNameEdit")->setText("fresh");
        EXPECT_EQ(Find<QLabel>(dialog, "modNameLabel")->buddy(),
                  Find<QLineEdit>(dialog, "modNameEdit"));
        Click(dialog, "okButton");
      },
      [&](QDialog& dialog) {
        Find<QLineEdit>(dialog, "gamePathEdit")->setText("x");
        Find<QLineEdit>(dialog, "gamePathEdit")->setText(QString::fromStdString(folder.string()));
        check(dialog);
      }};
  EXPECT_TRUE(SelectModDialog(nullptr, true));
  EXPECT_TRUE(NewModConfig(nullptr, true));
}

}  // namespace
}  // namespace mw
