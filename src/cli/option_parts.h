// What the options of several commands are made of.
#pragma once

#include <CLI/CLI.hpp>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "cli/options.h"

namespace tresmor {

template <class Value>
using Choices = std::map<std::string, Value>;

extern const Choices<SrchType> kTypes;

// One of the names of a table, told by what is wrong and not in the help. The rule's own name is all these names, with
// commas between; completions are made from that.
template <class Value>
CLI::Validator OneOf(const Choices<Value>& names) {
  std::string all;
  for (const auto& [name, value] : names) all += (all.empty() ? "" : ",") + name;
  return CLI::IsMember(names).description("").name(all);
}

// An option whose values have names. `names` outlives the parsing.
template <class Value, class Into>
CLI::Option& AddChoice(CLI::App& command, const std::string& option, Into& into, const Choices<Value>& names,
                       const std::string& help) {
  const auto take = [&into, &names](const std::string& name) { into = static_cast<Into>(names.at(name)); };
  return *command.add_option_function<std::string>(option, take, help)->check(OneOf(names));
}

// An option that may be repeated and takes one value each time. Of a list the parser's own help would say "VALUE ...",
// as if several could follow.
CLI::Option& TakesOneEachTime(CLI::Option* option, const std::string& value);

void AddTypes(CLI::App& command, std::vector<std::string>& types, const std::string& help);
void AddFormat(CLI::App& command, PrintOptions& options);
void AddSearchOptions(CLI::App& command, SearchOptions& options);
// Refuses the empty name of a file.
std::string CheckFileName(const std::string& text);

void AddSession(CLI::App& command, std::string& session);
void AddList(CLI::App& command, ResultList& list);

// Takes the types that were named, or else `usual`; of a format of mere paths that is duplicates. Throws WrongUse where
// such a format got several.
void TakeTypes(const std::vector<std::string>& names, std::initializer_list<SrchType> usual, PrintOptions& options);

// Takes off the NUL by which arguments are kept from the parser's own ideas of them.
void RemoveGuard(std::string& text);
void RemoveGuard(std::vector<std::string>& texts);

// What was parsed, without the guards of these members.
template <class Options, class... Members>
Options WithoutGuards(Options options, Members... members) {
  (RemoveGuard(options.*members), ...);
  return options;
}

}  // namespace tresmor
