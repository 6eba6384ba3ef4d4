// The folders that a search keeps out of.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "base/path.h"

namespace tresmor {

// Texts of folders. The walk asks by paths with a separator at the end, so a text without one bars rows alone. Adding
// one again does nothing. An empty one begins every text.
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
