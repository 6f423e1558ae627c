#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/table/archive_command.h"
#include "bench/table/table.h"

// Without arguments all rows, else those of the groups that are named.
int main(int count, char** arguments) {
  using namespace mw::bench;
  if (count == 3 && std::string_view(arguments[1]) == kReadMembers) {
    ReadAllMembers(arguments[2]);
    return 0;
  }
  constexpr std::pair<std::string_view, void (*)()> kGroups[] = {
      {"terrain", AddTerrainRows}, {"objects", AddObjectRows},   {"archive", AddArchiveRows},
      {"saving", AddSavingRows},   {"pictures", AddPictureRows}, {"ground", AddGroundRows},
      {"history", AddHistoryRows}};
  const std::vector<std::string_view> wanted(arguments + 1, arguments + count);
  for (const auto& [name, addRows] : kGroups) {
    if (wanted.empty() || std::ranges::find(wanted, name) != wanted.end()) addRows();
  }
  Print();
}
