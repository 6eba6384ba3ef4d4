// Names for newcomers: "name.ext", and where that is taken "name (2).ext", "name (3).ext" and so on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "base/path.h"

namespace tresmor {

inline constexpr std::size_t kLongestName = 255;  // bytes; there are disks that count characters and take more

// The name with a number in front of its extension, none for 1; its stem is shortened by whole characters where the
// name would have more than `most` bytes. A dot in front of a name starts no extension.
std::string NumberedName(std::string_view name, std::int64_t number, std::size_t most);

// Remembers the last number for each folder and name, so that a hundred thousand equal names cost two looks each and
// not a look at all their forerunners. One thread.
class FreeNames {
 public:
  explicit FreeNames(PathStyle style) : style_(style) {}

  struct Wish {
    std::string folder;
    std::string name;
    std::size_t most = kLongestName;  // bytes of a name with a number; without one it is tried as it is
  };
  // Whether something of this name stands in the folder.
  using Taken = std::function<bool(const std::string& name)>;

  // A name that nothing has and that was not given away since ForgetPromises.
  std::string Pick(const Wish& wish, const Taken& taken);
  // The next one, where a name that was picked turned out to be taken.
  std::string Next(const Wish& wish, const Taken& taken);

  void ForgetPromises() { promised_.clear(); }

 private:
  bool Promise(const Wish& wish, const std::string& name, const Taken& taken);

  const PathStyle style_;
  std::unordered_map<std::string, std::int64_t> last_;
  std::unordered_set<std::string> promised_;
};

}  // namespace tresmor
