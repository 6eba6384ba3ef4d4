// What the window's program is started with.
#pragma once

#include <span>
#include <string>

namespace tresmor {

struct Arguments {
  std::string sessionFile{};  // the full path of one to open; empty = none
  std::string answer{};       // empty, or what is to be printed in place of opening the window
  bool areWrong = false;      // the answer then says how they should be
};

// `words` are those behind the program's name, without options of the toolkit.
Arguments ReadArguments(std::span<const char* const> words);

}  // namespace tresmor
