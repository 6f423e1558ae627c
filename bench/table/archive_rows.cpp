// Archives of many members and of many bytes: opening, looking up, replacing, compacting.
#include <cctype>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/table/archive_command.h"
#include "bench/table/machine.h"
#include "bench/table/table.h"
#include "core/bytes.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/archive_directory.h"
#include "platform/file.h"

namespace mw::bench {
namespace {
namespace fs = std::filesystem;

constexpr int kManyMembers = 10000;
constexpr std::size_t kSmallMember = 4096, kLargeMember = std::size_t{4} << 20;
constexpr int kLargeMembers = 50;  // together 200 MB

std::string ManyName(int number) {
  return FormatText("Varnhold/Levels/Level_%02i/Textures/Tx0%ix%03i_detail.dds", number % 40,
                    number % 8, number);
}

void MakeManyMembers(const fs::path& path) {
  Archive archive;
  Require(archive.Create(path.string()) && archive.BeginSave(), "an archive of many members");
  for (int i = 0; i < kManyMembers; ++i) archive.WriteMember(ManyName(i), Bytes(16));
  Require(archive.CommitSave() && archive.Close(), "writing many members");
}

void AddOpening(const fs::path& path) {
  std::uint32_t directory = 0;
  std::size_t size = 0;
  {
    Archive archive;
    Require(archive.Open(path.string(), false), "opening");
    directory = static_cast<std::uint32_t>(DataEnd(archive.Entries()));
    size = static_cast<std::size_t>(DirectorySize(archive.Entries()));
  }
  std::unique_ptr<Archive> opened;
  const Times times = Compare(
      61,
      [&] {
        opened = std::make_unique<Archive>();
        return Time([&] { opened->Open(path.string(), false); });
      },
      [&] {
        return Time([&] {
          File file;
          Bytes bytes(size);
          Require(file.Open(path, FileAccess::Read) && file.ReadAt(directory, bytes), "reading");
        });
      });
  Require(opened->Entries().size() == kManyMembers, "a directory that was read whole");
  AddTimes("open an archive of 10,000 members", "one read of its directory's bytes", times, 6);
}

struct PlainLess {
  bool operator()(const std::string& a, const std::string& b) const {
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](unsigned char x, unsigned char y) { return std::tolower(x) < std::tolower(y); });
  }
};

std::vector<std::string> ShuffledMixedCase() {
  std::minstd_rand random(1);
  std::vector<std::string> names;
  for (int i = 0; i < kManyMembers; ++i) names.push_back(ManyName(i));
  std::ranges::shuffle(names, random);
  for (std::string& name : names) {
    for (char& c : name) {
      if (random() % 2) c = static_cast<char>(std::isupper(c) ? std::tolower(c) : std::toupper(c));
    }
  }
  return names;
}

void AddLookUps(const fs::path& path) {
  Archive archive;
  Require(archive.Open(path.string(), false), "opening");
  std::map<std::string, ArchiveEntry, PlainLess> plain;
  for (const auto& [name, entry] : archive.Entries()) plain.emplace(name, entry);
  const std::vector<std::string> names = ShuffledMixedCase();
  std::uint64_t ourSum = 0, plainSum = 0;
  const Times times = Compare(
      21,
      [&] {
        return Time([&] {
          for (const std::string& name : names) ourSum += archive.Find(name)->dataOffset;
        });
      },
      [&] {
        return Time([&] {
          for (const std::string& name : names) plainSum += plain.find(name)->second.dataOffset;
        });
      });
  Require(ourSum == plainSum, "the same members found");
  AddTimes("10,000 look-ups by name, mixed case", "ordered map, case-blind comparison", times,
           1.0 / 20);
}

// 200 MB behind one small member, which lies at the front.
void MakeLarge(const fs::path& path) {
  std::mt19937_64 random(2);
  Archive archive;
  Require(archive.Create(path.string()) && archive.BeginSave(), "a large archive");
  archive.WriteMember("front.con", Bytes(kSmallMember));
  for (int i = 0; i < kLargeMembers; ++i) {
    Bytes bytes(kLargeMember);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    archive.WriteMember(FormatText("large/%02i.bin", i), bytes);
  }
  Require(archive.CommitSave() && archive.Close(), "writing a large archive");
}

