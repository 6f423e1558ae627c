#include "platform/native_window.h"

#include <windows.h>

namespace mw {

void LetOpenGlDrawInto(std::uintptr_t window) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the system's handles are pointers.
  const HWND handle = reinterpret_cast<HWND>(window);
  const LONG_PTR style = GetWindowLongPtrW(handle, GWL_EXSTYLE);
  SetWindowLongPtrW(handle, GWL_EXSTYLE, style & ~LONG_PTR{WS_EX_LAYERED | WS_EX_TRANSPARENT});
}

bool ShowsOpenGlInChildWindows() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return !system || !GetProcAddress(system, "wine_get_version");
}

}  // namespace mw
