// Archives that are broken or made to do harm: they do not open, or their members end where the
// damage begins. Nothing crashes, and nothing is allocated that the file could not hold.
#include <filesystem>
#include <gtest/gtest.h>
#include <lzo/lzo1x.h>

#include "data/archive.h"
#include "data/archive_segments.h"
#include "support/archive_bytes.h"
#include "support/one_core.h"
#include "support/sandbox.h"

namespace mw {
namespace {

constexpr std::uint32_t kMost = 0xFFFFFFFF;

std::uint32_t SizeOf(const Bytes& bytes) { return static_cast<std::uint32_t>(bytes.size()); }

Bytes Join(Bytes bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
  return bytes;
}

Bytes Words(std::initializer_list<std::uint32_t> words) {
  Bytes bytes;
  for (const std::uint32_t word : words) PutU32(bytes, word);
  return bytes;
}

Bytes Header(std::uint32_t directoryOffset, std::uint32_t mode) {
  Bytes file = Words({directoryOffset, mode});
  file.resize(kArchiveHeader);
  return file;
}

Bytes Entry(const std::string& name, std::uint32_t storedSize, std::uint32_t size,
            std::uint32_t offset) {
  const Bytes length = Words({static_cast<std::uint32_t>(name.size())});
  return Join(Join(length, TextBytes(name)), Words({storedSize, size, offset, 0, 0, 0}));
}

// An archive with one member.
Bytes ArchiveOf(const Bytes& stored, std::uint32_t size, std::uint32_t mode) {
  const Bytes file = Join(Header(kArchiveHeader + SizeOf(stored), mode), stored);
  return Join(Join(file, Words({1})),
              Join(Entry("m", SizeOf(stored), size, kArchiveHeader), Words({0})));
}

Bytes Compressed(const Bytes& plain) {
  PrepareCompression();
  Bytes memory(LZO1X_1_MEM_COMPRESS), compressed(plain.size() + plain.size() / 16 + 67);
  lzo_uint size = compressed.size();
  lzo1x_1_compress(plain.data(), plain.size(), compressed.data(), &size, memory.data());
  compressed.resize(size);
  return compressed;
}

struct TableEntry {
  std::uint32_t compressed, plain, offset;
};

Bytes StoredMember(std::uint32_t count, const std::vector<TableEntry>& table, const Bytes& data) {
  Bytes stored = Words({count});
  for (const auto& [compressed, plain, offset] : table) {
    stored = Join(stored, Words({compressed, plain, offset}));
  }
  return Join(stored, data);
}

class ArchiveDamage : public SandboxTest {
 protected:
  bool Opens(const Bytes& file) {
    WriteBytes("x.vra", file);
    Archive archive;
    const bool open = archive.Open("x.vra", true);
    EXPECT_NE(open, !archive.Error().empty()) << "a failure has a reason";
    return open;
  }
  std::optional<Bytes> Read(const Bytes& stored, std::uint32_t stated, std::uint32_t mode = 1) {
    WriteBytes("x.vra", ArchiveOf(stored, stated, mode));
    Archive archive;
    EXPECT_TRUE(archive.Open("x.vra", false)) << archive.Error();
    return archive.ReadMember("m");
  }

