// Writes, removes, saves, rolls back and closes as the input says, on a disk that fails now and
// then, and reads everything back: the archive must always hold what a plain map of names to bytes
// holds, and after a failure all of what it held before.
#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/hooks.h"
#include "data/archive.h"
#include "fuzz/input_reader.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"
#include "platform/file.h"

namespace {

// A disk on which, while this lives, the change whose number the input tells fails, or no change;
// the changes that follow may fail too.
class FailingDisk {
 public:
  explicit FailingDisk(InputReader& input) {
    const std::size_t number = input.Byte() % 32;
    const bool stays = input.Flag();
    mw::hooks.diskFault = [this, number, stays](const mw::DiskChange& change) {
      ++changes_;
      const bool fails = number != 0 && (stays ? changes_ >= number : changes_ == number);
      failed_ = failed_ || fails;
      return fails ? std::optional(mw::DiskFault{ENOSPC, change.bytes.size() / 2}) : std::nullopt;
    };
  }
  ~FailingDisk() { mw::hooks.diskFault = nullptr; }
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;
  bool Failed() const { return failed_; }

 private:
  std::size_t changes_ = 0;
  bool failed_ = false;
};

using Contents = std::map<std::string, std::vector<std::uint8_t>, mw::LessNoCase>;

constexpr int kMaxGroups = 8;
constexpr std::size_t kSegment = 32768;

void ExpectContents(mw::Archive& archive, const Contents& contents) {
  Require(archive.Entries().size() == contents.size());
  for (const auto& [name, bytes] : contents) Require(archive.ReadMember(name) == bytes);
}

// Mostly small; sometimes of one or several segments.
std::size_t MemberSize(InputReader& input) {
  const std::size_t choice = input.Byte();
  const std::size_t few = input.Byte();
  if (choice < 0xF0) return few;
  return choice % 3 * kSegment + few;
}

std::vector<std::uint8_t> MemberBytes(InputReader& input) {
  std::vector<std::uint8_t> bytes(MemberSize(input));
  const std::size_t step = input.Byte();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(i * step >> 3);
  }
  const auto given = input.Part();
  std::copy_n(given.begin(), std::min(given.size(), bytes.size()), bytes.begin());
  return bytes;
}

void MakeOneChange(InputReader& input, mw::Archive& archive, Contents& contents) {
  constexpr std::array kNames{"a", "b", "B", "c\\d", "C/e"};
  const std::string name = mw::NormalMemberName(kNames[input.Byte() % kNames.size()]);
  switch (input.Byte() % 4) {
    case 0:
      Require(archive.RemoveMember(name) == (contents.erase(name) > 0));
      break;
    case 1:
      Require(archive.RemoveMembersWithPrefix(name.substr(0, 1)));
      std::erase_if(contents, [&](const auto& member) {
        return mw::StartsWithNoCase(member.first, name.substr(0, 1));
      });
      break;
    default:
      contents[name] = MemberBytes(input);
      Require(archive.WriteMember(name, contents[name]));
  }
}

// Closing compacts the archive; should that fail it is not compact, but whole.
void CloseAndOpen(InputReader& input, mw::Archive& archive, const std::string& path) {
  {
    const FailingDisk disk(input);
    Require(archive.Close() || disk.Failed());
  }
  Require(archive.Open(path, true));
}

void MakeOneGroup(InputReader& input, mw::Archive& archive, Contents& contents) {
  const Contents before = contents;
  Require(archive.BeginSave());
  const std::size_t changes = 1 + input.Byte() % 4;
  for (std::size_t i = 0; i < changes; ++i) MakeOneChange(input, archive, contents);
  ExpectContents(archive, contents);
  if (input.Flag()) {
    archive.RollbackSave();
    contents = before;
  } else {
    const FailingDisk disk(input);
    const bool saved = archive.CommitSave();
    Require(saved || disk.Failed());
    if (!saved) contents = before;
  }
  ExpectContents(archive, contents);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = PrivatePath("fuzz.vra");
  InputReader input(data, size);
  mw::Archive archive;
  Contents contents;
  std::filesystem::remove(path);
  if (input.Flag()) {
    Require(archive.Create(path));
  } else {
    Require(archive.CreateAside(path) && archive.PutInPlace());
  }
  Require(archive.SetMode(input.Flag() ? mw::StorageMode::Compressed : mw::StorageMode::Stored));
  for (int group = 0; group < kMaxGroups && !input.AtEnd(); ++group) {
    MakeOneGroup(input, archive, contents);
    if (input.Flag()) CloseAndOpen(input, archive, path);
  }
  CloseAndOpen(input, archive, path);
  ExpectContents(archive, contents);
  return 0;
}
