// What the files of one comparison are to each other, worked out block by block.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "search/file_props.h"

namespace tresmor {

// Which files may stand in one group: duplicates are of one size, portions of different sizes.
enum class SizeRule { SameSize, DifferentSizes };

// Knows nothing of files and bytes: it is told which records failed in a block and which pairs agree there.
//
// In the first block records that agree and have no group yet become one, named after its lowest record. From then on
// nobody joins: whoever disagrees with the group's leader has to go, and those who had to go from one group in one
// block may stand together under the lowest of them. What is left over takes no part any more.
class Verdict {
 public:
  // Records are told by their place in `range` from here on; `first` is the table's index of range[0]. With `tolerant`
  // a member that disagrees stays as long as the budget of misses, one for all groups together, isn't overspent; then
  // nothing agrees any more.
  Verdict(std::span<FileProp> range, std::int32_t first, SizeRule rule, bool tolerant, std::int64_t tolBudget);

  using Failed = std::function<bool(int record)>;
  using Agree = std::function<bool(int leader, int record)>;

  // Judges the first block, then each later one. Blocks in which all members of each group agree and none fails may be
  // left out.
  void JudgeFirst(const Failed& failed, const Agree& agree);
  void JudgeNext(const Failed& failed, const Agree& agree);

  // Whether this record's bytes can still matter: it is in a group with others.
  bool Open(int record) const { return open_[static_cast<std::size_t>(record)]; }
  bool AnyOpen() const { return std::find(open_.begin(), open_.end(), true) != open_.end(); }

 private:
  int Count() const { return static_cast<int>(range_.size()); }
  std::int32_t& Group(int record) { return range_[static_cast<std::size_t>(record)].DupGrp; }
  std::int64_t Size(int record) const { return range_[static_cast<std::size_t>(record)].Sz; }
  bool Agrees(const Agree& agree, int leader, int record) const {
    return (!tolerant_ || tolBudget_ >= 0) && agree(leader, record);
  }
  bool ForgivesMiss() { return tolerant_ && --tolBudget_ >= 0; }
  std::size_t Place(std::int32_t group) const { return static_cast<std::size_t>(group - first_); }
  bool MayStand(int leader, const std::vector<int>& others) const;
  void TakeUp(int leader, const std::vector<int>& others);
  void TestMembers(int leader, const std::vector<int>& others, const Agree& agree);
  void CloseBlock();

  std::span<FileProp> range_;
  std::int32_t first_;
  SizeRule rule_;
  bool tolerant_;
  std::int64_t tolBudget_;
  std::vector<bool> open_;
};

}  // namespace tresmor
