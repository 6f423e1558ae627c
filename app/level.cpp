#include "app/level.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "app/camera_control.h"
#include "app/camera_places.h"
#include "app/commands.h"
#include "app/damaged_parts.h"
#include "app/level_check.h"
#include "app/level_parts.h"
#include "app/recent_levels.h"
#include "app/recovery.h"
#include "app/save_questions.h"
#include "app/session.h"
#include "app/shell.h"
#include "core/history.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/game_file.h"
#include "data/game_path.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "objects/static_objects.h"
#include "platform/disk.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr std::string_view kArchiveExtension = ".vra";

// The levels that come with the game.
constexpr std::array<const char*, 2> kStockLevels{"Harbour_Point", "Stone_Ridge"};

std::string LevelArchiveFolder() {
  return modConfig.GamePath.String() + modConfig.modFolder.String() + "Archives\\" +
         modConfig.levelsFolder.String();
}

// Makes the archive the open level's, if there is one.
Archive* AdoptLevelArchive(Archive* archive) {
  if (archive) {
    openLevel.archivePath = archive->Path();
    openLevel.mod = CurrentModName();
    openLevel.modFolder = modConfig.modFolder;
  }
  return archive;
}

// Two open archives of one file would write over each other. A load test leaves those of its levels
// open.
void LeaveNoSecondArchive(const std::string& path) {
  while (archives.CloseArchive(path)) {
  }
}

void ClearLevel() {
  ClearObjectsAndTree();
  shell.renderFrameNow();
}

// From now on the state of the archive before its first change is kept. The level has been read.
void KeepStateBefore(Archive& archive) {
  archive.BackUpFirst(openLevel.loadReport.readWhole ? BackupKind::Whole : BackupKind::Damaged);
}

// Opens the archive of the chosen level, and loads it by `load`, which says itself why it fails.
// False, with the reason in `reason`, when the archive cannot be opened.
bool LoadChosenLevel(const std::function<bool()>& load, std::string& reason) {
  LeaveNoSecondArchive(LevelArchivePath());
  Archive* const archive =
      AdoptLevelArchive(archives.OpenArchive(LevelArchivePath(), true, &reason));
  if (!archive) return false;
  reason.clear();
  if (!load()) return false;
  KeepStateBefore(*archive);
  return true;
}

void PlaceCameraAtSavedPosition() {
  RecallCameraPosition();
  const auto& saved = editor.savedCameraPosition;
  camera.position.Set(static_cast<float>(modConfig.WorldSize) - saved[0], saved[1], saved[2]);
}

void SendOpenCommands() {
  RunCommand(kCommandCameraFly);
  RunCommand(kCommandTextured);
  RunCommand(kCommandObjectMapper);
  RunCommand(kCommandViewTexturedMesh);
}

// Writes all parts as one group of changes. The reason when it failed, else an empty text.
std::string WriteLevelToArchive() {
  Archive* const archive = LevelArchive();
  if (!archive) return "No level archive is open.";
  if (!archive->BeginSave()) return archive->Error();
  if (std::string reason = WhyNotWritten(WriteLevelParts); !reason.empty()) {
    archive->RollbackSave();
    return reason;
  }
  const bool saved = archive->CommitSave() && archive->PutInPlace();
  return saved ? std::string() : archive->Error();
}

// Puts the chosen level in the place of the open one, which is not touched before the new one's
// archive has been read. False when it cannot be opened: the mod is then as it was before the
// choice. `reason` is what is still to be said.
bool OpenChosenLevel(const ModSnapshot& before, const std::function<bool()>& load,
                     std::string& reason) {
  const std::string level = modConfig.LevelName.String();
  ShowWaitCursor();
  reason = ReasonAgainstOpening(LevelArchivePath(), level);
  if (!reason.empty()) {
    RestoreMod(before);
    return false;
  }
  CloseLevelArchive();
  ClearLevel();
  if (!LoadChosenLevel(load, reason)) {
    EmptyEditor(before);
    SetStatusText(1, FormatText("Could not open level %s", level.c_str()));
    return false;
  }
  shell.setLevelOpen(true);
  SendOpenCommands();
  PlaceCameraAtSavedPosition();
  LookAlongLevel();
  RememberLevel();
  ShowLoadReport();
  return true;
}

