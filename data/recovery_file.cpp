#include "data/recovery_file.h"

#include <algorithm>
#include <lzo/lzoconf.h>
#include <string_view>

#include "core/bytes.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/archive_directory.h"
#include "data/archive_replace.h"
#include "platform/file.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

// No level's: those lie in folders.
constexpr std::string_view kInfoMember = "recovery.txt";
constexpr std::string_view kFirstLine = "Mapwright recovery 1";

std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::uint32_t AddToChecksum(std::uint32_t checksum, std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return checksum;  // lzo_crc32 starts anew without bytes
  return lzo_crc32(checksum, bytes.data(), static_cast<lzo_uint>(bytes.size()));
}

std::uint32_t AddMember(std::uint32_t checksum, std::string_view name,
                        std::span<const std::uint8_t> data) {
  return AddToChecksum(AddToChecksum(checksum, AsBytes(name)), data);
}

// One value a line, in a fixed order; the checksum is that of the members, then of the lines above
// it.
std::string InfoText(const RecoveryInfo& info, std::uint32_t members) {
  std::string text =
      std::string(kFirstLine) + '\n' + info.mod + '\n' + info.level + '\n' + info.time + '\n';
  return text + FormatText("%08x\n", AddToChecksum(members, AsBytes(text)));
}

std::optional<RecoveryInfo> ParseInfo(std::string_view text, std::uint32_t members) {
  Tokenizer lines(text);
  const auto line = [&lines] { return std::string(lines.Next("\n").value_or("")); };
  if (line() != kFirstLine) return std::nullopt;
  RecoveryInfo info;
  info.mod = line();
  info.level = line();
  info.time = line();
  if (text != InfoText(info, members)) return std::nullopt;
  return info;
}

Bytes ArchiveBytes(std::span<const GameMember> members) {
  ArchiveContents contents;
  Bytes bytes(kArchiveHeaderSize);
  for (const GameMember& member : members) {
    const auto size = static_cast<std::uint32_t>(member.data.size());
    contents.entries.Set(member.name, {size, size, static_cast<std::uint32_t>(bytes.size()), {}});
    bytes.insert(bytes.end(), member.data.begin(), member.data.end());
  }
  contents.header.directoryOffset = static_cast<std::uint32_t>(bytes.size());
  std::ranges::copy(HeaderBytes(contents.header), bytes.begin());
  const Bytes directory = DirectoryBytes(contents.entries);
  bytes.insert(bytes.end(), directory.begin(), directory.end());
  return bytes;
}

bool WriteAside(const fs::path& aside, const Bytes& bytes, std::string& error) {
  if (!RemoveFile(aside, &error)) return false;
  File file;
  if (file.Open(aside, FileAccess::CreateNew) && file.WriteAt(0, bytes) && file.Sync()) return true;
  error = file.Error();
  return false;
}

}  // namespace

std::uint32_t ChecksumOf(std::span<const GameMember> members) {
  std::vector<const GameMember*> order;
  for (const GameMember& member : members) order.push_back(&member);
  std::ranges::sort(order, LessNoCase{},
                    [](const GameMember* m) { return std::string_view(m->name); });
  std::uint32_t checksum = 0;
  for (const GameMember* member : order) checksum = AddMember(checksum, member->name, member->data);
  return checksum;
}

bool WriteRecoveryFile(const fs::path& path, const RecoveryInfo& info,
                       std::span<const GameMember> members, std::string& error) {
  std::vector<GameMember> all(members.begin(), members.end());
  const std::string text = InfoText(info, ChecksumOf(members));
  all.push_back({std::string(kInfoMember), {text.begin(), text.end()}});
  const fs::path aside = AsidePath(path);
  if (WriteAside(aside, ArchiveBytes(all), error) && RenameFile(aside, path, &error)) {
    return SyncFolderOf(path, &error);
  }
  RemoveFile(aside);
  return false;
}

std::optional<RecoveryInfo> ReadRecoveryInfo(const fs::path& path) {
  Archive archive;
  if (!archive.Open(path.string(), false)) return std::nullopt;
  std::string text;
  std::uint32_t checksum = 0;
  for (const auto& [name, entry] : archive.Entries()) {
    const Bytes data = archive.ReadMember(name).value_or(Bytes{});
    if (name == kInfoMember) {
      text.assign(data.begin(), data.end());
    } else {
      checksum = AddMember(checksum, name, data);
    }
  }
  return ParseInfo(text, checksum);
}

}  // namespace mw
