// Writes the editor's media: pictures of the working folder, and pictures that are built into the
// program. Used by make_media.
#pragma once

#include <QString>

namespace mw {

// media/ and TextureSets/Default/ below a folder. False, with a line on standard error, when a file
// could not be written.
bool WriteWorkingFolderMedia(const QString& folder);

// splash.png and credits.png in a folder; needs a QGuiApplication for its text.
bool WriteProgramPictures(const QString& folder);

}  // namespace mw
