// Writes the editor's media: pictures of the working folder, and pictures that are built into the
// program. Used by make_media.
#pragma once

#include <QString>

namespace mw {

// media/, TextureSets/Default/ and TextureSets/Winter/ below a folder. False, with a line on
// standard error, when a file could not be written.
bool WriteWorkingFolderMedia(const QString& folder);

// splash.png (520 x 316), splash@2x.png and credits.png (258 x 1456) in a folder; `icons` is the
// folder of the program's icons. Needs a QGuiApplication for its text. Fails like the above.
bool WriteProgramPictures(const QString& icons, const QString& folder);

// <size>x<size>/apps/mapwright.png and <size>x<size>/mimetypes/application-x-varnhold-archive.png
// in a folder, in the sizes of a desktop's icon theme. Fails like the above.
bool WriteDesktopIcons(const QString& icons, const QString& folder);

// What the program for Windows is built with, in a folder: icons/<name>-<size>.png of all icons in
// the sizes of resources/drawn_icons.h, and mapwright.ico. Fails like the above.
bool WriteWindowsIcons(const QString& icons, const QString& folder);

}  // namespace mw
