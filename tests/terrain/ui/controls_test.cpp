// What the dialogs and toolbars of the terrain show when they open: captions, tips, names for
// screen readers, ranges, first values and the order of the Tab key.
#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

#include "objects/ui/run_dialog.h"
#include "support/golden.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/road_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/surface_assignments_dialog.h"
#include "terrain/ui/terrain_ui_test.h"

namespace mw {
namespace {

// The kind's own part of a widget's line.
QString Content(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    const QString of = label->buddy() ? " for " + label->buddy()->objectName() : "";
    return '"' + label->text() + '"' + of;
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
    return '"' + button->text() + '"' + (button->isChecked() ? " checked" : "");
  if (const auto* slider = qobject_cast<const QAbstractSlider*>(&widget)) {
    const QString range("%1 ... %2, at %3");
    return range.arg(slider->minimum()).arg(slider->maximum()).arg(slider->value());
  }
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    QStringList entries;
    for (int i = 0; i < list->count(); ++i) entries << list->itemText(i);
    return entries.join('|') + ", at \"" + list->currentText() + '"';
  }
  return QString("%1 x %2").arg(widget.width()).arg(widget.height());
}

QString LineOf(const QWidget& widget) {
  QString line = "  " + widget.objectName() + ": " + Content(widget);
  if (!widget.isEnabled()) line += ", grey";
  if (!widget.toolTip().isEmpty()) line += "\n    tip: " + widget.toolTip();
  if (!widget.accessibleName().isEmpty()) line += "\n    name: " + widget.accessibleName();
  if (!widget.accessibleDescription().isEmpty())
    line += "\n    description: " + widget.accessibleDescription();
  const QVariant id = widget.property("controlId");
  if (id.isValid()) line += "\n    control " + id.toString();
  return line + '\n';
}

QString ListingOf(const QDialog& dialog) {
  QString listing = "==== " + dialog.windowTitle() + '\n';
  for (const QWidget* widget : dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!widget->objectName().isEmpty()) listing += LineOf(*widget);
    for (const QWidget* inner : widget->findChildren<QAbstractButton*>()) listing += LineOf(*inner);
  }
  listing += "  Tab:";
  for (QWidget* next = dialog.nextInFocusChain(); next != &dialog;
       next = next->nextInFocusChain()) {
    if (next->focusPolicy() & Qt::TabFocus && next->isEnabled())
      listing += ' ' + next->objectName();
  }
  return listing + '\n';
}

using TerrainControlsTest = TerrainUiTest;

TEST_F(TerrainControlsTest, TheDialogsShowWhatIsListed) {
  levelTextures.SurfaceAssigned[2][1] = true;
  terrain.roadPointCount = 7;
  const std::function<void()> dialogs[] = {
      [] { CreateRoadDialog(nullptr); },
      [] { RandomTerrainDialog(nullptr); },
      [] { SampleBitsDialog(nullptr, "Select Import Bits"); },
      [] { ShadowDialog(nullptr); },
      [] { SurfaceAssignmentsDialog(nullptr, [] {}); },
  };
  QString listing;
  for (const auto& run : dialogs) {
    WhenDialogOpens([&listing](const OpenDialog& dialog) { listing += ListingOf(dialog.window); });
    run();
  }
  ExpectGolden("terrain/dialogs.txt", listing.toStdString());
}

TEST_F(TerrainControlsTest, TheToolbarsSettingsAreThoseListedAndTakeNoKeysFromTheView) {
  QString listing;
  for (const QToolBar* toolbar :
       {static_cast<QToolBar*>(&terrainToolbar), static_cast<QToolBar*>(&materialToolbar)}) {
    listing += "==== " + toolbar->windowTitle() + '\n';
    for (const QAction* action : toolbar->actions()) {
      if (action->isChecked()) listing += "  checked: " + action->toolTip() + '\n';
    }
    for (const QWidget* widget : toolbar->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (!qobject_cast<const QComboBox*>(widget) && !qobject_cast<const QAbstractSlider*>(widget))
        continue;
      listing += LineOf(*widget);
      EXPECT_FALSE(widget->focusPolicy() & Qt::TabFocus);
    }
  }
  ExpectGolden("terrain/toolbars.txt", listing.toStdString());
}

}  // namespace
}  // namespace mw
