// Recovery files: any bytes, which must be refused or read without harm; and those that the input's
// members and texts make, which must be read as they were written, whole and with a byte changed.
#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "data/archive.h"
#include "data/recovery_file.h"
#include "fuzz/input_reader.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"
#include "platform/disk.h"

namespace {

std::string Text(std::span<const std::uint8_t> bytes) { return {bytes.begin(), bytes.end()}; }

bool Equal(const mw::RecoveryInfo& a, const mw::RecoveryInfo& b) {
  return a.mod == b.mod && a.level == b.level && a.time == b.time;
}

// A line of the file: the texts that the editor puts there are never empty and have one line.
std::string Line(InputReader& input) {
  std::string line = Text(input.Part());
  std::erase(line, '\n');
  return line.empty() ? "-" : line;
}

std::vector<mw::GameMember> Members(InputReader& input) {
  constexpr std::array kNames{"L/Init.con", "L/Conquest/ControlPoints.con", "L/Heightmap.raw",
                              "L/Textures/Tx00x00.dds"};
  std::vector<mw::GameMember> members;
  const std::size_t count = input.Byte() % (kNames.size() + 1);
  for (std::size_t i = 0; i < count; ++i) {
    const auto data = input.Part();
    members.push_back({kNames[i], {data.begin(), data.end()}});
  }
  return members;
}

void RequireMembers(const std::string& path, const std::vector<mw::GameMember>& members) {
  mw::Archive archive;
  Require(archive.Open(path, false));
  Require(archive.Entries().size() == members.size() + 1);
  for (const mw::GameMember& member : members) {
    Require(archive.ReadMember(member.name) == member.data);
  }
}

void WriteAndRead(const std::string& path, InputReader& input) {
  const mw::RecoveryInfo info{Line(input), Line(input), Line(input)};
  const auto members = Members(input);
  std::string error;
  Require(mw::WriteRecoveryFile(path, info, members, error));
  const auto read = mw::ReadRecoveryInfo(path);
  Require(read && Equal(*read, info));
  RequireMembers(path, members);

  auto file = mw::ReadWholeFile(path);
  Require(file.has_value());
  const std::size_t at = input.NumberBelow(file->size());
  (*file)[at] = static_cast<std::uint8_t>((*file)[at] + input.Byte());
  file->resize(file->size() - std::min(input.Byte(), file->size()));
  WriteFile(path, *file);
  const auto changed = mw::ReadRecoveryInfo(path);
  Require(!changed || Equal(*changed, info));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = PrivatePath("fuzz.recovery");
  InputReader input(data, size);
  if (input.Flag()) {
    WriteAndRead(path, input);
  } else {
    WriteFile(path, input.Bytes(size));
    mw::ReadRecoveryInfo(path);
  }
  return 0;
}
