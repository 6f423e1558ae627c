// A level that is open for writing and never reaches the disk, for the fuzz targets of its files.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "data/archive.h"
#include "data/game_file.h"
#include "data/open_level.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"

// While it lives, the level is open and holds what is put into it. What one leaves behind, the next
// does not see.
class LevelSandbox {
 public:
  LevelSandbox() : level_(OpenArchive()) {
    mw::openLevel.folder = kFolder;
    mw::ClearGameFileError();
    Require(level_.BeginSave());
  }
  ~LevelSandbox() { level_.RollbackSave(); }
  LevelSandbox(const LevelSandbox&) = delete;
  LevelSandbox& operator=(const LevelSandbox&) = delete;

  void Put(const std::string& file, std::span<const std::uint8_t> bytes) {
    Require(level_.WriteMember(Member(file), bytes));
  }
  auto Read(const std::string& file) { return level_.ReadMember(Member(file)); }
  // All bytes of all members, and their names.
  std::string Everything() {
    std::string all;
    for (const auto& [name, entry] : level_.Entries()) {
      const auto bytes = level_.ReadMember(name);
      Require(bytes.has_value());
      all.append(name).append(bytes->begin(), bytes->end());
    }
    return all;
  }

 private:
  static mw::Archive& OpenArchive() {
    static mw::Archive* const opened = [] {
      mw::Archive* const created = mw::archives.CreateArchive(PrivatePath("level.vra"));
      // Stored: nothing here is about compression.
      Require(created && created->SetMode(mw::StorageMode::Stored));
      return created;
    }();
    return *opened;
  }
  static std::string Member(const std::string& file) { return std::string(kFolder) + "/" + file; }

  // Short: it is compared very often.
  static constexpr const char* kFolder = "L";

  mw::Archive& level_;
};
