#include "app/damaged_parts.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "app/level.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/level_settings.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr std::size_t kMostLines = 20;  // what fits on a small screen

template <typename Act>
void ForEachPart(Act act) {
  for (std::size_t i = 0; i < openLevel.loadReport.parts.size(); ++i) {
    act(static_cast<LevelPart>(i), openLevel.loadReport.parts[i]);
  }
}

// "the editor" holds one map, but several objects.
bool IsPlural(LevelPart part) { return part >= LevelPart::StaticObjects; }

bool WantsReplaced(LevelPart part, bool missing) {
  return ShowPrompt(FormatText("Replace the %s %s on disk by %s in the editor?",
                               missing ? "missing" : "damaged", NameOf(part),
                               IsPlural(part) ? "those" : "the one"),
                    "Save?", PromptButtons::YesNo, PromptIcon::Exclamation) == PromptAnswer::Yes;
}

}  // namespace

void NoteDamagedRest() {
  Archive* const archive = LevelArchive();
  if (!archive) return;
  for (const auto& [name, entry] : archive->Entries()) {
    if (openLevel.loadReport.filesRead.contains(name)) continue;
    const auto member = archive->ReadMemberWithGaps(name);
    if (member && member->IsWhole()) continue;
    const std::string file(name.substr(name.find_last_of('/') + 1));
    NoteDamagedFile(
        FormatText("The file %s, which the editor does not read, is damaged.", file.c_str()));
  }
}

void ShowLoadReport() {
  const auto& lines = openLevel.loadReport.lines;
  if (lines.empty()) return;
  std::string text =
      openLevel.loadReport.readWhole
          ? FormatText("The level %s was opened.\n", modConfig.LevelName.c_str())
          : FormatText("Not all of the level %s could be read.\n", modConfig.LevelName.c_str());
  for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) text += "\n" + lines[i];
  if (lines.size() > kMostLines)
    text += FormatText("\n... and %zu more", lines.size() - kMostLines);
  if (!openLevel.loadReport.readWhole) {
    text += "\n\nWhat was not read whole stays as it is on disk, until you agree to replace it.";
  }
  ShowArrowCursor();
  ShowPrompt(text, "Warning", PromptButtons::Ok, PromptIcon::Exclamation);
}

void AskForDamagedParts() {
  ForEachPart([](LevelPart part, const LoadReport::Part& record) {
    if (record.damaged && record.then == DamagedPart::Ask) {
      SetReplaced(part, WantsReplaced(part, record.missing));
    }
  });
}

std::string KeptPartsText() {
  constexpr std::string_view kKind = "settings script ";  // the name of the file will do
  std::string text;
  ForEachPart([&](LevelPart part, const LoadReport::Part&) {
    if (MayWrite(part)) return;
    std::string_view name = NameOf(part);
    if (name.starts_with(kKind)) name.remove_prefix(kKind.size());
    text.append(text.empty() ? ". Not saved: " : ", ").append(name);
  });
  for (const std::string& command : SettingsNotSaved()) {
    text += ". Not saved, as no script has a place for it: " + command;
  }
  return text;
}

}  // namespace mw
