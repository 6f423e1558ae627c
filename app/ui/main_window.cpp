#include "app/ui/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <vector>

#include "app/command_table.h"
#include "app/commands.h"
#include "app/level_file.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/qt_text.h"
#include "app/ui/recent_menu.h"
#include "app/ui/view_widget.h"
#include "app/undo.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "resources/pictures.h"

namespace mw {
namespace {

constexpr const char* kTitleWithoutLevel = "Mapwright - Varnhold Level Editor";
constexpr QSize kFirstSize(800, 600), kSmallestSize(640, 400);
constexpr int kToolbarHeight = 28, kStripWidth = 5, kFrameRateWidth = 100, kLeastViewWidth = 160;

// The files of the user's disks that are dragged.
std::vector<std::string> FilesIn(const QMimeData& data) {
  std::vector<std::string> files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files.push_back(url.toLocalFile().toStdString());
  }
  return files;
}

}  // namespace

MainWindow::MainWindow() : actions_(this) {
  setObjectName("mainWindow");
  setWindowTitle(kTitleWithoutLevel);
  setWindowIcon(Icon("mapwright"));
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(true);
  setMinimumSize(kSmallestSize);
  resize(kFirstSize);
  actions_.FillMenuBar(menuBar());
  AddRecentMenu(actions_.MenuOf(kCommandOpenLevel), actions_.Find(kCommandSaveLevel));
  BuildToolbar();
  BuildCentre();
  BuildStatusBar();
}

void MainWindow::BuildToolbar() {
  mainToolbar_ = addToolBar("Main Toolbar");
  mainToolbar_->setObjectName("mainToolbar");
  mainToolbar_->setProperty("controlId", 3);
  mainToolbar_->setMovable(false);
  mainToolbar_->setIconSize(QSize(16, 16));
  mainToolbar_->setFixedHeight(kToolbarHeight);
  actions_.FillMainToolbar(mainToolbar_);
}

void MainWindow::BuildCentre() {
  auto* centre = new QSplitter(this);
  centre->setHandleWidth(kStripWidth);
  centre->setChildrenCollapsible(false);
  treePanel_ = new LevelTreePanel(centre);
  auto* right = new QWidget(centre);
  modeToolbars_ = new ModeToolbars(right);
  view_ = new ViewWidget(right);
  view_->setMinimumWidth(kLeastViewWidth);
  miniMap_ = new MiniMapWindow(view_);
  // Whatever opens, changes or saves a level is followed by a frame.
  connect(view_, &GlWidget::frameShown, this, &MainWindow::ShowLevelInTitle);

  auto* layout = new QVBoxLayout(right);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(modeToolbars_);
  layout->addWidget(view_, 1);
  centre->setStretchFactor(1, 1);
  constexpr int kTreeWidth = LevelTreePanel::kUsualWidth;
  centre->setSizes({kTreeWidth, kFirstSize.width() - kTreeWidth - kStripWidth});
  QSplitterHandle* const strip = centre->handle(1);
  strip->setObjectName("splitterStrip");
  strip->setProperty("controlId", 1087);
  strip->setToolTip("Drag to widen the level tree");
  setCentralWidget(centre);
}

QLabel* MainWindow::AddStatusLabel(const char* name, QSizePolicy::Policy width) {
  auto* label = new QLabel(statusBar());
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setSizePolicy(width, QSizePolicy::Preferred);
  return label;
}

void MainWindow::BuildStatusBar() {
  // The progress of work and what is under the cursor share what the frame rate leaves, whatever
  // their texts.
  progressLabel_ = AddStatusLabel("statusProgress", QSizePolicy::Ignored);
  readingLabel_ = AddStatusLabel("statusReading", QSizePolicy::Ignored);
  frameRateLabel_ = AddStatusLabel("statusFrameRate", QSizePolicy::Fixed);
  frameRateLabel_->setFixedWidth(kFrameRateWidth);
  statusBar()->setProperty("controlId", 4);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->addWidget(progressLabel_, 1);
  statusBar()->addWidget(readingLabel_, 1);
  statusBar()->addPermanentWidget(frameRateLabel_);
}

void MainWindow::ShowLevelInTitle() {
  const bool modified = editor.levelLoaded && editor.levelModified;
  const std::string_view level =
      editor.levelLoaded ? modConfig.LevelName.View() : std::string_view();
  if (level == titleLevel_ && modified == titleModified_) return;
  titleLevel_ = level;
  titleModified_ = modified;
  setWindowTitle(level.empty() ? kTitleWithoutLevel
                               : FromText(level) + (modified ? "*" : "") + " - Mapwright");
}

void MainWindow::SetCommandChecked(CommandId id, bool checked) {
  QAction* action = actions_.Find(id);
  if (action && action->isCheckable()) action->setChecked(checked);
}

void MainWindow::SetCommandEnabled(CommandId id, bool enabled) {
  QWidget* button = mainToolbar_->widgetForAction(actions_.Find(id));
  if (button) button->setEnabled(enabled);
}

// "&Undo Raising\tCtrl-Z"
void MainWindow::ShowStep(CommandId id, const std::string& step, bool usable) {
  QString caption = FromText(FindCommand(id)->caption);
  if (!step.empty()) caption.insert(caption.indexOf('\t'), ' ' + FromText(step));
  QAction* const action = actions_.Find(id);
  action->setText(caption);
  action->setEnabled(usable && !step.empty());
}

void MainWindow::ShowUndoSteps(const std::string& undo, const std::string& redo, bool usable) {
  ShowStep(kCommandUndo, undo, usable);
  ShowStep(kCommandRedo, redo, usable);
}

void MainWindow::SetLevelOpen(bool open) {
  for (const CommandSpec& spec : CommandTable()) {
    if (NeedsLevel(spec.id)) actions_.Find(spec.id)->setEnabled(open);
  }
  mw::ShowUndoSteps();
  modeToolbars_->setEnabled(open);
  treePanel_->setEnabled(open);
}

void MainWindow::CloseForGood() {
  hide();
  QApplication::exit(0);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  RunCommand(kCommandExit);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (FilesIn(*event->mimeData()).empty() || QApplication::activeModalWidget()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void MainWindow::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  // Only when the program that the files come from has its answer: opening may ask something.
  QTimer::singleShot(0, this, [files = FilesIn(*event->mimeData())] { OpenDroppedFiles(files); });
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  // Keys that a child did not want come here too; they are not the view's.
  if (focusWidget() && focusWidget() != this) {
    event->ignore();
  } else if (!ViewWidget::RouteKeyEvent(*event, true)) {
    QMainWindow::keyPressEvent(event);
  }
}

void MainWindow::keyReleaseEvent(QKeyEvent* event) {
  if (focusWidget() && focusWidget() != this) {
    event->ignore();
  } else if (!ViewWidget::RouteKeyEvent(*event, false)) {
    QMainWindow::keyReleaseEvent(event);
  }
}

}  // namespace mw
