#include "data/archive_entries.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "core/text.h"

namespace mw {
namespace {

ArchiveEntry At(std::uint32_t offset) { return {.dataOffset = offset}; }

TEST(ArchiveEntries, NamesAreFoundWithoutRegardToCaseAndSeparator) {
  const std::string longest(kMaxMemberName - 1, 'x');
  ArchiveEntries entries;
  entries.Set("Varnhold\\Levels\\Init.con", At(7));
  entries.Set(longest + "a", At(1));
  entries.Set(longest + "b", At(2));
  EXPECT_EQ(entries.Find("VARNHOLD/levels\\iNIT.CON")->dataOffset, 7u);
  EXPECT_EQ(entries.Find(longest + "B")->dataOffset, 2u) << "they differ in their last byte";
  for (const std::string& other : {std::string("varnhold/levels/init.co"), std::string(),
                                   std::string(kMaxMemberName + 1, 'a')}) {
    EXPECT_FALSE(entries.Find(other)) << other;
  }
  EXPECT_EQ((*entries.begin()).first, "Varnhold/Levels/Init.con");
}

TEST(ArchiveEntries, BehavesAsAnOrderedMapWithTheSameOrder) {
  std::minstd_rand random(3);
  ArchiveEntries entries;
  std::map<std::string, std::uint32_t, LessNoCase> expected;
  for (std::uint32_t i = 0; i < 5000; ++i) {
    std::string name =
        FormatText("%s/%i", random() % 2 ? "Folder" : "fOLDER_", static_cast<int>(random() % 200));
    const auto byte = static_cast<char>(1 + i % 255);  // letters, their neighbours and the others
    name += byte == '\\' ? '/' : byte;
    entries.Set(name, At(i));
    expected.insert_or_assign(name, i);
    if (i % 1000 != 999) continue;
    const std::string removed = FormatText("folder/%i", static_cast<int>(random() % 10));
    const auto goes = [&](std::string_view member) { return StartsWithNoCase(member, removed); };
    EXPECT_EQ(entries.RemoveIf(goes),
              std::erase_if(expected, [&](const auto& e) { return goes(e.first); }));
  }
  ASSERT_EQ(entries.size(), expected.size());
  auto wanted = expected.begin();
  for (const auto& [name, entry] : entries) {
    EXPECT_EQ(name, wanted->first) << "the first spelling, in its place";
    EXPECT_EQ(entry.dataOffset, wanted->second);
    ++wanted;
  }
}

}  // namespace
}  // namespace mw
