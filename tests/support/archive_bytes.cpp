#include "support/archive_bytes.h"

#include <fstream>
#include <iterator>
#include <lzo/lzo1x.h>
#include <random>

namespace mw {
namespace {

std::uint32_t GetU32(const Bytes& bytes, std::uint64_t at) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | bytes.at(at + static_cast<std::uint64_t>(i));
  return value;
}

Bytes Slice(const Bytes& bytes, std::uint64_t from, std::uint64_t size) {
  if (size == 0) return {};
  bytes.at(from + size - 1);
  const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(from);
  return {start, start + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

const RawEntry* RawArchive::Find(const std::string& name) const {
  for (const RawEntry& entry : entries) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

Bytes RawArchive::Stored(const std::string& name) const {
  const RawEntry* entry = Find(name);
  return entry ? Slice(file, entry->offset, entry->storedSize) : Bytes{};
}

Bytes RawArchive::Content(const std::string& name) const {
  const RawEntry* entry = Find(name);
  if (!entry || mode == 0) return Stored(name);
  const Bytes stored = Stored(name);
  const std::uint32_t count = GetU32(stored, 0);
  Bytes content;
  for (std::uint32_t i = 0; i < count; ++i) {
    const Bytes compressed = Slice(stored, 4 + 12ull * count + GetU32(stored, 12 + 12ull * i),
                                   GetU32(stored, 4 + 12ull * i));
    Bytes plain(GetU32(stored, 8 + 12ull * i));
    lzo_uint size = plain.size();
    if (lzo1x_decompress_safe(compressed.data(), compressed.size(), plain.data(), &size, nullptr) !=
            LZO_E_OK ||
        size != plain.size()) {
      return {};
    }
    content.insert(content.end(), plain.begin(), plain.end());
  }
  return content.size() == entry->size ? content : Bytes{};
}

RawArchive ReadRawArchive(const std::filesystem::path& path) {
  RawArchive raw;
  raw.file = ReadBytes(path);
  raw.directoryOffset = GetU32(raw.file, 0);
  raw.mode = GetU32(raw.file, 4);
  raw.reserved = Slice(raw.file, 8, 148);
  std::uint64_t at = raw.directoryOffset;
  const std::uint32_t count = GetU32(raw.file, at);
  at += 4;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t length = GetU32(raw.file, at);
    const Bytes name = Slice(raw.file, at + 4, length);
    at += 4 + length;
    RawEntry entry{
        std::string(name.begin(), name.end()),
        GetU32(raw.file, at),
        GetU32(raw.file, at + 4),
        GetU32(raw.file, at + 8),
        {GetU32(raw.file, at + 12), GetU32(raw.file, at + 16), GetU32(raw.file, at + 20)}};
    raw.entries.push_back(entry);
    at += 24;
  }
  raw.endMark = GetU32(raw.file, at);
  raw.directoryEnd = at + 4;
  return raw;
}

Bytes ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  Bytes bytes(file ? static_cast<std::size_t>(file.tellg()) : 0);
  file.seekg(0).read(reinterpret_cast<char*>(bytes.data()),
                     static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

void WriteBytes(const std::filesystem::path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

void PutU32(Bytes& bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

Bytes TextBytes(const std::string& text) { return {text.begin(), text.end()}; }

Bytes NoiseBytes(std::size_t size, std::uint32_t seed) {
  std::minstd_rand random(seed + 1);
  Bytes bytes(size);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>('a' + random() % 40);
  return bytes;
}

}  // namespace mw
