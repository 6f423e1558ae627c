// A test with the mod "mymod" selected and its level "Island" open for writing.
#pragma once

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

#include "core/editor_state.h"
#include "data/archive.h"
#include "data/data_state.h"
#include "data/game_file.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "support/sandbox.h"

namespace mw {

// "$" stands for a line feed, "%" for a carriage return, "^" for a zero, "~30" for so many "x".
inline std::string Unescaped(std::string text) {
  for (std::size_t at; (at = text.find('~')) != text.npos;) {
    std::size_t digits = 0;
    const auto count = std::stoul(text.substr(at + 1), &digits);
    text.replace(at, digits + 1, std::string(count, 'x'));
  }
  std::ranges::replace(text, '$', '\n');
  std::ranges::replace(text, '%', '\r');
  std::ranges::replace(text, '^', '\0');
  return text;
}
inline std::string Escaped(std::string text) {
  for (std::size_t at = 0; (at = text.find(std::string(20, 'x'), at)) != text.npos;) {
    const std::size_t end = std::min(text.find_first_not_of('x', at), text.size());
    text.replace(at, end - at, "~" + std::to_string(end - at));
  }
  std::ranges::replace(text, '\n', '$');
  std::ranges::replace(text, '\r', '%');
  std::ranges::replace(text, '\0', '^');
  return text;
}

template <typename Base>
class LevelArchive : public Base {
 protected:
  LevelArchive() {
    ResetDataState();
    modConfig.GamePath = this->GameFolder();
    modConfig.modFolder = "Mods\\mymod\\";
    modConfig.levelsFolder = kLevelsFolder;
    modConfig.LevelName = "Island";
    openLevel.folder = this->GameFolder() + "Mods\\mymod\\varnhold\\levels\\Island";
    level = archives.CreateArchive((this->folder / "Island.vra").string());
  }
  ~LevelArchive() override { ResetDataState(); }

  static std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
  }
  static std::string Text(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
  }
  static std::string Member(std::string_view file) {
    return "varnhold/levels/Island/" + std::string(file);
  }
  // A file of the level, named from its folder; "(none)" when the archive does not hold it.
  void Put(std::string_view file, std::string_view content) {
    ASSERT_TRUE(level->WriteMember(Member(file), Bytes(content)));
  }
  std::string Get(std::string_view file) const {
    const auto bytes = level->ReadMember(Member(file));
    return bytes ? Text(*bytes) : "(none)";
  }
  // A compressed file of the level that can no longer be read on disk.
  void Damage(std::string_view file) {
    std::fstream disk(std::filesystem::path(level->Path()),
                      std::ios::in | std::ios::out | std::ios::binary);
    disk.seekp(level->Find(Member(file))->dataOffset + 4);
    disk.write("\xFF\xFF\xFF\xFF", 4);  // the compressed size of its first segment
  }
  // A content archive with one file, opened after the level and for reading.
  Archive* OpenContent(std::string_view file, std::string_view text) const {
    const std::string path = (this->folder / "content.vra").string();
    archives.CreateArchive(path)->WriteMember(file, Bytes(text));
    archives.CloseArchive(path);
    return archives.OpenArchive(path, false);
  }
  static std::string LevelPath(std::string_view file) {
    return openLevel.folder.String() + "/" + std::string(file);
  }

  Archive* level = nullptr;
};

using LevelArchiveTest = LevelArchive<SandboxTest>;

}  // namespace mw
