// What the commands print: results on the standard output, as text or JSON, and what went wrong and
// how far long work is on the standard error.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "data/archive.h"

namespace mw {

void PrintJson(const nlohmann::json& json);
// "mapwright-archive: <reason>" on the standard error; kUnreadable.
int Refuse(const std::string& reason);
// Opens it, or says why it cannot be.
bool OpenOrSay(Archive& archive, const std::string& path, bool writable);
// "12.3 MB": for people.
std::string SizeText(std::uint64_t bytes);

// A bar that grows on the standard error, when that is a terminal and work takes a while.
class Progress {
 public:
  explicit Progress(std::uint64_t total);
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  void Add(std::uint64_t done);
  // Takes the bar away until something is added: before a line is printed on the same terminal.
  void Clear();

 private:
  void Draw();

  std::uint64_t total_, done_ = 0;
  int shown_ = -1;  // percent
  std::uint32_t began_;
  bool terminal_;
};

}  // namespace mw
