// What changes make of an archive file, and what keeps a level safe while it is open, as stories in
// tests/golden/data/archive_stories.txt: a line with ">" is what somebody does, and below it stands
// what came of that.
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "core/text.h"
#include "data/archive.h"
#include "platform/file.h"
#include "support/archive_bytes.h"
#include "support/golden.h"
#include "support/permissions_count.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

// An archive as another program might have written it: with reserved fields, members that share
// bytes, and names that differ in case only.
Bytes ForeignArchive() {
  Bytes file;
  PutU32(file, kArchiveHeader + 10);
  PutU32(file, 0);
  for (int i = 0; i < 148; ++i) file.push_back(static_cast<std::uint8_t>(i));
  for (const std::uint8_t byte : TextBytes("0123456789")) file.push_back(byte);
  const RawEntry entries[] = {{"z\\last", 4, 4, kArchiveHeader + 6, {7, 8, 9}},
                              {"shared", 6, 6, kArchiveHeader, {}},
                              {"Also/shared", 6, 6, kArchiveHeader, {1, 2, 3}},
                              {"empty", 0, 0, kArchiveHeader + 3, {}},
                              {"SHARED", 5, 5, kArchiveHeader, {4, 5, 6}}};
  PutU32(file, 5);
  for (const RawEntry& entry : entries) {
    PutU32(file, static_cast<std::uint32_t>(entry.name.size()));
    for (const std::uint8_t byte : TextBytes(entry.name)) file.push_back(byte);
    for (const std::uint32_t word : {entry.storedSize, entry.size, entry.offset, entry.reserved[0],
                                     entry.reserved[1], entry.reserved[2]})
      PutU32(file, word);
  }
  PutU32(file, 0xFFFFFFFF);  // an end mark that readers do not look at
  return file;
}

// "~30" stands for 30 bytes of noise.
Bytes Content(const std::string& text) {
  if (!text.starts_with('~')) return TextBytes(text);
  return NoiseBytes(static_cast<std::size_t>(ParseInt(text.substr(1))), 1);
}

class ArchiveStories : public SandboxTest {
 protected:
  void StartAnew() {
    editors.clear();
    list.Clear();
    filesBefore.clear();
    archives.backedUp.clear();
    fs::remove_all("now");
    fs::create_directory("now");
  }

  // A member or a file; noise by its length alone.
  static std::string Short(const Bytes& bytes) {
    if (bytes == Content("~" + std::to_string(bytes.size())) && !bytes.empty())
      return "~" + std::to_string(bytes.size());
    return bytes.size() < 40 ? std::string(bytes.begin(), bytes.end()) : "something else";
  }
  // The directory and the bytes, as the plain reader reads them, and what the program reads where
  // that is something else.
  static std::string Listing(Archive& archive) {
    const RawArchive raw = ReadRawArchive("now/level.vra");
    std::string text =
        FormatText("  mode %u, directory at %u up to %u of %u, end mark %x, reserved %i\n",
                   raw.mode, raw.directoryOffset, static_cast<unsigned>(raw.directoryEnd),
                   static_cast<unsigned>(raw.file.size()), raw.endMark, raw.reserved[147]);
    for (const RawEntry& entry : raw.entries) {
      const Bytes content = raw.Content(entry.name);
      text += FormatText("  %s at %u: %u of %u [%u %u %u] ", entry.name.c_str(), entry.offset,
                         entry.storedSize, entry.size, entry.reserved[0], entry.reserved[1],
                         entry.reserved[2]) +
              Short(content);
      if (content.size() > 0 && raw.mode == 1)
        text += FormatText(" in %i segments", raw.Stored(entry.name)[0]);
      text += archive.ReadMember(entry.name) == content ? "\n" : " DIFFERS\n";
    }
    if (raw.mode == 1) return text;
    const auto data = raw.file.begin() + kArchiveHeader;
    return text + "  " + std::string(data, raw.file.begin() + raw.directoryOffset) + "\n";
  }
  // Every file in the level's folder, as the plain reader reads it.
  std::string Files() {
    std::map<std::string, Bytes> files;
    std::string text;
    for (const auto& file : fs::directory_iterator("now"))
      files[file.path().filename().string()] = ReadBytes(file.path());
    for (const auto& [name, bytes] : files) {
      const fs::path path = "now/" + name;
      text += "  " + name + ":";
      try {
        const RawArchive raw = ReadRawArchive(path);
        std::size_t used = kArchiveHeader + (raw.directoryEnd - raw.directoryOffset);
        for (const RawEntry& entry : raw.entries) {
          text += " " + entry.name + "=" + Short(raw.Content(entry.name));
          used += entry.storedSize;
        }
        if (used != bytes.size()) text += ", not compact";
      } catch (const std::out_of_range&) {
        text += " \"" + Short(bytes) + "\"";
      }
      if (fs::is_symlink(path)) text += ", link to " + fs::read_symlink(path).string();
      const bool isExecutable =
          (fs::status(path).permissions() & fs::perms::owner_exec) != fs::perms::none;
      if (isExecutable) text += ", executable";
      text += filesBefore.contains(name) && filesBefore[name] == bytes ? ", unchanged\n" : "\n";
    }
    filesBefore = std::move(files);
    return text;
  }
  static std::string State(Archive& archive) {
    const char* const kOnDisk[] = {"as left", "changed", "gone"};
    std::string text = std::string("  ") + (archive.Writable() ? "writable" : "for reading") +
                       ", on disk " + kOnDisk[static_cast<int>(archive.OnDisk())];
    for (const auto& [title, value] : {std::pair{", ", archive.WriteProtection()},
                                       {", backed up as ", archive.TakeNewBackup()},
                                       {", in the way ", archive.StrayJournal()}})
      if (!value.empty()) text += title + value;
    return text + (archive.Dirty() ? ", dirty\n" : "\n");
  }

