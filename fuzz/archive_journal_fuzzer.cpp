// Opens and changes an archive beside which any bytes lie as its journal. Half of them get the
// right mark and checksum, so that the parser behind these is reached.
#include <algorithm>
#include <filesystem>
#include <lzo/lzoconf.h>
#include <span>
#include <string_view>
#include <vector>

#include "core/bytes.h"
#include "data/archive.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"
#include "platform/disk.h"

namespace {

constexpr std::string_view kMark = "MWJRNL1\n";
constexpr std::size_t kCheckedFrom = kMark.size() + 4;

void MakeWhole(mw::Bytes& journal) {
  journal.resize(std::max(journal.size(), kCheckedFrom));
  std::ranges::copy(kMark, journal.begin());
  const auto checked = std::span(journal).subspan(kCheckedFrom);
  const lzo_uint32_t sum = lzo_crc32(0, checked.data(), checked.size());
  for (std::size_t i = 0; i < 4; ++i) {
    journal[kMark.size() + i] = static_cast<std::uint8_t>(sum >> (8 * i));
  }
}

// An empty archive, followed by bytes that belong to nothing.
mw::Bytes EmptyArchive() {
  mw::Bytes archive(200);
  archive[0] = 156;
  return archive;
}

// Nothing is saved while a journal of another state lies there; set aside, it is kept whole.
void SaveDespiteJournal(mw::Archive& archive, const std::string& path, const mw::Bytes& journal) {
  const std::uint8_t added[] = {1, 2, 3};
  const bool inTheWay = !archive.StrayJournal().empty();
  Require(archive.WriteMember("added", added) == !inTheWay);
  if (!inTheWay) return;
  Require(archive.SetStrayJournalAside() && archive.WriteMember("added", added));
  Require(mw::ReadWholeFile(path + "-journal.old") == journal);
  std::filesystem::remove(path + "-journal.old");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = PrivatePath("fuzz.vra");
  mw::Bytes journal(data, data + size);
  if (size % 2 == 0) MakeWhole(journal);
  WriteFile(path, EmptyArchive());
  WriteFile(path + "-journal", journal);
  mw::Archive archive;
  const bool opened = archive.Open(path, true);
  // The archive never grows beyond what it was: a journal only puts bytes back.
  Require(std::filesystem::file_size(path) <= EmptyArchive().size());
  if (opened) SaveDespiteJournal(archive, path, journal);
  return 0;
}
