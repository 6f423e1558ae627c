#include <algorithm>
#include <cstdio>

#include "tools/archive/commands.h"
#include "tools/archive/member_names.h"
#include "tools/archive/report.h"

namespace mw {
namespace {

struct Differences {
  std::vector<std::string> onlyFirst, onlySecond, changed;

  bool Empty() const { return onlyFirst.empty() && onlySecond.empty() && changed.empty(); }
};

std::vector<std::string> MissingIn(const Archive& archive, const Archive& other) {
  std::vector<std::string> names = MatchingMembers(archive, {});
  std::erase_if(names, [&](const std::string& name) { return other.Find(name) != nullptr; });
  return names;
}

Differences Compare(Archive& first, Archive& second) {
  Differences found{MissingIn(first, second), MissingIn(second, first), {}};
  Progress progress(first.Entries().size());
  for (const std::string& name : MatchingMembers(first, {})) {
    progress.Add(1);
    if (!second.Find(name)) continue;
    const bool sizesDiffer = first.Find(name)->size != second.Find(name)->size;
    if (sizesDiffer || first.ReadMember(name) != second.ReadMember(name)) {
      found.changed.push_back(name);
    }
  }
  return found;
}

void Print(const char* mark, const std::vector<std::string>& names) {
  for (const std::string& name : names) std::printf("%s %s\n", mark, name.c_str());
}

}  // namespace

int DiffArchives(const Arguments& arguments) {
  Archive first, second;
  if (!OpenOrSay(first, arguments.archive, false) ||
      !OpenOrSay(second, arguments.otherArchive, false)) {
    return kUnreadable;
  }
  const Differences found = Compare(first, second);
  if (arguments.json) {
    PrintJson({{"onlyFirst", found.onlyFirst},
               {"onlySecond", found.onlySecond},
               {"changed", found.changed}});
  } else {
    Print("-", found.onlyFirst);
    Print("+", found.onlySecond);
    Print("*", found.changed);
  }
  return found.Empty() ? kFine : kDamaged;
}

}  // namespace mw