// A level of the load test. While its archive cannot be opened the level before stays, with its
// name and all that belongs to it.
void LoadStockLevel(const char* name) {
  Archive* archive = nullptr;
  if (ReasonAgainstOpening(LevelArchivePathOf(name), name).empty()) {
    LeaveNoSecondArchive(LevelArchivePathOf(name));
    archive = archives.OpenArchive(LevelArchivePathOf(name), true);
  }
  if (archive) {
    ChooseLevel(name);
    ClearLevel();
    AdoptLevelArchive(archive);
    if (LoadLevelParts()) {
      KeepStateBefore(*archive);
      PlaceCameraAtSavedPosition();
      return ShowLoadReport();
    }
    CloseLevelArchive();
  }
  SetStatusText(1, FormatText("Could not open level %s", name));
}

// Whatever is left to do when an archive is closed, the last save is complete.
void ShowNotClosed(const Archive& archive) {
  ShowArrowCursor();
  ShowPrompt(FormatText("The archive of the level that was open could not be compacted.\n\n%s\n\n"
                        "The level on disk is as it was after the last save.",
                        archive.Error().c_str()),
             "Error", PromptButtons::Ok, PromptIcon::Exclamation);
}

void ShowNotSaved() {
  ShowArrowCursor();
  SetStatusText(1, FormatText("Could not save level %s", modConfig.LevelName.c_str()));
}

}  // namespace

std::string LevelArchivePath() { return LevelArchivePathOf(modConfig.LevelName); }

std::string LevelArchivePathOf(std::string_view name) {
  return LevelArchiveFolder().append(name).append(kArchiveExtension);
}

std::vector<std::string> ListLevels() {
  std::vector<std::string> names;
  for (std::string& name : ListFiles(LevelArchiveFolder(), kArchiveExtension)) {
    name.resize(name.size() - kArchiveExtension.size());
    if (!IsNumberedArchive(name)) names.push_back(std::move(name));
  }
  return names;
}

void ChooseLevel(const std::string& name) {
  modConfig.LevelName = name;
  openLevel.folder = modConfig.GamePath.String() + modConfig.modFolder.String() +
                     modConfig.levelsFolder.String() + name;
}

Archive* LevelArchive() {
  for (std::size_t i = archives.Count(); i-- > 0;) {
    Archive* archive = archives.At(i);
    const bool isLevel = archive->Writable() || !archive->WriteProtection().empty();
    if (isLevel && !openLevel.archivePath.empty() && archive->Path() == openLevel.archivePath)
      return archive;
  }
  return nullptr;
}

const std::string& LevelMod() { return openLevel.mod; }

void CloseLevelArchive() {
  if (Archive* const archive = LevelArchive()) {
    ForgetRecovery();
    const bool isOwn = archive->OnDisk() == ArchiveOnDisk::AsLeft;
    if (!archive->Close() && isOwn) ShowNotClosed(*archive);
    archives.CloseArchive(openLevel.archivePath);
  }
  openLevel.archivePath.clear();
  openLevel.modFolder.clear();
  ClearLoadReport();
}

bool OpenLevel() {
  const ModSnapshot before = TakeModSnapshot();
  if (!shell.selectMod(true) || !shell.loadLevelDialog()) {
    RestoreMod(before);
    return false;
  }
  return OpenNamedLevel(before);
}

bool OpenNamedLevel(const ModSnapshot& before) {
  const std::string level = modConfig.LevelName.String();
  std::string reason;
  if (!OpenChosenLevel(before, LoadLevelParts, reason)) {
    if (!reason.empty()) ShowLevelNotOpened(level, reason);
    return false;
  }
  ShowWriteProtection(*LevelArchive());
  return true;
}

