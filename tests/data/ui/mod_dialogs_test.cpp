// What the user does in the mod dialogs, as stories in tests/golden/data/mod_dialogs.
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

#include "data/mod_sandbox.h"

namespace mw {
namespace {

// What the dialog shows, as far as it is of interest.
std::string Shown(const QDialog& dialog) {
  if (!dialog.isVisible()) return "closed";
  QString text;
  if (const auto* list = dialog.findChild<QListWidget*>("modListBox")) {
    for (int i = 0; i < list->count(); ++i) {
      const QString entry = list->item(i)->text();
      text += i == list->currentRow() ? '[' + entry + "] " : entry + ' ';
    }
  }
  for (const char* name : {"modNameEdit", "gamePathEdit"}) {
    if (const auto* edit = dialog.findChild<QLineEdit*>(name)) text += '"' + edit->text() + "\" ";
  }
  if (const auto* list = dialog.findChild<QComboBox*>("objectListBox"))
    text += list->currentText() + ' ';
  if (const auto* files = qobject_cast<const QFileDialog*>(&dialog))
    text += "in " + files->directory().absolutePath();
  const auto* cancel = dialog.findChild<QPushButton*>("cancelButton");
  if (cancel && !cancel->isVisible() && !cancel->isEnabled()) text += "without Cancel";
  return text.trimmed().toStdString();
}

class ModDialogStory : public ModSandboxTest, public testing::WithParamInterface<std::string> {
 protected:
  ModDialogStory() {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, [this] { HandleOpenDialog(); });
    timer_.start();
  }

  // A verb that opens dialogs: each that opens is handled by the next of the steps that its words
  // are, with a stroke between them, which must close it.
  Verb WithSteps(const std::function<bool()>& open) {
    return [this, open](const Words& words) {
      steps_.assign(1, {});
      for (const std::string& word : words) {
        if (word == "/") {
          steps_.emplace_back();
        } else {
          steps_.back().push_back(word);
        }
      }
      if (words.empty()) steps_.clear();
      TellAnswer(open());
      EXPECT_TRUE(steps_.empty()) << "a dialog did not open";
      Tell("       picked " + std::to_string(modList.picked));
    };
  }

 private:
  // The step runs outside the timer's own call, so that a dialog opened by it is handled as well.
  void HandleOpenDialog() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || dialog->property("handled").toBool()) return;
    dialog->setProperty("handled", true);
    QTimer::singleShot(0, dialog, [this, dialog] { RunStep(*dialog); });
  }

  void RunStep(QDialog& dialog) {
    Tell("dialog " + dialog.windowTitle().toStdString() + ": " + Shown(dialog));
    if (steps_.empty()) {
      ADD_FAILURE() << "unexpected dialog";
    } else {
      const Words step = std::move(steps_.front());
      steps_.pop_front();
      for (const std::string& word : step) {
        Tell("- " + word);
        Use(dialog, word);
        Tell("  " + Shown(dialog));
      }
      EXPECT_FALSE(dialog.isVisible()) << "still open";
    }
    if (dialog.isVisible()) dialog.done(QDialog::Rejected);
  }

  // "name" presses a button or Return in a field, "name=text" types with "_" for a blank, or
  // chooses an entry; "modListBox*1" is a double click on the entry.
  void Use(QDialog& dialog, const std::string& word) {
    const QString name = QString::fromStdString(word).section('=', 0, 0).section('*', 0, 0);
    const bool isChoice = word.find('=') != word.npos;
    const QString text = QString::fromStdString(PathOf(word.substr(word.find('=') + 1)));
    if (name == "Escape") return QTest::keyClick(&dialog, Qt::Key_Escape);
    if (name == "close") return void(dialog.close());
    auto* const widget = dialog.findChild<QWidget*>(name);
    ASSERT_TRUE(widget) << word;
    if (auto* button = qobject_cast<QPushButton*>(widget))
      return QTest::mouseClick(button, Qt::LeftButton);
    if (!isChoice && word.ends_with(name.toStdString()))
      return QTest::keyClick(widget, Qt::Key_Return);
    if (auto* list = qobject_cast<QComboBox*>(widget)) return list->setCurrentText(text);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
      edit->selectAll();
      QTest::keyClick(edit, Qt::Key_Delete);
      return edit->insert(QString(text).replace('_', ' '));
    }
    auto* list = qobject_cast<QListWidget*>(widget);
    if (isChoice) return list->setCurrentRow(text.toInt());
    const QPoint entry = list->visualItemRect(list->item(word.back() - '0')).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, entry);
  }

  std::deque<Words> steps_;
  QTimer timer_;
};

TEST_P(ModDialogStory, GoesAsItIsTold) {
  auto verbs = Verbs();
  verbs["start"] = WithSteps([] { return ListMods(nullptr); });
  verbs["choose"] = WithSteps([] { return SelectModDialog(nullptr, true); });
  verbs["mustchoose"] = WithSteps([] { return SelectModDialog(nullptr, false); });
  verbs["settings"] = WithSteps([] { return EditModSettings(nullptr, true); });
  ActOut(GetParam(), verbs);
}

INSTANTIATE_TEST_SUITE_P(All, ModDialogStory, testing::ValuesIn(GoldenFiles("data/mod_dialogs")));

}  // namespace
}  // namespace mw
