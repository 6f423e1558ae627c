// What the dialogs and toolbars of the terrain show when they open: captions, tips, names for
// screen readers, ranges, first values, the order of the Tab key, and the grids of tiles.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QSlider>
#include <QToolBar>
#include <limits>

#include "core/text.h"
#include "objects/ui/run_dialog.h"
#include "terrain/surface_assignments.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/road_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/shadow_grid.h"
#include "terrain/ui/surface_assignments_dialog.h"
#include "terrain/ui/terrain_toolbar.h"
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

using TerrainDialogsTest = TerrainUiTest;

TEST_F(TerrainDialogsTest, TheDialogsShowWhatIsListed) {
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

TEST_F(TerrainDialogsTest, TheToolbarsSettingsAreThoseListedAndTakeNoKeysFromTheView) {
  TerrainToolbar terrainToolbar{nullptr};
  MaterialToolbar materialToolbar{nullptr};
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

// A cell's place is a pixel near its far corner, clear of text and lines.
QPoint Place(int column, int row) { return {32 * column + 28, 255 - 32 * row - 3}; }

// What a grid shows, a sign for each tile, and where its yellow lines run.
std::string Shown(QWidget& grid) {
  const QImage image = grid.grab().toImage();
  const auto colour = [&](const QPoint& at) {
    return image.pixelColor(at * grid.devicePixelRatioF());
  };
  std::string shown;
  for (int row = 7; row >= 0; --row) {
    for (int column = 0; column < 8; ++column) {
      const std::pair<QColor, char> signs[] = {
          {{115, 210, 100}, 'a'}, {{115, 111, 200}, 'f'}, {{215, 110, 100}, '-'}, {{0, 0, 0}, '.'}};
      const auto* const sign =
          std::ranges::find(signs, colour(Place(column, row)), &std::pair<QColor, char>::first);
      const bool marked = colour({32 * column + 12, 255 - 32 * row - 4}) == QColor(255, 255, 0);
      shown += marked ? 's' : sign == std::end(signs) ? '?' : sign->second;
    }
    shown += '\n';
  }
  for (int at = 0; at < 256; ++at) {
    if (colour({at, 20}) == QColor(255, 220, 60))
      shown += "line at x = " + std::to_string(at) + '\n';
    if (colour({20, at}) == QColor(255, 220, 60))
      shown += "line at y = " + std::to_string(at) + '\n';
  }
  return shown + grid.accessibleDescription().toStdString() + '\n';
}

TEST_F(TerrainDialogsTest, TheGridsShowTheTilesOfTheLevelAsListed) {
  constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
  const struct {
    int size, offsetX, offsetY;
  } levels[] = {{512, 0, 0}, {512, 1, 3}, {512, -1, -2},        {256, 2, 0},
                {512, 8, 7}, {256, 0, 0}, {1024, kLeast, kMost}};
  std::string listing;
  for (const auto& [size, offsetX, offsetY] : levels) {
    modConfig.MaterialSize = size;
    modConfig.TexOffsetX = offsetX;
    modConfig.TexOffsetY = offsetY;
    levelTextures.SurfaceAssigned = {};
    levelTextures.SurfaceAssigned[2][1] = levelTextures.SurfaceAssigned[3][3] = true;
    terrain.shadowSettings.ShadowSelected = {};
    terrain.shadowSettings.ShadowSelected[3][3] = true;
    SurfaceGrid tiles;
    ShadowGrid shadows;
    listing += FormatText("==== level of %i cells, offsets %i, %i\n", size, offsetX, offsetY) +
               Shown(tiles) + "-- shadows\n" + Shown(shadows) + "-- default\n";
    for (const bool changes : {true, false}) {
      editor.levelModified = false;
      AssignAllTiles();
      EXPECT_EQ(editor.levelModified, changes);
    }
    tiles.Refresh();
    listing += Shown(tiles);
  }
  ExpectGolden("terrain/surface_grids.txt", listing);
}

TEST_F(TerrainDialogsTest, ShowMapBrightensTheGridByTheMiniMapsBits) {
  terrain.miniMap.grey.fill(0);
  terrain.miniMap.SetPixel(128 - 127, 128 - 1, 0x8C);  // column 127, row 1: the upper right corner
  WhenDialogOpens([](const OpenDialog& dialog) {
    const auto corner = [&dialog] {
      QWidget& grid = dialog.Widget<QWidget>("grid");
      return grid.grab().toImage().pixelColor(QPoint(254, 2) * grid.devicePixelRatioF());
    };
    const QColor free = corner();
    dialog.Widget<QCheckBox>("showMapCheck").click();
    EXPECT_EQ(corner(), QColor(115 | 0x8C, 111 | 0x8C, 200 | 0x8C));
    dialog.Widget<QCheckBox>("showMapCheck").click();
    EXPECT_EQ(corner(), free);
  });
  SurfaceAssignmentsDialog(nullptr, [] {});
}

}  // namespace
}  // namespace mw
