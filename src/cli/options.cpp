#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <sstream>
#include <string_view>
#include <utility>

#include "cli/completion.h"
#include "cli/oper_options.h"
#include "cli/option_parts.h"
#include "cli/session_options.h"

namespace tresmor {
namespace {

constexpr char kFooter[] =
    "Formats:\n"
    "  text     for people; control characters, backslashes and bytes that are not UTF-8 are escaped with a backslash\n"
    "  groups   the paths of one type's groups, one a line, an empty line between groups; --types names that type,\n"
    "           duplicates by default. Of the type zero, each file. Escaped as in text only on a terminal\n"
    "  groups0  the same with NUL in place of each line end, never escaped\n"
    "  json     all lists; dates are UTC, null for hidden files; a path that is not UTF-8 also as path_base64\n"
    "  csv      all lists as a table with the columns list,group,folder,name,size,date and version if asked for\n"
    "\n"
    "Exit status: 0 ran through, 1 ran through but files could not be read, 2 wrong use, 3 failed, 130 cancelled.\n"
    "With --area or --exclude a file that could not be read may go unreported, and the status is then 0.\n"
    "Ctrl-C ends the search and prints what was found so far; once more ends at once.";

// What the options of a search are parsed into before they mean something together.
struct TypedFind {
  FindOptions options;
  std::vector<std::string> types;
  std::optional<std::string> since;
};

std::optional<std::int32_t> ReadKb(const std::string& text) {
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

std::string CheckKb(const std::string& text) {
  return ReadKb(text) ? "" : "'" + text + "' is no whole number from 0 to 2147483647.";
}

void AddScopeOptions(CLI::App& find, TypedFind& typed) {
  FindOptions& options = typed.options;
  find.add_option("PATH", options.paths, "Folders whose files are judged")->type_name("")->required();
  TakesOneEachTime(
      find.add_option("--area", options.areas, "Also search DIR, only for something to compare with (repeatable)"),
      "DIR");
  TakesOneEachTime(find.add_option("--exclude", options.excludes, "Keep out of DIR (repeatable)"), "DIR");
  find.add_option("--pattern", options.pattern, "File names to take, such as \"*.jpg;*.png\"")->capture_default_str();
  find.add_option("--min-kb", options.minKb, "Only files of more than N kilobytes")->type_name("N")->check(CheckKb);
  find.add_option("--max-kb", options.maxKb, "Only files of fewer than N kilobytes")->type_name("N")->check(CheckKb);
  find.add_option("--since", typed.since, "Only files modified at or after DATE, local time")->type_name("DATE");
  find.add_flag("--no-subfolders", options.noSubfolders, "Only the folders themselves");
  find.add_flag("--hidden", options.hidden, "Hidden files and folders too");
  find.add_flag("--no-protect", options.noProtect, "Search the system's own folders too");
}

CLI::App& AddFind(CLI::App& app, TypedFind& typed) {
  CLI::App& find = *app.add_subcommand("find", "Search folders");
  AddScopeOptions(find, typed);
  AddTypes(find, typed.types, "Of zero, duplicates, names, portions; by default the first three");
  find.add_flag("--tolerant", typed.options.tolerant, "Take files that differ in a few places for equal too");
  AddSearchOptions(find, typed.options);
  find.footer(kFooter);
  return find;
}

// The arguments as the parser takes them, from the end. It would take "[a,b]" for a list of two and "++" for a mark: a
// NUL behind them, which no argument can hold, keeps them as they are. It heeds "--" only before the first path: so
// what is behind it is told as a path here.
std::vector<std::string> GuardedArguments(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  bool paths = false;
  for (int i = 1; i < argc; ++i) {
    std::string argument = argv[i];
    if (!paths && argument == "--") {
      paths = true;
      continue;
    }
    if (paths && argument.starts_with('-')) argument.insert(0, "./");
    if (argument.starts_with('[') || argument.starts_with('+')) argument.push_back('\0');
    arguments.push_back(std::move(argument));
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

void CheckPattern(const std::string& pattern) {
  if (pattern.empty()) throw WrongUse("Please input file type.");
  if (pattern.find('/') != std::string::npos) {
    throw WrongUse("--pattern: '" + pattern + "' must not contain '/': patterns are for names of files alone.");
  }
}

FindOptions Settle(TypedFind typed) {
  FindOptions options = WithoutGuards(std::move(typed.options), &FindOptions::paths, &FindOptions::areas,
                                      &FindOptions::excludes, &FindOptions::pattern, &FindOptions::save);
  CheckPattern(options.pattern);
  TakeTypes(typed.types, {SrchType::ZeroSize, SrchType::Duplicates, SrchType::SameName}, options);
  if (!options.minKb.empty() && !options.maxKb.empty() && *ReadKb(options.maxKb) < *ReadKb(options.minKb)) {
    throw WrongUse("Max File Size(" + options.maxKb + ") must be greater than Min File Size(" + options.minKb + ").");
  }
  if (typed.since) {
    options.since = ParseDate(*typed.since);
    if (!options.since) throw WrongUse("--since: '" + *typed.since + "' is no date. Write one like 2024-07-02.");
  }
  return options;
}

// What is wrong, as a whole sentence.
std::string Complaint(const CLI::App& app, const CLI::ParseError& error, int argc, const char* const* argv) {
  if (argc < 2) return "Tell what to do, such as 'tresmor-cli find FOLDER'.";
  if (app.get_subcommands().empty()) return "'" + std::string(argv[1]) + "' is no command.";
  std::string text = error.what();
  if (!text.ends_with('.')) text += '.';
  return text;
}

// Where the user is shown the way.
std::string HelpOf(const CLI::App& app) {
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  return chosen.empty() ? "tresmor-cli --help" : "tresmor-cli " + chosen.front()->get_name() + " --help";
}

}  // namespace

ResultList PrintOptions::ListOfGroups() const {
  const auto first = std::find(types.begin(), types.end(), true);
  return static_cast<ResultList>(first - types.begin());
}

Command ParseCommandLine(int argc, const char* const* argv) {
  TypedFind find;
  RunOptions run;
  TypedShow show;
  MarkOptions mark;
  ExportOptions exported;
  OperOptions trash{.action = FileAction::Trash};
  OperOptions deletion{.action = FileAction::Delete};
  OperOptions move{.action = FileAction::Move};
  OperOptions copy{.action = FileAction::Copy};
  CLI::App app("Finds duplicate files, files of the same name, empty files and truncated copies.", "tresmor-cli");
  app.require_subcommand(1);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("'tresmor-cli COMMAND --help' tells the options of a command. A first search: tresmor-cli find FOLDER");
  const std::vector<std::pair<CLI::App*, std::function<Command()>>> commands = {
      {&AddFind(app, find), [&] { return Settle(std::move(find)); }},
      {&AddRun(app, run), [&] { return Settle(std::move(run)); }},
      {&AddShow(app, show), [&] { return Settle(std::move(show)); }},
      {&AddMark(app, mark), [&] { return Settle(std::move(mark)); }},
      {&AddExport(app, exported), [&] { return Settle(std::move(exported)); }},
      {&AddOper(app, trash), [&] { return Settle(std::move(trash)); }},
      {&AddOper(app, deletion), [&] { return Settle(std::move(deletion)); }},
      {&AddOper(app, move), [&] { return Settle(std::move(move)); }},
      {&AddOper(app, copy), [&] { return Settle(std::move(copy)); }},
      {&AddUndo(app), [] { return UndoOptions(); }}};
  app.set_version_flag("--version", "tresmor-cli " TRESMOR_VERSION);
  for (const auto& [command, settle] : commands) {
    command->group("Commands");
    command->set_version_flag("--version", "tresmor-cli " TRESMOR_VERSION);
  }
  if (argc > 1 && std::string_view(argv[1]) == kComplete) return Completions(app, {argv + 2, argv + argc});
  try {
    app.parse(GuardedArguments(argc, argv));
  } catch (const CLI::Success& asked) {
    std::ostringstream text;
    app.exit(asked, text, text);
    return text.str();
  } catch (const CLI::ParseError& error) {
    throw WrongUse(Complaint(app, error, argc, argv) + " Try '" + HelpOf(app) + "'.");
  }
  return std::find_if(commands.begin(), commands.end(), [](const auto& each) { return each.first->parsed(); })
      ->second();
}

}  // namespace tresmor
