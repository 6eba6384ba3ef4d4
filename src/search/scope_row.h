// One row of the scope list as the search reads it: cell texts, exactly as the list holds them.
#pragma once

#include <string>

namespace tresmor {

struct ScopeRow {
  std::string Text;          // folder with a separator at its end, directly followed by patterns parted by ';'
  std::string SubFolder;     // "Yes" or "No"
  std::string MinSize;       // kilobytes, exclusive; empty = none
  std::string MaxSize;       // kilobytes, exclusive; empty = none
  std::string Date;          // a date text, empty = any
  std::string SearchTarget;  // "Yes" or "No"
  int SmallIcon = kIncluded;

  // The icon is the only sign that tells a folder to search from one to keep out.
  static constexpr int kIncluded = 1;
  static constexpr int kExcluded = 2;
};

}  // namespace tresmor
