#include "sample/installation.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
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

struct ArchivePlan {
  const char* path;  // in the game folder
  StorageMode mode;
  std::vector<Member> (*members)();
};
// Textures hardly shrink, so they are stored as they are.
constexpr ArchivePlan kArchives[] = {
    {"Mods/varnhold/Archives/objects.vra", StorageMode::Compressed, ObjectMembers},
    {"Mods/varnhold/Archives/standardMesh.vra", StorageMode::Compressed, StandardMeshMembers},
    {"Mods/varnhold/Archives/treeMesh.vra", StorageMode::Compressed, TreeMeshMembers},
    {"Mods/varnhold/Archives/texture.vra", StorageMode::Stored, TextureMembers},
    {"Mods/varnhold/Archives/varnhold/levels/Harbour_Point.vra", StorageMode::Compressed,
     [] { return LevelMembers(MakeHarbourPoint(), kTileSide); }},
    {"Mods/varnhold/Archives/varnhold/levels/Stone_Ridge.vra", StorageMode::Compressed,
     [] { return LevelMembers(MakeStoneRidge(), kTileSide); }}};

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

bool WriteArchives(const Installation& installation) {
  return std::all_of(std::begin(kArchives), std::end(kArchives), [&](const ArchivePlan& plan) {
    return WriteArchive((installation.gameFolder / plan.path).string(), plan.mode, plan.members());
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

bool WriteInstallation(const Installation& installation) {
  const std::filesystem::path manifest = installation.workingFolder / kManifest;
  const std::filesystem::path unfinished = installation.workingFolder / kUnfinished;
  return CreateFolders(installation) && WriteTextFile(unfinished, "") && WriteTexts(installation) &&
         WriteArchives(installation) &&
         WriteTextFile(manifest, Joined(ManifestLines(installation))) && Remove(unfinished);
}

}  // namespace mw::sample
