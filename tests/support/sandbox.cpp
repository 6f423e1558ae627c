#include "support/sandbox.h"

#include <cstdlib>
#include <random>
#include <vector>

#include "core/editor_state.h"

namespace mw {
namespace {

void FailOnUnexpectedPrompt(const scripted::Prompt& prompt) {
  ADD_FAILURE() << "unexpected message box \"" << prompt.caption << "\": " << prompt.text;
}

// With all that is in it. What is still open stays where the system wants that: remove_all would
// try for ever.
void RemoveOnce(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::vector<std::filesystem::path> all{folder};
  using Walk = std::filesystem::recursive_directory_iterator;
  for (Walk at(folder, ignored), end; !ignored && at != end; at.increment(ignored)) {
    all.push_back(at->path());
  }
  for (auto path = all.rbegin(); path != all.rend(); ++path) {
    std::filesystem::remove(*path, ignored);
  }
}

}  // namespace

SandboxTest::SandboxTest() : before_(std::filesystem::current_path()) {
  constexpr int kMostTries = 16;
  std::random_device random;
  const std::filesystem::path all = std::filesystem::temp_directory_path();
  bool made = false;
  for (int tries = 0; tries < kMostTries && !made; ++tries) {
    folder = all / ("mäp wright-" + std::to_string(random()));
    made = std::filesystem::create_directory(folder);
  }
  if (!made) std::abort();
  std::filesystem::current_path(folder);
  ResetCoreState();
  scripted::ResetScript();
  scripted::script.unexpectedPrompt = FailOnUnexpectedPrompt;
}

SandboxTest::~SandboxTest() {
  std::filesystem::current_path(before_);
  RemoveOnce(folder);
}

std::string SandboxTest::GameFolder() const {
  std::string path = folder.string() + "/";
  for (char& c : path) {
    if (c == '/') c = '\\';
  }
  return path;
}

}  // namespace mw
