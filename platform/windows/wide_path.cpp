#include "platform/windows/wide_path.h"

#include <windows.h>

#include "platform/native_name.h"

namespace mw {

namespace fs = std::filesystem;

std::wstring WideText(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8Text(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size,
                                                                  nullptr, 0, nullptr, nullptr)),
                     '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), static_cast<int>(narrow.size()),
                      nullptr, nullptr);
  return narrow;
}

std::wstring WideText(const char* begin, const char* end) {
  return WideText(std::string_view(begin, static_cast<std::size_t>(end - begin)));
}

std::wstring WidePath(const fs::path& path) {
  constexpr std::size_t kShort = MAX_PATH - 14;  // room for what callers put behind it
  std::wstring whole(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    if (length == 0) return path.native();
    const bool fits = length < whole.size();
    whole.resize(length);
    if (fits) break;
  }
  if (whole.size() < kShort || whole.starts_with(L"\\\\?\\") || whole.starts_with(L"\\\\.\\")) {
    return whole;
  }
  if (whole.starts_with(L"\\\\")) return L"\\\\?\\UNC" + whole.substr(1);
  return L"\\\\?\\" + whole;
}

fs::path PathOfText(std::string_view text) { return WideText(text); }

std::string TextOfPath(const fs::path& path) { return Utf8Text(path.native()); }

// Windows finds it in any case; the folder tells how it is spelled.
fs::path ExistingSpelling(const fs::path& folder, const fs::path& name) {
  if (name.native().find_first_of(L"*?") != std::wstring::npos) return folder / name;
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(WidePath(folder / name).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return folder / name;
  FindClose(search);
  return folder / found.cFileName;
}

}  // namespace mw
