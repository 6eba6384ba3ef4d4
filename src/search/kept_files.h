// Files that were opened for their heads and stay open until they are compared: to open them again would cost an eighth
// of a search that is all big runs.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "base/stop_token.h"
#include "platform/file_system.h"
#include "search/file_props.h"

namespace tresmor {

// Any thread, unless told otherwise; only one at a time gives a record's file back. All whose bytes are compared is
// opened here.
class KeptFiles {
 public:
  // Keeps at most `limit` files, and never more than a quarter of what may be open.
  KeptFiles(const FileSystem& files, const StopToken& stop, std::size_t limit);
  ~KeptFiles() { CloseAll(); }
  KeptFiles(const KeptFiles&) = delete;
  KeptFiles& operator=(const KeptFiles&) = delete;

  // Descriptors for the comparisons; the rest is for what is kept here, and for folders.
  std::size_t LeftOpen() const { return files_.OpenLimit() / 2; }

  // The record's file, the one that was kept or opened now; from here on it is the caller's. A lack of descriptors is
  // waited out, after everything that is kept was closed and `giveBack` has closed what the caller can do without. So
  // null with TooManyFiles means that the search was stopped.
  std::unique_ptr<FileReader> Open(const FileProps& table, std::int32_t index, Errors& failure,
                                   const std::function<void()>& giveBack);

  // Takes the record's file back, to keep it or, if there is no room, to close it.
  void Keep(FileProp& record, std::unique_ptr<FileReader> reader);

  // Closes all and makes room. While no other thread is here.
  void Clear();

 private:
  // Locks or a map would cost more than they gain, with two threads that come here for each file. A record knows its
  // slot, and the slot its record: the number may be left over from before a Clear.
  struct Slot {
    std::atomic<FileReader*> reader{nullptr};
    std::atomic<const char*> owner{nullptr};  // the record's name, which stays where it is while records are sorted
  };

  bool Owns(const FileProp& record) const;
  void CloseAll();

  const FileSystem& files_;
  const StopToken& stop_;
  std::vector<Slot> slots_;
  std::atomic<std::size_t> used_{0};  // slots given out; goes on counting behind the last
};

}  // namespace tresmor
