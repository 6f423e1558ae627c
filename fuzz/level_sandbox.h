// A level that is open for writing and never reaches the disk, for the fuzz targets of its scripts.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "core/editor_state.h"
#include "data/archive.h"
#include "data/game_file.h"
#include "private_path.h"

class LevelSandbox {
 public:
  LevelSandbox() : level_(mw::archives.CreateArchive(PrivatePath("level.vra"))) {
    if (!level_) std::abort();
    level_->SetMode(mw::StorageMode::Stored);  // nothing here is about compression
    mw::editor.levelFolder = "varnhold\\levels\\Fuzz";
  }

  void Begin() {
    if (!level_->BeginSave()) std::abort();
  }
  void End() { level_->RollbackSave(); }

  void Put(const std::string& file, std::span<const std::uint8_t> bytes) {
    if (!level_->WriteMember(Member(file), bytes)) std::abort();
  }
  // All bytes of all members, and their names.
  std::string Everything() {
    std::string all;
    for (const auto& [name, entry] : level_->Entries()) {
      const auto bytes = level_->ReadMember(name);
      if (!bytes) std::abort();
      all.append(name).append(bytes->begin(), bytes->end());
    }
    return all;
  }

 private:
  static std::string Member(const std::string& file) { return "varnhold/levels/Fuzz/" + file; }
  mw::Archive* level_;
};
