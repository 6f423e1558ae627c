// list and verify: what leaves an archive as it is.
#include <cstdio>

#include "core/text.h"
#include "data/archive_segments.h"
#include "tools/archive/commands.h"
#include "tools/archive/member_names.h"
#include "tools/archive/report.h"

namespace mw {
namespace {

double Ratio(const ArchiveEntry& entry) {
  return entry.size == 0 ? 1 : static_cast<double>(entry.storedSize) / entry.size;
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
  Archive archive;
  if (!OpenOrSay(archive, arguments.archive, false)) return kUnreadable;
  const auto names = MatchingMembers(archive, arguments.patterns);
  std::uint64_t total = 0;
  for (const std::string& name : names) total += archive.Find(name)->size;
  Progress progress(total);
  auto damaged = nlohmann::json::array();
  for (const std::string& name : names) {
    const std::uint32_t size = archive.Find(name)->size;
    const auto member = archive.ReadMemberWithGaps(name);
    const std::size_t readable = member ? ReadableBytes(*member, size) : 0;
    if (readable != size) {
      damaged.push_back({{"name", name}, {"size", size}, {"readable", readable}});
    }
    progress.Add(size);
  }
  if (arguments.json) {
    PrintJson({{"members", names.size()}, {"damaged", damaged}});
  } else {
    for (const auto& member : damaged) {
      std::printf("damaged: %s: %u of %u bytes can be read\n",
                  member["name"].get<std::string>().c_str(), member["readable"].get<unsigned>(),
                  member["size"].get<unsigned>());
    }
    std::printf("%zu members, %zu damaged\n", names.size(), damaged.size());
  }
  return damaged.empty() ? kFine : kDamaged;
}

}  // namespace mw
