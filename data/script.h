// Console scripts (.con): text files in which every line is one console command with its arguments.
// The editor recognises the commands that carry data it edits and passes everything else over.
#pragma once

#include <functional>
#include <optional>
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

// Writes the script again in place, line by line: `rebuild` gives the new text of a line that the
// editor owns (with its "\n"), or nothing for a line to keep, which then stays byte for byte. Lines
// are neither added nor removed, and lines of any length survive. False, with nothing written, when
// no archive holds the file, and, remembered as GameFileError, when none is open for writing or the
// file is damaged (what cannot be read would be lost).
bool RewriteScript(std::string_view path,
                   const std::function<std::optional<std::string>(std::string_view line)>& rebuild);

}  // namespace mw
