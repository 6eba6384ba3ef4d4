#include "app/arguments.h"

#include <filesystem>
#include <system_error>

namespace tresmor {
namespace {

constexpr char kVersion[] = "tresmor " TRESMOR_VERSION "\n";
constexpr char kUse[] =
    "Use: tresmor [FILE.Tresmor]\n"
    "\n"
    "Opens Tresmor's window, which finds duplicate files, and loads the search session FILE.Tresmor.\n"
    "\n"
    "  --help     print this\n"
    "  --version  print the version\n"
    "\n"
    "The same search for a terminal: tresmor-cli --help\n";

// As it was typed where there is no working folder.
std::string FullPath(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path full = std::filesystem::absolute(path, failure);
  return failure ? path : full.string();
}

}  // namespace

Arguments ReadArguments(std::span<const char* const> words) {
  if (words.empty()) return {};
  const std::string word = words.front();
  if (words.size() > 1 || word.empty()) return {.answer = kUse, .areWrong = true};
  if (word == "--help") return {.answer = kUse};
  if (word == "--version") return {.answer = kVersion};
  if (word.starts_with('-')) return {.answer = kUse, .areWrong = true};
  return {.sessionFile = FullPath(word)};
}

}  // namespace tresmor
