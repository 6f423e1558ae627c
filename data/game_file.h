// Every game file that the editor reads or writes lives inside an open archive. A file is named by
// its path as it would lie on disk under the game folder; `GameFileOpen` hands out an in-memory
// copy of the member with a stream interface like the standard library's. A file opened for writing
// goes back into its archive when it is closed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/bytes.h"
#include "data/archive.h"

namespace mw {

// GameFilePrintf formats at most this many characters; a longer line is refused.
inline constexpr std::size_t kMaxPrintfText = 1023;

struct GameFile {
  Archive* archive = nullptr;
  std::string name;             // normalised, `\` as separator
  Bytes data;                   // the valid bytes
  std::vector<MemberGap> gaps;  // of a damaged file that was read: what could not be
  std::uint32_t position = 0;   // 0 ... data.size()
  bool writing = false;
  bool text = false;    // line ends are translated
  bool failed = false;  // something could not be written into it
};

// Who writes returns whether it was written, and notes why not with SetGameFileError. The reason
// goes to whoever called WhyNotWritten or WriteAsOneChange around it; the first one stays.
void SetGameFileError(std::string_view reason);
// What was noted outside of them, and its end: for tests, which write without a change around it.
const std::string& GameFileError();
void ClearGameFileError();

// Runs `write`, which returns whether all of it could be written. An empty text when it could, else
// the first reason that was noted.
[[nodiscard]] std::string WhyNotWritten(const std::function<bool()>& write);
// The same for a group of members that goes into the newest writable archive: the disk is waited
// for once, at the end. What could be written is in the archive then, each member whole.
[[nodiscard]] std::string WriteAsOneChange(const std::function<bool()>& write);

// A member that is written, by its name in an archive.
struct GameMember {
  std::string name;
  Bytes data;
};
// Runs `write` and returns what it would have written, each member once; no archive is changed.
// Reading goes to the archives as always. Nothing is said of what cannot be written.
std::vector<GameMember> CaptureGameFiles(const std::function<bool()>& write);

// `mode` holds "w" for writing, else the file is read; without "b" it is a text file. Null when
// reading a file that no archive holds, when writing while no archive is open for writing, and for
// a path that is too long (for both, SetGameFileError has the reason).
std::unique_ptr<GameFile> GameFileOpen(std::string_view path, std::string_view mode);
// Writes the member back if the file was opened for writing. False when that failed, or when
// something before could not be written into the file; whoever writes needs to look only here.
[[nodiscard]] bool GameFileClose(std::unique_ptr<GameFile> file);
// Number of whole elements read; no line-end translation.
std::size_t GameFileRead(void* buffer, std::size_t elementSize, std::size_t count, GameFile& file);
// `count` as given (0 when the file would outgrow 4 GB). In a text file a carriage return is stored
// before each line feed.
std::size_t GameFileWrite(const void* buffer, std::size_t elementSize, std::size_t count,
                          GameFile& file);
// 0, or -1 if a character could not be written.
int GameFilePuts(std::string_view text, GameFile& file);
// The number of characters formatted, or -1 when the text is longer than kMaxPrintfText or could
// not be written; nothing is written then.
[[gnu::format(printf, 2, 3)]] int GameFilePrintf(GameFile& file, const char* format, ...);
// The next line or piece of a line: at most size - 1 bytes, up to and with its line feed; in a text
// file a carriage return before the line feed is dropped, wherever the piece ends. Nothing at end
// of file.
std::optional<std::string> GameFileGets(std::size_t size, GameFile& file);
// Origin 0 start, 1 position, 2 end (offsets count backwards). 0, or -1 if the position would have
// lain outside the file, which puts it at the end.
int GameFileSeek(GameFile& file, std::int64_t offset, int origin);
std::uint32_t GameFileTell(const GameFile& file);

// Copies a disk file into the archives. False when it cannot be read or written.
[[nodiscard]] bool ImportDiskFile(std::string_view diskPath, std::string_view gamePath);
// False when it cannot be written.
[[nodiscard]] bool SaveGameFileBytes(std::string_view gamePath, ByteView bytes);
// A number that is another one whenever what reading the file gives may have become another, in
// this run of the program; 0 when no archive holds it.
std::uint32_t GameFileRevision(std::string_view path);
// Whether an archive open for writing holds the file: writing it replaces it there.
bool IsInWritableArchive(std::string_view path);
// Whether the newest of them holds files under the path, which ends with a separator.
bool IsFolderInWritableArchive(std::string_view gamePath);
// Removes the file from the archive that writing it goes into, if it is there. False when that
// fails.
[[nodiscard]] bool RemoveGameFile(std::string_view path);
// Removes every member under the path from the most recently opened writable archive. A path that
// means the whole archive removes nothing. False when that fails or no archive is writable.
[[nodiscard]] bool RemoveArchiveFolder(std::string_view gamePath);

}  // namespace mw
