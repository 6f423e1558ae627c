#include "tools/help_tour/page.h"

#include <QFile>
#include <QXmlStreamReader>

namespace mw::help {
namespace {

constexpr QStringView kPrefix = u"data-";

QHash<QString, QString> DataOf(const QXmlStreamAttributes& attributes) {
  QHash<QString, QString> data;
  for (const QXmlStreamAttribute& attribute : attributes) {
    if (attribute.name().startsWith(kPrefix)) {
      data.insert(attribute.name().mid(kPrefix.size()).toString(), attribute.value().toString());
    }
  }
  return data;
}

}  // namespace

std::optional<QList<Step>> ReadPage(const QString& path, QString& error) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    error = path + ": " + file.errorString();
    return std::nullopt;
  }
  QList<Step> steps;
  QXmlStreamReader page(&file);
  while (page.readNext() != QXmlStreamReader::EndDocument && !page.hasError()) {
    if (!page.isStartElement()) continue;
    Step step;
    step.data = DataOf(page.attributes());
    step.line = page.lineNumber();
    if (page.name() == u"img" && step.data.contains("of")) {
      step.action = "picture";
      step.text = page.attributes().value("src").toString();
    } else if (step.data.contains("do")) {
      step.action = step.data.take("do");
      step.text = page.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
    } else {
      continue;
    }
    steps << step;
  }
  if (!page.hasError()) return steps;
  error = QString("%1:%2: %3").arg(path).arg(page.lineNumber()).arg(page.errorString());
  return std::nullopt;
}

}  // namespace mw::help
