#include "objects/object_catalogue.h"

#include <algorithm>
#include <string>

#include "core/text.h"
#include "data/mod_config.h"
#include "data/script.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr std::size_t kLineBuffer = 256;
constexpr std::size_t kShortestLine = 3;
constexpr std::string_view kSeparators = "][=(,)/";

bool IsPassedOver(std::string_view line) {
  return line.size() < kShortestLine || line.front() == '/';
}

// False when the catalogue has no room for another category.
bool AddCategory(std::string_view line, ObjectCatalogue& catalogue) {
  if (catalogue.categoryCount >= kMaxCategories) return false;
  const auto name = Tokenizer(line).Next(kSeparators);
  catalogue.categories[static_cast<std::size_t>(catalogue.categoryCount++)] = name.value_or("");
  return true;
}

// "name=kind(mesh)". False when the catalogue has no room for another entry.
bool AddEntry(std::string_view line, ObjectCatalogue& catalogue) {
  if (catalogue.entryCount >= kMaxCatalogueEntries) return false;
  Tokenizer tokens(line);
  const auto name = tokens.Next(kSeparators);
  if (!name) return true;
  CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(catalogue.entryCount++)];
  entry.name = LowerCase(*name);
  entry.category = catalogue.categoryCount - 1;
  if (tokens.Next(kSeparators) == "TreeMesh") entry.meshKind = MeshKind::TreeMesh;
  entry.meshName = tokens.Next(kSeparators).value_or("");
  return true;
}

ObjectCatalogue ReadObjectList(const std::string& path) {
  const auto file = ReadWholeFile(path);
  if (!file) {
    SetStatusText(1, FormatText("Could not open object list %s", path.c_str()));
    return {};
  }
  return ParseObjectList({reinterpret_cast<const char*>(file->data()), file->size()});
}

// Meshes stay in memory when the list is read again; their entries get their boxes back.
void RestoreBoxesOfCachedMeshes() {
  for (const CachedMesh& mesh : objectStore.meshes) {
    const int found = FindCatalogueEntry(mesh.name);
    if (found < 0) continue;
    CatalogueEntry& entry = objectStore.catalogue.entries[static_cast<std::size_t>(found)];
    entry.boxA = mesh.boxA;
    entry.boxB = mesh.boxB;
  }
}

}  // namespace

std::string_view ObjectCatalogue::CategoryOf(int entry) const {
  if (entry < 0 || entry >= entryCount) return {};
  const std::int32_t category = entries[static_cast<std::size_t>(entry)].category;
  return category < 0 ? std::string_view() : categories[static_cast<std::size_t>(category)].View();
}

ObjectCatalogue ParseObjectList(std::string_view text) {
  ObjectCatalogue catalogue;
  bool hasRoom = true;
  while (hasRoom && !text.empty()) {
    std::string_view line = TakeLine(text, kLineBuffer);
    line = line.substr(0, line.find('\0'));
    if (IsPassedOver(line)) continue;
    hasRoom = line.front() == '[' ? AddCategory(line, catalogue) : AddEntry(line, catalogue);
  }
  return catalogue;
}

void LoadObjectCatalogue() {
  if (modConfig.ObjectsList.empty()) return;
  objectStore.catalogue = ReadObjectList(modConfig.ObjectsList.String());
  RestoreBoxesOfCachedMeshes();
  FindObjectEntriesAgain();
}

int FindCatalogueEntry(std::string_view name) {
  if (name.empty()) return -1;
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  for (int k = 0; k < catalogue.entryCount; ++k) {
    const CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(k)];
    if (EqualNoCase(entry.name, name) || EqualNoCase(entry.meshName, name)) return k;
  }
  return -1;
}

}  // namespace mw
