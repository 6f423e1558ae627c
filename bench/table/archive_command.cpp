#include "bench/table/archive_command.h"

#include <cstdlib>
#include <sys/wait.h>

#include "bench/table/table.h"
#include "core/text.h"
#include "data/archive.h"

namespace mw::bench {
namespace {

// For the shell: a program, what it shall do, and with which archive.
std::string Command(const std::string& program, const char* verb,
                    const std::filesystem::path& archive) {
  return FormatText("'%s' %s '%s'", program.c_str(), verb, archive.c_str());
}

}  // namespace

void ReadAllMembers(const std::filesystem::path& archive) {
  Archive opened;
  Require(opened.Open(archive.string(), false), "opening");
  for (const auto& [name, entry] : opened.Entries()) {
    Require(opened.ReadMember(name)->size() == entry.size, "reading a member");
  }
}

double TimeCommand(const std::string& command) {
  return Time([&] {
    const int status = std::system(command.c_str());
    // 1: there is something to tell, such as scripts that a level lacks.
    Require(WIFEXITED(status) && WEXITSTATUS(status) <= 1, command.c_str());
  });
}

std::string ArchiveCommand(const char* verb, const std::filesystem::path& archive) {
  return Command(MAPWRIGHT_ARCHIVE, verb, archive);
}

void AddVerifying(const std::filesystem::path& archive, const std::string& what) {
  const std::string verify = ArchiveCommand("verify", archive) + " >/dev/null";
  const std::string read =
      Command(std::filesystem::read_symlink("/proc/self/exe").string(), kReadMembers, archive);
  const Times times = Compare(
      15, [&] { return TimeCommand(verify); }, [&] { return TimeCommand(read); });
  AddTimes("mapwright-archive verify: " + what, "a program that reads all members", times, 1.1);
}

}  // namespace mw::bench
