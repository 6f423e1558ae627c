// What mapwright-archive can do, one function a command. Each prints what it has to say and returns
// the program's exit code.
#pragma once

#include <string>
#include <vector>

namespace mw {

// How the program ends. Scripts rely on the numbers.
enum ExitCode : int {
  kFine = 0,
  kDamaged = 1,     // something in an archive is not whole; also: two archives differ
  kUnreadable = 2,  // wrong usage, or a file that cannot be read or written
};

struct Arguments {
  std::string archive, otherArchive;
  std::vector<std::string> patterns;  // of members; none means all
  std::vector<std::string> files;     // to add, on disk
  std::string folder = ".";           // to extract into
  std::string under;                  // the archive's folder that files are added to
  std::string mod;                    // configuration file, to check levels by
  bool create = false;
  bool force = false;
  bool json = false;
};

int ListMembers(const Arguments& arguments);
// Checks that every member can be read whole and, without patterns, that the editor finds every
// part of the levels whole. Prints what Check Level finds in them, which is no damage: the exit
// code does not depend on it.
int VerifyMembers(const Arguments& arguments);
// Writes members into a folder, never outside of it, and over existing files only by force.
int ExtractMembers(const Arguments& arguments);
// Adds files, and folders with all that is in them, as one change.
int AddMembers(const Arguments& arguments);
int RemoveMembers(const Arguments& arguments);
int CompactMembers(const Arguments& arguments);
// Compares the members of two archives by their names and bytes.
int DiffArchives(const Arguments& arguments);

}  // namespace mw
