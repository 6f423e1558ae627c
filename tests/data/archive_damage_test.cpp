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

constexpr std::uint32_t kHeader = 156;

Bytes Header(std::uint32_t directoryOffset, std::uint32_t mode) {
  Bytes file;
  PutU32(file, directoryOffset);
  PutU32(file, mode);
  file.resize(kHeader);
  return file;
}

void PutEntry(Bytes& file, const std::string& name, std::uint32_t storedSize, std::uint32_t size,
              std::uint32_t offset) {
  PutU32(file, static_cast<std::uint32_t>(name.size()));
  file.insert(file.end(), name.begin(), name.end());
  for (const std::uint32_t word : {storedSize, size, offset, 0u, 0u, 0u}) PutU32(file, word);
}

// An archive with one member.
Bytes ArchiveOf(const Bytes& stored, std::uint32_t size, std::uint32_t mode) {
  Bytes file = Header(kHeader + static_cast<std::uint32_t>(stored.size()), mode);
  file.insert(file.end(), stored.begin(), stored.end());
  PutU32(file, 1);
  PutEntry(file, "m", static_cast<std::uint32_t>(stored.size()), size, kHeader);
  PutU32(file, 0);
  return file;
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
  Bytes stored;
  PutU32(stored, count);
  for (const TableEntry& entry : table) {
    for (const std::uint32_t word : {entry.compressed, entry.plain, entry.offset}) {
      PutU32(stored, word);
    }
  }
  stored.insert(stored.end(), data.begin(), data.end());
  return stored;
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
  std::optional<Bytes> Read(const Bytes& stored, std::uint32_t size, std::uint32_t mode = 1) {
    WriteBytes("x.vra", ArchiveOf(stored, size, mode));
    Archive archive;
    EXPECT_TRUE(archive.Open("x.vra", false)) << archive.Error();
    return archive.ReadMember("m");
  }
};

TEST_F(ArchiveDamage, AFileThatIsNoArchiveDoesNotOpen) {
  Archive archive;
  EXPECT_FALSE(archive.Open("missing.vra", true));
  std::filesystem::create_directory("folder.vra");
  EXPECT_FALSE(archive.Open("folder.vra", false));
  const Bytes good = ArchiveOf(TextBytes("data"), 4, 0);
  EXPECT_TRUE(Opens(good));
  EXPECT_TRUE(Opens(Bytes(good.begin(), good.end() - 4))) << "the end mark is not read";
  for (std::size_t length = 0; length < good.size() - 4; ++length) {
    EXPECT_FALSE(Opens(Bytes(good.begin(), good.begin() + std::ptrdiff_t(length)))) << length;
  }
}

TEST_F(ArchiveDamage, ADirectoryThatTheFileCannotHoldDoesNotOpen) {
  Bytes file = Header(kHeader + 1, 0);
  EXPECT_FALSE(Opens(file)) << "a directory beyond the file";
  file = Header(0xFFFFFFFF, 0);
  EXPECT_FALSE(Opens(file));
  file = Header(kHeader, 2);
  PutU32(file, 0);
  EXPECT_FALSE(Opens(file)) << "an unknown storage mode";
  file = Header(kHeader, 0);
  PutU32(file, 0xFFFFFFFF);
  EXPECT_FALSE(Opens(file)) << "a huge count";
}

TEST_F(ArchiveDamage, AnEntryOutsideTheFileDoesNotOpen) {
  const auto opensWith = [&](std::uint32_t storedSize, std::uint32_t offset) {
    Bytes file = Header(kHeader, 0);
    PutU32(file, 1);
    PutEntry(file, "m", storedSize, storedSize, offset);
    return Opens(file);
  };
  EXPECT_TRUE(opensWith(10, kHeader));
  EXPECT_FALSE(opensWith(10, 0xFFFFFFFF)) << "the sum must not wrap around";
  EXPECT_FALSE(opensWith(0xFFFFFFFF, kHeader));
  EXPECT_FALSE(opensWith(0, kHeader + 1000));
  EXPECT_FALSE(opensWith(10, kHeader - 1)) << "a member in the header would change with it";
  EXPECT_TRUE(opensWith(0, 0)) << "an empty member may lie anywhere";
}

TEST_F(ArchiveDamage, NamesOf511BytesAreTheLongest) {
  Bytes file = Header(kHeader, 0);
  PutU32(file, 1);
  PutEntry(file, std::string(512, 'n'), 0, 0, kHeader);
  EXPECT_FALSE(Opens(file));

  Archive archive;
  ASSERT_TRUE(archive.Create("x.vra"));
  EXPECT_FALSE(archive.WriteMember(std::string(512, 'n'), {}));
  EXPECT_FALSE(archive.WriteMember("", {}));
  EXPECT_TRUE(archive.WriteMember(std::string(511, 'n'), TextBytes("long")));
  ASSERT_TRUE(archive.Open("x.vra", false)) << archive.Error();
  EXPECT_EQ(archive.ReadMember(std::string(511, 'N')), TextBytes("long"));
}

