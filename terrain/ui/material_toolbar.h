// The Material Mapper's toolbar: fill, brush size, material, surface view. It shows the settings
// that the material mapper has, also when keys gave them.
#pragma once

#include <QToolBar>

class QComboBox;

namespace mw {

class MaterialToolbar : public QToolBar {
 public:
  explicit MaterialToolbar(QWidget* parent);

  // Shows the settings that the material mapper has now.
  void Refresh();

 private:
  void AddLists();

  QComboBox* brushSize_ = nullptr;
  QComboBox* material_ = nullptr;
  QAction* surfaceView_ = nullptr;
};

}  // namespace mw
