// A file system in memory for tests: keeps to the contract of the port, records every call, and fails or changes where
// a test says so.
//
// Paths start at one root ("/a/b", or "C:\a\b" where "C:" is a folder of the root); a relative path starts there too.
// Folders list in the order of creation. Making something makes the folders above it. A folder named ".Trash" is a
// trash folder. All routines may be called from any thread; the ones that make and change things throw
// std::logic_error for a path that does not fit (nothing there, or something there already).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace tresmor {

class MemoryFileSystem final : public FileSystem {
 public:
  enum class Op { List, Stat, Open, Read, Cached, ReadAhead };
  struct Call {
    Op op = Op::List;
    std::string path;         // as it was given; of a file in an open folder with the folder in front
    std::int64_t offset = 0;  // of Read and ReadAhead
    std::int64_t length = 0;
    friend bool operator==(const Call&, const Call&) = default;
  };
  // Fills `into` with the bytes at `offset`. The same bytes for the same place, each time and from any thread.
  using Generator = std::function<void(std::int64_t offset, std::span<char> into)>;

  explicit MemoryFileSystem(PathStyle style = PathStyle::Posix());
  ~MemoryFileSystem() override;

  // Making and changing. Dates are seconds since 1970 UTC; what is made gets the next second of a clock of its own.
  void MakeFolder(const std::string& path);  // one that stands there already is left as it is
  void MakeFile(const std::string& path, std::string content);
  void MakeFile(const std::string& path, std::int64_t size, Generator content);
  void MakeLink(const std::string& path, std::string target);  // a target that is not absolute starts at the link
  void MakeFifo(const std::string& path);
  void MakeHardLink(const std::string& path, const std::string& existing);
  void Remove(const std::string& path);  // with all below it; files that are open stay readable
  void SetContent(const std::string& path, std::string content);  // readers that are open see it
  void SetHidden(const std::string& path);  // the attribute of the "\" style; in the "/" style the name alone tells
  void SetModified(const std::string& path, std::int64_t seconds);
  void SetUnreadable(const std::string& path, bool unreadable = true);  // a folder then gives nothing below it either
  void SetReadOnly(const std::string& path, bool readOnly = true);      // for MemoryFileWriter
  bool IsReadOnly(const std::string& path) const;
  void SetLongestName(std::size_t bytes) { longestName_ = bytes; }  // 255 until then; before anything uses it
  void SetForbidden(const std::string& folder);                     // as if on a pseudo file system

  // The steps that MemoryFileChanges is made of. They follow links on the way, give failures as the ports do, and are
  // not recorded.
  Errors Look(const std::string& path, FileStat& stat) const;
  Errors Add(const std::string& path, EntryKind kind);  // an empty file or folder, in a folder that is there
  Errors Move(const std::string& from, const std::string& to);
  Errors Drop(const std::string& path);  // a folder only if it is empty

  // Failures, each until it is set again; Errors::None ends it. They go with the file, not with the path.
  void FailList(const std::string& path, Errors failure, std::size_t entriesBefore = 0);
  void FailStat(const std::string& path, Errors failure);
  void FailOpen(const std::string& path, Errors failure);
  void FailRead(const std::string& path, std::int64_t offset, Errors failure);  // the bytes before can be read

  // Called before each call does its work, on the caller's thread; may change the file system. Set while no call runs.
  void SetHook(std::function<void(const Call&)> hook);
  void SetOpenLimit(std::size_t limit);  // an Open beyond it fails with TooManyFiles
  void SetCached(CacheState state);

  std::vector<Call> Calls() const;
  void ClearCalls();
  std::size_t OpenFiles() const;
  std::size_t PeakOpenFiles() const;

  // The port.
  PathStyle Style() const override { return style_; }
  Errors List(const std::string& folder, FolderListing& listing) const override;
  Errors Stat(const std::string& path, FileStat& stat) const override;
  std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const override;
  std::unique_ptr<Folder> OpenFolder(const std::string& folder, Errors& failure) const override;
  std::string Resolved(const std::string& path) const override;
  std::size_t OpenLimit() const override;
  CacheState Cached(const std::string& path) const override;
  void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const override;
  bool IsTrash(std::string_view folder) const override;

 private:
  struct Node;
  using NodePtr = std::shared_ptr<Node>;
  // A node and the name that it was found by.
  struct Place {
    NodePtr node;
    std::string name;
  };
  enum class LastLink { Follow, Stay };
  class Reader;
  class OpenedFolder;
  class Opened;

  void Note(Call call) const;
  // An entry of a folder, or any path from the root; `whole` is what is noted.
  Errors StatFrom(const NodePtr& start, std::string_view path, const std::string& whole, FileStat& stat) const;
  std::unique_ptr<FileReader> OpenFrom(const NodePtr& start, std::string_view path, const std::string& whole,
                                       Errors& failure) const;
  // These expect the lock to be held.
  Errors Find(std::string_view path, LastLink lastLink, Place& place) const;
  Errors FindFrom(const NodePtr& start, std::string_view path, LastLink lastLink, Place& place) const;
  Errors Enter(std::vector<Place>& way, std::string_view path, LastLink lastLink, int links) const;
  Errors Step(std::vector<Place>& way, std::string_view name, bool follow, int links) const;
  NodePtr Get(const std::string& path, LastLink lastLink = LastLink::Stay) const;
  NodePtr GetFile(const std::string& path) const;
  NodePtr FolderFor(std::string_view path);
  Errors FindFree(const std::string& path, NodePtr& folder) const;
  void Unlink(const NodePtr& folder, std::string_view name);
  void Link(const NodePtr& folder, std::string_view name, NodePtr node);
  void Put(const std::string& path, NodePtr node);
  NodePtr NewNode(EntryKind kind);
  void Touch(Node& node);
  Errors StatOf(const Place& place, FileStat& stat) const;
  bool IsHidden(const Place& place) const;

  const PathStyle style_;
  mutable std::mutex mutex_;
  NodePtr root_;
  std::uint64_t nextInode_ = 1;
  std::int64_t clock_ = 1'000'000'000;
  std::shared_ptr<const std::function<void(const Call&)>> hook_;
  std::size_t openLimit_ = 1024;
  CacheState cached_ = CacheState::Unknown;
  mutable std::vector<Call> calls_;
  mutable std::size_t open_ = 0;
  mutable std::size_t peakOpen_ = 0;
  std::size_t longestName_ = 255;
};

}  // namespace tresmor
