#include "tools/archive/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "tools/archive/commands.h"

namespace mw {
namespace {

using Command = int (*)(const Arguments&);

struct CommandLine {
  CLI::App app{
      "Looks into the archives of Varnhold (.vra) and changes them.\n\n"
      "Patterns are those of a shell, without regard to case; * stands for / too.\n"
      "Exit codes: 0 fine, 1 damaged or different, 2 wrong usage or unreadable.",
      "mapwright-archive"};
  Arguments arguments;
  Command chosen = nullptr;

  CLI::App* Add(const char* name, const char* description, Command command) {
    CLI::App* const added = app.add_subcommand(name, description);
    added->add_option("archive", arguments.archive, "The archive")->required();
    added->callback([this, command] { chosen = command; });
    return added;
  }
  void AddPatterns(CLI::App* command, const char* description, bool required = false) {
    command->add_option("patterns", arguments.patterns, description)->required(required);
  }
  void AddJson(CLI::App* command) {
    command->add_flag("--json", arguments.json, "Print JSON, for scripts");
  }
};

void DescribeLooking(CommandLine& line) {
  auto* const list = line.Add("list", "List members with their sizes", ListMembers);
  line.AddPatterns(list, "Only members that match");
  line.AddJson(list);
  auto* const verify = line.Add(
      "verify", "Check that members and levels are whole, and what levels lack", VerifyMembers);
  line.AddPatterns(verify, "Only members that match");
  line.AddJson(verify);
  verify->add_option("--mod", line.arguments.mod,
                     "The mod's .cfg, to check levels by its objects, teams and skies");
  auto* const diff = line.Add("diff", "Compare two archives", DiffArchives);
  diff->add_option("other", line.arguments.otherArchive, "The other archive")->required();
  line.AddJson(diff);
  auto* const extract = line.Add("extract", "Write members into a folder", ExtractMembers);
  line.AddPatterns(extract, "Only members that match");
  extract->add_option("-C,--folder", line.arguments.folder, "The folder (the current one)");
  extract->add_flag("-f,--force", line.arguments.force, "Write over existing files");
}

void DescribeChanging(CommandLine& line) {
  auto* const add = line.Add("add", "Add files, or replace members by them", AddMembers);
  add->add_option("files", line.arguments.files, "Files and folders")->required();
  add->add_option("-u,--under", line.arguments.under, "The archive's folder for them");
  add->add_flag("-c,--create", line.arguments.create, "Make the archive if there is none");
  auto* const remove = line.Add("remove", "Remove members", RemoveMembers);
  line.AddPatterns(remove, "Members that match", true);
  line.Add("compact", "Give back the room that nothing uses", CompactMembers);
}

}  // namespace

int RunArchiveCommand(std::vector<std::string> words) {
  CommandLine line;
  line.app.require_subcommand(1);
  line.app.set_version_flag("--version", "mapwright-archive " MAPWRIGHT_VERSION);
  DescribeLooking(line);
  DescribeChanging(line);
  try {
    std::ranges::reverse(words);  // as the library wants them, and without the program's name
    if (!words.empty()) words.pop_back();
    line.app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    return line.app.exit(error) == 0 ? kFine : kUnreadable;
  }
  return line.chosen(line.arguments);
}

}  // namespace mw