  const Bytes plain = NoiseBytes(1000, 1), good = Compressed(plain);
  const std::uint32_t size = SizeOf(good);
};

TEST_F(ArchiveDamage, AFileThatIsNoArchiveDoesNotOpen) {
  Archive archive;
  EXPECT_FALSE(archive.Open("missing.vra", true));
  std::filesystem::create_directory("folder.vra");
  EXPECT_FALSE(archive.Open("folder.vra", false));
  const Bytes whole = ArchiveOf(TextBytes("data"), 4, 0);
  for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
    const bool lacksNoMoreThanTheEndMark = cut <= 4;  // which is not read
    EXPECT_EQ(Opens({whole.begin(), whole.end() - std::ptrdiff_t(cut)}), lacksNoMoreThanTheEndMark)
        << cut;
  }
}

TEST_F(ArchiveDamage, ADirectoryOrEntryOutsideTheFileDoesNotOpen) {
  EXPECT_FALSE(Opens(Header(kArchiveHeader + 1, 0)));
  EXPECT_FALSE(Opens(Header(kMost, 0)));
  EXPECT_TRUE(Opens(Join(Header(kArchiveHeader, 1), Words({0}))));
  EXPECT_FALSE(Opens(Join(Header(kArchiveHeader, 2), Words({0})))) << "an unknown storage mode";
  EXPECT_FALSE(Opens(Join(Header(kArchiveHeader, 0), Words({kMost})))) << "a huge count";
  const struct {
    std::uint32_t storedSize, offset;
    bool opens;
  } kEntries[] = {{10, kArchiveHeader, true},
                  {33, kArchiveHeader, true},  // up to the file's end
                  {34, kArchiveHeader, false},
                  {10, kMost, false},  // the sum must not wrap around
                  {kMost, kArchiveHeader, false},
                  {0, kArchiveHeader + 1000, false},
                  {10, kArchiveHeader - 1, false},  // a member in the header would change with it
                  {0, 0, true}};                    // an empty member may lie anywhere
  const Bytes start = Join(Header(kArchiveHeader, 0), Words({1}));
  for (const auto& [stored, offset, opens] : kEntries) {
    EXPECT_EQ(Opens(Join(start, Entry("m", stored, stored, offset))), opens) << stored << offset;
  }
  EXPECT_FALSE(Opens(Join(start, Entry(std::string(512, 'n'), 0, 0, kArchiveHeader))))
      << "a long name";
}

TEST_F(ArchiveDamage, NeitherSizesNorTablesOfAMemberAreBelieved) {
  const TableEntry whole{size, 1000, 0};
  EXPECT_EQ(Read(StoredMember(1, {whole}, good), kMost), plain);
  EXPECT_EQ(Read(StoredMember(1, {{size, kMost, 0}}, good), 1000), plain);
  EXPECT_LE(Read(StoredMember(1, {whole}, good), 10)->size(), 10u);
  EXPECT_EQ(Read(TextBytes("four"), kMost, 0), TextBytes("four"));
  EXPECT_EQ(Read(TextBytes("four"), 2, 0), TextBytes("fo"));
  for (const TableEntry bad :
       {TableEntry{size, 1000, 1}, {size, 1000, kMost}, {kMost, 1000, 0}, {size, 1000, 0}}) {
    EXPECT_EQ(Read(StoredMember(2, {whole, bad}, good), 5000), plain) << bad.offset;
  }
  for (const Bytes& useless : {StoredMember(kMost, {}, good),  // a table beyond the member
                               Bytes(3, 0),                    // no room for a segment count
                               StoredMember(1, {{40001, 32768, 0}}, NoiseBytes(40001, 2))}) {
    EXPECT_EQ(Read(useless, 32768), Bytes{}) << useless.size();
  }
}

TEST_F(ArchiveDamage, BadDataKeepsWhatCameBeforeAndAfterIt) {
  const Bytes data = Join(Join(good, Bytes(5, 0xFF)), good);
  const auto read =
      Read(StoredMember(3, {{size, 1000, 0}, {5, 1000, size}, {size, 1000, size + 5}}, data), 5000);
  ASSERT_TRUE(read && read->size() >= 2000);
  EXPECT_TRUE(std::equal(plain.begin(), plain.end(), read->begin()));
  EXPECT_TRUE(std::equal(plain.begin(), plain.end(), read->end() - 1000));
}

TEST_F(ArchiveDamage, OneCoreReadsWhatSeveralCoresRead) {
  const Bytes large = NoiseBytes(200'000, 1);  // seven segments
  Archive made;
  ASSERT_TRUE(made.Create("x.vra") && made.SetMode(StorageMode::Compressed) &&
              made.WriteMember("m", large));
  const auto read = [] {
    Archive archive;
    EXPECT_TRUE(archive.Open("x.vra", false)) << archive.Error();
    return archive.ReadMember("m");
  };
  const auto readOnOneCore = [&] {
    const OnOneCore one;
    return read();
  };
  EXPECT_EQ(read(), large);
  EXPECT_EQ(readOnOneCore(), large);
  Bytes damaged = ReadBytes("x.vra");
  for (std::size_t at = kArchiveHeader + 100'000; at < kArchiveHeader + 100'400; ++at)
    damaged[at] = 0;
  WriteBytes("x.vra", damaged);
  EXPECT_NE(read(), large);
  EXPECT_EQ(readOnOneCore(), read());
}

TEST_F(ArchiveDamage, ASegmentOfAnotherCompressorStaysWhileItsBytesStay) {
  const Bytes full = NoiseBytes(32768, 1);
  const Bytes first = Compressed(full), last = Compressed(TextBytes("tail"));
  const std::vector<TableEntry> table = {{SizeOf(first), 32768, 0},
                                         {SizeOf(last), 4, SizeOf(first)}};
  WriteBytes("x.vra", ArchiveOf(StoredMember(2, table, Join(first, last)), 32772, 1));
  const Bytes changed = Join(full, TextBytes("TAIL grows"));
  Archive archive;
  ASSERT_TRUE(archive.Open("x.vra", true) && archive.WriteMember("m", changed));
  const RawArchive raw = ReadRawArchive("x.vra");
  EXPECT_EQ(raw.Content("m"), changed);
  const Bytes stored = raw.Stored("m");
  EXPECT_TRUE(std::equal(first.begin(), first.end(), stored.begin() + 4 + 2 * 12));
}

TEST_F(ArchiveDamage, OffsetsBeyond4GiBAreRefused) {
  WriteBytes("x.vra", Join(Join(Header(kArchiveHeader, 0), Words({2})),
                           Join(Entry("far", 0x200, 0x200, 0xFFFFFF00),
                                Entry("near", 4, 4, kArchiveHeader))));
  std::filesystem::resize_file("x.vra", (std::uintmax_t{1} << 32) + 0x100);  // sparse
  Archive archive;
  ASSERT_TRUE(archive.Open("x.vra", true)) << archive.Error();
  EXPECT_FALSE(archive.WriteMember("next", TextBytes("does not fit")));
  EXPECT_EQ(archive.Error(), "The archive would be larger than 4 GiB");
  EXPECT_FALSE(archive.WriteMember("near", TextBytes("n"))) << "no offset for the directory";
  EXPECT_FALSE(archive.RemoveMember("near"));
  EXPECT_EQ(archive.Entries().size(), 2u);
  EXPECT_EQ(archive.ReadMember("far")->size(), 0x200u);
  EXPECT_TRUE(archive.RemoveMember("far")) << "what makes room is possible";
}

}  // namespace
}  // namespace mw
