#include "app/ui/key_translation.h"

#include <QKeyEvent>
#include <string_view>

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

// Where the layout gives no Latin letter, a key counts as the letter that its place has on a Latin
// keyboard.
int LetterByPlace(const QKeyEvent& event) {
#ifdef Q_OS_WIN
  constexpr quint32 kTopRow = 16, kHomeRow = 30, kBottomRow = 44;
#else
  constexpr quint32 kTopRow = 24, kHomeRow = 38, kBottomRow = 52;
#endif
  struct Row {
    quint32 firstCode;
    std::string_view letters;
  };
  constexpr Row kRows[] = {
      {kTopRow, "QWERTYUIOP"}, {kHomeRow, "ASDFGHJKL"}, {kBottomRow, "ZXCVBNM"}};
  const quint32 code = event.nativeScanCode();
  for (const auto& [firstCode, letters] : kRows) {
    if (code >= firstCode && code - firstCode < letters.size()) return letters[code - firstCode];
  }
  return kKeyNone;
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
    case Qt::Key_Alt:
      return kKeyAlt;
    case Qt::Key_Escape:
      return kKeyEscape;
    case Qt::Key_Space:
      return kKeySpace;
    case Qt::Key_PageUp:
      return kKeyPageUp;
    case Qt::Key_PageDown:
      return kKeyPageDown;
    case Qt::Key_Home:
      return kKeyHome;
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
    case Qt::Key_BracketLeft:
      return kKeyBracketLeft;
    case Qt::Key_BracketRight:
      return kKeyBracketRight;
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
  if (const int letter = LetterByPlace(event)) return letter;
  return DigitBehindSign(event);
}

}  // namespace mw
