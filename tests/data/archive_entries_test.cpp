#include "data/archive_entries.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "core/text.h"

namespace mw {
namespace {

ArchiveEntry At(std::uint32_t offset) { return {.dataOffset = offset}; }

std::string Names(const ArchiveEntries& entries) {
  std::string names;
  for (const auto& [name, entry] : entries) names.append(name).append(" ");
  return names;
}

TEST(ArchiveEntries, NamesAreFoundWithoutRegardToCaseAndSeparator) {
  ArchiveEntries entries;
  entries.Set("Varnhold\\Levels\\Init.con", At(7));
  ASSERT_TRUE(entries.Find("VARNHOLD/levels\\iNIT.CON"));
  EXPECT_EQ(entries.Find("VARNHOLD/levels\\iNIT.CON")->dataOffset, 7u);
  EXPECT_FALSE(entries.Find("varnhold/levels/init.co"));
  EXPECT_FALSE(entries.Find(""));
  EXPECT_FALSE(entries.Find(std::string(kMaxMemberName + 1, 'a')));
  EXPECT_EQ(Names(entries), "Varnhold/Levels/Init.con ");
}

TEST(ArchiveEntries, LongestNamesDifferInTheirLastByte) {
  ArchiveEntries entries;
  const std::string start(kMaxMemberName - 1, 'x');
  entries.Set(start + "a", At(1));
  entries.Set(start + "b", At(2));
  EXPECT_EQ(entries.Find(start + "A")->dataOffset, 1u);
  EXPECT_EQ(entries.Find(start + "B")->dataOffset, 2u);
}

TEST(ArchiveEntries, BytesThatAreNoLettersStayDistinct) {
  ArchiveEntries entries;
  for (int byte = 1; byte < 256; ++byte) {
    entries.Set(std::string(3, static_cast<char>(byte)), At(static_cast<std::uint32_t>(byte)));
  }
  EXPECT_EQ(entries.size(), 255u - 26 - 1) << "26 letters, and the two separators";
}

TEST(ArchiveEntries, BehavesAsAnOrderedMapWithTheSameOrder) {
  std::minstd_rand random(3);
  ArchiveEntries entries;
  std::map<std::string, std::uint32_t, LessNoCase> expected;
  for (std::uint32_t i = 0; i < 5000; ++i) {
    std::string name =
        FormatText("%s/%i", random() % 2 ? "Folder" : "fOLDER_", static_cast<int>(random() % 2000));
    entries.Set(name, At(i));
    expected.insert_or_assign(name, i);
    if (i % 1000 == 999) {
      const std::string removed = FormatText("folder/%i", static_cast<int>(random() % 10));
      const auto goes = [&](std::string_view member) { return StartsWithNoCase(member, removed); };
      EXPECT_EQ(entries.RemoveIf(goes),
                std::erase_if(expected, [&](const auto& e) { return goes(e.first); }));
    }
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
