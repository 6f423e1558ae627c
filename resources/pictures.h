// The icons and pictures that are built into the program. Used by toolbars, windows and dialogs.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

namespace mw {

// Of the icons in toolbars and in the level tree.
constexpr QSize kIconSize(16, 16);

// The icon of resources/icons/<name>.svg; sharp at any size. A null icon when there is none.
QIcon Icon(const QString& name);

// 520 x 316, with a picture of twice the size for screens that show it.
QPixmap SplashPicture();
// 258 x 1456.
QPixmap CreditsPicture();

}  // namespace mw
