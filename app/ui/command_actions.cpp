#include "app/ui/command_actions.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <algorithm>
#include <array>
#include <map>

#include "app/command_table.h"
#include "app/commands.h"
#include "app/ui/qt_text.h"
#include "resources/pictures.h"

namespace mw {
namespace {

// Entries with a line above them in their menu.
constexpr std::array kSectionStarts{
    kCommandNewMod,    kCommandImportHeightmap,     kCommandExit,
    kCommandCut,       kCommandSelectKind,          kCommandFind,
    kCommandWireframe, kCommandLevelStatistics,     kCommandRandomTerrain,
    kCommandTestLevel, kCommandGenerateSurfaceMaps, kCommandAddFile,
    kCommandUsersGuide};

bool StartsSection(CommandId id) {
  return std::find(kSectionStarts.begin(), kSectionStarts.end(), id) != kSectionStarts.end();
}

// The caption without its key text and mnemonic, as a tool button or a screen reader says it.
QString PlainCaption(const CommandSpec& spec) {
  return FromText(spec.caption.substr(0, spec.caption.find('\t'))).remove('&').simplified();
}

QAction* MakeAction(const CommandSpec& spec, QMainWindow* window) {
  auto* action = new QAction(Icon(FromText(spec.icon)), FromText(spec.caption), window);
  action->setObjectName(QString("command%1").arg(spec.id));
  action->setProperty("controlId", static_cast<int>(spec.id));
  action->setIconText(PlainCaption(spec));
  if (!spec.toolTip.empty()) action->setToolTip(FromText(spec.toolTip));
  action->setCheckable(spec.isSwitch || spec.group != CommandGroup::None);
  // Where the check mark stands there is no room for an icon.
  action->setIconVisibleInMenu(!action->isCheckable());
  QObject::connect(action, &QAction::triggered, window, [id = spec.id] { RunCommand(id); });
  return action;
}

// Keys of their own, so that the menus show the captions' key texts and nothing else.
void MakeShortcuts(const CommandSpec& spec, QMainWindow* window) {
  for (const QString& keys : FromText(spec.shortcuts).split(' ', Qt::SkipEmptyParts)) {
    auto* shortcut = new QShortcut(QKeySequence(keys, QKeySequence::PortableText), window);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, window, [id = spec.id] { RunCommand(id); });
  }
}

}  // namespace

CommandActions::CommandActions(QMainWindow* window) {
  std::map<CommandGroup, QActionGroup*> groups;
  for (const CommandSpec& spec : CommandTable()) {
    QAction* action = MakeAction(spec, window);
    actions_.insert(spec.id, action);
    MakeShortcuts(spec, window);
    if (spec.group == CommandGroup::None) continue;
    QActionGroup*& group = groups[spec.group];
    if (!group) group = new QActionGroup(window);
    group->addAction(action);
  }
}

void CommandActions::FillMenuBar(QMenuBar* bar) const {
  std::map<std::string_view, QMenu*> menus;
  const auto menuOf = [&](std::string_view path) {
    QMenu*& menu = menus[path];
    if (menu) return menu;
    const std::size_t slash = path.find('/');
    menu = slash == std::string_view::npos
               ? bar->addMenu('&' + FromText(path))
               : menus.at(path.substr(0, slash))->addMenu(FromText(path.substr(slash + 1)));
    return menu;
  };
  for (const CommandSpec& spec : CommandTable()) {
    if (spec.menu.empty()) continue;
    if (StartsSection(spec.id)) menuOf(spec.menu.substr(0, spec.menu.find('/')))->addSeparator();
    menuOf(spec.menu)->addAction(Find(spec.id));
  }
}

QMenu* CommandActions::MenuOf(CommandId id) const {
  for (QObject* const place : Find(id)->associatedObjects()) {
    if (auto* const menu = qobject_cast<QMenu*>(place)) return menu;
  }
  return nullptr;
}

void CommandActions::FillMainToolbar(QToolBar* toolbar) const {
  for (const CommandId id : MainToolbar()) {
    if (id == kCommandNone) {
      toolbar->addSeparator();
    } else {
      toolbar->addAction(Find(id));
    }
  }
}

}  // namespace mw
