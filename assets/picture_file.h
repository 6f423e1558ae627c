// Painted pictures as Qt images and files. Used by whoever writes media.
#pragma once

#include <QImage>
#include <QString>

#include "assets/picture.h"

namespace mw {

// 24 bits per pixel.
QImage ToImage(const Picture& picture);

// These write a line to standard error and answer false when the file or folder could not be
// written.
bool WriteImage(const QString& path, const QImage& image);
bool WriteBytes(const QString& path, const QByteArray& bytes);
bool MakeFolder(const QString& path);

}  // namespace mw
