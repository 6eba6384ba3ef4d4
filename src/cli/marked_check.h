// Looks at marked files once more before they go: what would be left of their groups?
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "cli/result_reader.h"
#include "platform/file_operations.h"
#include "platform/file_system.h"

namespace tresmor {

struct SkippedRow {
  enum class Why {
    NoneStays,  // no file of its group would be left
    NoneEqual   // none that is left could be read and has its content
  };
  std::int32_t row = 0;
  Why why = Why::NoneStays;
};

struct CheckRules {
  bool verify = true;     // compare each marked file, byte by byte
  bool allowAll = false;  // whole groups may go, and are not compared
};

// Looks at the marked files of a list when it is made. A file stays if it isn't marked, is there, and isn't at the same
// time a marked one by another way: through links on its path, or spelled in another case. Further hard links are files
// of their own here, since the content stays with them. Interface thread; all is blocking.
class MarkedCheck {
 public:
  MarkedCheck(const ResultLists& results, ResultList kind, const FileSystem& files);

  // The groups with marked files of which none would stay, in their order. None in a list without groups.
  std::vector<RowGroup> GroupsThatGo();

  // The marked rows that are to be left alone, in their order. Progress and cancel by `watch`; after a cancel some are
  // missing.
  std::vector<SkippedRow> RowsToSkip(const CheckRules& rules, OperationWatch& watch);

 private:
  // One name of one file: the file, and where it has several names the folder and the name without regard to case.
  using Entry = std::tuple<std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::string>;

  std::optional<Entry> EntryOf(std::int32_t row);
  const FileIdentity& IdentityOf(const std::string& folder);
  std::vector<std::int32_t> Marked(RowGroup group) const;
  std::vector<std::string> Staying(RowGroup group);

  const ResultLists& results_;
  const ResultList kind_;
  const ListView& lst_;
  const FileSystem& files_;
  std::map<std::string, FileIdentity> folders_;
  std::set<Entry> marked_;
};

}  // namespace tresmor
