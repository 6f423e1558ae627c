// What the dialogs and toolbars of the terrain show, what the user does with them, and what comes
// of it: the stories in tests/golden/terrain/ui.
#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolBar>
#include <set>

#include "core/text.h"
#include "data/textures.h"
#include "support/open_dialog.h"
#include "terrain/shadow_work.h"
#include "terrain/surface_assignments.h"
#include "terrain/terrain_tools.h"
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

// Captions, tips, names for screen readers, ranges, first values and the order of the Tab key.
std::string ListingOf(const QDialog& dialog) {
  QString listing;
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
  return listing.toStdString();
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

// The settings of a toolbar, which take no keys from the view.
std::string ListingOf(const QToolBar& toolbar) {
  QString listing = toolbar.windowTitle();
  for (const QWidget* widget : toolbar.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!qobject_cast<const QComboBox*>(widget) && !qobject_cast<const QAbstractSlider*>(widget))
      continue;
    listing += '\n' + LineOf(*widget).trimmed();
    EXPECT_FALSE(widget->focusPolicy() & Qt::TabFocus);
  }
  return listing.toStdString();
}

class TerrainUiStory : public TerrainUiTest, public testing::WithParamInterface<std::string> {
 protected:
  using Tiles = decltype(levelTextures.SurfaceAssigned);

  static std::string Listed(const Tiles& tiles) {
    std::string text;
    for (std::size_t row = 0; row < tiles.size(); ++row) {
      for (std::size_t column = 0; column < tiles[row].size(); ++column) {
        if (tiles[row][column]) text += FormatText(" %zu%zu", row, column);
      }
    }
    return text;
  }
  // What a toolbar shows.
  static std::string ShownBy(const QToolBar& toolbar) {
    QString text = toolbar.windowTitle() + ":";
    for (const QAction* action : toolbar.actions()) {
      if (action->isChecked()) text += " [" + action->toolTip() + ']';
    }
    for (const auto* list : toolbar.findChildren<QComboBox*>()) {
      text += ", " + list->objectName() + ' ' + list->currentText();
      const int read = list->view()->currentIndex().row();  // what a screen reader takes for chosen
      if (read >= 0 && read != list->currentIndex()) text += " read as another";
      if (!list->isEnabled()) text += " (grey)";
    }
    for (const auto* slider : toolbar.findChildren<QSlider*>(Qt::FindDirectChildrenOnly)) {
      text += ", " + slider->objectName() + ' ' + QString::number(slider->value());
      if (!slider->isEnabled()) text += " (grey)";
    }
    return text.toStdString() + '\n';
  }
  std::string ShownInDialog() const {
    std::string text;
    for (const auto* widget : open->findChildren<QWidget*>()) {
      if (widget->objectName() == "grid") text += widget->accessibleDescription().toStdString();
      if (widget->objectName() == "materialCombo" && !widget->isEnabled()) text += "grey material";
      if (widget->objectName().endsWith("Value"))
        text += " " + static_cast<const QLabel*>(widget)->text().toStdString();
    }
    return text + "\n";
  }
  std::string State() const {
    return (open ? "dialog shows " + ShownInDialog() : "") +
           FormatText("road width %i, material %i, added %i\n", terrain.roadWidth,
                      terrain.roadMaterial, terrain.roadAutoMaterial) +
           FormatText("shadows of detail %g of", terrain.shadowSettings.ShadowPrecision) +
           Listed(terrain.shadowSettings.ShadowSelected) + ", " + DescribeTilesToTrace() +
           "\nassigned" + Listed(levelTextures.SurfaceAssigned) +
           FormatText(", offsets %i, %i", modConfig.TexOffsetX, modConfig.TexOffsetY) +
           (levelTextures.textureSetChosen ? ", set chosen" : "") +
           (editor.levelModified ? ", modified" : "") + "\ntexture set " +
           editor.textureSetName.String() + " with " + textureSet.textures[2].name.String() +
           FormatText("\nview drawn %i times\n", viewDrawn) +
           FormatText("tool %i, brush %i%s, power %g, range %g, smoothing %i\n",
                      static_cast<int>(terrain.tool), terrain.brushSize,
                      terrain.brushEdge == BrushEdge::Smooth   ? " smooth"
                      : terrain.brushEdge == BrushEdge::Linear ? " linear"
                                                               : "",
                      double{terrain.power}, double(terrain.smoothingRange),
                      terrain.autoSmoothing) +
           FormatText("material brush %u, material %u, surface view %i, last cell %u\n",
                      materialMapper->brushSize, materialMapper->currentMaterial,
                      materialMapper->SurfaceView, materialMapper->grid[512][511]) +
           ShownBy(terrainToolbar) + ShownBy(materialToolbar);
  }
  // The lines of the state that are others now.
  void TellNew() {
    std::istringstream state(State());
    std::set<std::string> lines;
    for (std::string line; std::getline(state, line); lines.insert(line)) {
      if (!known.contains(line)) Tell("  " + line);
    }
    known = std::move(lines);
  }

