// From the window library's key codes to those of the input routing.
#pragma once

class QKeyEvent;

namespace mw {

// One of `Key`, or kKeyNone for a key that the routing does not know.
int TranslateKey(const QKeyEvent& event);

}  // namespace mw
