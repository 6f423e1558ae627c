// Plug-in modules: shared libraries beside the program, with C entry points.
#pragma once

#include <string_view>

namespace mw {

// A loaded module, unloaded when it goes out of scope.
class Module {
 public:
  Module() = default;
  Module(Module&& other) noexcept;
  Module& operator=(Module&& other) noexcept;
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();  // NOLINT(performance-trivially-destructible): it unloads the module

  // Loads the module `fileName` from the program's own folder. False when it cannot be loaded.
  bool Load(std::string_view fileName);
  void Unload();
  bool IsLoaded() const { return handle_ != nullptr; }
  // The address of an exported function, or null.
  void* Function(const char* name) const;

 private:
  void* handle_ = nullptr;
};

}  // namespace mw