  static std::string PathOf(const Archive* archive) { return archive ? archive->Path() : "none"; }
  // The archives that are open at a time.
  std::string List() const {
    std::string text = "  open:";
    for (std::size_t i = 0; i < list.Count(); ++i) text += " " + list.At(i)->Path();
    const Archive* const writable = list.LastWritable();
    return text + ", last " + PathOf(list.Last()) + ", for writing " +
           (writable ? writable->Path() : list.ReasonNotWritable()) + "\n";
  }

  // Does what a line says, and tells what came of it.
  std::string Do(const std::string& line) {
    std::istringstream split(line);
    std::vector<std::string> words{std::istream_iterator<std::string>(split), {}};
    const bool other = words[0] == "second" || words[0] == "third";
    Archive& archive = editors[other ? words[0] : "first"];
    if (other) words.erase(words.begin());
    words.resize(3);
    const std::string &name = words[1], &text = words[2], file = "now/" + name, to = "now/" + text;
    if (words[0] == "show") return Listing(archive);
    if (words[0] == "files") return Files();
    if (words[0] == "state") return State(archive);
    if (words[0] == "list") return List();
    if (words[0] == "holding")
      return "  " + PathOf(list.FindHolding(name, false)) + ", for writing " +
             PathOf(list.FindHolding(name, true)) + "\n";
    if (words[0] == "read") return "  " + Short(archive.ReadMember(name).value_or(Bytes{})) + "\n";
    std::string reason;
    const std::map<std::string, std::function<bool()>> deeds = {
        {"create", [&] { return archive.Create("now/level.vra"); }},
        {"aside", [&] { return archive.CreateAside("now/level.vra"); }},
        {"place", [&] { return archive.PutInPlace(); }},
        {"compress", [&] { return archive.SetMode(StorageMode::Compressed); }},
        {"store", [&] { return archive.SetMode(StorageMode::Stored); }},
        {"open", [&] { return archive.Open("now/" + (name.empty() ? "LEVEL.vra" : name), true); }},
        {"openreading", [&] { return archive.Open("now/LEVEL.vra", false); }},
        {"write", [&] { return archive.WriteMember(name, Content(text)); }},
        {"remove", [&] { return archive.RemoveMember(name); }},
        {"empty", [&] { return archive.RemoveMembersWithPrefix(name); }},
        {"begin", [&] { return archive.BeginSave(); }},
        {"commit", [&] { return archive.CommitSave(); }},
        {"rollback", [&] { return archive.RollbackSave(), true; }},
        {"compact", [&] { return archive.Compact(); }},
        {"close", [&] { return archive.Close(); }},
        {"reopen", [&] { return archive.Reopen(); }},
        {"lift", [&] { return archive.LiftWriteProtection(); }},
        {"backup", [&] { return archive.BackUp(); }},
        {"backupfirst", [&] { return archive.BackUpFirst(BackupKind::Damaged), true; }},
        {"setaside", [&] { return archive.SetStrayJournalAside(); }},
        {"listcreate", [&] { return list.CreateArchive(file) != nullptr; }},
        {"listaside", [&] { return list.CreateArchiveAside(file, reason) != nullptr; }},
        {"listopen", [&] { return list.OpenArchive(file, true, &reason) != nullptr; }},
        {"listopenreading", [&] { return list.OpenArchive(file, false, &reason) != nullptr; }},
        {"listwrite", [&] { return list.At(0)->WriteMember(name, Content(text)); }},
        {"listclose", [&] { return list.CloseArchive(file); }},
        {"forget", [&] { return list.Clear(), true; }},
        {"foreign", [&] { return WriteBytes("now/level.vra", ForeignArchive()), true; }},
        {"put", [&] { return WriteBytes(file, Content(text)), true; }},
        {"copy", [&] { return fs::copy_file(file, to); }},
        {"overwrite", [&] { return WriteBytes(to, ReadBytes(file)), true; }},
        {"move", [&] { return RenameFile(file, to); }},
        {"link", [&] { return fs::create_symlink(name, to), true; }},
        {"delete", [&] { return fs::is_directory(file) ? fs::remove(file) : RemoveFile(file); }},
        {"folder", [&] { return fs::create_directory(file); }},
        {"protect", [&] { return fs::permissions(file, fs::perms::owner_read), true; }},
        {"unprotect", [&] { return fs::permissions(file, fs::perms::owner_all), true; }},
    };
    if (deeds.at(words[0])()) return "";
    if (reason.empty()) reason = archive.Error();
    return "  refused" + (reason.empty() ? "" : ": " + reason) + "\n";
  }

  // Goes through the stories of a file.
  void ExpectStories(const std::string& golden) {
    std::string told;
    std::istringstream stories(GoldenText(golden));
    for (std::string line; std::getline(stories, line);) {
      if (line.starts_with("  ")) continue;  // what came of it last time
      told += line + "\n";
      if (line.starts_with("> ")) {
        told += Do(line.substr(2));
      } else if (!line.empty()) {
        StartAnew();
      }
    }
    ExpectGolden(golden, told);
  }

  const PermissionsCount guard;
  std::map<std::string, Archive> editors;
  ArchiveList list;
  std::map<std::string, Bytes> filesBefore;
};

TEST_F(ArchiveStories, EndAsTheyAreTold) { ExpectStories("data/archive_stories.txt"); }

TEST_F(ArchiveStories, KeepLinksAndPermissions) { ExpectStories("data/archive_link_stories.txt"); }

}  // namespace
}  // namespace mw
