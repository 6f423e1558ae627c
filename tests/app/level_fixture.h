// A sandbox game with one mod and two small levels in their archives, for the tests of opening and
// saving.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/shell_fixture.h"
#include "core/bytes.h"
#include "data/archive.h"

namespace mw {

class LevelTest : public ShellTest {
 protected:
  LevelTest();
  ~LevelTest() override;

  // Writes `<name>.vra` with scripts, a height map, a material map and a member that no editor
  // knows.
  void MakeLevel(const std::string& name, int materialSize, int worldSize);
  // The path of a level's archive.
  std::string ArchivePath(const std::string& name) const;
  // A member of a level's archive as a reader of its own sees it on disk.
  Bytes MemberOnDisk(const std::string& level, const std::string& member) const;
  std::string TextOnDisk(const std::string& level, const std::string& member) const;
  // Answers the dialogs: the only mod, then this level (empty: cancelled).
  void AnswerDialogs(const std::string& level);

  std::vector<std::string> status() const { return scripted::script.status[1]; }
};

}  // namespace mw
