// A second, plain reader of archive files for tests, written from the format alone and sharing no
// code with the program, and a builder of archive files that the program would never write.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/bytes.h"

namespace mw {

inline constexpr std::uint32_t kArchiveHeader = 156;  // bytes

struct RawEntry {
  std::string name;
  std::uint32_t storedSize = 0, size = 0, offset = 0;
  std::uint32_t reserved[3] = {};
};

struct RawArchive {
  std::uint32_t directoryOffset = 0, mode = 0;
  Bytes reserved;                 // 148 bytes
  std::vector<RawEntry> entries;  // in the file's order
  std::uint32_t endMark = 0;
  std::uint64_t directoryEnd = 0;  // offset behind the end mark
  Bytes file;                      // everything

  const RawEntry* Find(const std::string& name) const;  // exactly this spelling
  Bytes Stored(const std::string& name) const;
  // The member's bytes; throws what std::vector::at throws when the file is not sound.
  Bytes Content(const std::string& name) const;
};

RawArchive ReadRawArchive(const std::filesystem::path& path);

Bytes ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const Bytes& bytes);
void PutU32(Bytes& bytes, std::uint32_t value);
Bytes TextBytes(const std::string& text);
// `size` bytes that look like data: the same for the same seed, not compressible to nothing.
Bytes NoiseBytes(std::size_t size, std::uint32_t seed);

}  // namespace mw
