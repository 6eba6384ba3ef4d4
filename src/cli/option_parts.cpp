#include "cli/option_parts.h"

#include <algorithm>

#include "base/path.h"

namespace tresmor {

const Choices<SrchType> kTypes = {{"zero", SrchType::ZeroSize},
                                  {"duplicates", SrchType::Duplicates},
                                  {"names", SrchType::SameName},
                                  {"portions", SrchType::Portions}};

namespace {

const Choices<OutputFormat> kFormats = {{"text", OutputFormat::Text},
                                        {"groups", OutputFormat::Groups},
                                        {"groups0", OutputFormat::Groups0},
                                        {"json", OutputFormat::Json},
                                        {"csv", OutputFormat::Csv}};
const Choices<ProgressWhen> kProgress = {
    {"auto", ProgressWhen::Auto}, {"always", ProgressWhen::Always}, {"never", ProgressWhen::Never}};

}  // namespace

CLI::Option& TakesOneEachTime(CLI::Option* option, const std::string& value) {
  return *option->type_name(value)->option_text(value)->allow_extra_args(false);
}

void AddTypes(CLI::App& command, std::vector<std::string>& types, const std::string& help) {
  TakesOneEachTime(command.add_option("--types", types, help), "TYPE,...").delimiter(',')->check(OneOf(kTypes));
}

void AddFormat(CLI::App& command, PrintOptions& options) {
  AddChoice(command, "--format", options.format, kFormats, "text, groups, groups0, json or csv").type_name("FORMAT");
}

void AddSearchOptions(CLI::App& command, SearchOptions& options) {
  command.add_flag("--versions", options.versions, "Tell the versions of programs too");
  command.add_option("--save", options.save, "Save what was searched and found as the session FILE")
      ->type_name("FILE")
      ->check(CheckFileName);
  AddFormat(command, options);
  AddChoice(command, "--progress", options.progress, kProgress,
            "auto (on a terminal, without --quiet), always or never")
      .type_name("WHEN");
  command.add_flag("--quiet", options.quiet, "No remarks on stderr, only errors");
}

std::string CheckFileName(const std::string& text) { return text.empty() ? "'' is no file." : ""; }

void AddSession(CLI::App& command, std::string& session) {
  command.add_option("SESSION", session, "A file that was saved with --save")
      ->type_name("")
      ->required()
      ->check(CheckFileName);
}

void AddList(CLI::App& command, ResultList& list) {
  AddChoice(command, "--list", list, kTypes, "duplicates (default), zero, names or portions").type_name("LIST");
}

void TakeTypes(const std::vector<std::string>& names, std::initializer_list<SrchType> usual, PrintOptions& options) {
  const auto take = [&](SrchType type) { options.types[static_cast<std::size_t>(type)] = true; };
  for (const std::string& name : names) take(kTypes.at(name));
  if (names.empty() && options.PrintsGroups()) take(SrchType::Duplicates);
  if (names.empty() && !options.PrintsGroups()) std::for_each(usual.begin(), usual.end(), take);
  if (options.PrintsGroups() && std::count(options.types.begin(), options.types.end(), true) != 1) {
    throw WrongUse("This format prints one type: give --types only one.");
  }
}

void RemoveGuard(std::string& text) { text = std::string(StripNul(text)); }

void RemoveGuard(std::vector<std::string>& texts) {
  for (std::string& text : texts) RemoveGuard(text);
}

}  // namespace tresmor
