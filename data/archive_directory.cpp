#include "data/archive_directory.h"

#include <algorithm>
#include <span>

#include "core/little_endian.h"

namespace mw {
namespace {

constexpr std::size_t kEntryTail = 24;                  // sizes, offset, reserved words
constexpr std::size_t kSmallestEntry = 4 + kEntryTail;  // with an empty name
constexpr std::size_t kMostTaken = kMaxMemberName + kEntryTail;
constexpr std::size_t kDirectoryBuffer = std::size_t{1} << 16;
static_assert(kDirectoryBuffer >= kMostTaken);

// Reads the directory through a buffer, never beyond the end of the file.
class DirectoryReader {
 public:
  DirectoryReader(File& file, std::uint64_t offset, std::uint64_t fileSize)
      : file_(file),
        offset_(offset),
        end_(fileSize),
        buffer_(static_cast<std::size_t>(
            std::min<std::uint64_t>(kDirectoryBuffer, fileSize - offset))) {}

  std::uint64_t Remaining() const { return end_ - offset_ + unread_.size(); }

  // Returns the next `count` bytes, at most kMostTaken (valid until the next call), or nothing when
  // the file ends before.
  std::optional<std::span<const std::uint8_t>> Take(std::size_t count) {
    if (unread_.size() < count && !Refill(count)) return std::nullopt;
    const auto taken = unread_.first(count);
    unread_ = unread_.subspan(count);
    return taken;
  }

  std::optional<std::uint32_t> TakeU32() {
    const auto bytes = Take(4);
    if (!bytes) return std::nullopt;
    return LoadU32(*bytes);
  }

 private:
  bool Refill(std::size_t count) {
    if (Remaining() < count) return false;
    std::ranges::copy(unread_, buffer_.begin());
    const std::size_t kept = unread_.size();
    const auto more =
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size() - kept, end_ - offset_));
    if (!file_.ReadAt(offset_, std::span(buffer_).subspan(kept, more))) return false;
    offset_ += more;
    unread_ = std::span<const std::uint8_t>(buffer_).first(kept + more);
    return true;
  }

  File& file_;
  std::uint64_t offset_;  // in the file, of the first byte that was not buffered yet
  std::uint64_t end_;
  std::vector<std::uint8_t> buffer_;
  std::span<const std::uint8_t> unread_;  // the part of the buffer that was not taken yet
};

std::optional<ArchiveHeader> ReadHeader(File& file, std::uint64_t fileSize, std::string& error) {
  std::array<std::uint8_t, kArchiveHeaderSize> bytes{};
  if (fileSize < bytes.size()) {
    error = "The file is too short for an archive";
    return std::nullopt;
  }
  if (!file.ReadAt(0, bytes)) {
    error = file.Error();
    return std::nullopt;
  }
  const std::uint32_t mode = LoadU32(bytes, 4);
  if (mode > static_cast<std::uint32_t>(StorageMode::Compressed)) {
    error = "The archive has an unknown storage mode";
    return std::nullopt;
  }
  ArchiveHeader header;
  header.directoryOffset = LoadU32(bytes, 0);
  header.mode = static_cast<StorageMode>(mode);
  std::copy(bytes.begin() + 8, bytes.end(), header.reserved.begin());
  return header;
}

bool ReadEntry(DirectoryReader& reader, std::uint64_t fileSize, std::uint32_t revision,
               ArchiveEntries& entries) {
  const auto nameLength = reader.TakeU32();
  if (!nameLength || *nameLength > kMaxMemberName) return false;
  const auto bytes = reader.Take(*nameLength + kEntryTail);
  if (!bytes) return false;
  const std::string_view name(reinterpret_cast<const char*>(bytes->data()), *nameLength);
  const auto tail = bytes->subspan(*nameLength);
  ArchiveEntry entry;
  entry.storedSize = LoadU32(tail, 0);
  entry.size = LoadU32(tail, 4);
  entry.dataOffset = LoadU32(tail, 8);
  for (std::size_t i = 0; i < entry.reserved.size(); ++i) {
    entry.reserved[i] = LoadU32(tail, 12 + 4 * i);
  }
  entry.revision = revision;
  if (std::uint64_t{entry.dataOffset} + entry.storedSize > fileSize) return false;
  if (entry.dataOffset < kArchiveHeaderSize && entry.storedSize > 0) return false;
  // A later entry of the same name replaces the record; the first spelling stays.
  entries.Set(name, entry);
  return true;
}

std::optional<ArchiveEntries> ReadDirectory(File& file, std::uint32_t offset,
                                            std::uint64_t fileSize, std::string& error) {
  error = "The archive's directory is damaged";
  if (offset > fileSize) return std::nullopt;
  DirectoryReader reader(file, offset, fileSize);
  const auto count = reader.TakeU32();
  if (!count || std::uint64_t{*count} * kSmallestEntry > reader.Remaining()) return std::nullopt;
  constexpr std::uint32_t kMostReserved = 1 << 16;
  const std::uint32_t revision = NextRevision();  // another program may have written the file
  ArchiveEntries entries;
  entries.Reserve(std::min(*count, kMostReserved));
  for (std::uint32_t i = 0; i < *count; ++i) {
    if (!ReadEntry(reader, fileSize, revision, entries)) return std::nullopt;
  }
  error.clear();
  return entries;
}

void AppendU32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
  bytes.resize(bytes.size() + 4);
  StoreU32(bytes, bytes.size() - 4, value);
}

}  // namespace

std::optional<ArchiveContents> ReadArchiveContents(File& file, std::string& error) {
  const auto fileSize = file.Size();
  if (!fileSize) {
    error = file.Error();
    return std::nullopt;
  }
  const auto header = ReadHeader(file, *fileSize, error);
  if (!header) return std::nullopt;
  auto entries = ReadDirectory(file, header->directoryOffset, *fileSize, error);
  if (!entries) return std::nullopt;
  return ArchiveContents{*header, std::move(*entries)};
}

std::vector<std::uint8_t> HeaderBytes(const ArchiveHeader& header) {
  std::vector<std::uint8_t> bytes(kArchiveHeaderSize);
  StoreU32(bytes, 0, header.directoryOffset);
  StoreU32(bytes, 4, static_cast<std::uint32_t>(header.mode));
  std::copy(header.reserved.begin(), header.reserved.end(), bytes.begin() + 8);
  return bytes;
}

std::vector<std::uint8_t> DirectoryBytes(const ArchiveEntries& entries) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(static_cast<std::size_t>(DirectorySize(entries)));
  AppendU32(bytes, static_cast<std::uint32_t>(entries.size()));
  for (const auto& [name, entry] : entries) {
    AppendU32(bytes, static_cast<std::uint32_t>(name.size()));
    bytes.insert(bytes.end(), name.begin(), name.end());
    AppendU32(bytes, entry.storedSize);
    AppendU32(bytes, entry.size);
    AppendU32(bytes, entry.dataOffset);
    for (const std::uint32_t word : entry.reserved) AppendU32(bytes, word);
  }
  AppendU32(bytes, 0);  // the end mark
  return bytes;
}

std::uint64_t DirectorySize(const ArchiveEntries& entries) {
  std::uint64_t size = 8;  // count and end mark
  for (const auto& [name, entry] : entries) size += kSmallestEntry + name.size();
  return size;
}

std::uint64_t DataEnd(const ArchiveEntries& entries) {
  std::uint64_t end = kArchiveHeaderSize;
  for (const auto& [name, entry] : entries) {
    end = std::max(end, std::uint64_t{entry.dataOffset} + entry.storedSize);
  }
  return end;
}

}  // namespace mw
