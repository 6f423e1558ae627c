#include "sample/installation.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/mod_files.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "sample/content_archives.h"
#include "sample/level_members.h"
#include "sample/settings_scripts.h"

namespace mw::sample {
namespace {

// A line for every file written, with a sum of its bytes.
constexpr char kManifest[] = "sample.manifest";
// Is there while files are being written. A build that is interrupted takes its outputs away, the
// manifest among them, but not this.
constexpr char kUnfinished[] = "sample.unfinished";

constexpr char kInitScript[] = "Mods/varnhold/Init.con";
constexpr char kLevelsFolder[] = "Mods/varnhold/Archives/varnhold/levels";
constexpr char kModSettings[] = "Mods/varnhold/Settings";  // where a mod's map list is kept
constexpr const char* kWorkingFiles[] = {"varnhold.cfg", "mpwr.cfg", "varnhold.lst"};
// Where a desktop looks for the settings of installed programs, with this folder among its
// configuration folders.
constexpr char kSettings[] = "settings/Quorrin/Varnhold.conf";
constexpr char kSettingsText[] = "[General]\nINSTALLEDVERSION=1.04\n";
constexpr int kTileSide = 512;  // pixels

using Advance = std::function<void(double part)>;

struct ArchivePlan {
  const char* path;  // in the game folder
  StorageMode mode;
  int percent;  // of all the work, when it is written
  std::vector<Member> (*members)(const Advance& advance);
};
// Textures hardly shrink, so they are stored as they are.
constexpr ArchivePlan kArchives[] = {
    {"Mods/varnhold/Archives/objects.vra", StorageMode::Compressed, 0,
     [](const Advance&) { return ObjectMembers(); }},
    {"Mods/varnhold/Archives/standardMesh.vra", StorageMode::Compressed, 1,
     [](const Advance&) { return StandardMeshMembers(); }},
    {"Mods/varnhold/Archives/treeMesh.vra", StorageMode::Compressed, 1,
     [](const Advance&) { return TreeMeshMembers(); }},
    {"Mods/varnhold/Archives/texture.vra", StorageMode::Stored, 7,
     [](const Advance&) { return TextureMembers(); }},
    {"Mods/varnhold/Archives/varnhold/levels/Harbour_Point.vra", StorageMode::Compressed, 29,
     [](const Advance& advance) { return LevelMembers(MakeHarbourPoint(), kTileSide, advance); }},
    {"Mods/varnhold/Archives/varnhold/levels/Stone_Ridge.vra", StorageMode::Compressed, 100,
     [](const Advance& advance) { return LevelMembers(MakeStoneRidge(), kTileSide, advance); }}};

std::vector<std::filesystem::path> FilesOf(const Installation& installation) {
  std::vector<std::filesystem::path> files{installation.gameFolder / kInitScript};
  for (const ArchivePlan& plan : kArchives) files.push_back(installation.gameFolder / plan.path);
  for (const char* file : kWorkingFiles) files.push_back(installation.workingFolder / file);
  return files;
}

// FNV-1a, 64 bits (Fowler, Noll, Vo).
std::uint64_t SumOf(std::span<const std::uint8_t> bytes) {
  std::uint64_t sum = 14695981039346656037u;
  for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 1099511628211u;
  return sum;
}

// A line for every file that exists.
std::vector<std::string> ManifestLines(const Installation& installation) {
  std::vector<std::string> lines;
  for (const std::filesystem::path& file : FilesOf(installation)) {
    const auto bytes = ReadWholeFile(file.string());
    if (!bytes) continue;
    lines.push_back(FormatText("%016llx %s\n", static_cast<unsigned long long>(SumOf(*bytes)),
                               file.filename().string().c_str()));
  }
  return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

bool WriteTextFile(const std::filesystem::path& path, const std::string& text) {
  std::string error;
  if (WriteWholeFile(path.string(), std::string_view(text), &error)) return true;
  std::fprintf(stderr, "%s could not be written: %s\n", path.string().c_str(), error.c_str());
  return false;
}

bool Remove(const std::filesystem::path& path) {
  std::string error;
  if (RemoveFile(path, &error)) return true;
  std::fprintf(stderr, "%s could not be removed: %s\n", path.string().c_str(), error.c_str());
  return false;
}

bool CreateFolders(const Installation& installation) {
  for (const std::filesystem::path& folder :
       {installation.gameFolder / kLevelsFolder, installation.gameFolder / kModSettings,
        (installation.workingFolder / kSettings).parent_path()}) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error) continue;
    std::fprintf(stderr, "%s could not be created: %s\n", folder.string().c_str(),
                 error.message().c_str());
    return false;
  }
  return true;
}

bool WriteTexts(const Installation& installation) {
  const std::string gamePath = BackslashPath((installation.gameFolder / "").string());
  if (gamePath.size() > kMaxSavedGamePath) {
    std::fprintf(stderr, "%s is too long for a configuration file.\n",
                 installation.gameFolder.string().c_str());
    return false;
  }
  const std::filesystem::path& work = installation.workingFolder;
  return WriteTextFile(work / "varnhold.cfg",
                       ModConfigText(gamePath, "The base game as a mod of its own.")) &&
         WriteTextFile(work / "mpwr.cfg",
                       ModConfigText(gamePath, "The template that new mods start from.")) &&
         WriteTextFile(work / "varnhold.lst", ObjectListText()) &&
         WriteTextFile(work / kSettings, kSettingsText) &&
         WriteTextFile(installation.gameFolder / kInitScript,
                       WithCarriageReturns(ModInitScript("varnhold")));
}

bool WriteArchives(const Installation& installation, const ShowProgress& show) {
  int before = 0;
  return std::all_of(std::begin(kArchives), std::end(kArchives), [&](const ArchivePlan& plan) {
    const std::filesystem::path path = installation.gameFolder / plan.path;
    const auto advance = [&](double part) {
      show(before + static_cast<int>((plan.percent - before) * part), path.filename().string());
    };
    advance(0);
    const bool written = WriteArchive(path.string(), plan.mode, plan.members(advance));
    before = plan.percent;
    return written;
  });
}

}  // namespace

bool IsEdited(const Installation& installation) {
  const std::vector<std::string> lines = ManifestLines(installation);
  if (lines.empty()) return false;
  if (FileExists((installation.workingFolder / kUnfinished).string())) return false;
  const auto bytes = ReadWholeFile((installation.workingFolder / kManifest).string());
  if (!bytes) return true;
  const std::string manifest(bytes->begin(), bytes->end());
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
    return manifest.find(line) == std::string::npos;
  });
}

bool WriteInstallation(const Installation& installation, const ShowProgress& show) {
  const std::filesystem::path manifest = installation.workingFolder / kManifest;
  const std::filesystem::path unfinished = installation.workingFolder / kUnfinished;
  return CreateFolders(installation) && WriteTextFile(unfinished, "") && WriteTexts(installation) &&
         WriteArchives(installation, show) &&
         WriteTextFile(manifest, Joined(ManifestLines(installation))) && Remove(unfinished);
}

}  // namespace mw::sample
