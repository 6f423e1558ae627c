#include "data/ui/colour_swatch.h"

#include <QColorDialog>
#include <QMouseEvent>
#include <QPainter>

namespace mw {
namespace {

std::uint8_t Byte(int part) { return static_cast<std::uint8_t>(part); }

}  // namespace

ColourSwatch::ColourSwatch(QWidget* parent) : QPushButton(parent) {
  setToolTip("Double-click to choose a color");
  connect(this, &QPushButton::clicked, this, [this] { ChooseColour(); });
  Show(Qt::black);
}

ColourBytes ColourSwatch::Colour() const {
  return {Byte(colour_.red()), Byte(colour_.green()), Byte(colour_.blue())};
}

void ColourSwatch::SetColour(const ColourBytes& colour) { Show({colour[0], colour[1], colour[2]}); }

void ColourSwatch::Show(const QColor& colour) {
  colour_ = colour;
  setAccessibleDescription(QString("Red %1, green %2, blue %3")
                               .arg(colour.red())
                               .arg(colour.green())
                               .arg(colour.blue()));
  update();
}

QSize ColourSwatch::sizeHint() const {
  const int line = fontMetrics().height();
  return {4 * line, line + 8};
}

void ColourSwatch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colour_);
  painter.setPen(palette().color(QPalette::Dark));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  if (!hasFocus()) return;
  // A light line keeps the frame of the focus visible on any colour.
  painter.setPen(palette().color(QPalette::Base));
  painter.drawRect(rect().adjusted(2, 2, -3, -3));
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

// A single click only takes the focus.
void ColourSwatch::mousePressEvent(QMouseEvent* event) { event->accept(); }

void ColourSwatch::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void ColourSwatch::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) ChooseColour();
}

void ColourSwatch::ChooseColour() {
  const QColor chosen =
      QColorDialog::getColor(colour_, window(), "Choose Color", QColorDialog::DontUseNativeDialog);
  if (chosen.isValid()) Show(chosen);
}

}  // namespace mw
