#include "objects/level_story.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
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
namespace {

std::string Text(const Vector3& v) {
  std::ostringstream text;
  text << v.x << '/' << v.y << '/' << v.z;
  return text.str();
}

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

void ListEntities(std::vector<std::string>& lines) {
  for (const EntityKind kind : kEntityKinds) {
    const std::string name = kind == EntityKind::SoldierSpawn  ? "soldier spawn"
                             : kind == EntityKind::ObjectSpawn ? "object spawn"
                                                               : "control point";
    for (const auto& made : entities.Of(kind).templates) {
      lines.push_back(name + " template of group " + std::to_string(made->group) +
                      CommandsOf(*made));
    }
    for (const auto& placed : entities.Of(kind).instances) {
      const SpawnTemplate* const from = TemplateOf(*placed);
      lines.push_back(name + CommandsOf(*placed) + ", from " +
                      (from ? NameWithModes(from->name, from->modes) : "no template") +
                      (placed->selected ? ", selected" : ""));
    }
  }
  for (const SpawnGroup& group : entities.spawnGroups)
    lines.push_back("spawn group" + CommandsOf(group));
  lines.push_back("next spawn id " + std::to_string(entities.nextSpawnId));
}

void ListObjects(std::vector<std::string>& lines) {
  for (const StaticObject& object : objectStore.objects) {
    lines.push_back(
        "object " + object.name.String() + " at " + Text(object.position) + " turned " +
        Text(object.rotation) + (object.scaleGiven ? " scaled " + Text(object.scale) : "") +
        (object.colorGiven ? " coloured " + Text(object.colour) : "") + ", entry " +
        std::to_string(object.catalogueIndex) + (object.unknown ? ", unknown" : "") + ", mesh " +
        std::to_string(object.meshIndex) + (object.lists.back() != 0 ? " with its picture" : "") +
        (object.selected ? ", selected" : ""));
  }
}

void ListTree(std::vector<std::string>& lines) {
  for (const auto& [item, record] : std::map(levelTree.items.begin(), levelTree.items.end())) {
    if (record.children.empty()) continue;
    std::string line = "tree, " + NumberedText(item) + ":";
    for (const TreeItem child : record.children) line += " | " + NumberedText(child);
    lines.push_back(line);
  }
}

std::vector<std::string> Listing() {
  std::vector<std::string> lines;
  ListEntities(lines);
  ListObjects(lines);
  ListTree(lines);
  const ObjectStore& store = objectStore;
  std::ostringstream rest;
  rest << "tool " << static_cast<int>(store.tool) << (store.toolsEnabled ? " of all" : "")
       << "\nshown: objects " << store.showStandardMeshes << store.showTreeMeshes << ", entities "
       << store.showObjectSpawns << store.showSoldierSpawns << store.showControlPoints
       << NameWithModes("", entities.ModeFilter) << "\nsnaps " << store.snapToGround
       << ", view mode " << static_cast<int>(store.viewMode) << "\nhovered object "
       << store.lastHoveredObject << "\nsomething copied " << editor.somethingCopied << "\npivot "
       << store.SelectionPivot.x << ' ' << store.SelectionPivot.z << "\ncamera at "
       << Text(camera.position) << ", pitch " << camera.pitch;
  for (std::size_t i = 0; i < openLevel.loadReport.parts.size(); ++i) {
    const auto part = static_cast<LevelPart>(i);
    if (!MayWrite(part)) rest << "\nkept on disk: " << NameOf(part);
  }
  for (const std::string& line : openLevel.loadReport.lines) rest << "\nreport: " << line;
  std::istringstream text(rest.str());
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
  bool toolbarRefreshed = false;
  std::string selected;
  const auto select = [&selected](const std::vector<TreeItem>& items) {
    EXPECT_FALSE(levelTree.notificationsEnabled) << "the tree must not act on it";
    selected = "  tree selects";
    for (const TreeItem item : items) selected += " | " + NumberedText(item);
    selected += '\n';
  };
  hooks.refreshObjectToolbar = [&toolbarRefreshed] { toolbarRefreshed = true; };
  levelTree.view.selectAll = select;
  levelTree.view.select = [&select](TreeItem item) { select({item}); };
  scripted::script.answers.assign(9, PromptAnswer::Ok);
  act();
  scripted::script.answers.clear();
  levelTree.view.selectAll = [](const std::vector<TreeItem>&) {};
  levelTree.view.select = [](TreeItem) {};
  hooks.refreshObjectToolbar = [] {};
  told_ += "* " + std::string(step) + '\n';
  for (const std::string& box : TakePrompts()) told_ += "  box " + box + '\n';
  for (std::size_t part = 0; part < saidBefore.size(); ++part) {
    const std::vector<std::string>& said = scripted::script.status[part];
    for (std::size_t i = saidBefore[part]; i < said.size(); ++i)
      told_ += "  says \"" + said[i] + "\"\n";
  }
  told_ += selected + (toolbarRefreshed ? "  toolbar refreshed\n" : "");
  const std::vector<std::string> after = Listing();
  told_ += Missing(before, after, "  - ") + Missing(after, before, "  + ");
  if (editor.levelModified) told_ += "  modified\n";
}

void LevelStory::Expect(const std::string& name) const {
  ExpectGolden("objects/" + name + ".txt", told_);
}

}  // namespace mw