  // What a user does with a control: "name" presses it, "name=choice" chooses, with "_" for a
  // blank, and "tile=42" clicks on the tile in column 4 and row 2.
  static void Use(QWidget& window, const std::string& word) {
    const QString name = QString::fromStdString(word).section('=', 0, 0);
    const QString choice = QString::fromStdString(word).section('=', 1).replace('_', ' ');
    if (name == "Escape") return QTest::keyClick(&window, Qt::Key_Escape);
    if (name == "unchosen")
      return void(levelTextures.textureSetChosen = editor.levelModified = false);
    if (name == "detail") return void(textureSet.detail.loaded = choice == "1");
    const bool onTile = name == "tile" || name == "right";
    auto* const widget = window.findChild<QWidget*>(onTile ? "grid" : name);
    ASSERT_TRUE(widget) << word;
    if (onTile) {
      QTest::mouseClick(widget, name == "tile" ? Qt::LeftButton : Qt::RightButton, {},
                        Place(choice[0].digitValue(), choice[1].digitValue()));
    } else if (auto* list = qobject_cast<QComboBox*>(widget)) {
      EXPECT_TRUE(list->isEnabled()) << word;
      if (!choice.isEmpty()) return list->setCurrentIndex(list->findText(choice));
      list->showPopup();
      QTest::keyClick(list->view(), Qt::Key_Return);
    } else if (auto* slider = qobject_cast<QSlider*>(widget); slider && !choice.isEmpty()) {
      slider->setValue(choice.toInt());
    } else {
      widget->setFocus();
      QTest::keyClick(widget, slider ? Qt::Key_End : Qt::Key_Space);
    }
  }
  // A verb that opens a dialog, does what its words say and tells what it answers.
  template <typename Run>
  Verb InDialog(Run run) {
    return [this, run](const Words& words) {
      WhenDialogOpens([&](const OpenDialog& dialog) {
        open = &dialog.window;
        Tell("= " + open->windowTitle().toStdString());
        for (const std::string& word : words) {
          Tell("- " + word);
          if (word == "list") Tell(ListingOf(dialog.window));
          if (word != "list") Use(dialog.window, word);
          TellNew();
        }
        EXPECT_FALSE(open->isVisible());
        open = nullptr;
      });
      Tell("= " + run());
      TellNew();
    };
  }
  static void Assign(Tiles& tiles, const Words& words) {
    tiles = {};
    for (const std::string& word : words)
      tiles.at(static_cast<std::size_t>(word[0] - '0'))
          .at(static_cast<std::size_t>(word[1] - '0')) = true;
  }
  void Click(const std::string& toolTip) {
    const QString wanted = QString::fromStdString(toolTip).replace('_', ' ');
    for (const QToolBar* toolbar :
         {static_cast<QToolBar*>(&terrainToolbar), static_cast<QToolBar*>(&materialToolbar)}) {
      for (QAction* action : toolbar->actions()) {
        if (action->toolTip() == wanted) action->trigger();
      }
    }
  }
  // A setting that a key changes.
  void PressKey(const std::string& setting, int value) {
    if (setting == "brush") SetBrushSize(value);
    if (setting == "power") SetPower(value);
    if (setting == "edge") PressTerrainControl(TerrainControl::BrushEdge);
    if (setting == "materialBrush") SetMaterialBrushSize(value);
    if (setting == "surfaceView") ToggleSurfaceView();
    terrainToolbar.Refresh();
    materialToolbar.Refresh();
  }

