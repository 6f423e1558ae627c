// What the windows show and do when one works in them: the stories in tests/golden/app/windows.
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QSlider>
#include <algorithm>

#include "app/level_tree_actions.h"
#include "app/mini_map_look.h"
#include "app/modes.h"
#include "app/ui/new_level_dialog.h"
#include "app/ui/view_widget.h"
#include "app/ui/welcome_dialog.h"
#include "app/ui/window_fixture.h"
#include "core/history.h"
#include "core/text.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"
#include "objects/scatter.h"
#include "support/archive_bytes.h"
#include "terrain/point_selection.h"

namespace mw {
namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}
int Number(const std::string& word) { return std::stoi(word); }
QKeyCombination KeyOf(const std::string& word) {
  if (word == "Ctrl") return Qt::Key_Control;
  if (word == "Alt") return Qt::Key_Alt;
  return QKeySequence(QString::fromStdString(word))[0];
}

class WindowStory : public WindowTest, public testing::WithParamInterface<std::string> {
 protected:
  WindowStory() {
    modConfig.GamePath = GameFolder();
    modConfig.modFolder = "Mods\\varnhold\\";
    modConfig.levelsFolder = kLevelsFolder;
    modConfig.LevelName = "Island";
    modConfig.theatres[0] = "Desert";
    modConfig.theatres[1] = "Tropics";
    modConfig.theatreCount = 2;
    BuildTree();
    editor.levelLoaded = true;
    shell.lightSettingsDialog = [this] { Tell("       the light settings"); };
    shell.objectBrowserDialog = [this] { Tell("       the object browser"); };
    StateAfterStep();  // a story begins with what is changed first
  }

  // A widget of the open dialog or the window by its name, or a button by how its text begins.
  template <typename W = QWidget>
  W& Named(const std::string& name) {
    if (name == "self") return dynamic_cast<W&>(Scope());
    for (W* const widget : Scope().findChildren<W*>()) {
      if (widget->objectName().toStdString() == name) return *widget;
      if (name[0] == '&' && Shown(widget).startsWith(QString::fromStdString(name))) return *widget;
    }
    throw std::logic_error(name);
  }
  QTreeWidgetItem& Row(const Words& w) {
    const auto found =
        tree().findItems(QString::fromStdString(Joined(w)), Qt::MatchExactly | Qt::MatchRecursive);
    return found.empty() ? throw std::logic_error(Joined(w)) : *found[0];
  }
  QPoint PlaceOf(const Words& w) {
    tree().scrollToItem(&Row(w));
    QApplication::processEvents();
    return tree().visualItemRect(&Row(w)).center();
  }
  // Opens a dialog; the story goes on in it until it is closed.
  void Open(const Words& w) {
    QTimer::singleShot(0, qApp, [this] {
      const QPointer<QWidget> dialog = QApplication::activeModalWidget();
      ASSERT_TRUE(dialog) << "no dialog is open";
      TellRest();
      ActWhile([&dialog] { return dialog && dialog->isVisible(); });
      EXPECT_FALSE(dialog && dialog->isVisible()) << "the dialog is still open";
      if (dialog && dialog->isVisible()) static_cast<QDialog*>(dialog.data())->done(0);
    });
    dialogs.at(w[0])(w);
    Tell("       closed");
  }
  void TellNewLevel() {
    const auto choices = RunNewLevelDialog(&window);
    TellAnswer(choices.has_value());
    if (!choices) return;
    const auto& [singlePlayer, conquest, teamDeathMatch, captureTheFlag] = choices->rules;
    Tell("       " + choices->name + ", size " + std::to_string(static_cast<int>(choices->size)) +
         ", height scale " + std::to_string(choices->heightScaleTenths) + ", theatre \"" +
         choices->theatre + '"' + (singlePlayer ? ", SP" : "") + (conquest ? ", CQ" : "") +
         (teamDeathMatch ? ", TDM" : "") + (captureTheFlag ? ", CTF" : "") +
         (choices->water ? ", water" : "") + (choices->randomTerrain ? ", random terrain" : ""));
  }
  void TellWelcome(WelcomeChoice choice) {
    Tell("       choice " + std::to_string(static_cast<int>(choice)));
  }
  static bool FillStatistics() {
    objectStore.objects.resize(3);
    auto& spawns = entities.Of(EntityKind::SoldierSpawn).instances;
    auto& points = entities.Of(EntityKind::ControlPoint).instances;
    spawns.push_back(std::make_unique<SoldierSpawn>());
    for (int i = 0; i < 2; ++i) points.push_back(std::make_unique<ControlPoint>());
    return true;
  }

