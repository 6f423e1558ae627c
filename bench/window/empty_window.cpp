// empty_window: shows an empty window of the editor's size, and ends when it is closed. What a
// start of the editor is compared with.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle("Empty Window");
  window.resize(800, 600);
  window.showMaximized();
  return QApplication::exec();
}
