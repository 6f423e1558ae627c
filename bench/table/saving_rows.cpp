// The archive of a level with 64 surface tiles: written for the first time, written again, and
// read.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <lzo/lzo1x.h>
#include <string>
#include <utility>
#include <vector>

#include "bench/table/archive_command.h"
#include "bench/table/machine.h"
#include "bench/table/pictures.h"
#include "bench/table/table.h"
#include "core/bytes.h"
#include "core/little_endian.h"
#include "core/text.h"
#include "data/archive.h"
#include "platform/file.h"
#include "terrain/dds_writer.h"

namespace mw::bench {
namespace {
namespace fs = std::filesystem;

constexpr int kTilesPerSide = 8;
constexpr int kSamples = 512;  // of the height map, per side

struct Member {
  std::string name;
  Bytes bytes;
};
using Level = std::vector<Member>;

Bytes HeightMap() {
  Bytes bytes;
  for (int row = 0; row < kSamples; ++row) {
    for (int column = 0; column < kSamples; ++column) {
      const double hills = 90 + 40 * std::sin(row * 0.031) * std::cos(column * 0.027) +
                           9 * std::sin(row * 0.23 + column * 0.17);
      const auto stored = static_cast<int>(hills * 256);
      bytes.push_back(static_cast<std::uint8_t>(stored & 0xFF));
      bytes.push_back(static_cast<std::uint8_t>(stored >> 8));
    }
  }
  return bytes;
}

// The blocks of the picture begin elsewhere in each tile.
Bytes TileFile(const Bytes& encoded, int number) {
  Bytes file = encoded;
  const auto shift =
      static_cast<std::ptrdiff_t>(kDxt1BlockSize) * (1 + number * 1517 % (kPictureSide * 32));
  std::rotate(file.begin() + kDdsHeaderSize,
              file.begin() + static_cast<std::ptrdiff_t>(kDdsHeaderSize) + shift, file.end());
  return file;
}

Level MakeLevel() {
  Level level;
  const Bytes encoded = EncodeDds(kPictureSide, kPictureSide, Paint(Picture::Natural), true);
  for (int tile = 0; tile < kTilesPerSide * kTilesPerSide; ++tile) {
    const int row = tile / kTilesPerSide, column = tile % kTilesPerSide;
    level.push_back({FormatText("Varnhold/Levels/Bench/Textures/Tx0%ix0%i.dds", row, column),
                     TileFile(encoded, tile)});
  }
  level.push_back(
      {"Varnhold/Levels/Bench/MaterialMap.raw", Bytes(std::size_t{kSamples} * kSamples)});
  level.push_back({"Varnhold/Levels/Bench/heightmap.raw", HeightMap()});
  return level;
}

Bytes& HeightMapOf(Level& level) { return level.back().bytes; }

// One stroke of a brush of eight cells' radius.
void Stroke(Level& level) {
  constexpr int kRadius = 8, kRow = 200, kColumn = 300;
  for (int row = kRow - kRadius; row <= kRow + kRadius; ++row) {
    for (int column = kColumn - kRadius; column <= kColumn + kRadius; ++column) {
      HeightMapOf(level)[static_cast<std::size_t>(row * kSamples + column) * 2] += 40;
    }
  }
}

void Save(Archive& archive, const Level& level) {
  Require(archive.BeginSave(), "a save");
  for (const Member& member : level) {
    Require(archive.WriteMember(member.name, member.bytes), "writing a member");
  }
  Require(archive.CommitSave(), "completing a save");
}

double TimeFirstSave(const fs::path& path, const Level& level) {
  fs::remove(path);
  Archive archive;
  Require(archive.Create(path.string()) && archive.SetMode(StorageMode::Compressed), "an archive");
  const double time = Time([&] { Save(archive, level); });
  Require(archive.Close(), "closing");
  return time;
}

void AddSaves(const fs::path& path, Level& level) {
  constexpr int kFirstSaves = 1, kLaterSaves = 5;
  const Times first = Compare(
      kFirstSaves, [&] { return TimeFirstSave(path, level); },
      [&] {
        const OnOneCore one;
        return TimeFirstSave(path, level);
      });
  AddTimes("save a level of 64 tiles whole, all cores", "the same on one core", first, 0.6);

  Archive archive;
  Require(archive.Open(path.string(), true), "opening");
  const auto saveAgain = [&] { return Time([&] { Save(archive, level); }); };
  const Times unchanged = Compare(kLaterSaves, saveAgain, [&] { return first.ours; });
  AddTimes("save it again without a change", "packing all of it anew", unchanged, 1.0 / 20);
  const Times stroke = Compare(
      kLaterSaves,
      [&] {
        Stroke(level);
        return saveAgain();
      },
      [&] { return first.ours; });
  AddTimes("save it after one brush stroke", "saving it whole", stroke, 1.0 / 10);
}

// A compressed member as it lies in the file, and where its segments are.
struct StoredMember {
  Bytes stored;
  std::vector<std::pair<std::size_t, std::size_t>> segments;  // offset and size in `stored`
  std::uint32_t size = 0;
};

std::vector<StoredMember> ReadStoredMembers(const Archive& archive, const fs::path& path) {
  constexpr std::size_t kCount = 4, kTableEntry = 12;
  File file;
  Require(file.Open(path, FileAccess::Read), "reading");
  std::vector<StoredMember> members;
  for (const auto& [name, entry] : archive.Entries()) {
    StoredMember member{Bytes(entry.storedSize), {}, entry.size};
    Require(file.ReadAt(entry.dataOffset, member.stored), "reading");
    const std::size_t count = LoadU32(member.stored);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t row = kCount + i * kTableEntry;
      member.segments.emplace_back(kCount + count * kTableEntry + LoadU32(member.stored, row + 8),
                                   LoadU32(member.stored, row));
    }
    members.push_back(std::move(member));
  }
  return members;
}

std::uint64_t Decompress(const std::vector<StoredMember>& members, Bytes& out) {
  std::uint64_t total = 0;
  for (const StoredMember& member : members) {
    std::size_t at = 0;
    for (const auto& [offset, size] : member.segments) {
      lzo_uint produced = out.size() - at;
      lzo1x_decompress_safe(member.stored.data() + offset, size, out.data() + at, &produced,
                            nullptr);
      at += produced;
    }
    total += at;
  }
  return total;
}

void AddReading(const fs::path& path) {
  Archive archive;
  Require(archive.Open(path.string(), false), "opening");
  const std::vector<StoredMember> members = ReadStoredMembers(archive, path);
  Bytes out(std::size_t{2} << 20);
  std::uint64_t ours = 0, alone = 0;
  const auto readAll = [&] {
    return Time([&] {
      ours = 0;
      for (const auto& [name, entry] : archive.Entries()) ours += archive.ReadMember(name)->size();
    });
  };
  const auto decompressAlone = [&] {
    const OnOneCore one;
    return Time([&] { alone = Decompress(members, out); });
  };
  const Times oneCore = Compare(
      15,
      [&] {
        const OnOneCore one;
        return readAll();
      },
      decompressAlone);
  const Times allCores = Compare(15, readAll, decompressAlone);
  Require(ours == alone, "as many bytes");
  AddTimes("read all its members, one core", "lzo1x_decompress_safe, one core", oneCore, 1.10);
  AddTimes("read all its members, all cores", "lzo1x_decompress_safe, one core", allCores, 0.7);
}

}  // namespace

void AddSavingRows() {
  const ScratchFolder folder;
  const fs::path path = folder.File("level.vra");
  Level level = MakeLevel();
  AddSaves(path, level);
  AddReading(path);
  AddVerifying(path, "a level of 64 tiles");
}

}  // namespace mw::bench