// The whole file again with the member's new bytes, as simply as it can be done.
void Rewrite(const fs::path& from, const fs::path& to, const Bytes& member) {
  File source, target;
  Require(source.Open(from, FileAccess::Read) && target.Open(to, FileAccess::Create), "rewriting");
  const std::uint64_t size = *source.Size();
  Bytes block(std::size_t{1} << 20);
  for (std::uint64_t at = 0; at < size; at += block.size()) {
    block.resize(static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), size - at)));
    Require(source.ReadAt(at, block) && target.WriteAt(at, block), "rewriting");
  }
  Require(target.WriteAt(kArchiveHeaderSize, member), "rewriting");
}

void AddReplacing(const ScratchFolder& folder, const fs::path& path) {
  Archive archive;
  Require(archive.Open(path.string(), true), "opening");
  Bytes member(kSmallMember);
  double waits = 0;
  const Times times = Compare(
      9,
      [&] {
        for (std::uint8_t& byte : member) ++byte;
        const double before = DiskSeconds();
        const double time = TimeWithoutDisk(
            [&] { Require(archive.WriteMember("front.con", member), "replacing"); });
        waits = DiskSeconds() - before;
        return time;
      },
      [&] {
        const fs::path copy = folder.File("rewritten.vra");
        const double time = Time([&] { Rewrite(path, copy, member); });
        fs::remove(copy);
        return time;
      });
  AddTimes("replace a 4 KB member of 200 MB, without waiting for the disk (" +
               Decimal(waits * 1e3, 1) + " ms)",
           "rewriting the archive", times, 0.0045);
}

void AddCompaction(const ScratchFolder& folder, const fs::path& path) {
  const fs::path hollow = folder.File("hollow.vra"), copy = folder.File("copy.vra");
  const std::string copying = "cp '" + path.string() + "' '" + copy.string() + "'";
  double waits = 0;
  const Times times = Compare(
      5,
      [&] {
        fs::copy_file(path, hollow, fs::copy_options::overwrite_existing);
        Archive archive;
        Require(archive.Open(hollow.string(), true) && archive.RemoveMember("front.con"), "a hole");
        const double before = DiskSeconds();
        const double time = TimeWithoutDisk([&] { Require(archive.Close(), "compaction"); });
        waits = DiskSeconds() - before;
        return time;
      },
      [&] {
        const double time = Time([&] { Require(std::system(copying.c_str()) == 0, "cp"); });
        fs::remove(copy);
        return time;
      });
  AddTimes("compact 200 MB with a hole at the front, without waiting for the disk (" +
               Decimal(waits * 1e3, 0) + " ms)",
           "cp of the file", times, 0.8);
}

void AddExtracting(const ScratchFolder& folder, const fs::path& path) {
  const fs::path out = folder.File("out"), tar = folder.File("files.tar");
  const auto into = [&](const std::string& command) {
    fs::remove_all(out);
    fs::create_directory(out);
    return TimeCommand(command);
  };
  const std::string extract =
      ArchiveCommand("extract", path) + " -C '" + out.string() + "' 2>/dev/null";
  into(extract);
  TimeCommand("tar cf '" + tar.string() + "' -C '" + out.string() + "' .");
  const std::string untar = "tar xf '" + tar.string() + "' -C '" + out.string() + "'";
  const Times times = Compare(
      7, [&] { return into(extract); }, [&] { return into(untar); });
  AddTimes("mapwright-archive extract: 200 MB", "tar xf of the same files", times, std::nullopt);
}

}  // namespace

void AddArchiveRows() {
  const ScratchFolder folder;
  const fs::path many = folder.File("many.vra"), large = folder.File("large.vra");
  MakeManyMembers(many);
  AddOpening(many);
  AddLookUps(many);
  MakeLarge(large);
  AddExtracting(folder, large);
  AddVerifying(large, "200 MB");
  AddReplacing(folder, large);
  AddCompaction(folder, large);
}

}  // namespace mw::bench
