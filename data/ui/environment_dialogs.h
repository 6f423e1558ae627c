// The dialogs of the level's environment and teams, opened from the level tree and the Water
// command. Each edits settings of ModConfig that the level's scripts hold.
#pragma once

class QWidget;

namespace mw {

// Each runs its dialog over `owner`, which may be null, and stores the settings on OK; what changed
// marks the open level as modified. False, with nothing stored, when the user cancels.
bool LightSettingsDialog(QWidget* owner);
bool FogSettingsDialog(QWidget* owner);
bool ShadowSettingsDialog(QWidget* owner);
bool WaterSettingsDialog(QWidget* owner);
bool TeamSelectionDialog(QWidget* owner);

}  // namespace mw
