#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <sstream>
#include <utility>

#include "base/path.h"

namespace tresmor {
namespace {

const std::map<std::string, SrchType> kTypes = {{"zero", SrchType::ZeroSize},
                                                {"duplicates", SrchType::Duplicates},
                                                {"names", SrchType::SameName},
                                                {"portions", SrchType::Portions}};
const std::map<std::string, OutputFormat> kFormats = {{"text", OutputFormat::Text},
                                                      {"groups", OutputFormat::Groups},
                                                      {"groups0", OutputFormat::Groups0},
                                                      {"json", OutputFormat::Json},
                                                      {"csv", OutputFormat::Csv}};
const std::map<std::string, ProgressWhen> kProgress = {
    {"auto", ProgressWhen::Auto}, {"always", ProgressWhen::Always}, {"never", ProgressWhen::Never}};

constexpr char kFooter[] =
    "Formats:\n"
    "  text     for people; control characters, backslashes and bytes that are not UTF-8 are escaped with a backslash\n"
    "  groups   the paths of one type's groups, one a line, an empty line between groups; --types names that type,\n"
    "           duplicates by default. Of the type zero, each file. Escaped as in text only on a terminal\n"
    "  groups0  the same with NUL in place of each line end, never escaped\n"
    "  json     all lists; dates are UTC, null for hidden files; a path that is not UTF-8 also as path_base64\n"
    "  csv      all lists as a table with the columns list,group,folder,name,size,date\n"
    "\n"
    "Exit status: 0 ran through, 1 ran through but files could not be read, 2 wrong use, 3 failed, 130 cancelled.\n"
    "Ctrl-C ends the search and prints what was found so far; once more ends at once.";

// What the options of the command line are parsed into before they mean something together.
struct Typed {
  FindOptions options;
  std::vector<std::string> types;
  std::string format = "text";
  std::string progress = "auto";
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

void AddScopeOptions(CLI::App& find, Typed& typed) {
  FindOptions& options = typed.options;
  find.add_option("PATH", options.paths, "Folders whose files are judged")->type_name("")->required();
  find.add_option("--area", options.areas, "Also search DIR, only for something to compare with (repeatable)")
      ->type_name("DIR")
      ->allow_extra_args(false);
  find.add_option("--exclude", options.excludes, "Keep out of DIR (repeatable)")
      ->type_name("DIR")
      ->allow_extra_args(false);
  find.add_option("--pattern", options.pattern, "File names to take, such as \"*.jpg;*.png\"")->capture_default_str();
  find.add_option("--min-kb", options.minKb, "Only files of more than N kilobytes")->type_name("N")->check(CheckKb);
  find.add_option("--max-kb", options.maxKb, "Only files of fewer than N kilobytes")->type_name("N")->check(CheckKb);
  find.add_option("--since", typed.since, "Only files modified at or after DATE")->type_name("DATE");
  find.add_flag("--no-subfolders", options.noSubfolders, "Only the folders themselves");
  find.add_flag("--hidden", options.hidden, "Hidden files and folders too");
  find.add_flag("--no-protect", options.noProtect, "Search the system's own folders too");
}

// One of the names of a table, told by what is wrong and not in the help.
template <class Value>
CLI::Validator OneOf(const std::map<std::string, Value>& names) {
  return CLI::IsMember(names).description("");
}

void AddResultOptions(CLI::App& find, Typed& typed) {
  FindOptions& options = typed.options;
  find.add_option("--types", typed.types, "Of zero, duplicates, names, portions; by default the first three")
      ->type_name("TYPE,...")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(OneOf(kTypes));
  find.add_flag("--tolerant", options.tolerant, "Take files that differ in a few places for equal too");
  find.add_option("--format", typed.format, "text, groups, groups0, json or csv")
      ->type_name("FORMAT")
      ->check(OneOf(kFormats));
  find.add_option("--progress", typed.progress, "auto (if stderr is a terminal), always or never")
      ->type_name("WHEN")
      ->check(OneOf(kProgress));
  find.add_flag("--quiet", options.quiet, "No remarks on stderr, only errors");
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

void RemoveGuards(FindOptions& options) {
  for (std::vector<std::string>* texts : {&options.paths, &options.areas, &options.excludes}) {
    for (std::string& text : *texts) text = StripNul(text);
  }
  options.pattern = StripNul(options.pattern);
}

void TakeTypes(const std::vector<std::string>& names, FindOptions& options) {
  const bool groups = options.format == OutputFormat::Groups || options.format == OutputFormat::Groups0;
  const auto take = [&](SrchType type) { options.types[static_cast<std::size_t>(type)] = true; };
  for (const std::string& name : names) take(kTypes.at(name));
  if (names.empty()) {
    take(SrchType::Duplicates);
    if (groups) return;
    take(SrchType::ZeroSize);
    take(SrchType::SameName);
  }
  if (groups && std::count(options.types.begin(), options.types.end(), true) != 1) {
    throw WrongUse("This format prints one type: give --types only one.");
  }
}

void CheckPattern(const std::string& pattern) {
  if (pattern.empty()) throw WrongUse("Please input file type.");
  if (pattern.find('/') != std::string::npos) {
    throw WrongUse("--pattern: '" + pattern + "' must not contain '/': patterns are for names of files alone.");
  }
}

FindOptions Settle(Typed typed) {
  FindOptions options = std::move(typed.options);
  RemoveGuards(options);
  CheckPattern(options.pattern);
  options.format = kFormats.at(typed.format);
  options.progress = kProgress.at(typed.progress);
  TakeTypes(typed.types, options);
  if (!options.minKb.empty() && !options.maxKb.empty() && *ReadKb(options.maxKb) < *ReadKb(options.minKb)) {
    throw WrongUse("Max File Size(" + options.maxKb + ") must be greater than Min File Size(" + options.minKb + ").");
  }
  if (typed.since) {
    options.since = ParseDate(*typed.since);
    if (!options.since) throw WrongUse("--since: '" + *typed.since + "' is no date. Write one like 2024-07-02.");
  }
  return options;
}

}  // namespace

ResultList FindOptions::ListOfGroups() const {
  const auto first = std::find(types.begin(), types.end(), true);
  return static_cast<ResultList>(first - types.begin());
}

std::variant<FindOptions, std::string> ParseCommandLine(int argc, const char* const* argv) {
  Typed typed;
  CLI::App app("Finds duplicate files, files of the same name, empty files and truncated copies.", "tresmor-cli");
  app.set_version_flag("--version", "tresmor-cli " TRESMOR_VERSION);
  app.require_subcommand(1);
  CLI::App& find = *app.add_subcommand("find", "Search folders");
  AddScopeOptions(find, typed);
  AddResultOptions(find, typed);
  find.footer(kFooter);
  try {
    app.parse(GuardedArguments(argc, argv));
  } catch (const CLI::Success& asked) {
    std::ostringstream text;
    app.exit(asked, text, text);
    return text.str();
  } catch (const CLI::ParseError& error) {
    throw WrongUse(error.what() + std::string(". Try 'tresmor-cli find --help'."));
  }
  return Settle(std::move(typed));
}

}  // namespace tresmor
