// The table of file records that a search works on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "search/col_files.h"

namespace tresmor {

// DupGrp of a record that is in no group. A group goes by the index of its lowest record, the leader, so that its
// number needs no counter and the leader is the record whose DupGrp is its own index.
inline constexpr std::int32_t kNoGroup = -1;
inline constexpr std::int32_t kDropped = -2;  // only while a block is being judged
inline constexpr std::int32_t kReadError = -3;

// One catalogued file. 32 bytes, since a search may hold millions.
struct FileProp {
  std::int64_t Sz = 0;  // bytes; what the file grows or shrinks by afterwards goes unseen until it is opened
  const char* name = nullptr;
  FolderId folder = 0;
  std::int32_t DupGrp = kNoGroup;
  std::uint16_t nameLength = 0;
  bool IsSrchTarget = false;
  std::uint32_t slot = 0xFFFFFFFF;  // where its file is kept open, if it is

  std::string_view Name() const { return {name, nameLength}; }
};

// Indexes count from 0. The catalogue outlives the table.
struct FileProps {
  std::vector<FileProp> records;
  const FolderTree* folders = nullptr;
  std::vector<std::unique_ptr<Folder>> openFolders;  // by FolderId, as far as descriptors allow

  // The record's folder, if it is open.
  const Folder* OpenFolder(std::int32_t i) const {
    const FolderId id = (*this)[i].folder;
    return id < openFolders.size() ? openFolders[id].get() : nullptr;
  }
  std::int32_t Last() const { return static_cast<std::int32_t>(records.size()) - 1; }
  FileProp& operator[](std::int32_t i) { return records[static_cast<std::size_t>(i)]; }
  const FileProp& operator[](std::int32_t i) const { return records[static_cast<std::size_t>(i)]; }
  std::string Path(std::int32_t i) const {
    std::string path = folders->Path((*this)[i].folder);
    return path.append((*this)[i].Name());
  }
};

}  // namespace tresmor
