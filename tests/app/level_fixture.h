// A sandbox game with one mod and two small levels in their archives, for the tests of opening and
// saving; their stories tell what is on disk.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/shell_fixture.h"
#include "core/bytes.h"
#include "data/archive.h"

namespace mw {

inline constexpr std::string_view kIsland = "varnhold/levels/Island/";

class LevelTest : public ShellTest {
 protected:
  LevelTest();
  ~LevelTest() override;

  // Writes `<name>.vra` with scripts, a height map, a material map and a member that no editor
  // knows.
  void MakeLevel(const std::string& name, int materialSize, int worldSize);
  // The path of a level's archive.
  std::string ArchivePath(const std::string& name) const;
  // Members of a level's archive as a reader of its own sees them on disk.
  Bytes MemberOnDisk(const std::string& level, const std::string& member) const;
  std::string TextOnDisk(const std::string& level, const std::string& member) const;
  std::vector<std::string> MembersOnDisk(const std::string& level) const;
  // The whole part of the height at (i, j) of a level with 256 samples a side.
  int HeightOnDisk(const std::string& level, int i, int j) const;
  // Puts bytes into Island, which no editor has open.
  void PutMember(const std::string& member, const Bytes& bytes);

  // Gives Island what a level has besides its ground and its settings.
  void AddMembers();
  // Bytes of Island's file that a damage changes.
  void Patch(std::uint64_t at, const Bytes& bytes) const;
  // Of a segment of the member nothing can be read any more.
  void BreakSegment(const std::string& member, std::uint32_t segment) const;
  void Remove(const std::string& member) const;

  // Answers the dialogs: the only mod, then this level (empty: cancelled).
  void AnswerDialogs(const std::string& level);
  void Open(const std::string& level);
  // An edit that the story tells when it is on disk.
  static void Edit();
  // One in several parts of the level, told apart by `mark`; the editor shows it, or -1 when it
  // shows a mixture.
  static void Mark(int mark);
  static int Shown();
  // The clock shows that it is time to write the recovery file.
  void LetTimePass();
  void Work(int mark) { Mark(mark), LetTimePass(); }
  // As after a kill: memory is gone, the disk stays.
  static void Restart();

  // The story goes on with a member of a level's archive: its text, or how many bytes it has.
  void TellMember(const std::string& level, const std::string& member);
  // The edits that are not saved, and the files beside the levels' archives and those for recovery.
  std::string StateAfterStep() override;

  std::vector<std::string> status() const { return scripted::script.status[1]; }

  const std::filesystem::path levels = folder / "Mods/varnhold/Archives/varnhold/levels";
  const std::filesystem::path island = levels / "Island.vra";
  std::uint32_t clock = 0xFFFF'FFF0;        // about to wrap
  std::map<std::string, Bytes> knownFiles;  // contents by what the story calls them

 private:
  std::string FileState(const std::filesystem::path& file) const;
};

}  // namespace mw
