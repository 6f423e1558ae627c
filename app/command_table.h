// Every command of the main window in one table: what it does, where its menu entry stands, its
// caption, keys, tool tip and icon. The window builds its menus, toolbar and shortcuts from it.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "app/command_ids.h"

namespace mw {

// Commands of one radio group: exactly one is checked.
enum class CommandGroup { None, Camera, Drawing, Mode, MiniMapSize };

// What a command does: a function, which each command must have.
class Deed {
 public:
  template <typename Function>
  constexpr Deed(Function function) : function_(function) {}
  Deed(std::nullptr_t) = delete;
  void operator()() const { function_(); }

 private:
  void (*function_)();
};

struct CommandSpec {
  CommandId id;
  // Run by RunCommand, which knows whether the command may run now.
  Deed deed;
  // "File", "File/Import", ...; empty for a command without a menu entry.
  std::string_view menu;
  // With `&` for the mnemonic; a tab separates the key text that the entry shows. Commands without
  // a menu entry have the text that a screen reader should say.
  std::string_view caption;
  // Portable key sequences that run the command, separated by blanks; empty for none.
  std::string_view shortcuts;
  std::string_view toolTip;
  std::string_view icon;  // resource name without folder and extension
  CommandGroup group = CommandGroup::None;
  bool isSwitch = false;  // on or off by itself, with a check mark
};

// In menu order, then the commands without a menu entry.
std::span<const CommandSpec> CommandTable();
const CommandSpec* FindCommand(CommandId id);
// Whether the command works on a level: it is disabled while none is open.
bool NeedsLevel(CommandId id);

// Entries of the main toolbar in order; kCommandNone is a separator.
std::span<const CommandId> MainToolbar();
// The commands of a radio group, in table order.
std::span<const CommandId> GroupMembers(CommandGroup group);

}  // namespace mw
