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

// Seconds that fsync has taken so far.
double SyncSeconds();

// Seconds of the work without those that it waited for fsync.
template <typename Work>
double TimeWithoutSync(Work work) {
  const double before = SyncSeconds();
  const double time = Time(work);
  return time - (SyncSeconds() - before);
}

}  // namespace mw::bench
