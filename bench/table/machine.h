// What the rows need of the machine: one core or all of them, a folder to write in, and the time
// that is spent waiting for the disk.
#pragma once

#include <filesystem>
#include <string_view>

#include "bench/table/table.h"

namespace mw::bench {

// This thread, and those that it starts, stay on one core while this lives.
class OnOneCore {
 public:
  OnOneCore();
  ~OnOneCore();
  OnOneCore(const OnOneCore&) = delete;
  OnOneCore& operator=(const OnOneCore&) = delete;
};

// An empty folder that goes with this object.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  std::filesystem::path File(std::string_view name) const { return folder_ / name; }

 private:
  std::filesystem::path folder_;
};

// Seconds that were spent so far waiting for the disk to have what was written, and reading it back
// from there.
double DiskSeconds();

// Seconds of the work without those.
template <typename Work>
double TimeWithoutDisk(Work work) {
  const double before = DiskSeconds();
  const double time = Time(work);
  return time - (DiskSeconds() - before);
}

}  // namespace mw::bench
