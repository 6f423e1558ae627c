#include "tools/help_tour/tour.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <cstdlib>

#include "tools/help_tour/gui.h"
#include "tools/help_tour/pictures.h"

namespace mw::help {

Tour::Tour(QString page, QString pictures)
    : page_(std::move(page)), pictures_(std::move(pictures)) {}

void Tour::run() {
  QString error;
  const auto steps = ReadPage(page_, error);
  if (!steps) Fail(error);
  for (const Step& step : *steps) {
    try {
      Follow(step);
    } catch (const std::exception& reason) {
      Fail(QString("%1:%2: %3 \"%4\": %5")
               .arg(page_)
               .arg(step.line)
               .arg(step.action, step.text, QString::fromUtf8(reason.what())));
    }
  }
}

void Tour::Follow(const Step& step) const {
  if (step.action != "picture") {
    DoStep(step);
  } else if (!pictures_.isEmpty()) {
    TakePicture(step, QDir(pictures_).filePath(QFileInfo(step.text).fileName()));
  }
}

void Tour::Fail(const QString& reason) const {
  QTextStream(stderr) << reason << Qt::endl;
  if (!pictures_.isEmpty()) TakeScreen(QDir(pictures_).filePath("failure.png"));
  std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
}

}  // namespace mw::help
