#include "app/start_up.h"

#include <ctime>
#include <initializer_list>
#include <string>
#include <vector>

#include "app/commands.h"
#include "app/level.h"
#include "app/new_level.h"
#include "app/recent_levels.h"
#include "app/sample_game.h"
#include "app/session.h"
#include "app/shell.h"
#include "core/game_random.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "objects/object_catalogue.h"
#include "objects/object_render.h"
#include "objects/static_objects.h"
#include "platform/modules.h"
#include "platform/prompts.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

constexpr const char* kUnknownVersion = "1.01.100";
constexpr std::size_t kMaxVersionText = 31;
constexpr const char* kSurfacePlugin = "mw_smg.mwp";
constexpr const char* kMaterialPlugin = "mw_amm.mwp";
// Their entry points.
constexpr const char* kInitSurfaceMap = "initSurfaceMap";
constexpr const char* kInitSurfaceBmp = "initSurfaceBmp";
constexpr const char* kGenerateSurfaceMap = "generateSurfaceMap";
constexpr const char* kInitMatMap = "initMatMap";
constexpr const char* kGenerateMatMap = "generateMatMap";

void ShowPluginError(const std::string& text) {
  ShowPrompt(text, "ERROR", PromptButtons::Ok, PromptIcon::Exclamation);
}

bool LoadPlugin(Module& plugin, const char* fileName,
                std::initializer_list<const char*> entryPoints) {
  if (!plugin.Load(fileName)) {
    ShowPluginError(FormatText("Unable to load plugin '%s'!", fileName));
    return false;
  }
  for (const char* const name : entryPoints) {
    if (plugin.Function(name)) continue;
    ShowPluginError(
        FormatText("The plugin '%s' cannot be used: it has no function '%s'.", fileName, name));
    return false;
  }
  return true;
}

template <typename Function>
void FindFunction(const Module& plugin, const char* name, Function& function) {
  function = reinterpret_cast<Function>(plugin.Function(name));
}

}  // namespace

float ParseGameVersion(std::string_view text) {
  Tokenizer pieces(text);
  std::string number(pieces.Next(".").value_or(""));
  number += '.';
  while (const auto piece = pieces.Next(".")) number += *piece;
  return ParseFloat(number);
}

void ReadInstalledVersion() {
  std::string text = ReadGameSetting("INSTALLEDVERSION").value_or(kUnknownVersion);
  if (text.size() > kMaxVersionText) text = kUnknownVersion;
  editor.installedGameVersion = ParseGameVersion(text);
}

bool LoadPlugins() {
  return LoadPlugin(session.surfacePlugin, kSurfacePlugin,
                    {kInitSurfaceMap, kInitSurfaceBmp, kGenerateSurfaceMap}) &&
         LoadPlugin(session.materialPlugin, kMaterialPlugin, {kInitMatMap, kGenerateMatMap});
}

void UnloadPlugins() {
  session.surfacePlugin.Unload();
  session.materialPlugin.Unload();
}

MaterialPlugin LoadedMaterialPlugin() {
  MaterialPlugin plugin;
  FindFunction(session.materialPlugin, kInitMatMap, plugin.InitMatMap);
  FindFunction(session.materialPlugin, kGenerateMatMap, plugin.GenerateMatMap);
  return plugin;
}

SurfacePlugin LoadedSurfacePlugin() {
  SurfacePlugin plugin;
  FindFunction(session.surfacePlugin, kInitSurfaceMap, plugin.InitSurfaceMap);
  FindFunction(session.surfacePlugin, kInitSurfaceBmp, plugin.InitSurfaceBmp);
  FindFunction(session.surfacePlugin, kGenerateSurfaceMap, plugin.GenerateSurfaceMap);
  return plugin;
}

void ConnectHooks() {
  hooks.loadObjectCatalogue = LoadObjectCatalogue;
  hooks.drawStaticObjects = DrawStaticObjects;
  hooks.seatObjectsOnGround = SnapAllToGround;
}

void SetInitialValues() {
  editor.levelModified = false;
  editor.ShowGrid = true;
  editor.ShowTextures = false;
  editor.drawObjectsInMappers = false;
  editor.pastePending = false;
  editor.rubberBandActive = false;
  editor.somethingCopied = false;
  editor.browserPreviewActive = false;
  editor.levelHasWater = true;
  editor.textureSetName = "Default";
  SeedGameRandom(static_cast<std::uint32_t>(std::time(nullptr)));
}

void SendStartCommands() {
  RunCommand(kCommandCameraFly);
  RunCommand(kCommandWireframe);
  RunCommand(kCommandObjectMapper);
  RunCommand(kCommandViewTexturedMesh);
}

void CentreCamera() {
  const int half = modConfig.WorldSize / 2;
  camera.position.x = camera.position.z = static_cast<float>(half);
}

namespace {

// The recent levels are those that the dialog has shown.
bool HasChosenLevel(WelcomeChoice choice, const std::vector<RecentLevel>& recent) {
  switch (choice) {
    case WelcomeChoice::OpenLevel:
      return OpenLevel();
    case WelcomeChoice::NewLevel:
      return NewLevel(shell.newLevelDialog);
    case WelcomeChoice::SampleGame:
      return TrySampleGame();
    default:
      break;
  }
  const int place = static_cast<int>(choice) - static_cast<int>(WelcomeChoice::FirstRecentLevel);
  return place >= 0 && static_cast<std::size_t>(place) < recent.size() &&
         OpenRecentLevel(recent[static_cast<std::size_t>(place)].archive);
}

}  // namespace

bool RunWelcomeLoop() {
  for (;;) {
    const std::vector<RecentLevel> recent = RecentLevels();
    const WelcomeChoice choice = shell.welcomeDialog(recent);
    if (choice == WelcomeChoice::Close) return false;
    if (HasChosenLevel(choice, recent)) return true;
  }
}

}  // namespace mw
