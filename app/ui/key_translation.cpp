#include "app/ui/key_translation.h"

#include <QKeyEvent>

#include "app/keys.h"

namespace mw {
namespace {

// With Shift held a digit's key reports the sign above it; the key itself tells the digit.
int DigitBehindSign(const QKeyEvent& event) {
#ifdef Q_OS_WIN
  const quint32 key = event.nativeVirtualKey();
  return key >= '0' && key <= '9' ? static_cast<int>(key) : kKeyNone;
#else
  // The row of digits as X11 numbers it: "1" ... "9", "0".
  constexpr quint32 kFirstDigit = 10, kLastDigit = 19;
  const quint32 code = event.nativeScanCode();
  if (code < kFirstDigit || code > kLastDigit) return kKeyNone;
  return '0' + static_cast<int>((code - kFirstDigit + 1) % 10);
#endif
}

int TranslateKeypad(int key) {
  if (key == Qt::Key_Plus) return kKeyNumpadPlus;
  if (key == Qt::Key_Minus) return kKeyNumpadMinus;
  return kKeyNone;
}

int TranslateNamedKey(int key) {
  switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return kKeyTab;
    case Qt::Key_Shift:
      return kKeyShift;
    case Qt::Key_Control:
      return kKeyCtrl;
    case Qt::Key_Escape:
      return kKeyEscape;
    case Qt::Key_Space:
      return kKeySpace;
    case Qt::Key_PageUp:
      return kKeyPageUp;
    case Qt::Key_PageDown:
      return kKeyPageDown;
    case Qt::Key_Left:
      return kKeyLeft;
    case Qt::Key_Up:
      return kKeyUp;
    case Qt::Key_Right:
      return kKeyRight;
    case Qt::Key_Down:
      return kKeyDown;
    case Qt::Key_Delete:
      return kKeyDelete;
    default:
      return kKeyNone;
  }
}

}  // namespace

int TranslateKey(const QKeyEvent& event) {
  const int key = event.key();
  if (const int named = TranslateNamedKey(key)) return named;
  if (event.modifiers() & Qt::KeypadModifier) return TranslateKeypad(key);
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  return DigitBehindSign(event);
}

}  // namespace mw
