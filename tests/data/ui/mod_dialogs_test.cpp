#include "data/ui/mod_dialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>

#include "data/mod_sandbox.h"
#include "support/prompts.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

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

template <typename Widget>
Widget& Find(QDialog& dialog, const char* name) {
  auto* widget = dialog.findChild<Widget*>(name);
  if (!widget) throw std::logic_error(name);
  return *widget;
}
QListWidget& List(QDialog& dialog) { return Find<QListWidget>(dialog, "modListBox"); }
QLineEdit& Edit(QDialog& dialog, const char* name) { return Find<QLineEdit>(dialog, name); }

void Click(QDialog& dialog, const char* button) {
  QTest::mouseClick(&Find<QPushButton>(dialog, button), Qt::LeftButton);
}
void Escape(QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }

std::vector<std::string> Entries(QDialog& dialog) {
  std::vector<std::string> entries;
  for (int i = 0; i < List(dialog).count(); ++i) {
    entries.push_back(List(dialog).item(i)->text().toStdString());
  }
  return entries;
}

TEST_F(ModDialogsTest, AModMustBeChosenAtStartUpAndCanBeLater) {
  UseMods({"desert", "winter"});
  steps = {[](QDialog& dialog) {
             EXPECT_EQ(dialog.windowTitle(), "Select a Mod");
             EXPECT_THAT(Entries(dialog), ElementsAre("desert", "winter"));
             EXPECT_FALSE(Find<QPushButton>(dialog, "cancelButton").isVisible());
             EXPECT_FALSE(Find<QPushButton>(dialog, "cancelButton").isEnabled());
             Escape(dialog);
             dialog.close();
             EXPECT_TRUE(dialog.isVisible());
             QTest::keyClick(&List(dialog), Qt::Key_Return);
           },
           [](QDialog& dialog) {
             EXPECT_EQ(CurrentModName(), "desert");
             EXPECT_EQ(modList.picked, -1);
             QListWidget& list = List(dialog);
             const QPoint entry = list.visualItemRect(list.item(1)).center();
             QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, entry);
             QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, entry);
           },
           Escape};
  EXPECT_TRUE(ListMods(nullptr));
  EXPECT_EQ(modList.picked, 0);
  EXPECT_TRUE(SelectModDialog(nullptr, true));
  EXPECT_EQ(modList.picked, 1);
  EXPECT_FALSE(SelectModDialog(nullptr, true));
  EXPECT_EQ(modList.picked, -1);
  EXPECT_EQ(CurrentModName(), "winter");
}

TEST_F(ModDialogsTest, DeleteRefillsTheListAndWhatCannotBeReadKeepsTheDialogOpen) {
  UseMods({"desert", "spring", "winter"});
  DeleteDiskFile("desert.cfg");
  Answer({PromptAnswer::Ok, PromptAnswer::Ok, PromptAnswer::Ok, PromptAnswer::Ok});
  steps = {[](QDialog& dialog) {
    Click(dialog, "okButton");
    EXPECT_TRUE(dialog.isVisible());
    List(dialog).setCurrentRow(2);
    Click(dialog, "deleteButton");
    EXPECT_THAT(Entries(dialog), ElementsAre("desert", "spring"));
    EXPECT_EQ(List(dialog).currentRow(), 0);
    for (int time = 0; time < 2; ++time) Click(dialog, "deleteButton");
    Click(dialog, "okButton");
  }};
  EXPECT_TRUE(SelectModDialog(nullptr, false));
  ExpectPrompts({"Can't load desert.cfg", "delete the Mod \"winter\"", "delete the Mod \"desert\"",
                 "You must always have at least one mod."});
  EXPECT_EQ(CurrentModName(), "spring");
}

