#include "objects/level_story.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "support/golden.h"
#include "support/prompts.h"

namespace mw {

std::ostream& operator<<(std::ostream& out, const Vector3& v) {
  return out << v.x << '/' << v.y << '/' << v.z;
}

namespace {

// The script commands of a record, without what stands before their points.
template <class Record>
std::string CommandsOf(const Record& record) {
  GameFile file;
  file.writing = true;
  record.Write(file);
  std::istringstream script(std::string(file.data.begin(), file.data.end()));
  std::string commands;
  for (std::string line; std::getline(script, line);)
    commands += (commands.empty() ? "" : ", ") + line.substr(line.find('.') + 1);
  constexpr std::string_view kNoFraction = ".000000";
  for (auto at = commands.find(kNoFraction); at != std::string::npos;)
    commands.erase(at, kNoFraction.size()), at = commands.find(kNoFraction);
  return NameWithModes("", record.modes) + ": " + commands;
}

void ListEntities(std::ostream& out) {
  for (const EntityKind kind : kEntityKinds) {
    const std::string name = kind == EntityKind::SoldierSpawn  ? "soldier spawn"
                             : kind == EntityKind::ObjectSpawn ? "object spawn"
                                                               : "control point";
    for (const auto& made : entities.Of(kind).templates)
      out << name << " template of group " << made->group << CommandsOf(*made) << '\n';
    for (const auto& placed : entities.Of(kind).instances) {
      const SpawnTemplate* const from = TemplateOf(*placed);
      out << name << CommandsOf(*placed) << ", from "
          << (from ? NameWithModes(from->name, from->modes) : "no template")
          << (placed->selected ? ", selected\n" : "\n");
    }
  }
  for (const SpawnGroup& group : entities.spawnGroups)
    out << "spawn group" << CommandsOf(group) << '\n';
  out << "next spawn id " << entities.nextSpawnId << '\n';
}

void ListObjects(std::ostream& out) {
  for (const StaticObject& object : objectStore.objects) {
    out << "object " << object.name.String() << " at " << object.position << " turned "
        << object.rotation;
    if (object.scaleGiven) out << " scaled " << object.scale;
    if (object.colorGiven) out << " coloured " << object.colour;
    out << ", entry " << object.catalogueIndex << (object.unknown ? ", unknown" : "") << ", mesh "
        << object.meshIndex << (object.lists.back() != 0 ? " with its picture" : "")
        << (object.selected ? ", selected\n" : "\n");
  }
}

void ListTree(std::ostream& out) {
  for (const auto& [item, record] : std::map(levelTree.items.begin(), levelTree.items.end())) {
    if (record.children.empty()) continue;
    out << "tree, " << NumberedText(item) << ':';
    for (const TreeItem child : record.children) out << " | " << NumberedText(child);
    out << '\n';
  }
}

void ListReport(std::ostream& out) {
  for (std::size_t i = 0; i < openLevel.loadReport.parts.size(); ++i) {
    const auto part = static_cast<LevelPart>(i);
    if (!MayWrite(part)) out << "kept on disk: " << NameOf(part) << '\n';
  }
  for (const std::string& line : openLevel.loadReport.lines) out << "report: " << line << '\n';
}

std::vector<std::string> Listing() {
  std::stringstream text;
  ListEntities(text);
  ListObjects(text);
  ListTree(text);
  const ObjectStore& store = objectStore;
  text << "tool " << static_cast<int>(store.tool) << (store.toolsEnabled ? " of all" : "")
       << "\nshown: objects " << store.showStandardMeshes << store.showTreeMeshes << ", entities "
       << store.showObjectSpawns << store.showSoldierSpawns << store.showControlPoints
       << NameWithModes("", entities.ModeFilter) << "\nsnaps " << store.snapToGround
       << ", view mode " << static_cast<int>(store.viewMode) << "\nhovered object "
       << store.lastHoveredObject << ", entity " << entities.hovered.index << "\nsomething copied "
       << editor.somethingCopied << "\npivot " << store.SelectionPivot.x << ' '
       << store.SelectionPivot.z << "\ncamera at " << camera.position << ", pitch " << camera.pitch
       << '\n';
  ListReport(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

// Those that `others` has not, each as often as it has more of them.
std::string Missing(const std::vector<std::string>& lines, std::vector<std::string> others,
                    const char* mark) {
  std::string missing;
  for (const std::string& line : lines) {
    const auto same = std::ranges::find(others, line);
    if (same == others.end()) {
      missing += mark + line + '\n';
    } else {
      others.erase(same);
    }
  }
  return missing;
}

}  // namespace

void LevelStory::Do(std::string_view step, const std::function<void()>& act) {
  const std::vector<std::string> before = Listing();
  std::vector<std::size_t> saidBefore;
  for (const auto& part : scripted::script.status) saidBefore.push_back(part.size());
  editor.levelModified = false;
  std::string selected;
  std::set<std::string> refreshed;
  const auto select = [&selected](const std::vector<TreeItem>& items) {
    EXPECT_FALSE(levelTree.notificationsEnabled) << "the tree must not act on it";
    selected = "  tree selects";
    for (const TreeItem item : items) selected += " | " + NumberedText(item);
    selected += '\n';
  };
  hooks.refreshObjectToolbar = [&refreshed] { refreshed.insert("toolbar"); };
  hooks.invalidateMiniMap = [&refreshed] { refreshed.insert("Mini-Map"); };
  levelTree.view.selectAll = select;
  levelTree.view.select = [&select](TreeItem item) { select({item}); };
  scripted::script.answers.assign(9, PromptAnswer::Ok);
  act();
  scripted::script.answers.clear();
  levelTree.view.selectAll = [](const std::vector<TreeItem>&) {};
  levelTree.view.select = [](TreeItem) {};
  hooks.refreshObjectToolbar = hooks.invalidateMiniMap = [] {};
  told_ += "* " + std::string(step) + '\n';
  for (const std::string& box : TakePrompts()) told_ += "  box " + box + '\n';
  for (std::size_t part = 0; part < saidBefore.size(); ++part) {
    const std::vector<std::string>& said = scripted::script.status[part];
    for (std::size_t i = saidBefore[part]; i < said.size(); ++i)
      told_ += "  says \"" + said[i] + "\"\n";
  }
  told_ += selected;
  for (const std::string& shown : refreshed) told_ += "  " + shown + " refreshed\n";
  const std::vector<std::string> after = Listing();
  told_ += Missing(before, after, "  - ") + Missing(after, before, "  + ");
  if (editor.levelModified) told_ += "  modified\n";
}

void LevelStory::Expect(const std::string& name) const {
  ExpectGolden("objects/" + name + ".txt", told_);
}

}  // namespace mw
