#include "fileops/folders_above.h"

namespace tresmor {

const FileIdentity& FoldersAbove::IdentityOf(const std::string& folder) {
  const auto [known, isNew] = known_.try_emplace(folder);
  FileStat stat;
  // The folder may be a link to one, which only a name below it sees through.
  if (isNew && files_.Stat(folder + ".", stat) == Errors::None) known->second = stat.identity;
  return known->second;
}

bool FoldersAbove::Any(std::string folder, const std::function<bool(const FolderKey&)>& is) {
  FileIdentity identity = IdentityOf(folder);
  for (FileIdentity below; identity != below; identity = IdentityOf(folder)) {
    if (is(KeyOf(identity))) return true;
    below = identity;
    folder.append("..").append(files_.Style().Tail());
  }
  return false;
}

}  // namespace tresmor
