#include "data/ui/add_file_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "data/level_archive_test.h"
#include "platform/disk.h"
#include "support/open_dialog.h"
#include "support/prompts.h"

namespace mw {
namespace {

QString SourceFile() {
  return QString::fromStdString(std::filesystem::absolute("loading screen").string());
}

struct OpenDialog : DialogUnderTest {
  QPushButton& Ok() const { return Widget<QPushButton>("okButton"); }
  QComboBox& Destination() const { return Widget<QComboBox>("destinationCombo"); }
  QLineEdit& Source() const { return Widget<QLineEdit>("sourceEdit"); }
  // Picks the file in the file dialog that "..." opens.
  void Choose() const {
    QTimer::singleShot(0, &window, [] {
      auto* const files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(files);
      EXPECT_EQ(files->windowTitle(), "Source File");
      EXPECT_EQ(files->nameFilters(), QStringList{"All Files *.* (*)"});
      files->findChild<QLineEdit*>("fileNameEdit")->setText(SourceFile());
      static_cast<QDialog*>(files)->accept();
    });
    Widget<QPushButton>("browseButton").click();
  }
};

class AddFileDialogTest : public LevelArchiveTest {
 protected:
  AddFileDialogTest() { EXPECT_TRUE(WriteWholeFile("loading screen", "picture\n")); }

  // Runs the dialog, lets the user act once the source is chosen, and cancels if it is still open.
  static void Run(const std::function<void(const OpenDialog&)>& act) {
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* const window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(window);
      opened = true;
      const OpenDialog dialog{*window};
      EXPECT_FALSE(dialog.Ok().isEnabled()) << "without a source";
      dialog.Choose();
      act(dialog);
      if (window->isVisible()) dialog.Widget<QPushButton>("cancelButton").click();
    });
    AddFileDialog(nullptr);
    EXPECT_TRUE(opened);
  }
};

TEST_F(AddFileDialogTest, AddsTheChosenFileToTheLevelsFolderOrTheTypedOne) {
  Run([&](const OpenDialog& dialog) {
    EXPECT_TRUE(dialog.Source().isReadOnly());
    EXPECT_EQ(dialog.Source().text(), SourceFile());
    EXPECT_EQ(dialog.Destination().currentText(), "varnhold\\levels\\Island");
    EXPECT_EQ(dialog.Destination().count(), 1);
  });
  EXPECT_TRUE(level->Entries().empty()) << "it was cancelled";
  Run([&](const OpenDialog& dialog) {
    dialog.Ok().click();
    EXPECT_FALSE(dialog.window.isVisible());
  });
  EXPECT_EQ(Get("loading screen"), "picture\n");
  Run([&](const OpenDialog& dialog) {
    dialog.Destination().setEditText("Mods/mymod/menu");
    dialog.Ok().click();
  });
  EXPECT_TRUE(level->Find("menu/loading screen"));
  EXPECT_EQ(level->Entries().size(), 2u);
}

TEST_F(AddFileDialogTest, AFileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
  Put("loading screen", "mine");
  Answer({PromptAnswer::Cancel, PromptAnswer::Ok});
  Run([&](const OpenDialog& dialog) {
    dialog.Ok().click();
    EXPECT_EQ(Get("loading screen"), "mine");
    EXPECT_TRUE(dialog.window.isVisible()) << "for another destination";
    dialog.Ok().click();
  });
  const std::string name = "varnhold\\levels\\Island\\loading screen [OkCancel]";
  ExpectPrompts({name, name});
  EXPECT_EQ(Get("loading screen"), "picture\n");
  archives.Clear();
  Answer({PromptAnswer::Ok});
  Run([](const OpenDialog& dialog) { dialog.Ok().click(); });
  ExpectPrompts({"Error: No archive is open for writing. (Stop)"});
}

}  // namespace
}  // namespace mw
