#include "data/game_file.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <utility>

#include "core/text.h"
#include "data/game_path.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/disk.h"

namespace mw {
namespace {

// Room for a script's first lines, so that a new file does not grow with each of them.
constexpr std::size_t kFirstReserve = 1024;
constexpr std::uint64_t kMaxFileSize = std::numeric_limits<std::uint32_t>::max();

// Of a whole group, so it says more than what was noted while the group was written.
std::string GroupError(const Archive& archive) {
  return "The level's archive could not be changed: " + archive.Error() +
         "\n\nThe level on disk is as it was before.";
}

std::size_t CountLineFeeds(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

void CopyWithCarriageReturns(std::string_view text, std::uint8_t* to) {
  for (const char c : text) {
    if (c == '\n') *to++ = '\r';
    *to++ = static_cast<std::uint8_t>(c);
  }
}

// A file that lacks what could not be written is not whole, so closing it tells, too.
bool Fail(GameFile& file, std::string_view reason) {
  SetGameFileError(reason);
  file.failed = true;
  return false;
}

bool TooLarge(GameFile& file) {
  return Fail(file, "The file " + NormalMemberName(file.name) + " is too large.");
}

// Writes at the position; false when the file would outgrow its archive's format.
bool WriteText(std::string_view text, GameFile& file) {
  const std::uint64_t stored = text.size() + (file.text ? CountLineFeeds(text) : 0);
  const std::uint64_t end = file.position + stored;
  if (end > kMaxFileSize) return TooLarge(file);
  if (end > file.data.size()) file.data.resize(static_cast<std::size_t>(end));
  std::uint8_t* to = file.data.data() + file.position;
  if (file.text) {
    CopyWithCarriageReturns(text, to);
  } else if (!text.empty()) {
    std::memcpy(to, text.data(), text.size());
  }
  file.position = static_cast<std::uint32_t>(end);
  return true;
}

// The most recently opened writable archive; none is a failure that is remembered.
Archive* NewestWritable() {
  Archive* const archive = archives.LastWritable();
  if (!archive) SetGameFileError(archives.ReasonNotWritable());
  return archive;
}

void Capture(GameFile& file) {
  GameMember member{NormalMemberName(file.name), std::move(file.data)};
  const auto before = std::ranges::find_if(*openLevel.captured, [&](const GameMember& other) {
    return EqualNoCase(other.name, member.name);
  });
  if (before == openLevel.captured->end()) {
    openLevel.captured->push_back(std::move(member));
  } else {
    *before = std::move(member);
  }
}

bool WriteBack(GameFile& file) {
  if (openLevel.captured) {
    Capture(file);
    return true;
  }
  if (file.archive->WriteMember(file.name, file.data)) return true;
  const std::string& reason = file.archive->Error();
  SetGameFileError(reason.empty()
                       ? "The file " + NormalMemberName(file.name) + " could not be written."
                       : reason);
  return false;
}

bool SaveBytes(std::string_view gamePath, Bytes bytes) {
  const std::unique_ptr<GameFile> file = GameFileOpen(gamePath, "wb");
  if (!file) return false;
  file->data = std::move(bytes);
  return WriteBack(*file);
}

}  // namespace

const std::string& GameFileError() { return openLevel.writeError; }

void SetGameFileError(std::string_view reason) {
  if (openLevel.writeError.empty()) openLevel.writeError = reason;
}

void ClearGameFileError() { openLevel.writeError.clear(); }

std::string WhyNotWritten(const std::function<bool()>& write) {
  std::string outer = std::exchange(openLevel.writeError, {});
  const bool written = write();
  std::string reason = std::exchange(openLevel.writeError, std::move(outer));
  if (written) return {};
  return reason.empty() ? "Not everything could be written." : reason;
}

std::string WriteAsOneChange(const std::function<bool()>& write) {
  Archive* const archive = archives.LastWritable();
  if (archive && !archive->BeginSave()) return GroupError(*archive);
  std::string reason = WhyNotWritten(write);
  if (archive && !archive->CommitSave()) return GroupError(*archive);
  return reason;
}

std::vector<GameMember> CaptureGameFiles(const std::function<bool()>& write) {
  std::vector<GameMember> members;
  openLevel.captured = &members;
  (void)WhyNotWritten(write);
  openLevel.captured = nullptr;
  return members;
}

std::unique_ptr<GameFile> GameFileOpen(std::string_view path, std::string_view mode) {
  std::optional<std::string> name = NormalGamePath(path);
  if (!name) {
    SetGameFileError("The path is too long: " + NormalMemberName(path));
    return nullptr;
  }
  auto file = std::make_unique<GameFile>();
  file->writing = mode.find('w') != std::string_view::npos;
  file->text = mode.find('b') == std::string_view::npos;
  file->name = *std::move(name);
  file->archive = archives.FindHolding(file->name, file->writing);
  if (file->writing) {
    if (!file->archive && !openLevel.captured) file->archive = NewestWritable();
    if (!file->archive && !openLevel.captured) return nullptr;
    file->data.reserve(kFirstReserve);
    return file;
  }
  if (!file->archive) return nullptr;
  std::optional<MemberBytes> member = file->archive->ReadMemberWithGaps(file->name);
  if (openLevel.loadReport.loading) {
    openLevel.loadReport.filesRead[NormalMemberName(file->name)] = member && member->IsWhole();
  }
  if (!member) return nullptr;
  file->data = std::move(member->data);
  file->gaps = std::move(member->gaps);
  return file;
}

bool GameFileClose(std::unique_ptr<GameFile> file) {
  if (!file || !file->writing) return true;
  return WriteBack(*file) && !file->failed;
}

std::size_t GameFileRead(void* buffer, std::size_t elementSize, std::size_t count, GameFile& file) {
  const std::size_t available = file.data.size() - file.position;
  if (elementSize == 0 || available == 0) return 0;
  // Compared by division: a product of hostile numbers could wrap.
  const bool wholeRequest = count <= available / elementSize;
  const std::size_t bytes = wholeRequest ? elementSize * count : available;
  if (bytes > 0) std::memcpy(buffer, file.data.data() + file.position, bytes);
  file.position += static_cast<std::uint32_t>(bytes);
  return bytes / elementSize;
}

std::size_t GameFileWrite(const void* buffer, std::size_t elementSize, std::size_t count,
                          GameFile& file) {
  if (elementSize == 0 || count == 0) return 0;
  if (count > kMaxFileSize / elementSize) {
    TooLarge(file);
    return 0;
  }
  const std::string_view text(static_cast<const char*>(buffer), elementSize * count);
  return WriteText(text, file) ? count : 0;
}

int GameFilePuts(std::string_view text, GameFile& file) { return WriteText(text, file) ? 0 : -1; }

int GameFilePrintf(GameFile& file, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = FormatTextV(format, arguments);
  va_end(arguments);
  if (text.size() > kMaxPrintfText) {
    Fail(file, "A line of " + file.name + " is too long.");
    return -1;
  }
  return GameFilePuts(text, file) == 0 ? static_cast<int>(text.size()) : -1;
}

std::optional<std::string> GameFileGets(std::size_t size, GameFile& file) {
  if (file.position >= file.data.size() || size == 0) return std::nullopt;
  const std::string_view rest =
      std::string_view(reinterpret_cast<const char*>(file.data.data()), file.data.size())
          .substr(file.position);
  const std::size_t longest = size - 1;
  // One byte further: a carriage return that is left out takes no room.
  const std::size_t lineFeed = rest.substr(0, size).find('\n');
  const bool ends = lineFeed != std::string_view::npos;
  const bool leavesOne = ends && file.text && lineFeed > 0 && rest[lineFeed - 1] == '\r';
  if (!ends || (lineFeed == longest && !leavesOne)) {
    const std::string_view piece = rest.substr(0, longest);
    file.position += static_cast<std::uint32_t>(piece.size());
    return std::string(piece);
  }
  std::string line(rest.substr(0, lineFeed - (leavesOne ? 1 : 0)));
  line += '\n';
  file.position += static_cast<std::uint32_t>(lineFeed + 1);
  return line;
}

int GameFileSeek(GameFile& file, std::int64_t offset, int origin) {
  // Unsigned, as the position is: a position before the start wraps and so lies beyond the end.
  const std::uint64_t size = file.data.size();
  const auto distance = static_cast<std::uint64_t>(offset);
  std::uint64_t target = file.position;
  if (origin == 0) target = distance;
  if (origin == 1) target = file.position + distance;
  if (origin == 2) target = size - distance;
  file.position = static_cast<std::uint32_t>(std::min(target, size));
  return target > size ? -1 : 0;
}

std::uint32_t GameFileTell(const GameFile& file) { return file.position; }

bool ImportDiskFile(std::string_view diskPath, std::string_view gamePath) {
  std::string reason;
  std::optional<Bytes> bytes = ReadWholeFile(diskPath, &reason);
  if (!bytes) {
    SetGameFileError(reason);
    return false;
  }
  return SaveBytes(gamePath, *std::move(bytes));
}

bool SaveGameFileBytes(std::string_view gamePath, ByteView bytes) {
  return SaveBytes(gamePath, {bytes.begin(), bytes.end()});
}

std::uint32_t GameFileRevision(std::string_view path) {
  const std::optional<std::string> name = NormalGamePath(path);
  const Archive* const archive = name ? archives.FindHolding(*name, false) : nullptr;
  return archive ? archive->Find(*name)->revision : 0;
}

bool IsInWritableArchive(std::string_view path) {
  const std::optional<std::string> name = NormalGamePath(path);
  return name && archives.FindHolding(*name, true);
}

bool IsFolderInWritableArchive(std::string_view gamePath) {
  const std::optional<std::string> name = NormalGamePath(gamePath);
  const Archive* const archive = archives.LastWritable();
  if (!name || !archive) return false;
  const std::string start = NormalMemberName(*name);
  for (const auto& [member, entry] : archive->Entries()) {
    if (StartsWithNoCase(member, start)) return true;
  }
  return false;
}

bool RemoveGameFile(std::string_view path) {
  const std::optional<std::string> name = NormalGamePath(path);
  Archive* const archive = name ? archives.FindHolding(*name, true) : nullptr;
  if (!archive || archive->RemoveMember(*name)) return true;
  SetGameFileError(archive->Error());
  return false;
}

bool RemoveArchiveFolder(std::string_view gamePath) {
  const std::optional<std::string> name = NormalGamePath(gamePath);
  if (openLevel.captured) return true;
  Archive* const archive = NewestWritable();
  if (!archive) return false;
  if (!name || name->empty() || archive->RemoveMembersWithPrefix(*name)) return true;
  SetGameFileError(archive->Error());
  return false;
}

}  // namespace mw