bool OpenRecoveredLevel(const std::string& level, const std::string& recoveryFile,
                        std::string& reason) {
  const ModSnapshot before = TakeModSnapshot();
  ChooseLevel(level);
  // The newest archive is looked into first: what was edited hides what was saved.
  const auto load = [&] {
    const bool loaded = archives.OpenArchive(recoveryFile, false, &reason) && LoadLevelParts();
    archives.CloseArchive(recoveryFile);
    return loaded;
  };
  if (!OpenChosenLevel(before, load, reason)) return false;
  editor.levelModified = true;
  ClearHistory(false);
  ShowWriteProtection(*LevelArchive());
  return true;
}

void EmptyEditor(const ModSnapshot& before) {
  CloseLevelArchive();
  RestoreMod(before);
  if (!CurrentModName().empty()) ReloadModConfig();
  modConfig.LevelName = "";
  openLevel.folder = "";
  ClearObjectsAndTree();
  InitGrid();
  PlaceCameraAtSavedPosition();  // above the flat ground
  LookAlongLevel();
  terrain.miniMap = MiniMapPicture{};
  hooks.invalidateMiniMap();
  if (materialMapper) {
    for (auto& row : materialMapper->grid) row.fill(0);
    MarkMaterialsChanged();
  }
  DeleteLevelTextures();
  levelTextures = LevelTextures{};
  // What was changed is gone, there is nothing left to save.
  editor.levelLoaded = editor.levelModified = false;
  ClearHistory();
  shell.setLevelOpen(false);
}

std::string TrySaveLevel() {
  ShowWaitCursor();
  const auto cameraBefore = editor.savedCameraPosition;
  editor.savedCameraPosition = {static_cast<float>(modConfig.WorldSize) - camera.position.x,
                                camera.position.y, camera.position.z};
  std::string failure = WriteLevelToArchive();
  if (!failure.empty()) {
    editor.savedCameraPosition = cameraBefore;
    ShowNotSaved();
    return failure;
  }
  RememberCameraPosition();
  SetStatusText(1, FormatText("Saved level %s", modConfig.LevelName.c_str()) + KeptPartsText());
  LoadLevelTextures(LevelTextureLoad::Reloading);
  editor.levelModified = false;
  MarkHistorySaved();
  ForgetRecovery();
  return failure;
}

bool SaveLevel(ForeignChange foreign) {
  ShowWaitCursor();
  Archive* const archive = LevelArchive();
  if (archive && !MaySaveInto(*archive, foreign)) {
    ShowNotSaved();
    return false;
  }
  AskForDamagedParts();
  const std::string failure = TrySaveLevel();
  if (failure.empty()) return true;
  ShowPrompt(FormatText("The level could not be saved.\n\n%s\n\nThe level on disk is as it was "
                        "after the last save.",
                        failure.c_str()),
             "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

Archive* CreateLevelArchive(std::string& error) {
  LeaveNoSecondArchive(LevelArchivePath());
  return AdoptLevelArchive(archives.CreateArchiveAside(LevelArchivePath(), error));
}

void NameNewBackup(std::uint32_t now) {
  constexpr std::uint32_t kDelay = 3000;
  auto& [name, since] = session.newBackup;
  Archive* const archive = LevelArchive();
  if (std::string made = archive ? archive->TakeNewBackup() : std::string(); !made.empty()) {
    name = std::move(made);
    since = now;
  }
  if (name.empty() || now - since < kDelay) return;
  SetStatusText(1, FormatText("The level as it was before is kept as %s.", name.c_str()));
  name.clear();
}

void RunStockLevelLoad() {
  // Unsaved changes are offered for saving: the level that they belong to is about to be replaced.
  if (!OfferToSave("before opening a new map")) return;
  ForgetRecovery();
  ShowWaitCursor();
  for (const char* name : kStockLevels) LoadStockLevel(name);
  if (!LevelArchive()) EmptyEditor(TakeModSnapshot());
  shell.setLevelOpen(editor.levelLoaded);
  ShowArrowCursor();
}

}  // namespace mw
