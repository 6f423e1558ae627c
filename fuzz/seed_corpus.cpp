// seed_corpus GAME WORKING CORPUS: fills the corpus folder of every fuzz target from the sample
// game, with what is small enough to be mutated well.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "data/archive.h"
#include "platform/disk.h"

namespace {

namespace fs = std::filesystem;
using mw::Archive;

constexpr std::size_t kLargestSeed = 64 * 1024;
// Scripts that repeat themselves are cut: their first records are enough to mutate.
constexpr std::size_t kFirstRecords = 700;

constexpr std::array<std::string_view, 3> kModeFolders{"conquest", "ctf", "tdm"};

// Index of the game mode whose folder holds the file, or -1.
int ModeOf(const fs::path& file) {
  const std::string folder = file.parent_path().filename().string();
  const auto found = std::ranges::find_if(
      kModeFolders, [&](std::string_view mode) { return mw::EqualNoCase(mode, folder); });
  return found == kModeFolders.end() ? -1 : static_cast<int>(found - kModeFolders.begin());
}

bool IsObjectScript(const fs::path& file) {
  return mw::EqualNoCase(file.filename().string(), "StaticObjects.con");
}

// The fuzz target that reads such a file, or an empty text.
std::string_view TargetFor(const fs::path& file) {
  const std::string extension = file.extension().string();
  if (ModeOf(file) >= 0 || IsObjectScript(file)) return {};  // AddLevelScripts takes these
  if (mw::EqualNoCase(extension, ".con")) return "settings";
  if (mw::EqualNoCase(extension, ".dds")) return "dds";
  if (mw::EqualNoCase(extension, ".bmp")) return "bmp";
  if (mw::EqualNoCase(extension, ".cfg")) return "mod_config";
  if (mw::EqualNoCase(extension, ".dat")) return "texture_set";
  if (mw::EqualNoCase(extension, ".raw")) return "heightmap";
  if (mw::EqualNoCase(extension, ".sm")) return "standard_mesh";
  if (mw::EqualNoCase(extension, ".tm")) return "tree_mesh";
  if (mw::EqualNoCase(extension, ".rs")) return "shader_file";
  if (mw::EqualNoCase(extension, ".lst")) return "object_list";
  return {};
}

class Corpus {
 public:
  explicit Corpus(fs::path folder) : folder_(std::move(folder)) {}

  void Add(std::string_view target, std::span<const std::uint8_t> bytes) {
    if (target.empty() || bytes.size() > kLargestSeed) return;
    const fs::path folder = folder_ / target;
    fs::create_directories(folder);
    const fs::path file = folder / ("seed-" + std::to_string(count_++));
    if (!mw::WriteWholeFile(file.string(), bytes)) failed_ = true;
  }

  int Count() const { return count_; }
  bool Failed() const { return failed_; }

 private:
  fs::path folder_;
  int count_ = 0;
  bool failed_ = false;
};

// An archive of the members that are small enough, in both storage modes.
void AddSmallArchives(Archive& from, Corpus& corpus) {
  for (const mw::StorageMode mode : {mw::StorageMode::Stored, mw::StorageMode::Compressed}) {
    const fs::path path = fs::temp_directory_path() / "mapwright-seed.vra";
    fs::remove(path);
    Archive small;
    if (!small.Create(path.string()) || !small.SetMode(mode)) return;
    for (const auto& [name, entry] : from.Entries()) {
      if (entry.size > kLargestSeed / 16) continue;
      if (const auto bytes = from.ReadMember(name)) small.WriteMember(name, *bytes);
    }
    small.Close();
    if (const auto bytes = mw::ReadWholeFile(path.string())) corpus.Add("archive", *bytes);
    fs::remove(path);
  }
}

// The beginnings of a level's object script and of its entity scripts; these put together the way
// their fuzz target takes them apart.
void AddLevelScripts(Archive& archive, Corpus& corpus) {
  std::array<std::vector<std::uint8_t>, kModeFolders.size()> modes;
  for (const auto& [name, entry] : archive.Entries()) {
    const int mode = ModeOf(name);
    if (mode < 0 && !IsObjectScript(name)) continue;
    auto bytes = archive.ReadMember(name);
    if (!bytes) continue;
    bytes->resize(std::min(bytes->size(), kFirstRecords));
    if (mode < 0) {
      corpus.Add("static_objects", *bytes);
    } else {
      auto& scripts = modes[static_cast<std::size_t>(mode)];
      scripts.insert(scripts.end(), bytes->begin(), bytes->end());
    }
  }
  std::vector<std::uint8_t> seed;
  for (const auto& scripts : modes) {
    if (!seed.empty()) seed.push_back(0xFF);
    seed.insert(seed.end(), scripts.begin(), scripts.end());
  }
  if (!seed.empty()) corpus.Add("entity_scripts", seed);
}

void AddArchive(const fs::path& path, Corpus& corpus) {
  Archive archive;
  if (!archive.Open(path.string(), false)) return;
  for (const auto& [name, entry] : archive.Entries()) {
    const std::string_view target = TargetFor(name);
    if (target.empty() || entry.size > kLargestSeed) continue;
    if (const auto bytes = archive.ReadMember(name)) corpus.Add(target, *bytes);
  }
  AddLevelScripts(archive, corpus);
  AddSmallArchives(archive, corpus);
}

void AddFolder(const fs::path& folder, Corpus& corpus) {
  for (const auto& file : fs::recursive_directory_iterator(folder)) {
    if (!file.is_regular_file()) continue;
    const std::string extension = file.path().extension().string();
    if (mw::EqualNoCase(extension, ".vra")) {
      AddArchive(file.path(), corpus);
    } else if (const auto target = TargetFor(file.path()); !target.empty()) {
      if (const auto bytes = mw::ReadWholeFile(file.path().string())) corpus.Add(target, *bytes);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: seed_corpus GAME WORKING CORPUS\n");
    return 2;
  }
  Corpus corpus(argv[3]);
  for (const char* folder : {argv[1], argv[2]}) AddFolder(folder, corpus);
  if (corpus.Failed() || corpus.Count() == 0) {
    std::fprintf(stderr, "seed_corpus: no seeds could be written to %s\n", argv[3]);
    return 1;
  }
  return 0;
}
