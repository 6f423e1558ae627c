// What changes make of an archive file, seen by the plain reader: every offset,
// size and byte.
#include <filesystem>
#include <gtest/gtest.h>

#include "core/text.h"
#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr std::uint32_t kHeader = 156;

// An archive as another program might have written it: with reserved fields,
// members that share bytes, and names that differ in case only.
Bytes ForeignArchive() {
  Bytes file;
  PutU32(file, kHeader + 10);
  PutU32(file, 0);
  for (int i = 0; i < 148; ++i) file.push_back(static_cast<std::uint8_t>(i));
  for (const std::uint8_t byte : TextBytes("0123456789")) file.push_back(byte);
  const RawEntry entries[] = {{"z\\last", 4, 4, kHeader + 6, {7, 8, 9}},
                              {"shared", 6, 6, kHeader, {}},
                              {"Also/shared", 6, 6, kHeader, {1, 2, 3}},
                              {"empty", 0, 0, kHeader + 3, {}},
                              {"SHARED", 5, 5, kHeader, {4, 5, 6}}};
  PutU32(file, 5);
  for (const RawEntry& entry : entries) {
    PutU32(file, static_cast<std::uint32_t>(entry.name.size()));
    for (const std::uint8_t byte : TextBytes(entry.name)) file.push_back(byte);
    for (const std::uint32_t word : {entry.storedSize, entry.size, entry.offset, entry.reserved[0],
                                     entry.reserved[1], entry.reserved[2]})
      PutU32(file, word);
  }
  PutU32(file, 0xFFFFFFFF);  // an end mark that readers do not look at
  return file;
}

class ArchiveFormat : public SandboxTest {
 protected:
  // What the plain reader and the program read; the latter is told where it
  // differs.
  std::string Listing() {
    const RawArchive raw = ReadRawArchive("level.vra");
    std::string text =
        FormatText("  mode %u, directory at %u up to %u of %u, end mark %x, reserved %i\n",
                   raw.mode, raw.directoryOffset, static_cast<unsigned>(raw.directoryEnd),
                   static_cast<unsigned>(raw.file.size()), raw.endMark, raw.reserved[147]);
    for (const RawEntry& entry : raw.entries) {
      const Bytes content = raw.Content(entry.name);
      text += FormatText("  %s at %u: %u of %u [%u %u %u] ", entry.name.c_str(), entry.offset,
                         entry.storedSize, entry.size, entry.reserved[0], entry.reserved[1],
                         entry.reserved[2]);
      if (content.size() < 20) text.append(content.begin(), content.end());
      if (content.size() >= 20 && raw.mode == 1)
        text += FormatText("%i segments", raw.Stored(entry.name)[0]);
      if (archive.ReadMember(entry.name) != content) text += " DIFFERS";
      text += "\n";
    }
    if (raw.mode == 0)
      text += "  " +
              std::string(raw.file.begin() + kHeader, raw.file.begin() + raw.directoryOffset) +
              "\n";
    return text;
  }

  // Does what a line says, and says whether that went well.
  bool Do(std::string_view line) {
    Tokenizer words(line);
    const std::string verb(*words.Next(" ")), name(words.Next(" ").value_or("")),
        text(words.Next(" ").value_or(""));
    if (verb == "create") return archive.Create("level.vra");
    if (verb == "compress") return archive.SetMode(StorageMode::Compressed);
    if (verb == "store") return archive.SetMode(StorageMode::Stored);
    if (verb == "foreign") WriteBytes("level.vra", ForeignArchive());
    if (verb == "open" || verb == "foreign") return archive.Open("LEVEL.vra", name != "reading");
    if (verb == "write") return archive.WriteMember(name, TextBytes(text));
    if (verb == "noise")
      return archive.WriteMember(name, NoiseBytes(static_cast<std::size_t>(ParseInt(text)), 1));
    if (verb == "remove") return archive.RemoveMember(name);
    if (verb == "empty") return archive.RemoveMembersWithPrefix(name);
    if (verb == "begin") return archive.BeginSave();
    if (verb == "compact") return archive.Compact() && archive.Open("level.vra", true);
    return archive.Close() && archive.Open("level.vra", true);
  }

  Archive archive;
};

TEST_F(ArchiveFormat, EveryChangeLeavesTheFileAsTheFormatSays) {
  const std::pair<const char*, std::vector<const char*>> kStories[] = {
      {"A new archive is a header and an empty directory", {"create", "compress"}},
      {"Stored members lie in the file as they are",
       {"create", "write b\\Two.con second", "write A/one.con first", "write a_/under"}},
      {"Compressed members are segments of 32768 bytes",
       {"create", "compress", "noise one 32768", "noise two 65536", "noise three 65537",
        "write empty", "write text some", "store"}},
      {"Names mean the same member in any case and with any separator",
       {"create", "compress", "write Levels/X/Init.con old", "write levels\\x\\INIT.con new"}},
      {"A growing member moves to the end and a shrinking one stays, until the "
       "archive is closed",
       {"create", "write a aaaa", "write b bbbb", "write b BBBB", "write a AAAAAA", "write b B",
        "show", "close"}},
      {"Removed bytes stay until the archive is closed",
       {"create", "write Keep/x 1", "write menu/a 22", "write MENU/b 333", "write menu2 4",
        "remove missing", "empty Menu\\", "show", "remove keep/X", "remove menu2", "close"}},
      {"Compacting closes up what nobody changed in this run, too",
       {"create", "write a 1", "write b 2", "remove a", "open", "show", "compact"}},
      {"What the program does not know is kept, and members that shared bytes "
       "each have theirs",
       {"foreign", "show", "write new n", "close"}},
      {"A member that shares its bytes is not overwritten in place",
       {"foreign", "write shared xx"}},
      {"An archive for reading refuses every change",
       {"foreign reading", "write x x", "remove shared", "empty", "begin", "close"}},
      {"The mode stays while members are stored in it",
       {"create", "compress", "write m text", "store", "compress", "remove m", "store"}},
      {"Creating takes over an existing file", {"foreign", "create", "show", "close"}}};
  std::string told;
  for (const auto& [title, lines] : kStories) {
    archive.Close();
    fs::remove("level.vra");
    told += std::string(title) + "\n";
    for (const std::string line : lines) {
      if (line == "show") {
        told += Listing();
      } else {
        told += "> " + line + (Do(line) ? "\n" : ": refused\n");
      }
    }
    told += Listing() + "\n";
  }
  ExpectGolden("data/archive_format.txt", told);
}

TEST_F(ArchiveFormat, CompactingKeepsLinksAndPermissions) {
  constexpr fs::perms kMode =
      fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  WriteBytes("real.vra", ForeignArchive());
  fs::permissions("real.vra", kMode);
  fs::create_symlink("real.vra", "level.vra");
  ASSERT_TRUE(archive.Open("level.vra", true));
  ASSERT_TRUE(archive.RemoveMember("shared"));
  ASSERT_TRUE(archive.Close()) << archive.Error();
  EXPECT_TRUE(fs::is_symlink("level.vra"));
  EXPECT_EQ(fs::status("real.vra").permissions(), kMode);
  const RawArchive raw = ReadRawArchive("level.vra");
  EXPECT_EQ(raw.file.size(), raw.directoryEnd);
}

}  // namespace
}  // namespace mw
