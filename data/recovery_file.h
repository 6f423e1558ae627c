// The recovery file: the edited files of a level that is not saved yet, in an archive of their own
// with the members' usual names, and a member that says which level they belong to. Written now and
// then by app/recovery.h; docs/formats.md describes it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "data/game_file.h"

namespace mw {

struct RecoveryInfo {
  std::string mod, level;
  std::string time;  // for the user to read
};

// Of the members' names and bytes; tells whether anything has changed since the last writing.
std::uint32_t ChecksumOf(std::span<const GameMember> members);

// Writes aside, syncs and renames: the old or the new file is there whole at any moment.
bool WriteRecoveryFile(const std::filesystem::path& path, const RecoveryInfo& info,
                       std::span<const GameMember> members, std::string& error);
// Nothing when the file is missing or not whole, byte for byte.
std::optional<RecoveryInfo> ReadRecoveryInfo(const std::filesystem::path& path);

}  // namespace mw
