// Looks at marked files once more before they go: what would be left of their groups?
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "cli/result_reader.h"
#include "fileops/emptied_folders.h"
#include "fileops/folders_above.h"
#include "platform/file_system.h"

namespace tresmor {

// Why a file is left alone.
enum class Objection {
  NoneStays,  // no file of its group would be left
  NoneEqual   // none that is left could be read and has its content
};

struct CheckRules {
  bool verify = true;     // compare each marked file, byte by byte
  bool allowAll = false;  // whole groups may go, and are not compared
};

// Takes down the marked files of a list when it is made, on the interface thread; after that it is any thread's, one at
// a time. A file stays if it isn't marked, is there, doesn't go with a folder above it, and isn't at the same time a
// marked one by another way: through links on its path, or spelled in another case. Further hard links are files of
// their own here, since the content stays with them. All is blocking.
class MarkedCheck {
 public:
  // `emptied` are the folders that go with all that lies below them, once the marked files have gone.
  MarkedCheck(const ResultLists& results, ResultList kind, const FileSystem& files, EmptiedFolders emptied);

  // The groups with marked files of which none would stay, in their order. None in a list without groups.
  std::vector<RowGroup> GroupsThatGo();

  // What speaks against the going of a marked file, as its group is now. After `stop` said true the answer is nothing.
  std::optional<Objection> ObjectionTo(const std::string& path, const CheckRules& rules,
                                       const std::function<bool()>& stop);

  // A marked file has stayed after all, so that none of the folders that it lies in may go.
  void HoldFoldersOf(const std::string& path);
  // Whether the folder of a file is one that goes, if it is found empty.
  bool MayEmptyFolderOf(const std::string& path);

 private:
  // One name of one file: the file, and where it has several names the folder and the name without regard to case.
  using Entry = std::tuple<std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::string>;
  struct Group {
    RowGroup rows;
    std::vector<std::string> others;  // that aren't marked
  };

  void TakeDown(const ListView& lst, RowGroup rows);
  std::optional<Entry> EntryOf(const std::string& path);
  bool AnyAbove(const std::string& path, const std::function<bool(const FolderKey&)>& is);
  bool GoesWithAFolder(const std::string& path);
  bool Stays(const std::string& path, const std::optional<Entry>& judged);
  std::optional<Objection> JudgeIn(const Group& group, const std::string& path, const CheckRules& rules,
                                   const std::function<bool()>& stop);

  const FileSystem& files_;
  const EmptiedFolders emptied_;
  FoldersAbove folders_;
  std::set<FolderKey> held_;  // above marked files that have stayed
  std::set<Entry> marked_;
  std::vector<Group> groups_;                             // with marked files
  std::unordered_map<std::string, std::size_t> groupOf_;  // by the paths of marked files
};

}  // namespace tresmor
