// Opens an archive beside which any bytes lie as its journal. Half of them get the right mark and
// checksum, so that the parser behind these is reached.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <lzo/lzoconf.h>
#include <span>
#include <string_view>
#include <vector>

#include "data/archive.h"
#include "private_path.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kMark = "MWJRNL1\n";
constexpr std::size_t kCheckedFrom = kMark.size() + 4;

void MakeWhole(Bytes& journal) {
  journal.resize(std::max(journal.size(), kCheckedFrom));
  std::ranges::copy(kMark, journal.begin());
  const auto checked = std::span(journal).subspan(kCheckedFrom);
  const lzo_uint32_t sum = lzo_crc32(0, checked.data(), checked.size());
  for (std::size_t i = 0; i < 4; ++i) {
    journal[kMark.size() + i] = static_cast<std::uint8_t>(sum >> (8 * i));
  }
}

void Write(const std::string& path, std::span<const std::uint8_t> bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

// An empty archive, followed by bytes that belong to nothing.
Bytes EmptyArchive() {
  Bytes archive(200);
  archive[0] = 156;
  return archive;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = PrivatePath("fuzz.vra");
  Bytes journal(data, data + size);
  if (size % 2 == 0) MakeWhole(journal);
  Write(path, EmptyArchive());
  Write(path + "-journal", journal);
  mw::Archive archive;
  archive.Open(path, true);
  // The archive never grows beyond what it was: a journal only puts bytes back.
  if (std::filesystem::file_size(path) > EmptyArchive().size()) std::abort();
  return 0;
}
