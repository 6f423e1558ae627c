// The header and the directory of an archive file: the bytes that say where each member lies. Used
// by `Archive` and by compaction. docs/formats.md describes both.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/archive.h"
#include "platform/file.h"

namespace mw {

inline constexpr std::size_t kArchiveHeaderSize = 156;
inline constexpr std::size_t kReservedBlockSize = 148;
inline constexpr std::uint64_t kMaxArchiveSize = 0xFFFFFFFF;  // offsets have 32 bits

struct ArchiveHeader {
  std::uint32_t directoryOffset = kArchiveHeaderSize;
  StorageMode mode = StorageMode::Stored;
  std::array<std::uint8_t, kReservedBlockSize> reserved{};  // kept as read
};

// What an archive file says about itself.
struct ArchiveContents {
  ArchiveHeader header;
  ArchiveEntries entries;
};

// Reads both. Nothing, with the reason in `error`, when the file is no sound archive: every offset,
// count, name and size is checked against the file's length before it is used.
std::optional<ArchiveContents> ReadArchiveContents(File& file, std::string& error);

std::vector<std::uint8_t> HeaderBytes(const ArchiveHeader& header);
std::vector<std::uint8_t> DirectoryBytes(const ArchiveEntries& entries);
// How many bytes the directory takes in the file.
std::uint64_t DirectorySize(const ArchiveEntries& entries);

// Where the member data ends and the directory begins.
std::uint64_t DataEnd(const ArchiveEntries& entries);

}  // namespace mw
