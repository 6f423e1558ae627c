// Opens any bytes as an archive, reads every member, changes it and closes it: what it answers
// before and after must agree.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>

#include "data/archive.h"

namespace {

constexpr char kPath[] = "archive_fuzzer.vra";

void WriteInput(std::span<const std::uint8_t> input) {
  std::ofstream file(kPath, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(input.data()),
             static_cast<std::streamsize>(input.size()));
}

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool inPrivateFolder = [] {
    std::string folder =
        (std::filesystem::temp_directory_path() / "archive-fuzzer-XXXXXX").string();
    Require(mkdtemp(folder.data()) != nullptr);
    std::filesystem::current_path(folder);
    return true;
  }();
  Require(inPrivateFolder);
  WriteInput({data, size});
  mw::Archive archive;
  if (!archive.Open(kPath, true)) return 0;
  std::map<std::string, std::vector<std::uint8_t>, mw::LessNoCase> contents;
  for (const auto& [name, entry] : archive.Entries()) contents[name] = *archive.ReadMember(name);
  const std::uint8_t added[] = {1, 2, 3};
  Require(archive.WriteMember("fuzz/added", added));
  contents["fuzz/added"].assign(std::begin(added), std::end(added));
  Require(archive.Close() && archive.Open(kPath, false));
  Require(archive.Entries().size() == contents.size());
  for (const auto& [name, bytes] : contents) Require(archive.ReadMember(name) == bytes);
  return 0;
}
