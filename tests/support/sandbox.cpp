#include "support/sandbox.h"

#include <cstdlib>
#include <unistd.h>

#include "core/editor_state.h"

namespace mw {
namespace {

void FailOnUnexpectedPrompt(const scripted::Prompt& prompt) {
  ADD_FAILURE() << "unexpected message box \"" << prompt.caption << "\": " << prompt.text;
}

}  // namespace

SandboxTest::SandboxTest() : before_(std::filesystem::current_path()) {
  const std::string pattern =
      (std::filesystem::temp_directory_path() / "mäp wright-XXXXXX").string();
  std::string name = pattern;
  if (!mkdtemp(name.data())) std::abort();
  folder = name;
  std::filesystem::current_path(folder);
  ResetCoreState();
  scripted::ResetScript();
  scripted::script.unexpectedPrompt = FailOnUnexpectedPrompt;
}

SandboxTest::~SandboxTest() {
  std::filesystem::current_path(before_);
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

std::string SandboxTest::GameFolder() const {
  std::string path = folder.string() + "/";
  for (char& c : path) {
    if (c == '/') c = '\\';
  }
  return path;
}

}  // namespace mw