TEST_F(ModDialogsTest, WithoutModsTheFirstOneIsMadeFromTheTemplate) {
  Write("mpwr.cfg", "GamePath=\nObjectsList=b.lst\nTexturePath=Mods\\varnhold\\texture\n");
  for (const char* list : {"a.lst", "b.lst"}) Write(list, "");
  std::filesystem::create_directories(folder / "Mods");
  Answer({PromptAnswer::Yes, PromptAnswer::Ok, PromptAnswer::Yes});
  steps = {[](QDialog& dialog) {
             EXPECT_EQ(dialog.windowTitle(), "New Mod");
             EXPECT_EQ(Edit(dialog, "modNameEdit").text(), "varnhold");
             Escape(dialog);
             EXPECT_TRUE(dialog.isVisible());
             QTest::keyClicks(&Edit(dialog, "modNameEdit"), "My Mod!");
             Click(dialog, "okButton");
           },
           [this](QDialog& dialog) {
             EXPECT_EQ(dialog.windowTitle(), "Edit Mod Settings - My_Mod_");
             EXPECT_EQ(Find<QComboBox>(dialog, "objectListBox").currentText(), "b.lst");
             Edit(dialog, "gamePathEdit").clear();
             Click(dialog, "okButton");
             EXPECT_TRUE(dialog.isVisible());
             Find<QComboBox>(dialog, "objectListBox").setCurrentIndex(0);
             Edit(dialog, "gamePathEdit").setText(QString::fromStdString(folder.string()));
             Click(dialog, "okButton");
           }};
  EXPECT_TRUE(ListMods(nullptr));
  ExpectPrompts(
      {"New MOD Configuration: WARNING: Creating a new MOD configuration now will change "
       "your current map\nsettings.",
       "Please enter the game path.", "texture.vra: "});
  EXPECT_EQ(CurrentModName(), "My_Mod_");
  EXPECT_EQ(modConfig.GamePath, GameFolder());
  EXPECT_EQ(modConfig.ObjectsList, "a.lst");
  EXPECT_TRUE(FileExists("Mods\\My_Mod_\\Init.con"));
  EXPECT_EQ(HeldContentArchives()[3], GameFolder() + "Mods\\varnhold\\Archives\\texture.vra");
}

TEST_F(ModDialogsTest, AFolderInWhichNoModCanBeMadeIsNamedAndCanBeLeft) {
  Answer({PromptAnswer::Ok, PromptAnswer::No, PromptAnswer::Yes, PromptAnswer::Ok});
  EXPECT_FALSE(ListMods(nullptr)) << "no template";
  Write("mpwr.cfg", "");
  EXPECT_TRUE(ListMods(nullptr)) << "the new mod is declined";
  std::filesystem::create_directories(folder / "varnhold.cfg");  // cannot be written over
  steps = {[](QDialog& dialog) {
    Click(dialog, "okButton");
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, "cancelButton");
  }};
  EXPECT_TRUE(ListMods(nullptr));
  EXPECT_EQ(modList.current, -1);
  const std::string proceed = "Do you wish to proceed? [YesNo]";
  ExpectPrompts({"started:\n\n" + folder.string(), proceed, proceed, folder.string()});
}

TEST_F(ModDialogsTest, ANewModIsSelectedInTheListItWasMadeFrom) {
  Write("mpwr.cfg", "");
  UseMods({"winter"});
  Answer({PromptAnswer::Yes, PromptAnswer::Ok, PromptAnswer::Ok});
  steps = {[](QDialog& dialog) {
             Click(dialog, "newButton");
             EXPECT_THAT(Entries(dialog), ElementsAre("winter", "desert"));
             EXPECT_EQ(List(dialog).currentRow(), 1);
             Click(dialog, "okButton");
           },
           [](QDialog& dialog) {
             for (const char* name : {"winter", "desert"}) {  // the first name exists
               EXPECT_TRUE(dialog.isVisible());
               Edit(dialog, "modNameEdit").setText(name);
               Click(dialog, "okButton");
             }
           },
           [](QDialog& dialog) { Click(dialog, "cancelButton"); }};
  EXPECT_TRUE(SelectModDialog(nullptr, true));
  ExpectPrompts({"proceed?", "A mod with this name exists already.", "No game path is set."});
  EXPECT_EQ(CurrentModName(), "desert");
}

TEST_F(ModDialogsTest, BrowsingTakesTheChosenFolder) {
  UseMods({"winter"}, 0);
  std::filesystem::create_directories(folder / "Game" / "Mods");
  steps = {[](QDialog& dialog) {
             Click(dialog, "browseButton");
             EXPECT_TRUE(Edit(dialog, "gamePathEdit").text().endsWith("\\Game\\"));
             Click(dialog, "cancelButton");
           },
           [this](QDialog& dialog) {
             EXPECT_EQ(dialog.windowTitle(), "Choose your root Varnhold directory:");
             auto& chooser = dynamic_cast<QFileDialog&>(dialog);
             EXPECT_EQ(chooser.directory().absolutePath().toStdString(), folder.string());
             Edit(dialog, "fileNameEdit").setText("Game");
             QTest::keyClick(&Edit(dialog, "fileNameEdit"), Qt::Key_Return);
           }};
  EXPECT_FALSE(EditModSettings(nullptr, true));
  EXPECT_EQ(modConfig.GamePath, GameFolder()) << "cancelled";
}

}  // namespace
}  // namespace mw
