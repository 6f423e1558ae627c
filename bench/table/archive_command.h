// mapwright-archive, as it is called from a script. Used by the rows of archives and of levels.
#pragma once

#include <filesystem>
#include <string>

namespace mw::bench {

// Seconds that a command of the shell takes, from its start to its end.
double TimeCommand(const std::string& command);
// "'<program>' <verb> '<archive>'", for the shell.
std::string ArchiveCommand(const char* verb, const std::filesystem::path& archive);
// What this program does instead of its rows when its first argument is kReadMembers: opens the
// archive that the second one names, and reads its members.
inline constexpr const char* kReadMembers = "read-members";
void ReadAllMembers(const std::filesystem::path& archive);
// A row: `mapwright-archive verify` against a program that starts as well, and only reads all
// members of the archive. `what` is in it.
void AddVerifying(const std::filesystem::path& archive, const std::string& what);

}  // namespace mw::bench
