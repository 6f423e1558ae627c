#include "app/recent_levels.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "app/level_file.h"
#include "core/text.h"
#include "data/open_level.h"
#include "platform/disk.h"
#include "platform/prompts.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

// Of one text, so that the list is written whole: a line for each level, path and mod.
constexpr const char* kRecentSetting = "RecentLevels";
constexpr char kBetween = '\t';
constexpr std::string_view kNotInPaths = "\t\r\n";

void Write(const std::vector<RecentLevel>& levels) {
  std::string text;
  for (const RecentLevel& level : levels) text += level.archive + kBetween + level.mod + '\n';
  // Where it cannot be kept there is no list: nothing to tell of.
  static_cast<void>(WriteEditorSetting(kRecentSetting, text));
}

// Paths are as the disk spells them: two that differ in case alone are two files.
std::vector<RecentLevel> AllBut(const std::string& archive) {
  std::vector<RecentLevel> levels = RecentLevels();
  std::erase_if(levels, [&](const RecentLevel& level) { return level.archive == archive; });
  return levels;
}

// What the setting holds may be damaged: a line that names no file is passed over.
bool IsUsable(std::string_view line, std::size_t pathEnd) {
  return pathEnd != line.npos && std::filesystem::path(line.substr(0, pathEnd)).is_absolute();
}

}  // namespace

std::vector<RecentLevel> RecentLevels() {
  std::vector<RecentLevel> levels;
  const std::string text = ReadEditorSetting(kRecentSetting).value_or("");
  Tokenizer lines(text);
  while (const auto line = lines.Next("\n")) {
    const std::size_t end = line->find(kBetween);
    if (!IsUsable(*line, end) || levels.size() == kMaxRecentLevels) continue;
    const std::string_view archive = line->substr(0, end);
    if (std::ranges::find(levels, archive, &RecentLevel::archive) != levels.end()) continue;
    levels.push_back({std::string(archive), std::string(line->substr(end + 1))});
  }
  return levels;
}

std::vector<std::string> RecentLevelCaptions(const std::vector<RecentLevel>& levels) {
  std::vector<std::string> captions;
  captions.reserve(levels.size());
  for (const RecentLevel& level : levels) {
    captions.push_back(std::filesystem::path(level.archive).stem().string() + " (" + level.mod +
                       ")");
  }
  const std::vector<std::string> plain = captions;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (std::ranges::count(plain, plain[i]) == 1) continue;
    captions[i] += " in " + std::filesystem::path(levels[i].archive).parent_path().string();
  }
  return captions;
}

void RememberLevel() {
  std::error_code ignored;
  const RecentLevel open{
      std::filesystem::absolute(NativePath(openLevel.archivePath), ignored).string(),
      openLevel.mod};
  if ((open.archive + open.mod).find_first_of(kNotInPaths) != std::string::npos) return;
  std::vector<RecentLevel> levels = AllBut(open.archive);
  levels.insert(levels.begin(), open);
  if (levels.size() > kMaxRecentLevels) levels.pop_back();
  Write(levels);
}

bool OpenRecentLevel(std::string_view archive) {
  const std::vector<RecentLevel> levels = RecentLevels();
  const auto found = std::ranges::find(levels, archive, &RecentLevel::archive);
  const RecentLevel level = found == levels.end() ? RecentLevel{std::string(archive), {}} : *found;
  if (FileExists(level.archive)) return OpenLevelFile(level.archive, level.mod);
  Write(AllBut(level.archive));
  ShowPrompt("This level is not there any more:\n\n" + level.archive +
                 "\n\nIt is no longer among the recent levels.",
             "Error", PromptButtons::Ok, PromptIcon::Exclamation);
  return false;
}

}  // namespace mw
