#include "app/shell.h"

#include "platform/prompts.h"

namespace mw {
namespace {

// One for each of the record's functions, which all have the same size.
template <std::size_t... Index>
Shell Unconnected(std::index_sequence<Index...>) {
  return {(static_cast<void>(Index), NotConnected{})...};
}

}  // namespace

void ShowMissingWindow() {
  ShowPrompt("A window of the program is missing, so this could not be done.", "Error",
             PromptButtons::Ok, PromptIcon::Stop);
}

Shell ShellWithoutWindows() {
  constexpr std::size_t kFunctions = sizeof(Shell) / sizeof(WindowFunction<void()>);
  return Unconnected(std::make_index_sequence<kFunctions>());
}

Shell shell = ShellWithoutWindows();

}  // namespace mw
