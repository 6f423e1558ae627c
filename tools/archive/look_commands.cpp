// list and verify: what leaves an archive as it is.
#include <algorithm>
#include <cstdio>

#include "core/text.h"
#include "data/archive_segments.h"
#include "tools/archive/commands.h"
#include "tools/archive/level_check.h"
#include "tools/archive/member_names.h"
#include "tools/archive/report.h"

namespace mw {
namespace {

double Ratio(const ArchiveEntry& entry) {
  return entry.size == 0 ? 1 : static_cast<double>(entry.storedSize) / entry.size;
}

nlohmann::json DamagedMembers(Archive& archive, const std::vector<std::string>& names,
                              const LevelCheck& levels) {
  std::uint64_t total = 0;
  for (const std::string& name : names) total += archive.Find(name)->size;
  Progress progress(total);
  auto damaged = nlohmann::json::array();
  for (const std::string& name : names) {
    const std::uint32_t size = archive.Find(name)->size;
    progress.Add(size);
    if (levels.membersReadWhole.contains(name)) continue;
    const auto member = archive.ReadMemberWithGaps(name);
    // Nobody writes a member without a name: the directory holds zeros in the place of entries.
    if (member && member->IsWhole() && !name.empty()) continue;
    const std::size_t readable = member ? ReadableBytes(*member, size) : 0;
    damaged.push_back({{"name", name}, {"size", size}, {"readable", readable}});
  }
  return damaged;
}

nlohmann::json DamageOf(const LevelCheck& check) {
  auto levels = nlohmann::json::array();
  for (const CheckedLevel& level : check.levels) {
    auto finds = nlohmann::json::array();
    for (const LevelFind& find : level.finds) {
      finds.push_back({{"rule", find.rule->name},
                       {"gravity", NameOf(find.rule->gravity)},
                       {"text", find.text}});
    }
    levels.push_back({{"folder", level.folder}, {"damage", level.damage}, {"finds", finds}});
  }
  return levels;
}

// How many there were.
std::size_t PrintFinds(const LevelCheck& check) {
  std::size_t count = 0;
  for (const CheckedLevel& level : check.levels) {
    for (const LevelFind& find : level.finds) {
      std::printf("%s: %s: %s.\n", NameOf(find.rule->gravity), level.folder.c_str(),
                  find.text.c_str());
    }
    count += level.finds.size();
  }
  return count;
}

void PrintReport(std::size_t members, const nlohmann::json& damaged, const LevelCheck& check) {
  for (const auto& member : damaged) {
    const auto name = member["name"].get<std::string>();
    std::printf("damaged: %s: %u of %u bytes can be read\n",
                name.empty() ? "(a member without a name)" : name.c_str(),
                member["readable"].get<unsigned>(), member["size"].get<unsigned>());
  }
  std::size_t damagedLevels = 0;
  for (const CheckedLevel& level : check.levels) {
    if (!level.damage.empty()) ++damagedLevels;
    for (const std::string& line : level.damage) {
      std::printf("damaged: %s: %s\n", level.folder.c_str(), line.c_str());
    }
  }
  const std::size_t finds = PrintFinds(check);
  std::printf("%zu members, %zu damaged\n", members, damaged.size());
  if (check.levels.empty()) return;
  std::printf("%zu levels, %zu damaged, %zu finds\n", check.levels.size(), damagedLevels, finds);
}

}  // namespace

int ListMembers(const Arguments& arguments) {
  Archive archive;
  if (!OpenOrSay(archive, arguments.archive, false)) return kUnreadable;
  auto members = nlohmann::json::array();
  std::uint64_t size = 0, stored = 0;
  const auto names = MatchingMembers(archive, arguments.patterns);
  for (const std::string& name : names) {
    const ArchiveEntry& entry = *archive.Find(name);
    size += entry.size;
    stored += entry.storedSize;
    if (arguments.json) {
      members.push_back({{"name", name}, {"size", entry.size}, {"stored", entry.storedSize}});
    } else {
      std::printf("%10u %10u %4.0f %%  %s\n", entry.size, entry.storedSize, Ratio(entry) * 100,
                  name.c_str());
    }
  }
  if (arguments.json) {
    PrintJson(members);
  } else {
    std::printf("%zu members, %s, stored in %s\n", names.size(), SizeText(size).c_str(),
                SizeText(stored).c_str());
  }
  return kFine;
}

int VerifyMembers(const Arguments& arguments) {
  std::string error;
  Archive* const archive = archives.OpenArchive(arguments.archive, false, &error);
  if (!archive) return Refuse(arguments.archive + ": " + error);
  const auto names = MatchingMembers(*archive, arguments.patterns);
  std::optional<ModConfig> mod;
  if (!arguments.mod.empty()) mod = ReadModForCheck(arguments.mod);
  if (!arguments.mod.empty() && !mod) return Refuse(arguments.mod + ": cannot be read");
  LevelCheck levels;
  if (arguments.patterns.empty()) levels = CheckLevels(*archive, mod);
  const nlohmann::json damaged = DamagedMembers(*archive, names, levels);
  if (arguments.json) {
    PrintJson({{"members", names.size()}, {"damaged", damaged}, {"levels", DamageOf(levels)}});
  } else {
    PrintReport(names.size(), damaged, levels);
  }
  const bool levelsAreWhole =
      std::ranges::all_of(levels.levels, [](const auto& level) { return level.damage.empty(); });
  return damaged.empty() && levelsAreWhole ? kFine : kDamaged;
}

}  // namespace mw