  void SendKey(QEvent::Type type, int key, bool repeat, quint32 scanCode,
               Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent event(type, key, modifiers, scanCode, 0, 0, {}, repeat);
    QApplication::sendEvent(window.view(), &event);
  }
  // A key by its name, or by its number and then its scan code.
  void ViewKey(const Words& w, bool down, bool up, int repeats = 0) {
    const bool isNumber = w.size() > 1;
    const int key = isNumber ? std::stoi(w[0], nullptr, 16) : KeyOf(w[0]).key();
    const quint32 scanCode = isNumber ? static_cast<quint32>(std::stoul(w[1])) : 0;
    if (down) SendKey(QEvent::KeyPress, key, false, scanCode);
    while (repeats-- > 0) {
      SendKey(QEvent::KeyRelease, key, true, scanCode);
      SendKey(QEvent::KeyPress, key, true, scanCode);
    }
    if (up) SendKey(QEvent::KeyRelease, key, false, scanCode);
  }
  // An object that stands in the level and in the tree.
  static void Place(const std::string& name) {
    StaticObject object;
    object.name = name == "old-name" ? "M\xFChle" : name;  // of older tools
    object.position = {100, 0, 100};
    object.treeItem = InsertItem(levelTree.fixed.standardMeshes, object.name.View());
    objectStore.objects.push_back(object);
  }
  static TreeItem ItemOf(const std::string& object) {
    return objectStore.objects[static_cast<std::size_t>(Number(object))].treeItem;
  }
  static void AddTank(GameModeMask modes) {
    auto& tables = entities.Of(EntityKind::ObjectSpawn);
    auto made = std::make_unique<ObjectSpawnTemplate>();
    made->name = "tank" + std::to_string(tables.templates.size());
    made->modes = modes;
    tables.templates.push_back(std::move(made));
    tables.templates.back()->UpdateTreeItem(EntityKind::ObjectSpawn);
    tables.instances.push_back(
        tables.templates.back()->CreateInstance(static_cast<int>(tables.templates.size()) - 1));
    RefreshTreeItems();
  }
  // The drag's event loop runs inside the mouse move; the story goes on in it until it is let go.
  void DragRow(const Words& w) {
    const QPoint from = PlaceOf(w);
    bool looked = false;
    isDragging = true;
    QTimer::singleShot(0, qApp, [&] {
      looked = true;
      ActWhile([this] { return isDragging; });
      QDrag::cancel();
    });
    DragFrom(tree().viewport(), from, from + QPoint(40, 0), [&] {
      if (!looked) QApplication::processEvents();
    });
  }
  // Whether the view takes the drop at this place, when the mouse came in over the Mini-Map.
  bool DropOnView(QPoint place) {
    QMimeData data;
    data.setData("application/x-mapwright-level-tree-item", "1");
    const QPoint entry = window.miniMap()->geometry().center();
    QDragEnterEvent enter(entry, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.view(), &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.view(), &move);
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.view(), &leave);
    return move.isAccepted();
  }
  // The close box. Closing ends the event loop, and with it all those that a later test would
  // start.
  void CloseWindow() {
    window.show();
    window.close();
    TellAnswer(!window.isVisible());
    QTimer::singleShot(0, qApp, [] { QApplication::exit(); });
    QApplication::exec();
  }
  void Trigger(const std::string& caption) {
    for (QAction* entry : MenuEntries()) {
      if (entry->text().remove('&').section('\t', 0, 0).simplified().toStdString() == caption) {
        return entry->trigger();
      }
    }
    throw std::logic_error(caption);
  }
  // "Ctrl" and the like before the name.
  static Qt::KeyboardModifiers TakeModifier(Words& w) {
    const std::map<std::string, Qt::KeyboardModifier> kModifiers = {{"Ctrl", Qt::ControlModifier},
                                                                    {"Shift", Qt::ShiftModifier}};
    const auto found = kModifiers.find(w[0]);
    if (found == kModifiers.end()) return {};
    w.erase(w.begin());
    return found->second;
  }

  const std::map<std::string, Verb> dialogs = {
      {"new-level", [this](const Words&) { TellNewLevel(); }},
      {"load-level", [this](const Words&) { TellAnswer(shell.loadLevelDialog()); }},
      {"welcome", [this](const Words&) { TellWelcome(shell.welcomeDialog({})); }},
      {"full-welcome",
       [this](const Words&) {
         WelcomeDialog dialog(
             &window,
             {true, {{"/a.vra", "m"}, {"/b&c.vra", "m"}, {"/d.vra", "m"}, {"/e.vra", "m"}}});
         TellWelcome(dialog.Ask());
       }},
      {"statistics",
       [](const Words&) { FillStatistics() ? shell.levelStatisticsDialog() : void(); }},
      {"save-picture", [](const Words&) { shell.savePictureDialog(); }},
      {"check", [](const Words&) { shell.checkLevelDialog(); }},
      {"scatter", [this](const Words&) { TellAnswer(EditScatter()); }},
      {"splash", [](const Words&) { shell.aboutDialog(); }},
      {"credits", [](const Words&) { shell.creditsDialog(); }}};

  const std::map<std::string, Verb> verbs = {
      // What there is.
      {"show", [this](const Words&) { window.show(); }},
      {"load-no-level", [this](const Words&) { TellAnswer(shell.loadLevelDialog()); }},
      {"level-file",
       [this](const Words& w) {
         const auto levels = folder / "Mods/varnhold/Archives/varnhold/levels";
         std::filesystem::create_directories(levels);
         WriteBytes(levels / w[0], {});
       }},
      {"catalogue",
       [](const Words&) {
         objectStore.catalogue =
             ParseObjectList("oak=TreeMesh(oak_m1)\nhut=StandardMesh(hut_m1)\n");
       }},
      {"no-levels", [this](const Words&) { std::filesystem::remove_all(folder / "Mods"); }},
      {"no-theatres", [](const Words&) { modConfig.theatreCount = 0; }},
      {"level",
       [](const Words& w) {
         modConfig.LevelName = "K\u00fcste";
         editor.levelLoaded = w[0] == "open";
         editor.levelModified = w.size() > 1;
         shell.setLevelOpen(editor.levelLoaded);
       }},
      {"recent",
       [this](const Words& w) {
         if (!w.empty()) scripted::script.editorSettings["RecentLevels"] = w[0] + "\tm\n";
         MenuEntries()[0]->menu()->aboutToShow();
       }},
      {"point",
       [](const Words&) {
         terrain.grid[100][100].selected = true;
         GrowSelectionBox(100, 100);
       }},
      {"copied", [](const Words& w) { editor.somethingCopied = w[0] == "yes"; }},
      {"place", [](const Words& w) { Place(w[0]); }},
      {"tank", [](const Words& w) { AddTank(w[0] == "CQ" ? kModeConquest : kModeCaptureTheFlag); }},
      {"build-tree", [](const Words&) { BuildTree(); }},
      {"select-item", [](const Words& w) { SelectItem(w.empty() ? 0 : ItemOf(w[0])); }},
      {"rename-item", [](const Words& w) { SetItemText(ItemOf(w[0]), w[1]); }},
      {"delete-item", [](const Words& w) { DeleteItem(ItemOf(w[0])); }},
      {"select-in-the-view",
       [](const Words& w) {
         objectStore.objects[static_cast<std::size_t>(Number(w[0]))].selected = true;
         UpdateToolButtons(true);
       }},
      // Work in it.
      {"open", [this](const Words& w) { Open(w); }},
      {"click",
       [this](const Words& w) {
         for (const std::string& name : w) Named<QAbstractButton>(name).click();
       }},
      {"key",
       [this](const Words& w) {
         const QKeyCombination key = KeyOf(w[1]);
         QTest::keyClick(&Named(w[0]), key.key(), key.keyboardModifiers());
       }},
      {"tab",
       [this](const Words& w) {
         if (!w.empty()) Named(w[0]).setFocus();
         QTest::keyClick(&Scope(), Qt::Key_Tab);
         const QWidget* focus = Scope().focusWidget();
         Tell("       " + focus->objectName().toStdString() + ' ' + Shown(focus).toStdString());
       }},
      {"type",
       [this](const Words& w) {
         const Words text(w.begin() + 1, w.end());
         Named<QLineEdit>(w[0]).setText(QString::fromStdString(Joined(text)));
       }},
      {"slide", [this](const Words& w) { Named<QSlider>(w[0]).setValue(Number(w[1])); }},
      {"choose",
       [this](const Words& w) {
         const Words text(w.begin() + 1, w.end());
         Named<QComboBox>(w[0]).setCurrentText(QString::fromStdString(Joined(text)));
       }},
      {"enable", [this](const Words& w) { Named(w[0]).setEnabled(true); }},
      {"close", [this](const Words&) { Scope().close(); }},
      {"close-window", [this](const Words&) { CloseWindow(); }},
      {"mouse",
       [this](const Words& w) {
         const std::map<std::string, Qt::MouseButton> kButtons = {
             {"left", Qt::LeftButton}, {"middle", Qt::MiddleButton}, {"right", Qt::RightButton}};
         QTest::mouseClick(&Named(w[0]), kButtons.at(w[1]), {}, {Number(w[2]), Number(w[3])});
       }},
      {"double-click-entry",
       [this](const Words& w) {
         auto& list = Named<QListWidget>(w[0]);
         const QPoint entry = list.visualItemRect(list.item(Number(w[1]))).center();
         QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, entry);
         QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, entry);
       }},
      {"drag",
       [this](const Words& w) {
         const QPoint from(Number(w[1]), Number(w[2]));
         DragFrom(&Named(w[0]), from, from + QPoint(Number(w[3]), Number(w[4])));
       }},
      {"resize", [this](const Words& w) { Named(w[0]).resize(Number(w[1]), Number(w[2])); }},
      {"trigger",
       [this](const Words& w) {
         Trigger(Joined(w));
         QApplication::processEvents();  // what it does once the menu is closed
       }},
      {"undo", [](const Words&) { Undo(); }},
      // The view.
      {"press", [this](const Words& w) { ViewKey(w, true, false); }},
      {"release", [this](const Words& w) { ViewKey(w, false, true); }},
      {"tap", [this](const Words& w) { ViewKey(w, true, true); }},
      {"hold", [this](const Words& w) { ViewKey(w, true, true, 3); }},
      {"keypad",
       [this](const Words& w) {
         SendKey(QEvent::KeyPress, w[0] == "+" ? Qt::Key_Plus : Qt::Key_Minus, false, 0,
                 Qt::KeypadModifier);
       }},
      {"keyboard-goes-elsewhere",
       [this](const Words&) {
         QFocusEvent focusOut(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
         QApplication::sendEvent(window.view(), &focusOut);
       }},
      {"from-above", [](const Words&) { editor.cameraMode = CameraMode::TopDown; }},
      {"kept",
       [this](const Words& w) {
         std::string& text = scripted::script.editorSettings["MiniMap"];
         if (!w.empty()) {
           text = Joined(w);
           RecallMiniMap();
         }
         const MiniMapWindowPicture& drawn = session.miniMapWindow;
         Tell(FormatText("       kept \"%s\", drawn %i x %i, its picture %i%s", text.c_str(),
                         drawn.width, drawn.height, drawn.pictureSize,
                         session.miniMapLook.stretched ? ", stretched" : ""));
         if (const auto& pixels = drawn.pixels; !pixels.empty()) {
           Tell(FormatText("       drawn from %i to %i", pixels.front(), pixels.back()));
         }
       }},
      {"camera",
       [](const Words&) {
         camera.position = {7, 7, 7};
       }},
      // The tree.
      {"expand", [this](const Words& w) { Row(w).setExpanded(true); }},
      {"expand-all", [this](const Words&) { tree().expandAll(); }},
      {"row",
       [this](Words w) {
         const auto modifier = TakeModifier(w);
         QTest::mouseClick(tree().viewport(), Qt::LeftButton, modifier, PlaceOf(w));
       }},
      {"double-click-row",
       [this](const Words& w) {
         QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, PlaceOf(w));
       }},
      {"drag-row", [this](const Words& w) { DragRow(w); }},
      {"let-go", [this](const Words&) { isDragging = false; }},
      {"drop", [this](const Words& w) {
         const QRect miniMap = window.miniMap()->geometry();
         TellAnswer(DropOnView(w[0] == "on-the-Mini-Map" ? miniMap.center()
                                                         : miniMap.bottomRight() + QPoint(20, 20)));
       }}};

  bool isDragging = false;
};

TEST_P(WindowStory, IsAsItStands) { ActOut(GetParam(), verbs); }

INSTANTIATE_TEST_SUITE_P(Windows, WindowStory, testing::ValuesIn(GoldenFiles("app/windows")),
                         StoryName);

}  // namespace
}  // namespace mw
