// The dialogs around mods: selecting one, making a new one, editing its settings. Used at start-up,
// before a level is opened or created, and by the File menu. Where `cancelAllowed` is false the
// dialog can only be left with OK, or once OK was refused.
#pragma once

class QWidget;

namespace mw {

// At start-up: finds the mods. False, after a message that names the folder, when the working
// folder has nothing to work with.
bool FindModsAtStart();
// The same, and then has the user select one of them, or make the first one. A folder without mods
// that has no template of its own either is a new user's: nothing is asked there before the welcome
// dialog.
bool ListMods(QWidget* owner);
// True when a mod was selected, which is then current. Where there is none to select from, one is
// made.
bool SelectModDialog(QWidget* owner, bool cancelAllowed);
// True when a new mod was made, which is then current.
bool NewModConfig(QWidget* owner, bool cancelAllowed);
// True when the settings were taken over.
bool EditModSettings(QWidget* owner, bool cancelAllowed);

}  // namespace mw
