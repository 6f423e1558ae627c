// A disk that goes wrong at a chosen change: tests of saving let every single change of a save be
// the one. While a `DiskFaults` lives, changes made through platform/file.h are counted from 0.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/bytes.h"
#include "platform/file.h"

namespace mw {

enum class FaultKind {
  Stop,   // the program is gone in the middle of the change: nothing later reaches the disk
  Fail,   // this one change fails, later ones succeed
  Full,   // from this change on there is no room for anything written
  Short,  // one write claims to be done, but only its first half is; writes alone are counted
};

class DiskFaults {
 public:
  DiskFaults(FaultKind kind, std::size_t change);
  ~DiskFaults();
  DiskFaults(const DiskFaults&) = delete;
  DiskFaults& operator=(const DiskFaults&) = delete;

  bool Hit() const { return hit_; }

 private:
  bool hit_ = false;
};

// The power is cut before a chosen change. What was not synced by then may be on the disk or not,
// sector by sector and name by name; `seed` chooses. Watches the plain files of one folder.
class PowerCut {
 public:
  PowerCut(std::filesystem::path folder, std::size_t change, std::uint32_t seed);
  ~PowerCut();
  PowerCut(const PowerCut&) = delete;
  PowerCut& operator=(const PowerCut&) = delete;

  bool Hit() const { return hit_; }
  // Leaves the folder as the power cut left it.
  void Restart();

 private:
  struct Pending {
    DiskChange::Kind kind;
    std::string name, renamedTo;
    std::size_t file;
    std::uint64_t offset;
    Bytes bytes;
  };

  std::optional<DiskFault> Watch(const DiskChange& change);
  void MakeLasting(const Pending& change);

  std::filesystem::path folder_;
  std::size_t left_;
  std::uint32_t seed_;
  bool hit_ = false;
  std::vector<Bytes> lasting_;                       // contents by file number
  std::map<std::string, std::size_t> lastingNames_;  // what is surely on the disk
  std::map<std::string, std::size_t> names_;         // what the program sees
  std::vector<Pending> pending_;
};

}  // namespace mw
