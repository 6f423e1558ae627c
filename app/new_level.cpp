#include "app/new_level.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "app/camera_control.h"
#include "app/damaged_parts.h"
#include "app/level.h"
#include "app/recent_levels.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "core/history.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/game_file.h"
#include "data/game_path.h"
#include "data/level_settings.h"
#include "data/load_report.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "objects/entity_scripts.h"
#include "objects/static_objects.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "platform/prompts.h"
#include "terrain/dds_writer.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/random_terrain.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr const char* kCaption = "New Level";

// Of the paths in a level folder, the two that can be the longest: one has the level's name in it.
constexpr std::string_view kLongestFile = "\\SinglePlayer\\spawnPointManagerSettings.con";
constexpr std::string_view kEnvironmentFile = "\\Textures\\env__01.dds";

constexpr int kTextureSide = 512, kThumbnailSide = 128;  // pixels
// The first value of the game's own counter of how often it has loaded the level.
constexpr std::array<std::uint8_t, 4> kLoadCounter = {0x88, 0x94, 0xAE, 0x01};

void ShowRefusal(const char* text) {
  ShowPrompt(text, kCaption, PromptButtons::Ok, PromptIcon::Exclamation);
}

bool IsTooLong(const std::string& name) {
  const std::size_t folder =
      modConfig.GamePath.size() + modConfig.modFolder.size() + modConfig.levelsFolder.size();
  const std::size_t file = std::max(kLongestFile.size(), kEnvironmentFile.size() + name.size());
  return folder + name.size() + file > kMaxGamePath;
}

bool ConfirmOverwriting(const std::string& name) {
  return ShowPrompt(FormatText("This will overwrite your existing %s.vra file\nin your Varnhold "
                               "directory.\n\nDo you wish to proceed?",
                               name.c_str()),
                    kCaption, PromptButtons::YesNo, PromptIcon::Information) == PromptAnswer::Yes;
}

// The archives that this editor has open are its own to replace.
bool IsOpenInAnotherEditor(const std::string& name) {
  const std::string path = LevelArchivePathOf(name);
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    const Archive& own = *archives.At(i);
    if (own.Writable() && EqualNoCase(own.Path(), path)) return false;
  }
  return IsClaimed(NativePath(path));
}

void ForgetOpenLevel() {
  CloseLevelArchive();
  ClearObjectsAndTree();
}

void SetSizes(LevelSize size) {
  constexpr int kSamples[] = {256, 512, 1024};
  constexpr int kUnitsPerSample = 4;
  modConfig.MaterialSize = kSamples[static_cast<int>(size)];
  modConfig.WorldSize = modConfig.MaterialSize * kUnitsPerSample;
  modConfig.TexOffsetX = modConfig.TexOffsetY = 0;
}

void AdoptChoices(const NewLevelChoices& choices) {
  ReloadModConfig();  // nothing of the level before stays
  ChooseLevel(choices.name);
  modConfig.HeightScale = static_cast<float>(choices.heightScaleTenths) * 0.1f;
  editor.levelHasWater = choices.water;
  SetSizes(choices.size);
  if (!choices.theatre.empty()) modConfig.AlternativePath = "Texture/" + choices.theatre;
}

GameRules RulesOrConquest(GameRules rules) {
  if (rules.Any()) return rules;
  ShowPrompt(
      "Levels without a game rule specified cannot be created.\nThis new level will be "
      "created using CONQUEST (CQ) game rules.",
      "No Games Rules", PromptButtons::Ok, PromptIcon::Exclamation);
  rules.conquest = true;
  return rules;
}

void MakeFlatTerrain() {
  InitGrid();
  terrain.miniMap = MiniMapPicture{};
  hooks.invalidateMiniMap();
}

bool WriteBlankTexture(const char* file, int side, bool mipmaps) {
  const std::vector<std::uint8_t> black(static_cast<std::size_t>(side) *
                                        static_cast<std::size_t>(side) * 3);
  return SaveDDS(openLevel.folder.String() + file, side, side, black, mipmaps);
}

bool WriteFirstFiles(const GameRules& rules) {
  return WriteLevelScripts(rules) && SaveHeightmap() && SaveMaterialMap() &&
         WriteBlankTexture("/Textures/Detail.dds", kTextureSide, true) &&
         WriteBlankTexture("/Textures/ingamemap.dds", kTextureSide, true) &&
         WriteBlankTexture("/Menu/thumbnail.dds", kThumbnailSide, false) &&
         SaveGameFileBytes(openLevel.folder.String() + "/loadcounter.dat", kLoadCounter);
}

// Creates the level's archive, and in it the files that the game needs, as one group of changes.
// The reason when it failed, else an empty text.
std::string WriteSkeleton(const GameRules& rules) {
  if (const auto folder = CreateLevelFolders(rules)) {
    return "The folder " + SystemPath(*folder) + " could not be created.";
  }
  std::string error;
  Archive* const archive = CreateLevelArchive(error);
  if (!archive) return error;
  if (!archive->BeginSave()) return archive->Error();
  std::string reason = WhyNotWritten([&] { return WriteFirstFiles(rules); });
  if (!reason.empty()) return reason;
  return archive->CommitSave() ? std::string() : archive->Error();
}

