// Follows the steps of a page in the running editor, as its reader would. Runs on a thread of its
// own beside the windows.
#pragma once

#include <QString>
#include <QThread>

#include "tools/help_tour/page.h"

namespace mw::help {

// Ends the program, after a message, with the first step that cannot be done.
class Tour : public QThread {
 public:
  // `pictures`: the folder that the pictures go to; empty to take none.
  Tour(QString page, QString pictures);

 protected:
  void run() override;

 private:
  void Follow(const Step& step) const;
  [[noreturn]] void Fail(const QString& reason) const;

  QString page_, pictures_;
};

// Does one step; throws TourError when it cannot be done. Pictures are not its business.
void DoStep(const Step& step);

}  // namespace mw::help
