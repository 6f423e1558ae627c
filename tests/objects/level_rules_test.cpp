// What Check Level says of the sample levels, of which it has nothing to say, and of faults that
// are put into their files: the story in tests/golden/objects/level_rules.txt. Each step is one
// fault, and what follows is all that is found then.
#include "objects/level_rules.h"

#include "app/story.h"
#include "data/data_state.h"
#include "data/level_archive_test.h"
#include "objects/entities.h"
#include "objects/level_files.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "objects/static_objects.h"
#include "sample/content_archives.h"
#include "sample/level_members.h"
#include "sample/settings_scripts.h"
#include "support/archive_bytes.h"
#include "terrain/material_map.h"
#include "terrain/terrain_state.h"

namespace mw {
namespace {

class LevelRulesTest : public StoryTest {
 protected:
  LevelRulesTest() {
    ResetDataState(), ResetTerrainState(), ResetObjectsState();
    CreateTerrain(), CreateMaterialMapper();
    WriteBytes("varnhold.lst", TextBytes(sample::ObjectListText()));
    WriteBytes("varnhold.cfg", TextBytes(sample::ModConfigText(GameFolder(), "For a test.")));
    EXPECT_TRUE(ParseModConfig("varnhold", modConfig));
    LoadObjectCatalogue();
    modAlone_ = modConfig;
  }
  ~LevelRulesTest() override { ResetObjectsState(), ResetTerrainState(), ResetDataState(); }

  void Open(const sample::Level& level) {
    archives.Clear();
    const std::string name(level.name), file = name + ".vra";
    ASSERT_TRUE(sample::WriteArchive(file, StorageMode::Stored, sample::LevelMembers(level, 16)));
    archive_ = archives.OpenArchive(file, true);
    folder_ = "varnhold/levels/" + name + "/";
    modAlone_.LevelName = name;
    openLevel.folder = GameFolder() + "Mods\\varnhold\\varnhold\\levels\\" + name;
    EXPECT_TRUE(archive_->BeginSave());  // no step waits for the disk
  }
  // What is found in the files as they are now.
  void Check(const std::function<void()>& edit = [] {}) {
    modConfig = modAlone_;
    ClearAllObjects(), BuildTree();
    ASSERT_TRUE(ReadLevelFiles());
    edit();
    constexpr std::size_t kMostTold = 5;
    const std::vector<LevelFind> finds = CheckRules();
    for (const LevelFind& find : finds) found_.insert(find.rule->name);
    for (std::size_t i = 0; i < std::min(finds.size(), kMostTold); ++i) {
      const LevelFind& find = finds[i];
      Tell(std::string(NameOf(find.rule->gravity)) + "  " + find.text + " [" + find.rule->name +
           (find.place ? FormatText(", at %g %g", find.place->x, find.place->z) : "") +
           (find.item ? ", in the tree]" : "]"));
    }
    if (finds.size() > kMostTold) Tell(FormatText("and %zu more", finds.size() - kMostTold));
    if (finds.empty()) Tell("nothing");
    scripted::script.status[1].clear();
    ++steps_;
  }
  // The member with its bytes changed; the file is put back when all was looked at.
  void With(const std::string& file, const std::function<void(Bytes&)>& change) {
    const auto before = archive_->ReadMember(folder_ + file);
    Bytes bytes = before.value_or(Bytes());
    change(bytes);
    EXPECT_TRUE(archive_->WriteMember(folder_ + file, bytes));
    Check();
    EXPECT_TRUE(before ? archive_->WriteMember(folder_ + file, *before)
                       : archive_->RemoveMember(folder_ + file));
  }
  // "&" stands for a blank and "$" for a line's end.
  static std::string Text(std::string word) {
    std::ranges::replace(word, '&', ' ');
    for (std::size_t at; (at = word.find('$')) != word.npos;) word.replace(at, 1, "\r\n");
    return word;
  }

  const std::map<std::string, Verb> verbs = {
      {"level",
       [this](const Words& w) {
         Open(w[0] == "Stone_Ridge" ? sample::MakeStoneRidge() : sample::MakeHarbourPoint());
         Check();
       }},
      {"change",
       [this](const Words& w) {
         With(w[0], [&](Bytes& bytes) {
           std::string text(bytes.begin(), bytes.end());
           const std::size_t at = text.find(Text(w[1]));
           ASSERT_NE(at, text.npos) << w[0] << " lacks " << w[1];
           text.replace(at, Text(w[1]).size(), Text(w[2]));
           bytes.assign(text.begin(), text.end());
         });
       }},
      {"append",
       [this](const Words& w) {
         With(w[0], [&](Bytes& bytes) {
           for (int i = 0; i < (w.size() > 2 ? std::stoi(w[2]) : 1); ++i) {
             std::string text = Text(w[1]);
             if (const auto at = text.find('#'); at != text.npos)
               text.replace(at, 1, std::to_string(100 + i));
             bytes.insert(bytes.end(), text.begin(), text.end());
           }
         });
       }},
      {"fill",
       [this](const Words& w) {
         With(w[0], [&](Bytes& bytes) {
           std::fill_n(bytes.begin(), std::stoi(w[2]), static_cast<std::uint8_t>(std::stoi(w[1])));
         });
       }},
      {"remove",
       [this](const Words& w) {
         const auto before = archive_->ReadMember(folder_ + w[0]);
         EXPECT_TRUE(before && archive_->RemoveMember(folder_ + w[0]));
         Check();
         EXPECT_TRUE(archive_->WriteMember(folder_ + w[0], *before));
       }},
      {"turn-sky",
       [this](const Words& w) {
         // There is no line to keep it in.
         const auto before = archive_->ReadMember(folder_ + "Init/SkyAndSun.con");
         EXPECT_TRUE(archive_->RemoveMember(folder_ + "Init/SkyAndSun.con"));
         Check([&] { modConfig.currentSky.rotationAngle = std::stoi(w[0]); });
         EXPECT_TRUE(archive_->WriteMember(folder_ + "Init/SkyAndSun.con", *before));
       }},
      {"uncheck-all-modes",
       [this](const Words&) {
         Check([] { entities.Of(EntityKind::ControlPoint).instances.at(1)->modes = 0; });
       }},
      {"assign", [this](const Words& w) {
         Check([&] {  // as long as nobody generates it
           EXPECT_TRUE(archive_->RemoveMember(folder_ + "Textures/Tx00x00.dds"));
           levelTextures.SurfaceAssigned[std::stoul(w[0])][std::stoul(w[1])] = true;
         });
       }}};

  Archive* archive_ = nullptr;
  std::string folder_;
  ModConfig modAlone_;
  std::set<std::string> found_;
  int steps_ = 0;
};

TEST_F(LevelRulesTest, EachFaultIsFoundAndTheSampleLevelsHaveNone) {
  ActOut("objects/level_rules.txt", verbs);
  EXPECT_GE(steps_, 2 + 30);
  std::string never;
  for (const LevelRule& rule : LevelRules()) {
    if (!found_.contains(rule.name)) never += std::string(" ") + rule.name;
  }
  EXPECT_EQ(never, "") << "rules that no fault has brought";
}

}  // namespace
}  // namespace mw
