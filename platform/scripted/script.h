// The platform of the tests: it records every message box and status text, and answers from a list.
// A prompt that the test did not expect fails the test.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/prompts.h"

namespace mw::scripted {

struct Prompt {
  std::string text, caption;
  PromptButtons buttons = PromptButtons::Ok;
  PromptIcon icon = PromptIcon::None;
};

struct Script {
  std::vector<PromptAnswer> answers;   // used from the front
  std::vector<Prompt> prompts;         // every box shown
  std::vector<std::string> status[4];  // every text set, per part, without the two spaces
  int waitCursorCount = 0;
  std::map<std::string, std::string> gameSettings, editorSettings;
  std::vector<std::string> missingModules;    // names that fail to load
  std::vector<std::string> missingFunctions;  // of modules that load
  std::vector<std::string> missingGlExtensions;
  std::vector<std::string> startedProcesses, openedDocuments;
  bool documentsOpen = true;  // what OpenDocument answers
  // Does what the started program would have done; false when it could not be started.
  std::function<bool(std::string_view commandLine)> program;
  bool processesCancelled = false;  // by the user, after `program`
  bool inputIgnored = false;
  bool instanceTaken = false;
  bool (*makeContextCurrent)() = nullptr;  // set by tests that draw
  void* (*glFunction)(const char*) = nullptr;
  // Called for a prompt without an answer in the list; the test support makes it fail the test.
  void (*unexpectedPrompt)(const Prompt&) = nullptr;
};

extern Script script;

// Forgets everything recorded, every answer and the context; keeps what happens at an unexpected
// prompt.
void ResetScript();

}  // namespace mw::scripted
