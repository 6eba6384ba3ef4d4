// The folders that a search keeps out of.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "base/path.h"

namespace tresmor {

// Folders that the walk must not enter and that no row may start in, each with a separator at its end. A second equal
// key counts as present.
class ProtectDir {
 public:
  explicit ProtectDir(PathStyle style) : style_(style) {}
  void Add(std::string_view folder) { keys_.insert(style_.Key(folder)); }
  bool Holds(std::string_view folder) const { return !keys_.empty() && keys_.contains(style_.Key(folder)); }
  // Whether `text` begins with one of the keys.
  bool HoldsStartOf(std::string_view text) const {
    for (const std::string& key : keys_) {
      if (style_.StartsWith(text, key)) return true;
    }
    return false;
  }

 private:
  PathStyle style_;
  std::unordered_set<std::string> keys_;
};

}  // namespace tresmor
