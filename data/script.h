// Console scripts (.con): text files in which every line is one console command with its arguments.
// The editor recognises the commands that carry data it edits and passes everything else over.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "core/vector3.h"
#include "data/game_file.h"

namespace mw {

// Separator sets of script lines.
inline constexpr std::string_view kBlankOrSlash = " /";            // commands and numbers
inline constexpr std::string_view kBlankOrLineEnd = " \n\r";       // paths, whose slashes survive
inline constexpr std::string_view kBlankSlashOrLineFeed = " /\n";  // game-mode entity files

// Line buffers: longer lines arrive in pieces, each treated as a line of its own.
inline constexpr std::size_t kSettingsLineBuffer = 255;
inline constexpr std::size_t kEntityLineBuffer = 256;

// Takes the next line, or piece of bufferSize - 1 bytes of a line, from the front of a text that
// is not empty; without its line end.
std::string_view TakeLine(std::string_view& text, std::size_t bufferSize);

// "vector of 3": a missing component is the one before it, a missing first component 0.
Vector3 ParseVector3(Tokenizer& tokens, std::string_view separators);
// "3 floats": a missing component is 0.
Vector3 ParseFloats3(Tokenizer& tokens, std::string_view separators);

// The comment block at the top of every script that the editor creates, line feeds included.
std::string_view ScriptHeader();
void WriteScriptHeader(GameFile& file);

// Whether an opened file holds all that its archive says it has: a damaged member is read only in
// part.
inline bool IsWhole(const GameFile& file) { return file.gaps.empty(); }

// Calls `onLine` for every line (or piece of `bufferSize` - 1 bytes) from the file's position on,
// without its line feed. Where a damaged file has a gap, the lines that it cuts are left out and
// lines come that IsGap holds for: what follows does not belong to what was before.
void ForEachLine(GameFile& file, std::size_t bufferSize,
                 const std::function<void(std::string_view line)>& onLine);
inline bool IsGap(std::string_view line) { return line.starts_with('\0'); }

// The same for the whole script. False when no archive holds it.
bool ReadScript(std::string_view path, std::size_t bufferSize,
                const std::function<void(std::string_view line)>& onLine);

// Calls `onLine` for every line of the script as it is stored, whatever its length, without its
// line end. False, with no line given, when no archive holds the script or when it is damaged.
bool ReadStoredLines(std::string_view path,
                     const std::function<void(std::string_view line)>& onLine);

// A line that a rewrite adds to a script.
struct AddedLine {
  std::size_t place;  // so many of the script's lines stand before it
  std::string text;   // without line end
};

// Writes the script again in place, line by line: `rebuild` gives the new text of a line that the
// editor owns (with its "\n"), an empty text for a line that goes, or nothing for a line to keep,
// which then stays byte for byte. Lines of any length survive. `added` is in the order of the
// places. False when it could not be written: no archive holds the file, none is open for writing,
// or the file is damaged (what cannot be read would be lost); it is then as it was.
[[nodiscard]] bool RewriteScript(
    std::string_view path,
    const std::function<std::optional<std::string>(std::string_view line)>& rebuild,
    std::span<const AddedLine> added = {});

}  // namespace mw
