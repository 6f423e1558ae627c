// What a user of the editor does from its start to its end, for programs that drive it. Each step
// waits until it can be done; all throw help::TourError. For a thread beside the windows.
#pragma once

#include <QHash>
#include <QString>

namespace mw::monkey {

// A step as the help's tour knows it: "button", "menu", "type" and so on.
void Do(const QString& action, const QString& text = {}, const QHash<QString, QString>& data = {});

// From the start of the program to a level of the sample game.
void StartWithLevel(const QString& level);
inline constexpr const char* kSampleMod = "varnhold";

// File, Open Level, without unsaved changes or giving them up; until the level is there.
void OpenLevelByMenu(const QString& level, const QString& mod = kSampleMod);
void SaveByMenu();
// File, Exit, with nothing left to save.
void ExitByMenu();

}  // namespace mw::monkey
