#include "data/ui/add_file_dialog.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <filesystem>

#include "data/level_archive_test.h"
#include "platform/disk.h"
#include "support/open_dialog.h"
#include "support/prompts.h"

namespace mw {
namespace {

QString SourceFile() {
  return QString::fromStdString(std::filesystem::absolute("loading screen").string());
}

// Picks the file in the file dialog that "..." opens.
void ChooseSource(const OpenDialog& dialog) {
  WhenDialogOpens([](const OpenDialog& chooser) {
    auto* const files = qobject_cast<QFileDialog*>(&chooser.window);
    ASSERT_TRUE(files);
    EXPECT_EQ(files->windowTitle(), "Source File");
    EXPECT_EQ(files->nameFilters(), QStringList{"All Files *.* (*)"});
    chooser.Widget<QLineEdit>("fileNameEdit").setText(SourceFile());
    chooser.window.accept();
  });
  dialog.Press("browseButton");
}

class AddFileDialogTest : public LevelArchiveTest {
 protected:
  AddFileDialogTest() { EXPECT_TRUE(WriteWholeFile("loading screen", "picture\n")); }

  // Runs the dialog, lets the user act once the source is chosen, and cancels if it is still open.
  static void Run(const std::function<void(const OpenDialog&)>& act) {
    bool opened = false;
    WhenDialogOpens([&](const OpenDialog& dialog) {
      opened = true;
      EXPECT_FALSE(dialog.Widget<QPushButton>("okButton").isEnabled()) << "without a source";
      ChooseSource(dialog);
      act(dialog);
    });
    AddFileDialog(nullptr);
    EXPECT_TRUE(opened);
  }
};

TEST_F(AddFileDialogTest, AddsTheChosenFileToTheLevelsFolderOrTheTypedOne) {
  Run([&](const OpenDialog& dialog) {
    EXPECT_TRUE(dialog.Widget<QLineEdit>("sourceEdit").isReadOnly());
    EXPECT_EQ(dialog.Widget<QLineEdit>("sourceEdit").text(), SourceFile());
    EXPECT_EQ(dialog.Widget<QComboBox>("destinationCombo").currentText(),
              "varnhold\\levels\\Island");
    EXPECT_EQ(dialog.Widget<QComboBox>("destinationCombo").count(), 1);
    dialog.Press("cancelButton");
  });
  EXPECT_TRUE(level->Entries().empty()) << "it was cancelled";
  Run([&](const OpenDialog& dialog) {
    dialog.Press("okButton");
    EXPECT_FALSE(dialog.window.isVisible());
  });
  EXPECT_EQ(Get("loading screen"), "picture\n");
  Run([&](const OpenDialog& dialog) {
    dialog.Widget<QComboBox>("destinationCombo").setEditText("Mods/mymod/menu");
    dialog.Press("okButton");
  });
  EXPECT_TRUE(level->Find("menu/loading screen"));
  EXPECT_EQ(level->Entries().size(), 2u);
}

TEST_F(AddFileDialogTest, AFileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
  Put("loading screen", "mine");
  Answer({PromptAnswer::Cancel, PromptAnswer::Ok});
  Run([&](const OpenDialog& dialog) {
    dialog.Press("okButton");
    EXPECT_EQ(Get("loading screen"), "mine");
    EXPECT_TRUE(dialog.window.isVisible()) << "for another destination";
    dialog.Press("okButton");
  });
  const std::string name = "varnhold\\levels\\Island\\loading screen [OkCancel]";
  ExpectPrompts({name, name});
  EXPECT_EQ(Get("loading screen"), "picture\n");
  archives.Clear();
  Answer({PromptAnswer::Ok});
  Run([](const OpenDialog& dialog) { dialog.Press("okButton"); });
  ExpectPrompts({"Error: No archive is open for writing. (Stop)"});
}

}  // namespace
}  // namespace mw
