// A button painted in a colour. A double click, Space or Enter opens the colour chooser.
#pragma once

#include <QColor>
#include <QPushButton>

#include "data/colour_bytes.h"

namespace mw {

class ColourSwatch : public QPushButton {
  Q_OBJECT

 public:
  explicit ColourSwatch(QWidget* parent = nullptr);

  ColourBytes Colour() const;
  void SetColour(const ColourBytes& colour);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void Show(const QColor& colour);
  void ChooseColour();

  QColor colour_;
};

}  // namespace mw
