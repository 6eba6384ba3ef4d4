// What a shell offers while a command line of the console program is being typed.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tresmor {

// The word that asks for this in place of a command. The shells' scripts know it, no help names it.
inline constexpr char kComplete[] = "complete";

// Answers in place of offers: any file, or any folder, would fit.
inline constexpr char kOfferFiles[] = "files\n";
inline constexpr char kOfferFolders[] = "folders\n";

// `words` are those behind the program's name, the last of them the one being typed, which may be empty. Gives one line
// for each word that could stand in its place and begins like it, with a tab and what it means behind it, or one of the
// answers above.
std::string Completions(CLI::App& app, const std::vector<std::string>& words);

}  // namespace tresmor