  TerrainToolbar terrainToolbar{nullptr};
  MaterialToolbar materialToolbar{nullptr};
  const QDialog* open = nullptr;
  std::set<std::string> known;
  int viewDrawn = 0;
};

TEST_P(TerrainUiStory, GoesAsItIsTold) {
  const auto confirmed = [](bool answer) { return std::string(answer ? "OK" : "Cancel"); };
  const auto random = [] {
    const auto chosen = RandomTerrainDialog(nullptr);
    return !chosen ? "Cancel"
                   : FormatText("OK, base %i, amplitude %i, %i passes", chosen->base,
                                chosen->amplitude, chosen->smoothPasses);
  };
  const auto bits = [] {
    const auto chosen = SampleBitsDialog(nullptr, "Select Export Bits");
    return !chosen ? "Cancel" : FormatText("OK, %i bits", static_cast<int>(*chosen));
  };
  const auto surfaces = [this] {
    SurfaceAssignmentsDialog(nullptr, [this] { ++viewDrawn; });
    return std::string("closed");
  };
  const auto then = [this](auto act) {
    return [this, act](const Words& words) {
      act(words);
      TellNew();
    };
  };
  ActOut(
      GetParam(),
      {{"road", InDialog([&] { return confirmed(CreateRoadDialog(nullptr)); })},
       {"random", InDialog(random)},
       {"bits", InDialog(bits)},
       {"shadows", InDialog([&] { return confirmed(ShadowDialog(nullptr)); })},
       {"surfaces", InDialog(surfaces)},
       {"assign", then([](const Words& tiles) { Assign(levelTextures.SurfaceAssigned, tiles); })},
       {"level", then([](const Words& words) {
          modConfig.MaterialSize = std::stoi(words.at(0));
          modConfig.TexOffsetX = std::stoi(words.at(1));
          modConfig.TexOffsetY = std::stoi(words.at(2));
        })},
       {"roadpoints", [](const Words& words) { terrain.roadPointCount = std::stoi(words.at(0)); }},
       {"toolbars",
        [this](const Words&) {
          Tell(ListingOf(terrainToolbar));
          Tell(ListingOf(materialToolbar));
        }},
       {"shadow", [](const Words& tiles) { Assign(terrain.shadowSettings.ShadowSelected, tiles); }},
       {"assignall", then([](const Words&) { AssignAllTiles(); })},
       {"grids",
        [this](const Words&) {
          SurfaceGrid tiles;
          ShadowGrid shadows;
          Tell(Shown(tiles) + "-- shadows\n" + Shown(shadows));
        }},
       {"fresh", then([](const Words&) {
          levelTextures.textureSetChosen = editor.levelModified = false;
          editor.textureSetName = "Default";
        })},
       {"modified", then([](const Words&) { editor.levelModified = true; })},
       {"click", then([this](const Words& words) { Click(words.at(0)); })},
       {"choose", then([this](const Words& words) {
          const bool isTerrains = words.at(0).starts_with("material") == false;
          Use(isTerrains ? static_cast<QWidget&>(terrainToolbar) : materialToolbar, words.at(0));
        })},
       {"key",
        then([this](const Words& words) { PressKey(words.at(0), std::stoi(words.at(1))); })}});
}

INSTANTIATE_TEST_SUITE_P(All, TerrainUiStory, testing::ValuesIn(GoldenFiles("terrain/ui")));

using TerrainDialogsTest = TerrainUiTest;

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
