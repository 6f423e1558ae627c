#include "terrain/ui/surface_assignments_dialog.h"

#include <QDialog>

#include "core/editor_state.h"
#include "core/history.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/prompts.h"
#include "terrain/surface_assignments.h"
#include "ui_171_surface_assignments.h"

namespace mw {
namespace {

void FillTextureSets(QComboBox& list) {
  for (const std::string& name : ListFolders("texturesets")) {
    if (name.find('.') == std::string::npos) list.addItem(QString::fromStdString(name));
  }
  list.setCurrentIndex(list.findText(QString::fromUtf8(editor.textureSetName.c_str())));
}

bool UseTextureSet(const std::string& name) {
  ShowWaitCursor();
  editor.textureSetName = name;
  const bool loaded = LoadTextureSet("texturesets/" + name);
  ShowArrowCursor();
  if (!loaded) {
    ShowPrompt(FormatText("The texture set %s has no index.dat that can be read.", name.c_str()),
               "Error", PromptButtons::Ok, PromptIcon::Stop);
  }
  return loaded;
}

// The set of the step that was undone or redone.
void LoadNamedSet() { LoadTextureSet("texturesets/" + editor.textureSetName.String()); }

void KeepAssignments() {
  KeepSetting(levelTextures.SurfaceAssigned);
  KeepSetting(levelTextures.textureSetChosen);
  KeepSetting(editor.textureSetName, LoadNamedSet);
  KeepSetting(modConfig.TexOffsetX);
  KeepSetting(modConfig.TexOffsetY);
}

}  // namespace

void SurfaceAssignmentsDialog(QWidget* owner, const std::function<void()>& renderView) {
  const HistoryStep step("Surface Map Assignments");
  KeepAssignments();
  const AssignmentSnapshot before = TakeAssignmentSnapshot();
  QDialog dialog(owner);
  Ui::SurfaceAssignmentsForm form;
  form.setupUi(&dialog);
  FillTextureSets(*form.textureSetCombo);
  const auto showChange = [&] {
    form.grid->Refresh();
    renderView();
  };
  QObject::connect(form.grid, &SurfaceGrid::toggled, renderView);
  QObject::connect(form.showMapCheck, &QCheckBox::toggled, form.grid, &SurfaceGrid::ShowMap);
  QObject::connect(form.defaultButton, &QPushButton::clicked, [&] {
    AssignAllTiles();
    showChange();
  });
  QObject::connect(form.clearButton, &QPushButton::clicked, [&] {
    ClearAssignments();
    showChange();
  });
  QObject::connect(form.textureSetCombo, &QComboBox::currentTextChanged, [&](const QString& name) {
    if (UseTextureSet(name.toStdString())) ChooseTextureSetForLevel();
    renderView();
  });
  // Who picks the set that is shown already chooses it too.
  QObject::connect(form.textureSetCombo, &QComboBox::textActivated, [] {
    if (textureSet.detail.loaded) ChooseTextureSetForLevel();
  });
  if (dialog.exec() == QDialog::Accepted) return;
  RestoreAssignments(before);
  renderView();
}

}  // namespace mw
