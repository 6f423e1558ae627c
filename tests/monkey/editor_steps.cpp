#include "tests/monkey/editor_steps.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "tests/monkey/inputs.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/tour.h"

namespace mw::monkey {
namespace {

const QString kArrow = QStringLiteral(" \u2192 ");

void ChooseLevelInDialogs(const QString& level, const QString& mod) {
  Do("dialog", "Select a Mod");
  Do("row", mod);
  Do("button", "OK");
  Do("dialog", "Load Level");
  Do("row", level);
  Do("button", "OK");
  Do("editor");
  const bool isOpen = help::OnGui(
      [level] { return editor.levelLoaded && modConfig.LevelName.View() == level.toStdString(); });
  if (!isOpen) throw help::TourError(level + " was not opened");
}

// What is in front, and says why nothing goes on.
QString InFront() {
  const QWidget* const dialog = QApplication::activeModalWidget();
  if (!dialog) return "no dialog is open";
  const auto* const box = qobject_cast<const QMessageBox*>(dialog);
  return "in front is '" + dialog->windowTitle() + "' " + (box ? box->text() : QString());
}

bool IsAsked() {
  return help::OnGui([] {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog && dialog->windowTitle() == "Save?";
  });
}

}  // namespace

void Do(const QString& action, const QString& text, const QHash<QString, QString>& data) {
  help::Step step;
  step.action = action;
  step.text = text;
  step.data = data;
  try {
    help::DoStep(step);
  } catch (const std::exception& reason) {
    throw help::TourError(action + " \"" + text + "\": " + QString::fromUtf8(reason.what()) + "; " +
                          help::OnGui(InFront));
  }
}

void StartWithLevel(const QString& level) {
  Do("dialog", "About Mapwright");
  Do("key", {}, {{"key", "Space"}});
  Do("dialog", "Select a Mod");
  Do("button", "OK");
  Do("dialog", "Mapwright");
  Do("button", "Open an Existing Level");
  ChooseLevelInDialogs(level, kSampleMod);
}

void OpenLevelByMenu(const QString& level, const QString& mod) {
  Do("menu", "File" + kArrow + "Open Level");
  if (IsAsked()) Do("button", "No");
  ChooseLevelInDialogs(level, mod);
}

void SaveByMenu() {
  Do("menu", "File" + kArrow + "Save Level");
  Do("editor");
}

void ExitByMenu() { Do("menu", "File" + kArrow + "Exit"); }

}  // namespace mw::monkey