void ReadBack() {
  ClearAllObjects();
  BeginLoadReport();
  ReadLevelSettings();
  ReadGameModeFiles();
  EndLoadReport();
  SnapAllToGround();
}

// The four tiles around the level's middle.
void AssignCentralTiles() {
  auto& assigned = levelTextures.SurfaceAssigned;
  assigned = {};
  const std::size_t first = modConfig.MaterialSize == 256 ? 1 : 3;
  for (const std::size_t row : {first, first + 1}) {
    for (const std::size_t column : {first, first + 1}) assigned[row][column] = true;
  }
}

void PlaceFirstCamera() {
  constexpr float kClearance = 4;  // height units
  constexpr float kAbove = 20;     // world units
  auto& saved = editor.savedCameraPosition;
  camera.position.x = static_cast<float>(modConfig.WorldSize) - saved[0];
  camera.position.z = saved[2];
  saved[1] = camera.position.y = HeightUnderCamera(kClearance) + kAbove;
  LookAlongLevel();
}

// Every step from the open level to the new one, saved. The reason when it failed, else an empty
// text.
std::string CreateLevel(const NewLevelChoices& choices) {
  ShowWaitCursor();
  ForgetOpenLevel();
  AdoptChoices(choices);
  const GameRules rules = RulesOrConquest(choices.rules);
  MakeFlatTerrain();
  if (choices.randomTerrain) RandomTerrain(false, shell.randomTerrainDialog);
  if (std::string failure = WriteSkeleton(rules); !failure.empty()) return failure;
  ReadBack();
  AssignCentralTiles();
  levelTextures.textureSetChosen = true;
  editor.levelLoaded = true;
  editor.levelModified = false;
  ClearHistory();
  shell.setLevelOpen(true);
  SendStartCommands();
  PlaceFirstCamera();
  return TrySaveLevel();
}

// What to say of the level on disk that the one of that name would have overwritten, if there is
// one: the new one may have taken its place just before the failure.
std::string WordOfOldLevel(const std::string& name) {
  if (!FileExists(LevelArchivePathOf(name))) return {};
  return FormatText(
      "\n\nThe level %s on disk is as it was before. Should the new one have taken its place "
      "already, the old one is its backup, %s.vra.bak.",
      name.c_str(), name.c_str());
}

// The level before is gone; the editor is as it is before the first level.
void GiveUp(const std::string& reason, const ModSnapshot& before) {
  SetStatusText(1, FormatText("Could not create level %s", modConfig.LevelName.c_str()));
  EmptyEditor(before);
  ShowArrowCursor();
  ShowPrompt("The level could not be created.\n\n" + reason + "\n\nNo level is open.", "Error",
             PromptButtons::Ok, PromptIcon::Stop);
}

}  // namespace

std::optional<std::string> AcceptLevelName(std::string_view typed) {
  const std::string name = NameFromInput(typed, kMaxLevelName);
  if (name.find_first_not_of('_') == name.npos) {
    ShowRefusal("Please enter a name for the level.");
    return std::nullopt;
  }
  if (IsNumberedArchive(name)) {
    ShowRefusal("Level names must not end with an underscore and three digits.");
    return std::nullopt;
  }
  if (IsTooLong(name)) {
    ShowRefusal("The name of the level is too long.");
    return std::nullopt;
  }
  if (IsOpenInAnotherEditor(name)) {
    ShowRefusal(FormatText("The level %s is open in another Mapwright.", name.c_str()).c_str());
    return std::nullopt;
  }
  const bool isTaken = modConfig.LevelName == name || FileExists(LevelArchivePathOf(name));
  if (isTaken && !ConfirmOverwriting(name)) return std::nullopt;
  return name;
}

std::string HeightScaleNotice(int tenths) {
  const double ground = static_cast<double>(kFlatHeight) * tenths * 0.1;
  if (ground > kNewWaterLevel) return {};
  return FormatText(
      "At this height scale all of the level lies under its water: the ground is "
      "about %.0f units high, the water %i.",
      ground, kNewWaterLevel);
}

bool NewLevel(const AskNewLevel& ask) {
  const ModSnapshot before = TakeModSnapshot();
  std::optional<NewLevelChoices> choices;
  if (shell.selectMod(true)) choices = ask();
  if (!choices) {
    RestoreMod(before);
    return false;
  }
  const std::string oldLevel = WordOfOldLevel(choices->name);
  const std::string failure = CreateLevel(*choices);
  if (failure.empty()) {
    RememberLevel();
    ShowLoadReport();
  } else {
    GiveUp(failure + oldLevel, before);
  }
  return failure.empty();
}

}  // namespace mw
