#include "platform/windows/registry.h"

#include <vector>
#include <windows.h>

#include "platform/windows/wide_path.h"

namespace mw {
namespace {

constexpr DWORD kMostBytes = 1 << 16;

struct Place {
  HKEY root;
  DWORD view;
};
const Place kPlaces[] = {{HKEY_CURRENT_USER, KEY_WOW64_64KEY},
                         {HKEY_LOCAL_MACHINE, KEY_WOW64_64KEY},
                         {HKEY_LOCAL_MACHINE, KEY_WOW64_32KEY}};

class Key {
 public:
  ~Key() {
    if (key_) RegCloseKey(key_);
  }
  Key() = default;
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  HKEY* Room() { return &key_; }
  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

std::optional<std::string> Read(const Place& place, const std::wstring& path,
                                const std::wstring& name) {
  Key key;
  if (RegOpenKeyExW(place.root, path.c_str(), 0, KEY_QUERY_VALUE | place.view, key.Room()) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  DWORD type = 0, bytes = 0;
  if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS ||
      bytes > kMostBytes) {
    return std::nullopt;
  }
  std::vector<wchar_t> value(bytes / sizeof(wchar_t) + 1);
  bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
  if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type,
                       reinterpret_cast<BYTE*>(value.data()), &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  if (type == REG_DWORD && bytes == sizeof(DWORD)) {
    return std::to_string(*reinterpret_cast<const DWORD*>(value.data()));
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  std::wstring_view text(value.data(), bytes / sizeof(wchar_t));
  return Utf8Text(text.substr(0, text.find(L'\0')));
}

}  // namespace

std::optional<std::string> ReadRegistryText(std::string_view key, std::string_view name) {
  for (const Place& place : kPlaces) {
    if (auto text = Read(place, WideText(key), WideText(name))) return text;
  }
  return std::nullopt;
}

bool WriteRegistryText(std::string_view key, std::string_view name, std::string_view value) {
  Key opened;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, WideText(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                      nullptr, opened.Room(), nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const std::wstring text = WideText(value);
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  return RegSetValueExW(opened.Get(), WideText(name).c_str(), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(text.c_str()), bytes) == ERROR_SUCCESS;
}

}  // namespace mw
