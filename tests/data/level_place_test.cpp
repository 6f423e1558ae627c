#include "data/level_place.h"

#include <gmock/gmock.h>

#include "data/mod_sandbox.h"
#include "support/prompts.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class LevelPlaceTest : public ModSandboxTest {
 protected:
  // An archive of a level, as far as its place goes.
  fs::path Level(const fs::path& game, const std::string& mod, const std::string& name = "Island") {
    const fs::path path = game / "Mods" / mod / "Archives/varnhold/levels" / (name + ".vra");
    fs::create_directories(path.parent_path());
    Write(path.string(), "");
    return path;
  }
};

TEST_F(LevelPlaceTest, TheFoldersTellGameAndMod) {
  const struct {
    const char *path, *game, *mod;  // no game: not a level's place
  } kCases[] = {
      {"/g/Mods/m/Archives/varnhold/levels/a.vra", "\\g\\", "m"},
      {"/g h/MODS/m.x/archives/VARNHOLD/Levels/a.vra", "\\g h\\", "m.x"},
      {"/g/Mods/m/Archives/x/../varnhold/levels/a.vra", "\\g\\", "m"},
      {"/Mods/m/Archives/varnhold/levels/a.vra", "\\", "m"},
      {"/g/Mods/m/Archives/varnhold/a.vra", nullptr, nullptr},
      {"/g/Mods/m/Archives/varnhold/levels/sub/a.vra", nullptr, nullptr},
      {"/g/m/Archives/varnhold/levels/a.vra", nullptr, nullptr},
      {"/levels/a.vra", nullptr, nullptr},
      {"/a.vra", nullptr, nullptr},
  };
  for (const auto& [path, game, mod] : kCases) {
    SCOPED_TRACE(path);
    const auto place = PlaceOfLevel(path);
    ASSERT_EQ(place.has_value(), game != nullptr);
    if (!place) continue;
    EXPECT_EQ(place->gameFolder, game);
    EXPECT_EQ(place->mod, mod);
  }
}

TEST_F(LevelPlaceTest, OfSeveralModsThePreferredOneThenTheCurrentOneIsTaken) {
  UseMods({"desert", "winter"});
  Write("winter.2.cfg", Read("winter.cfg"));
  Write("damaged.cfg", "no game");
  FindMods();
  ASSERT_THAT(modList.names, ::testing::ElementsAre("damaged", "desert", "winter.2", "winter"));
  const fs::path level = Level(folder, "winter");
  EXPECT_EQ(ModOfLevel(level), 2);
  EXPECT_EQ(ModOfLevel(level, "winter"), 3);
  EXPECT_EQ(ModOfLevel(level, "desert"), 2) << "which does not have that level";
  ASSERT_TRUE(SelectMod(3));
  EXPECT_EQ(ModOfLevel(level), 3);
  EXPECT_EQ(ModOfLevel(level, "winter.2"), 2);
  EXPECT_EQ(ModOfLevel(Level(folder / "other", "winter")), std::nullopt);
  EXPECT_EQ(ModOfLevel(folder / "gone.vra"), std::nullopt);
}

TEST_F(LevelPlaceTest, ANewConfigurationLeadsToTheLevel) {
  Write("mpwr.cfg", "GamePath=C:\\\r\nWaterLevel=20\r\n");
  Write("winter.cfg", "GamePath=elsewhere\\\n");
  FindMods();
  for (const auto& [mod, name] :
       {std::pair("winter", "winter.2"), {"snow", "snow"}, {"a.b", "a.b.2"}, {"mpwr", "mpwr.2"}}) {
    SCOPED_TRACE(mod);
    const fs::path level = Level(folder / "games", mod);
    const auto place = PlaceOfLevel(level);
    ASSERT_TRUE(place);
    EXPECT_EQ(NewModName(*place), name);
    const auto made = MakeModOfLevel(*place, level);
    ASSERT_TRUE(made);
    EXPECT_EQ(modList.names.at(static_cast<std::size_t>(*made)), name);
    EXPECT_EQ(Read(std::string(name) + ".cfg"),
              "GamePath=" + GameFolder() + "games\\\r\nWaterLevel=20\r\n");
    EXPECT_EQ(ModOfLevel(level), made);
  }
  EXPECT_EQ(Read("winter.cfg"), "GamePath=elsewhere\\\n");
}

TEST_F(LevelPlaceTest, WhatAConfigurationCannotHoldIsRefusedAndNothingIsWritten) {
  const auto refused = [this](const fs::path& game, const std::string& mod, const char* reason) {
    SCOPED_TRACE(reason);
    const fs::path level = Level(game, mod);
    Answer({PromptAnswer::Ok});
    EXPECT_EQ(MakeModOfLevel(*PlaceOfLevel(level), level), std::nullopt);
    ExpectPrompts({reason});
    EXPECT_FALSE(FileExists(mod + ".cfg"));
  };
  refused(folder / "game", "m", "Can't read mpwr.cfg");
  Write("mpwr.cfg", "GamePath=\n");
  refused(folder / "a=b", "m", "cannot be kept");
  refused(folder / std::string(200, 'x') / std::string(60, 'y'), "m", "cannot be kept");
  refused(folder / "game", std::string(kMaxModName + 1, 'm'), "too long");
  modList.names.assign(kMaxMods, "full");
  refused(folder / "game", "m", "no room for more than 64 mods");
}

}  // namespace
}  // namespace mw
