#include "bench/table/machine.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sched.h>
#include <string>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

double diskSeconds = 0;
bool isDropped = false;  // bytes of a file, from memory: the next read waits for the disk

cpu_set_t AllowedCores() {
  cpu_set_t cores;
  sched_getaffinity(0, sizeof cores, &cores);
  return cores;
}

const cpu_set_t allCores = AllowedCores();

// Whether reads and writes of the file are ones of the disk.
bool IsStraight(int descriptor) {
  return (syscall(SYS_fcntl, descriptor, F_GETFL) & O_DIRECT) != 0;
}

double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace

// These take the place of the C library's in this program.
extern "C" {

int fsync(int descriptor) {
  int result = 0;
  diskSeconds +=
      mw::bench::Time([&] { result = static_cast<int>(syscall(SYS_fsync, descriptor)); });
  return result;
}

int posix_fadvise(int descriptor, off_t offset, off_t size, int advice) {
  isDropped = advice == POSIX_FADV_DONTNEED;
  return syscall(SYS_fadvise64, descriptor, offset, size, advice) == 0 ? 0 : errno;
}

ssize_t pread(int descriptor, void* buffer, std::size_t size, off_t offset) {
  ssize_t result = 0;
  const double time =
      mw::bench::Time([&] { result = syscall(SYS_pread64, descriptor, buffer, size, offset); });
  if (isDropped || IsStraight(descriptor)) diskSeconds += time;
  isDropped = false;
  return result;
}

ssize_t pwrite(int descriptor, const void* buffer, std::size_t size, off_t offset) {
  ssize_t result = 0;
  const double time =
      mw::bench::Time([&] { result = syscall(SYS_pwrite64, descriptor, buffer, size, offset); });
  if (IsStraight(descriptor)) diskSeconds += time;
  return result;
}

// A file that is gone gives back its place on the disk here. The processor's work for that counts,
// the wait does not.
int close(int descriptor) {
  int result = 0;
  const double before = ProcessorSeconds();
  const double time =
      mw::bench::Time([&] { result = static_cast<int>(syscall(SYS_close, descriptor)); });
  diskSeconds += std::max(0.0, time - (ProcessorSeconds() - before));
  return result;
}

}  // extern "C"

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

double DiskSeconds() { return diskSeconds; }

}  // namespace mw::bench
