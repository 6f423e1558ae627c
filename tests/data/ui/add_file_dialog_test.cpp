#include "data/ui/add_file_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gmock/gmock.h>

#include "data/level_archive_test.h"
#include "platform/disk.h"
#include "support/open_dialog.h"

namespace mw {
namespace {

struct OpenDialog : DialogUnderTest {
  QPushButton& Ok() const { return Widget<QPushButton>("okButton"); }
  QComboBox& Destination() const { return Widget<QComboBox>("destinationCombo"); }
  QLineEdit& Source() const { return Widget<QLineEdit>("sourceEdit"); }
  // Picks a file in the file dialog that "..." opens.
  void Choose(const QString& path) const {
    QTimer::singleShot(0, &window, [path] {
      auto* const files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(files);
      EXPECT_EQ(files->windowTitle(), "Source File");
      EXPECT_EQ(files->nameFilters(), QStringList{"All Files *.* (*)"});
      files->findChild<QLineEdit*>("fileNameEdit")->setText(path);
      static_cast<QDialog*>(files)->accept();
    });
    Widget<QPushButton>("browseButton").click();
  }
};

class AddFileDialogTest : public LevelArchiveTest {
 protected:
  AddFileDialogTest() { EXPECT_TRUE(WriteWholeFile("loading screen", "picture\n")); }

  // Runs the dialog, lets the user act, and cancels if it is still open then.
  static void Run(const std::function<void(const OpenDialog&)>& act) {
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      opened = true;
      act({*dialog});
      if (dialog->isVisible()) dialog->findChild<QPushButton*>("cancelButton")->click();
    });
    AddFileDialog(nullptr);
    EXPECT_TRUE(opened);
  }
  QString SourceFile() const {
    return QString::fromStdString((folder / "loading screen").string());
  }
};

TEST_F(AddFileDialogTest, OpensWithTheLevelsFolderAndWaitsForASource) {
  Run([](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Add File To Archive");
    EXPECT_TRUE(dialog.Source().isReadOnly());
    EXPECT_EQ(dialog.Destination().currentText(), "varnhold\\levels\\Island");
    EXPECT_EQ(dialog.Destination().count(), 1);
    EXPECT_FALSE(dialog.Ok().isEnabled());
    const auto& note = dialog.Widget<QLabel>("noteLabel");
    EXPECT_EQ(
        note.text(),
        "*NOTE* This process will add a file to the LEVEL archive.  It is not designed to add "
        "any file to any game VRA or archive.  Providing an incorrect 'Destination' path can "
        "cause your level archive to not load properly in the game.  Use at your own "
        "discression");
    EXPECT_GE(note.height(), note.heightForWidth(note.width())) << "the note is cut off";
    EXPECT_EQ(dialog.Widget<QLabel>("sourceLabel").buddy(), &dialog.Source());
    EXPECT_EQ(dialog.Widget<QLabel>("destinationLabel").buddy(), &dialog.Destination());
  });
}

TEST_F(AddFileDialogTest, AddsTheChosenFileUnderItsOwnName) {
  Run([&](const OpenDialog& dialog) {
    dialog.Choose(SourceFile());
    EXPECT_EQ(dialog.Source().text(), SourceFile());
    EXPECT_TRUE(dialog.Ok().isEnabled());
    EXPECT_TRUE(level->Entries().empty());
    dialog.Ok().click();
    EXPECT_FALSE(dialog.window.isVisible());
  });
  EXPECT_EQ(Get("loading screen"), "picture\n");
}

TEST_F(AddFileDialogTest, AddsToTheTypedDestination) {
  Run([&](const OpenDialog& dialog) {
    dialog.Choose(SourceFile());
    dialog.Destination().setEditText("Mods/mymod/menu");
    dialog.Ok().click();
  });
  ASSERT_TRUE(level->Find("menu/loading screen"));
  EXPECT_EQ(level->Entries().size(), 1u);
}

TEST_F(AddFileDialogTest, CancellingAddsNothing) {
  Run([&](const OpenDialog& dialog) { dialog.Choose(SourceFile()); });
  EXPECT_TRUE(level->Entries().empty());
}

TEST_F(AddFileDialogTest, AFileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
  Put("loading screen", "mine");
  scripted::script.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
  Run([&](const OpenDialog& dialog) {
    dialog.Choose(SourceFile());
    dialog.Ok().click();
    EXPECT_EQ(Get("loading screen"), "mine");
    EXPECT_TRUE(dialog.window.isVisible()) << "for another destination";
    dialog.Ok().click();
  });
  EXPECT_THAT(scripted::script.prompts.at(0).text,
              ::testing::EndsWith("varnhold\\levels\\Island\\loading screen"));
  EXPECT_EQ(Get("loading screen"), "picture\n");
}

TEST_F(AddFileDialogTest, AFileThatCannotBeAddedSaysWhy) {
  archives.Clear();
  scripted::script.answers = {PromptAnswer::Ok};
  Run([&](const OpenDialog& dialog) {
    dialog.Choose(SourceFile());
    dialog.Ok().click();
  });
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "No archive is open for writing.");
  EXPECT_EQ(scripted::script.prompts[0].caption, "Error");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Stop);
}

}  // namespace
}  // namespace mw
