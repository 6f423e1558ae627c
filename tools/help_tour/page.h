// What a page of the help tells its reader to do, in the order of its text: the elements with a
// `data-do` attribute, and the pictures that show what one sees then. The tour follows them.
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <optional>

namespace mw::help {

struct Step {
  QString action;                // of `data-do`; "picture" for an image
  QString text;                  // what the reader reads; the file's path of an image
  QHash<QString, QString> data;  // the other `data-` attributes, without that prefix
  qint64 line = 0;               // of the page, from 1
};

// Nothing, and the reason in `error`, when the page cannot be read or is not well-formed.
std::optional<QList<Step>> ReadPage(const QString& path, QString& error);

}  // namespace mw::help
