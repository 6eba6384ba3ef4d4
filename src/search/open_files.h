// The files of one comparison, kept open between pieces as far as descriptors allow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/stop_token.h"
#include "search/kept_files.h"

namespace tresmor {

// Used by one thread. Files are told by their place in the range that Start named.
class OpenFiles {
 public:
  // Keeps at most `limit` files open.
  OpenFiles(KeptFiles& kept, const StopToken& stop, std::size_t limit) : kept_(kept), stop_(stop), limit_(limit) {}

  // Closes everything and turns to `count` records from `first`.
  void Start(const FileProps& table, std::int32_t first, std::size_t count);
  void Close(int file);
  void CloseAll();

  struct Bytes {
    std::size_t got = 0;
    bool failed = false;
  };
  // Reads at `offset` as far as `into` and the recorded size go. Anything that keeps bytes of the recorded size from
  // coming is a failure: a file that can't be opened, isn't as long as its record says, or ends early. A lack of
  // descriptors is none and is waited out. Once the search is stopped nothing is read and nothing fails.
  Bytes Read(int file, std::int64_t offset, std::span<char> into);

 private:
  std::unique_ptr<FileReader> Open(int file, Errors& failure);

  KeptFiles& kept_;
  const StopToken& stop_;
  std::size_t limit_;
  const FileProps* table_ = nullptr;
  std::int32_t first_ = 0;
  std::size_t count_ = 0;
  std::size_t open_ = 0;
  std::vector<std::unique_ptr<FileReader>> readers_;
};

}  // namespace tresmor
