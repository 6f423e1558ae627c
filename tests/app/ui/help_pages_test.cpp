// The help pages beside the program: nothing that the one has and the other has not.
#include <QAction>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

#include "app/command_table.h"
#include "app/input.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/window_fixture.h"

namespace mw {
namespace {

const QDir kHelp(MAPWRIGHT_SOURCE "/help");

QString ReadText(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

// What the parentheses of the pattern find, in order.
QStringList AllMatches(const QString& text, const QString& pattern) {
  QStringList found;
  const QRegularExpression expression(pattern, QRegularExpression::DotMatchesEverythingOption);
  for (auto match = expression.globalMatch(text); match.hasNext();) {
    found << match.next().captured(1);
  }
  return found;
}

QString PlainText(QString markup) {
  return markup.remove(QRegularExpression("<[^>]*>"))
      .replace("&lt;", "<")
      .replace("&gt;", ">")
      .replace("&amp;", "&")
      .simplified();
}

// A row of a table: its cells as one reads them, and the keys in it.
struct Row {
  QStringList cells, keys;
};

QList<Row> Rows(const QString& page) {
  QList<Row> rows;
  for (const QString& markup : AllMatches(page, "<tr>(.*?)</tr>")) {
    Row row{{}, AllMatches(markup, "<kbd>(.*?)</kbd>")};
    for (const QString& cell : AllMatches(markup, "<td[^>]*>(.*?)</td>")) {
      row.cells << PlainText(cell);
    }
    rows << row;
  }
  return rows;
}

bool HasRow(const QList<Row>& rows, const QString& cell, const QStringList& keys) {
  return std::ranges::any_of(rows, [&](const Row& row) {
    return row.cells.contains(cell) &&
           std::ranges::all_of(keys, [&](const QString& key) { return row.keys.contains(key); });
  });
}

QString PlainCaption(std::string_view caption) {
  const QString text = QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size()));
  return text.section('\t', 0, 0).remove('&').simplified();
}

class HelpPagesTest : public WindowTest {
 protected:
  // The name of a command of the menus or of a mode's toolbar.
  QString NameOf(CommandId id) {
    if (const CommandSpec* spec = FindCommand(id)) return PlainCaption(spec->caption);
    for (const QAction* action : window.modeToolbars()->findChildren<QAction*>()) {
      if (action->property("controlId").toInt() == id) return action->toolTip();
    }
    return {};
  }

  const QString guide = ReadText(kHelp.filePath("guide.htm"));
  const QList<Row> rows = Rows(guide);
};

TEST_F(HelpPagesTest, GuideNamesEveryCommandWithItsKeys) {
  for (const CommandSpec& spec : CommandTable()) {
    const QStringList keys =
        QString::fromStdString(std::string(spec.shortcuts)).split(' ', Qt::SkipEmptyParts);
    EXPECT_TRUE(HasRow(rows, PlainCaption(spec.caption), keys))
        << spec.caption << " with " << keys.join(" ").toStdString();
  }
}

TEST_F(HelpPagesTest, GuideNamesEveryKeyOfTheViewWithWhatItDoes) {
  for (const Shortcut& shortcut : ShortcutTable()) {
    const QString key = QString(shortcut.needsCtrl ? "Ctrl+" : "") +
                        (shortcut.needsAlt ? "Alt+" : "") + (shortcut.needsShift ? "Shift+" : "") +
                        (shortcut.key == kKeyHome ? QString("Home") : QString(QChar(shortcut.key)));
    const QString name = NameOf(shortcut.command);
    EXPECT_FALSE(name.isEmpty()) << shortcut.command;
    EXPECT_TRUE(HasRow(rows, name, {key})) << name.toStdString() << " with " << key.toStdString();
  }
  for (const char* key : {"Tab", "Page Up", "Page Down", "Space", "Delete", "+", "-", "W", "A", "S",
                          "D", "Up", "Down", "Left", "Right", "Shift", "Ctrl"}) {
    EXPECT_TRUE(guide.contains(QString("<kbd>%1</kbd>").arg(key))) << key;
  }
}

TEST_F(HelpPagesTest, GuideNamesEveryToolAndEveryWindow) {
  const QString text = PlainText(guide);
  for (const QAction* action : window.modeToolbars()->findChildren<QAction*>()) {
    if (!action->property("controlId").isValid()) continue;
    EXPECT_TRUE(text.contains(action->toolTip())) << action->toolTip().toStdString();
  }
  const QDir forms(MAPWRIGHT_SOURCE "/resources");
  for (const QString& form : forms.entryList({"*.ui"})) {
    const QStringList titles = AllMatches(ReadText(forms.filePath(form)),
                                          "name=\"windowTitle\">\\s*<string>(.*?)</string>");
    ASSERT_EQ(titles.size(), 1) << form.toStdString();
    const QString title = titles[0].section(" - ", 0, 0);
    // The frame of the property windows is never seen under its own name.
    if (title == "Edit Properties") continue;
    EXPECT_TRUE(text.contains(title)) << title.toStdString();
  }
}

TEST_F(HelpPagesTest, EveryLinkLeadsSomewhere) {
  for (const QString& name : kHelp.entryList({"*.htm"})) {
    const QString page = ReadText(kHelp.filePath(name));
    for (const QString& link : AllMatches(page, " href=\"(.*?)\"")) {
      const QString file = link.section('#', 0, 0), anchor = link.section('#', 1);
      const QString target = file.isEmpty() ? name : file;
      ASSERT_TRUE(kHelp.exists(target)) << link.toStdString();
      if (anchor.isEmpty()) continue;
      EXPECT_TRUE(ReadText(kHelp.filePath(target)).contains(" id=\"" + anchor + "\""))
          << link.toStdString();
    }
  }
}

TEST_F(HelpPagesTest, PagesShowAllPicturesThatTheToursTakeAndNoOthers) {
  QStringList shown, taken;
  for (const QString& page : kHelp.entryList({"*.htm"})) {
    shown += AllMatches(ReadText(kHelp.filePath(page)), "<img src=\"pictures/([^\"]*)\"");
  }
  for (const char* script : {"/help/tutorial.htm", "/tools/help_tour/guide_tour.xml"}) {
    taken += AllMatches(ReadText(QString(MAPWRIGHT_SOURCE) + script),
                        "<img src=\"(?:pictures/)?([^\"]*)\"[^>]* data-of=");
  }
  const auto sorted = [](QStringList names) {
    names.removeDuplicates();
    names.sort();
    return names.join('\n').toStdString();
  };
  EXPECT_EQ(sorted(taken), sorted(shown));
  EXPECT_EQ(sorted(kHelp.entryList({"pictures"}).isEmpty()
                       ? QStringList()
                       : QDir(kHelp.filePath("pictures")).entryList({"*.png"})),
            sorted(shown));
}

}  // namespace
}  // namespace mw
