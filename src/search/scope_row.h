// One row of the scope list as the search reads it: cell texts, exactly as the list holds them.
#pragma once

#include <string>

namespace tresmor {

struct ScopeRow {
  std::string Text;          // such as "/home/ann/*.jpg;*.gif", or "/home/ann/" of a folder kept out
  std::string SubFolder;     // "Yes" or "No"
  std::string MinSize;       // kilobytes that a file must exceed, if any
  std::string MaxSize;       // kilobytes that it must stay below, if any
  std::string Date;          // since which it was modified, if any
  std::string SearchTarget;  // "Yes" or "No"
  int SmallIcon = kIncluded;

  // A row is kept out or searched by its icon alone, whatever its cells say.
  static constexpr int kIncluded = 1;
  static constexpr int kExcluded = 2;
};

}  // namespace tresmor
