#include "platform/scripted/script.h"

#include <algorithm>
#include <utility>

#include "platform/gl_context.h"
#include "platform/modules.h"
#include "platform/processes.h"
#include "platform/settings_store.h"
#include "platform/single_instance.h"

namespace mw::scripted {

Script script;

void ResetScript() {
  Script fresh;
  fresh.unexpectedPrompt = script.unexpectedPrompt;
  script = std::move(fresh);
}

namespace {
bool Lists(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}
std::optional<std::string> Setting(const std::map<std::string, std::string>& settings,
                                   std::string_view name) {
  const auto found = settings.find(std::string(name));
  if (found == settings.end()) return std::nullopt;
  return found->second;
}
}  // namespace

}  // namespace mw::scripted

namespace mw {

using scripted::script;

PromptAnswer ShowPrompt(std::string_view text, std::string_view caption, PromptButtons buttons,
                        PromptIcon icon) {
  script.prompts.push_back({std::string(text), std::string(caption), buttons, icon});
  if (!script.answers.empty()) {
    const PromptAnswer answer = script.answers.front();
    script.answers.erase(script.answers.begin());
    return answer;
  }
  if (script.unexpectedPrompt) script.unexpectedPrompt(script.prompts.back());
  return buttons == PromptButtons::YesNo ? PromptAnswer::No
         : buttons == PromptButtons::Ok  ? PromptAnswer::Ok
                                         : PromptAnswer::Cancel;
}

void ShowWaitCursor() { ++script.waitCursorCount; }
void ShowArrowCursor() {}

void SetStatusText(int part, std::string_view text) {
  if (part >= 0 && part < 4) script.status[part].emplace_back(text);
}

void ClearStatusText(int part, std::string_view text) {
  if (part < 0 || part >= static_cast<int>(std::size(script.status))) return;
  auto& texts = script.status[part];
  if (!texts.empty() && texts.back() == text) texts.emplace_back();
}

bool MakeViewContextCurrent() { return script.makeContextCurrent && script.makeContextCurrent(); }
bool HasGlExtension(std::string_view name) {
  return !scripted::Lists(script.missingGlExtensions, name);
}
void* GlFunction(const char* name) { return script.glFunction ? script.glFunction(name) : nullptr; }

bool RunProcessAndWait(std::string_view commandLine, std::string_view) {
  script.startedProcesses.emplace_back(commandLine);
  return !script.program || script.program(commandLine);
}
ProcessEnd RunCancellableProcess(std::string_view commandLine, std::string_view folder,
                                 std::string_view, std::string_view) {
  const bool ignoredBefore = std::exchange(script.inputIgnored, true);
  const bool started = RunProcessAndWait(commandLine, folder);
  script.inputIgnored = ignoredBefore;
  if (!started) return ProcessEnd::NotStarted;
  return script.processesCancelled ? ProcessEnd::Cancelled : ProcessEnd::Ended;
}
bool IsInputIgnored() { return script.inputIgnored; }
bool OpenDocument(std::string_view path) {
  script.openedDocuments.emplace_back(path);
  return script.documentsOpen;
}

std::optional<std::string> ReadGameSetting(std::string_view name) {
  return scripted::Setting(script.gameSettings, name);
}
bool WriteGameSetting(std::string_view name, std::string_view value) {
  script.gameSettings[std::string(name)] = value;
  return true;
}
std::optional<std::string> ReadEditorSetting(std::string_view name) {
  return scripted::Setting(script.editorSettings, name);
}
bool WriteEditorSetting(std::string_view name, std::string_view value) {
  script.editorSettings[std::string(name)] = value;
  return true;
}

bool ClaimSingleInstance(std::string_view) { return !script.instanceTaken; }

Module::Module(Module&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
Module& Module::operator=(Module&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}
Module::~Module() = default;
bool Module::Load(std::string_view fileName) {
  handle_ = scripted::Lists(script.missingModules, fileName) ? nullptr : this;
  return handle_ != nullptr;
}
void Module::Unload() { handle_ = nullptr; }
void* Module::Function(const char* name) const {
  return scripted::Lists(script.missingFunctions, name) ? nullptr : handle_;
}

}  // namespace mw
