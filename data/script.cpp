#include "data/script.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace mw {
namespace {

// One line of a file as it is stored.
struct StoredLine {
  std::string_view bytes;  // with its line end, if it has one
  std::string_view text;   // without
};

StoredLine FirstLine(std::string_view bytes) {
  const std::size_t lineFeed = bytes.find('\n');
  if (lineFeed == std::string_view::npos) return {bytes, bytes};
  StoredLine line{bytes.substr(0, lineFeed + 1), bytes.substr(0, lineFeed)};
  if (line.text.ends_with('\r')) line.text.remove_suffix(1);
  return line;
}

std::ptrdiff_t Offset(std::size_t bytes) { return static_cast<std::ptrdiff_t>(bytes); }

// Makes zeros of the lines that the gap cuts, and a line of them.
void BlankCutLines(std::vector<std::uint8_t>& text, const MemberGap& gap) {
  const auto before = text.begin() + std::min<std::ptrdiff_t>(std::ssize(text), Offset(gap.begin));
  const auto behind = text.begin() + std::min<std::ptrdiff_t>(std::ssize(text), Offset(gap.end));
  const auto first = std::find(std::reverse_iterator(before), text.rend(), '\n').base();
  const auto lineFeed = std::find(behind, text.end(), '\n');
  std::fill(first, lineFeed, std::uint8_t{0});
}

template <typename OnLine>
void ForEachStoredLine(const GameFile& file, OnLine onLine) {
  std::string_view rest(reinterpret_cast<const char*>(file.data.data()), file.data.size());
  while (!rest.empty()) {
    const StoredLine line = FirstLine(rest);
    rest.remove_prefix(line.bytes.size());
    onLine(line);
  }
}

// A script on its way into a file that is written as it is.
class ScriptRewriter {
 public:
  ScriptRewriter(std::span<const AddedLine> added, GameFile& file) : added_(added), file_(file) {}

  // The next line of the script and what becomes of it.
  void Put(const StoredLine& line, const std::optional<std::string>& rebuilt) {
    PutAddedLines();
    ++count_;
    if (!rebuilt) return PutBytes(line.bytes);
    if (!rebuilt->empty()) PutLine(*rebuilt);
  }

  void PutAddedLines() {
    for (; !added_.empty() && added_.front().place <= count_; added_ = added_.subspan(1)) {
      PutLine(added_.front().text);
    }
  }

 private:
  void PutBytes(std::string_view bytes) {
    GameFilePuts(bytes, file_);
    endsWithLine_ = bytes.ends_with('\n');
  }

  // With or without its "\n".
  void PutLine(std::string_view line) {
    if (!endsWithLine_) PutBytes("\r\n");
    if (line.ends_with('\n')) line.remove_suffix(1);
    PutBytes(line);
    PutBytes("\r\n");
  }

  std::span<const AddedLine> added_;
  GameFile& file_;
  std::size_t count_ = 0;  // lines of the script so far
  bool endsWithLine_ = true;
};

}  // namespace

std::string_view TakeLine(std::string_view& text, std::size_t bufferSize) {
  const std::size_t longest = bufferSize - 1;
  std::string_view line = text.substr(0, longest);
  line = line.substr(0, line.find('\n'));
  text.remove_prefix(std::min(text.size(), line.size() + (line.size() < longest ? 1 : 0)));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

Vector3 ParseVector3(Tokenizer& tokens, std::string_view separators) {
  Vector3 vector;
  float before = 0;
  for (float* const component : {&vector.x, &vector.y, &vector.z}) {
    const auto token = tokens.Next(separators);
    *component = token ? ParseFloat(token) : before;
    before = *component;
  }
  return vector;
}

Vector3 ParseFloats3(Tokenizer& tokens, std::string_view separators) {
  Vector3 vector;
  for (float* const component : {&vector.x, &vector.y, &vector.z}) {
    *component = ParseFloat(tokens.Next(separators));
  }
  return vector;
}

std::string_view ScriptHeader() {
  return "rem *********************************************\n"
         "rem Created by Mapwright\n"
         "rem *********************************************\n";
}

void WriteScriptHeader(GameFile& file) { GameFilePuts(ScriptHeader(), file); }

void ForEachLine(GameFile& file, std::size_t bufferSize,
                 const std::function<void(std::string_view line)>& onLine) {
  for (const MemberGap& gap : file.gaps) BlankCutLines(file.data, gap);
  while (const std::optional<std::string> piece = GameFileGets(bufferSize, file)) {
    std::string_view line = *piece;
    if (line.ends_with('\n')) line.remove_suffix(1);
    onLine(line);
  }
}

bool ReadScript(std::string_view path, std::size_t bufferSize,
                const std::function<void(std::string_view line)>& onLine) {
  const std::unique_ptr<GameFile> file = GameFileOpen(path, "r");
  if (!file) return false;
  ForEachLine(*file, bufferSize, onLine);
  return true;
}

bool ReadStoredLines(std::string_view path,
                     const std::function<void(std::string_view line)>& onLine) {
  const std::unique_ptr<GameFile> file = GameFileOpen(path, "rb");
  if (!file || !IsWhole(*file)) return false;
  ForEachStoredLine(*file, [&](const StoredLine& line) { onLine(line.text); });
  return true;
}

bool RewriteScript(std::string_view path,
                   const std::function<std::optional<std::string>(std::string_view line)>& rebuild,
                   std::span<const AddedLine> added) {
  // Both in binary: a text file would give the lines to keep other line ends than they have.
  const std::unique_ptr<GameFile> before = GameFileOpen(path, "rb");
  if (!before) return false;
  if (!IsWhole(*before)) {
    SetGameFileError("The script " + before->name + " is damaged.");
    return false;
  }
  std::unique_ptr<GameFile> after = GameFileOpen(path, "wb");
  if (!after) return false;
  ScriptRewriter rewriter(added, *after);
  ForEachStoredLine(*before,
                    [&](const StoredLine& line) { rewriter.Put(line, rebuild(line.text)); });
  rewriter.PutAddedLines();
  return GameFileClose(std::move(after));
}

}  // namespace mw
