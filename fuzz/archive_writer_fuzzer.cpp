// Writes, removes, saves, rolls back and closes as the input says, and reads everything back: the
// archive must always hold what a plain map of names to bytes holds.
#include <cstdlib>
#include <filesystem>
#include <fuzzer/FuzzedDataProvider.h>
#include <map>
#include <vector>

#include "data/archive.h"
#include "private_path.h"

namespace {

using Contents = std::map<std::string, std::vector<std::uint8_t>, mw::LessNoCase>;

const std::string& Path() {
  static const std::string path = PrivatePath("fuzz.vra");
  return path;
}

void Require(bool holds) {
  if (!holds) std::abort();
}

void ExpectContents(mw::Archive& archive, const Contents& contents) {
  Require(archive.Entries().size() == contents.size());
  for (const auto& [name, bytes] : contents) Require(archive.ReadMember(name) == bytes);
}

// A few kilobytes that depend on little input, so that members span several segments.
std::vector<std::uint8_t> MemberBytes(FuzzedDataProvider& input) {
  std::vector<std::uint8_t> bytes(input.ConsumeIntegralInRange<std::size_t>(0, 100000));
  const auto step = input.ConsumeIntegral<std::uint8_t>();
  const auto from = input.ConsumeIntegralInRange<std::size_t>(0, 100000);
  for (std::size_t i = from; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(i * step >> 3);
  return bytes;
}

void MakeOneChange(FuzzedDataProvider& input, mw::Archive& archive, Contents& contents) {
  const std::string name(1, input.PickValueInArray({'a', 'b', 'B', 'c', 'd'}));
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      Require(archive.RemoveMember(name) == (contents.erase(name) > 0));
      break;
    case 1:
      Require(archive.RemoveMembersWithPrefix(name));
      contents.erase(name);
      break;
    default:
      contents[name] = MemberBytes(input);
      Require(archive.WriteMember(name, contents[name]));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  mw::Archive archive;
  Contents contents, before;
  std::filesystem::remove(Path());
  Require(archive.Create(Path()));
  archive.SetMode(input.ConsumeBool() ? mw::StorageMode::Compressed : mw::StorageMode::Stored);
  while (input.remaining_bytes() > 0) {
    before = contents;
    Require(archive.BeginSave());
    const int changes = input.ConsumeIntegralInRange(1, 4);
    for (int i = 0; i < changes; ++i) MakeOneChange(input, archive, contents);
    ExpectContents(archive, contents);
    if (input.ConsumeBool()) {
      Require(archive.CommitSave());
    } else {
      archive.RollbackSave();
      contents = before;
    }
    ExpectContents(archive, contents);
    if (input.ConsumeBool()) Require(archive.Close() && archive.Open(Path(), true));
  }
  Require(archive.Close() && archive.Open(Path(), false));
  ExpectContents(archive, contents);
  return 0;
}
