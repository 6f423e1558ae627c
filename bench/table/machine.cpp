#include "bench/table/machine.h"

#include <cstdlib>
#include <sched.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

double syncSeconds = 0;

cpu_set_t AllowedCores() {
  cpu_set_t cores;
  sched_getaffinity(0, sizeof cores, &cores);
  return cores;
}

const cpu_set_t allCores = AllowedCores();

}  // namespace

// Takes the place of the C library's in this program.
extern "C" int fsync(int descriptor) {
  int result = 0;
  syncSeconds +=
      mw::bench::Time([&] { result = static_cast<int>(syscall(SYS_fsync, descriptor)); });
  return result;
}

namespace mw::bench {

OnOneCore::OnOneCore() {
  cpu_set_t one;
  CPU_ZERO(&one);
  for (std::size_t core = 0; core < CPU_SETSIZE; ++core) {
    if (!CPU_ISSET(core, &allCores)) continue;
    CPU_SET(core, &one);
    break;
  }
  sched_setaffinity(0, sizeof one, &one);
}

OnOneCore::~OnOneCore() { sched_setaffinity(0, sizeof allCores, &allCores); }

ScratchFolder::ScratchFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "mapwright-bench-XXXXXX").string();
  if (!mkdtemp(name.data())) std::abort();
  folder_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

double SyncSeconds() { return syncSeconds; }

}  // namespace mw::bench