TEST_F(ArchiveDamage, ASizeThatTheMemberCannotProduceIsNotBelieved) {
  const Bytes plain = NoiseBytes(1000, 1), data = Compressed(plain);
  const auto size = static_cast<std::uint32_t>(data.size());
  EXPECT_EQ(Read(StoredMember(1, {{size, 1000, 0}}, data), 0xFFFFFFFF), plain);
  EXPECT_EQ(Read(StoredMember(1, {{size, 0xFFFFFFFF, 0}}, data), 1000), plain)
      << "the table's uncompressed size is not trusted";
  EXPECT_LE(Read(StoredMember(1, {{size, 1000, 0}}, data), 10)->size(), 10u);
  EXPECT_EQ(Read(TextBytes("four"), 0xFFFFFFFF, 0), TextBytes("four"));
  EXPECT_EQ(Read(TextBytes("four"), 2, 0), TextBytes("fo"));
}

TEST_F(ArchiveDamage, ASegmentThatDoesNotFitEndsTheReading) {
  const Bytes plain = NoiseBytes(1000, 1), data = Compressed(plain);
  const auto size = static_cast<std::uint32_t>(data.size());
  for (const TableEntry bad : {TableEntry{size, 1000, 1}, TableEntry{size, 1000, 0xFFFFFFFF},
                               TableEntry{0xFFFFFFFF, 1000, 0}, TableEntry{size, 1000, 0}}) {
    EXPECT_EQ(Read(StoredMember(2, {{size, 1000, 0}, bad}, data), 5000), plain)
        << bad.compressed << " at " << bad.offset;
  }
  EXPECT_EQ(Read(StoredMember(0xFFFFFFFF, {}, data), 5000), Bytes{}) << "a table beyond the member";
  EXPECT_EQ(Read(Bytes(3, 0), 5000), Bytes{}) << "no room for a segment count";

  Bytes large = NoiseBytes(40001, 2);
  EXPECT_EQ(Read(StoredMember(1, {{40001, 32768, 0}}, large), 32768), Bytes{});
}

TEST_F(ArchiveDamage, BadDataKeepsWhatCameBeforeAndAfterIt) {
  const Bytes plain = NoiseBytes(1000, 1), good = Compressed(plain);
  Bytes data = good;
  data.insert(data.end(), {0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
  data.insert(data.end(), good.begin(), good.end());
  const auto size = static_cast<std::uint32_t>(good.size());
  const auto read =
      Read(StoredMember(3, {{size, 1000, 0}, {5, 1000, size}, {size, 1000, size + 5}}, data), 5000);
  ASSERT_TRUE(read);
  ASSERT_GE(read->size(), 2000u);
  EXPECT_TRUE(std::equal(plain.begin(), plain.end(), read->begin()));
  EXPECT_TRUE(std::equal(plain.begin(), plain.end(), read->end() - 1000));
}

TEST_F(ArchiveDamage, OneCoreReadsWhatSeveralCoresRead) {
  const Bytes plain = NoiseBytes(200'000, 1);  // seven segments
  {
    Archive archive;
    ASSERT_TRUE(archive.Create("x.vra") && archive.SetMode(StorageMode::Compressed));
    ASSERT_TRUE(archive.WriteMember("m", plain));
  }
  const auto read = [] {
    Archive archive;
    EXPECT_TRUE(archive.Open("x.vra", false)) << archive.Error();
    return archive.ReadMember("m");
  };
  const auto readOnOneCore = [&] {
    const OnOneCore one;
    return read();
  };
  EXPECT_EQ(read(), plain);
  EXPECT_EQ(readOnOneCore(), plain);
  Bytes damaged = ReadBytes("x.vra");
  for (std::size_t at = kHeader + 100'000; at < kHeader + 100'400; ++at) damaged[at] = 0;
  WriteBytes("x.vra", damaged);
  EXPECT_NE(read(), plain);
  EXPECT_EQ(readOnOneCore(), read());
}

TEST_F(ArchiveDamage, ASegmentOfAnotherCompressorStaysWhileItsBytesStay) {
  Bytes plain = NoiseBytes(32768, 1);
  const Bytes first = Compressed(plain), last = Compressed(TextBytes("tail"));
  Bytes data = first;
  data.insert(data.end(), last.begin(), last.end());
  const auto size = static_cast<std::uint32_t>(first.size());
  const auto lastSize = static_cast<std::uint32_t>(last.size());
  WriteBytes("x.vra",
             ArchiveOf(StoredMember(2, {{size, 32768, 0}, {lastSize, 4, size}}, data), 32772, 1));
  Archive archive;
  ASSERT_TRUE(archive.Open("x.vra", true));
  for (const char c : std::string("TAIL grows")) plain.push_back(static_cast<std::uint8_t>(c));
  ASSERT_TRUE(archive.WriteMember("m", plain));

  const RawArchive raw = ReadRawArchive("x.vra");
  EXPECT_EQ(raw.Content("m"), plain);
  const Bytes stored = raw.Stored("m");
  EXPECT_TRUE(std::equal(first.begin(), first.end(), stored.begin() + 4 + 2 * 12));
}

TEST_F(ArchiveDamage, OffsetsBeyond4GiBAreRefused) {
  Bytes file = Header(kHeader, 0);
  PutU32(file, 2);
  PutEntry(file, "far", 0x200, 0x200, 0xFFFFFF00);
  PutEntry(file, "near", 4, 4, kHeader);
  WriteBytes("x.vra", file);
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
