// Whether files are whole. Each file of a test has bytes of its own, so that it is known wherever it stands.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace tresmor {

using Files = std::map<std::string, std::string>;  // their bytes, or what stands for them, by path

inline std::set<std::string> ContentsOf(const Files& files) {
  std::set<std::string> contents;
  for (const auto& [path, bytes] : files) contents.insert(bytes);
  return contents;
}

// All these bytes stand somewhere.
inline testing::AssertionResult HasAll(const Files& files, const std::set<std::string>& wanted) {
  const std::set<std::string> there = ContentsOf(files);
  for (const std::string& bytes : wanted) {
    if (!there.contains(bytes)) return testing::AssertionFailure() << "lost: " << bytes;
  }
  return testing::AssertionSuccess();
}

// What stands under a name of the user's is whole: copies that are not have names of their own.
inline testing::AssertionResult NothingHalf(const Files& files, const std::set<std::string>& whole) {
  for (const auto& [path, bytes] : files) {
    const bool own = path.ends_with(".part") || path.ends_with(".trashinfo") || path.find("/state/") != path.npos;
    if (!own && !whole.contains(bytes)) {
      return testing::AssertionFailure() << path << " holds " << bytes;
    }
  }
  return testing::AssertionSuccess();
}

// Each of these stands in its place.
inline testing::AssertionResult InPlace(const Files& files, const Files& wanted) {
  for (const auto& [path, bytes] : wanted) {
    const auto found = files.find(path);
    if (found == files.end()) return testing::AssertionFailure() << "not there: " << path;
    if (found->second != bytes) return testing::AssertionFailure() << "replaced: " << path;
  }
  return testing::AssertionSuccess();
}

}  // namespace tresmor
