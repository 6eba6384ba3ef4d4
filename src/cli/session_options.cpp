#include "cli/session_options.h"

#include <utility>

#include "cli/option_parts.h"

namespace tresmor {
namespace {

// The words tell which files are marked; all but one of a group are. The numbers are the entries of the dialog's lists.
const Choices<std::int32_t> kByAge = {{"newer", 1}, {"older", 2}};
const Choices<std::int32_t> kBySize = {{"largest", 1}, {"smallest", 2}};

// These words tell which file stays. The entries of lstLeaveVer say the opposite of what they do: the first, for all
// its name, keeps the lowest version.
const Choices<KeepRule> kKeep = {{"newest", kKeepNewest},
                                 {"oldest", {.leaveDate = 2}},
                                 {"lowest-version", {.leaveVer = 1}},
                                 {"highest-version", {.leaveVer = 2}},
                                 {"none", {.leaveAtLeast1 = false}}};

constexpr char kRunFooter[] =
    "The formats groups and groups0 print the duplicates if the session searches for them, else the first of its "
    "types.\n"
    "\n"
    "Exit status: 0 ran through, 1 ran through but files could not be read, 2 wrong use, such as a folder of the "
    "session\n"
    "that is gone, 3 failed, such as a file that is no session, 130 cancelled.";

constexpr char kShowFooter[] =
    "The formats are those of 'tresmor-cli find --help'. In text marked files have a '*' in front, in json the key\n"
    "\"marked\". Files that could not be read are not in a session.\n"
    "\n"
    "Exit status: 0 printed, 2 wrong use, 3 failed, such as a file that is no session or has no result.";

constexpr char kMarkFooter[] =
    "Nothing is deleted: marks are kept in SESSION. They are set in this order:\n"
    "  1. --clear\n"
    "  2. --folder and --pattern mark more files; marks that are there stay\n"
    "  3. --keep takes one mark off each group whose files are all marked\n"
    "  4. --by-date, --by-size, --by-version, each over the one before: in every group all files but one are marked,\n"
    "     whatever they were before\n"
    "Without a rule only --keep applies; the marks are counted.\n"
    "--by-size is for the lists names and portions, --by-version and --keep ...-version are for lists with versions.\n"
    "Of equal files the first in the list stays. In the list zero all files count as one group.\n"
    "\n"
    "Exit status: 0 marked and saved, 2 wrong use, 3 failed; with 2 and 3 SESSION is as it was.";

constexpr char kExportFooter[] =
    "Exit status: 0 written, 2 wrong use, 3 failed; with 2 and 3 there is no new file, and an old one stays.";

}  // namespace

CLI::App& AddRun(CLI::App& app, RunOptions& options) {
  CLI::App& run = *app.add_subcommand("run", "Search again what a session searches");
  AddSession(run, options.session);
  AddSearchOptions(run, options);
  run.footer(kRunFooter);
  return run;
}

CLI::App& AddShow(CLI::App& app, TypedShow& typed) {
  CLI::App& show = *app.add_subcommand("show", "Print the result that a session holds");
  AddSession(show, typed.options.session);
  AddTypes(show, typed.types, "Of zero, duplicates, names, portions; by default all");
  AddFormat(show, typed.options);
  show.footer(kShowFooter);
  return show;
}

CLI::App& AddMark(CLI::App& app, MarkOptions& options) {
  CLI::App& mark = *app.add_subcommand("mark", "Mark files in the result that a session holds");
  AddSession(mark, options.session);
  AddList(mark, options.list);
  mark.add_flag("--clear", options.clear, "First take all marks of the list away");
  TakesOneEachTime(mark.add_option("--folder", options.folders, "Mark the files in DIR (repeatable)"), "DIR");
  mark.add_flag("--sub-folders", options.subFolders, "And those in the sub-folders of each DIR");
  mark.add_option("--pattern", options.pattern, "Mark files with such names, as \"*.bak; copy[0-9]*\"");
  AddChoice(mark, "--by-date", options.byDate, kByAge, "newer or older: mark these, all but the oldest or newest file")
      .type_name("WHICH");
  AddChoice(mark, "--by-size", options.bySize, kBySize,
            "largest or smallest: mark these, all but the smallest or largest file")
      .type_name("WHICH");
  AddChoice(mark, "--by-version", options.byVersion, kByAge,
            "newer or older: mark these, all but the lowest or highest version")
      .type_name("WHICH");
  AddChoice(mark, "--keep", options.keep, kKeep,
            "What stays where a whole group is marked: newest (default), oldest, lowest-version, highest-version, none")
      .type_name("WHICH");
  mark.footer(kMarkFooter);
  return mark;
}

CLI::App& AddExport(CLI::App& app, ExportOptions& options) {
  CLI::App& exported = *app.add_subcommand("export", "Write a list of a session as a table for a spreadsheet");
  AddSession(exported, options.session);
  exported.add_option("OUT", options.file, "The file to write, such as out.csv")
      ->type_name("")
      ->required()
      ->check(CheckFileName);
  AddList(exported, options.list);
  exported.footer(kExportFooter);
  return exported;
}

RunOptions Settle(RunOptions options) {
  return WithoutGuards(std::move(options), &RunOptions::session, &RunOptions::save);
}

ShowOptions Settle(TypedShow typed) {
  RemoveGuard(typed.options.session);
  TakeTypes(typed.types, {SrchType::ZeroSize, SrchType::Duplicates, SrchType::SameName, SrchType::Portions},
            typed.options);
  return std::move(typed.options);
}

MarkOptions Settle(MarkOptions options) {
  if (options.bySize != 0 && options.list != ResultList::SameName && options.list != ResultList::Portions) {
    throw WrongUse("--by-size: only the lists names and portions have files of different sizes in a group.");
  }
  return WithoutGuards(std::move(options), &MarkOptions::session, &MarkOptions::folders, &MarkOptions::pattern);
}

ExportOptions Settle(ExportOptions options) {
  return WithoutGuards(std::move(options), &ExportOptions::session, &ExportOptions::file);
}

}  // namespace tresmor
