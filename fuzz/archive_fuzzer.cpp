// Opens any bytes as an archive, reads every member, changes it and closes it: what it answers
// before and after must agree.
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "data/archive.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"

namespace {

using Contents = std::map<std::string, std::vector<std::uint8_t>, mw::LessNoCase>;

// Members may share their stored bytes, so together they can be far larger than the archive.
constexpr std::size_t kMaxContents = 16 << 20;

// Nothing when the members together are too large to keep.
std::optional<Contents> ReadAll(mw::Archive& archive) {
  Contents contents;
  std::size_t total = 0;
  for (const auto& [name, entry] : archive.Entries()) {
    auto bytes = archive.ReadMember(name);
    Require(bytes.has_value() && bytes->size() <= entry.size);
    total += bytes->size();
    if (total > kMaxContents) return std::nullopt;
    contents[std::string(name)] = *std::move(bytes);
  }
  return contents;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = PrivatePath("fuzz.vra");
  WriteFile(path, {data, size});
  mw::Archive archive;
  if (!archive.Open(path, true)) return 0;
  auto contents = ReadAll(archive);
  if (!contents) return 0;
  const std::uint8_t added[] = {1, 2, 3};
  Require(archive.WriteMember("fuzz/added", added));
  (*contents)["fuzz/added"].assign(std::begin(added), std::end(added));
  Require(archive.Close() && archive.Open(path, false));
  Require(ReadAll(archive) == contents);
  return 0;
}
