// Opens any bytes as an archive, reads every member, changes it and closes it: what it answers
// before and after must agree.
#include <cstdlib>
#include <fstream>
#include <map>
#include <span>
#include <vector>

#include "data/archive.h"
#include "private_path.h"

namespace {

const std::string& Path() {
  static const std::string path = PrivatePath("fuzz.vra");
  return path;
}

void WriteInput(std::span<const std::uint8_t> input) {
  std::ofstream file(Path(), std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(input.data()),
             static_cast<std::streamsize>(input.size()));
}

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  WriteInput({data, size});
  mw::Archive archive;
  if (!archive.Open(Path(), true)) return 0;
  std::map<std::string, std::vector<std::uint8_t>, mw::LessNoCase> contents;
  for (const auto& [name, entry] : archive.Entries()) contents[name] = *archive.ReadMember(name);
  const std::uint8_t added[] = {1, 2, 3};
  Require(archive.WriteMember("fuzz/added", added));
  contents["fuzz/added"].assign(std::begin(added), std::end(added));
  Require(archive.Close() && archive.Open(Path(), false));
  Require(archive.Entries().size() == contents.size());
  for (const auto& [name, bytes] : contents) Require(archive.ReadMember(name) == bytes);
  return 0;
}
