#include "tools/archive/report.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "core/text.h"
#include "platform/clock.h"
#include "tools/archive/commands.h"

namespace mw {

void PrintJson(const nlohmann::json& json) {
  // Names are bytes; what is no UTF-8 in them is shown as the replacement character.
  const std::string text = json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
  std::printf("%s\n", text.c_str());
}

int Refuse(const std::string& reason) {
  std::fprintf(stderr, "mapwright-archive: %s\n", reason.c_str());
  return kUnreadable;
}

bool OpenOrSay(Archive& archive, const std::string& path, bool writable) {
  const bool open = archive.Open(path, writable);
  // A file that may not be written, or that an editor has open, is open for looking only.
  if (open && (!writable || archive.Writable())) return true;
  Refuse(path + ": " + (open ? archive.WriteProtection() : archive.Error()));
  return false;
}

std::string SizeText(std::uint64_t bytes) {
  constexpr double kStep = 1000;
  constexpr const char* kUnits[] = {"B", "kB", "MB", "GB"};
  auto size = static_cast<double>(bytes);
  std::size_t unit = 0;
  for (; size >= kStep && unit + 1 < std::size(kUnits); ++unit) size /= kStep;
  return FormatText(unit == 0 ? "%.0f %s" : "%.1f %s", size, kUnits[unit]);
}

Progress::Progress(std::uint64_t total)
    : total_(total), began_(MillisecondsNow()), terminal_(isatty(STDERR_FILENO) == 1) {}

void Progress::Clear() {
  if (shown_ >= 0) std::fprintf(stderr, "\r\33[K");
  shown_ = -1;
}

void Progress::Add(std::uint64_t done) {
  done_ += done;
  constexpr std::uint32_t kPatience = 300;  // milliseconds without a bar
  if (terminal_ && MillisecondsNow() - began_ > kPatience) Draw();
}

void Progress::Draw() {
  constexpr int kWidth = 40;
  constexpr std::uint64_t kWhole = 100;
  const auto percent =
      static_cast<int>(total_ == 0 ? kWhole : std::min(done_ * kWhole / total_, kWhole));
  if (percent == shown_) return;
  shown_ = percent;
  const auto filled = static_cast<std::size_t>(percent * kWidth / 100);
  std::fprintf(stderr, "\r[%s%s] %3i %%", std::string(filled, '#').c_str(),
               std::string(kWidth - filled, ' ').c_str(), percent);
}

}  // namespace mw
