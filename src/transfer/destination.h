// Folders that files are put into: made where they are missing, and never entered through a link below the one that
// the user chose.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/file_changes.h"
#include "platform/file_system.h"
#include "transfer/trouble.h"

namespace tresmor {

// Which folder each path led to when it was entered first; with a separator at its end where a link may lead there.
using EnteredFolders = std::unordered_map<std::string, FileIdentity>;

// Lives as long as one operation. A folder that was entered has to stay the same one: whatever else stands in its place
// later isn't entered, nor is the folder made again. That holds for all operations that are given the same
// `EnteredFolders`. One thread.
class Destination {
 public:
  Destination(const FileSystem& files, FileChanges& changes,
              std::shared_ptr<EnteredFolders> entered = std::make_shared<EnteredFolders>())
      : files_(files), changes_(changes), entered_(std::move(entered)) {}

  // Makes sure that there is a folder at `folder`; links on the way to it are followed.
  Trouble Enter(const std::string& folder);
  // The same for a folder that is `base` or lies below it: from there on links are refused.
  Trouble EnterBelow(const std::string& folder, const std::string& base);

  // Waits until the entries of a folder that was entered are on the disk, those of folders above it that had to be made
  // too.
  Errors Flush(const std::string& folder);

 private:
  enum class Links { Follow, Refuse };
  Errors Make(const std::string& folder);
  Trouble Note(const std::string& folder, Links links);
  bool IsKnown(const std::string& folder, Links links, Trouble& trouble) const;
  std::string Followed(const std::string& folder, Links links) const;

  const FileSystem& files_;
  FileChanges& changes_;
  const std::shared_ptr<EnteredFolders> entered_;
  std::vector<std::string> unflushed_;  // folders that others were made in, the upper before the lower
};

}  // namespace tresmor
