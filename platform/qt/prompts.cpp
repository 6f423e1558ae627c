#include "platform/prompts.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <algorithm>
#include <memory>

#include "core/readable_text.h"
#include "platform/qt/box_owner.h"
#include "platform/qt/desktop.h"
#include "platform/qt/status_labels.h"

namespace mw {
namespace {

constexpr qsizetype kMaxStatusBytes = 287;

QString Shown(std::string_view text) { return QString::fromStdString(ReadableText(text)); }

// A question that has no "neither": Escape and the close box do nothing.
class DecisionBox : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!event->matches(QKeySequence::Cancel)) QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

QMessageBox::StandardButtons StandardButtons(PromptButtons buttons) {
  switch (buttons) {
    case PromptButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case PromptButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case PromptButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case PromptButtons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

QMessageBox::Icon StandardIcon(PromptIcon icon) {
  switch (icon) {
    case PromptIcon::Information:
      return QMessageBox::Information;
    case PromptIcon::Question:
      return QMessageBox::Question;
    case PromptIcon::Exclamation:
      return QMessageBox::Warning;
    case PromptIcon::Stop:
      return QMessageBox::Critical;
    case PromptIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// The texts break their lines themselves; the box is to be wide enough for them.
void KeepLines(QMessageBox& box) {
  constexpr int kWidestLine = 700;  // pixels
  auto* label = box.findChild<QLabel*>("qt_msgbox_label");
  if (!label) return;
  const QSize text = label->fontMetrics().size(0, box.text());
  label->setMinimumWidth(std::min(text.width(), kWidestLine));
}

PromptAnswer RunBox(QMessageBox& box, std::string_view text, std::string_view caption,
                    PromptButtons buttons, PromptIcon icon) {
  box.setWindowTitle(Shown(caption));
  box.setTextFormat(Qt::PlainText);
  box.setText(Shown(text));
  KeepLines(box);
  box.setIcon(StandardIcon(icon));
  box.setStandardButtons(StandardButtons(buttons));
  switch (box.exec()) {
    case QMessageBox::Ok:
      return PromptAnswer::Ok;
    case QMessageBox::Yes:
      return PromptAnswer::Yes;
    case QMessageBox::No:
      return PromptAnswer::No;
    default:
      return buttons == PromptButtons::Ok ? PromptAnswer::Ok : PromptAnswer::Cancel;
  }
}

WaitCursor& TheWaitCursor() {
  if (!desktop.waitCursor) desktop.waitCursor = std::make_unique<WaitCursor>();
  return *desktop.waitCursor;
}

// Two spaces and the text, cut to the size of the status bar's buffer at a character's border.
QString StatusBarText(std::string_view text) {
  QByteArray bytes = QByteArray::fromStdString("  " + ReadableText(text));
  if (bytes.size() > kMaxStatusBytes) {
    qsizetype end = kMaxStatusBytes;
    while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xC0) == 0x80) --end;
    bytes.truncate(end);
  }
  return QString::fromUtf8(bytes);
}

}  // namespace

void UseStatusLabels(QLabel* progress, QLabel* frameRate, QLabel* reading) {
  desktop.statusLabels = {nullptr, progress, frameRate, reading};
}

QWidget* BoxOwner() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  }
  return nullptr;
}

PromptAnswer ShowPrompt(std::string_view text, std::string_view caption, PromptButtons buttons,
                        PromptIcon icon) {
  QWidget* const owner = BoxOwner();
  if (buttons == PromptButtons::YesNo) {
    DecisionBox box(owner);
    box.setWindowFlag(Qt::WindowCloseButtonHint, false);
    return RunBox(box, text, caption, buttons, icon);
  }
  QMessageBox box(owner);
  return RunBox(box, text, caption, buttons, icon);
}

void ShowWaitCursor() { TheWaitCursor().Show(); }

void ShowArrowCursor() { TheWaitCursor().Hide(); }

void SetStatusText(int part, std::string_view text) {
  if (part < 0 || part >= static_cast<int>(desktop.statusLabels.size())) return;
  QLabel* const label = desktop.statusLabels[static_cast<std::size_t>(part)];
  if (!label) return;
  const QString shown = StatusBarText(text);
  if (label->text() == shown) return;
  label->setText(shown);
  if (part == kProgressPart && label->isVisible()) label->repaint();
}

void ClearStatusText(int part, std::string_view text) {
  if (part < 0 || part >= static_cast<int>(desktop.statusLabels.size())) return;
  const QLabel* const label = desktop.statusLabels[static_cast<std::size_t>(part)];
  if (label && label->text() == StatusBarText(text)) SetStatusText(part, "");
}

}  // namespace mw
