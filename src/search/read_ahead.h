// Asking a cold disk for the files of a search before they are compared.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

#include "base/stop_token.h"
#include "platform/file_system.h"
#include "search/file_props.h"

namespace tresmor {

// A thread that walks some files in the order in which they will be read and stays a little ahead of the readers. Only
// worth it where the files aren't in memory yet, so it looks at a few of them first and stays asleep if they are.
class ReadAhead {
 public:
  // Asks for the first `bytesEach` bytes, or all if it has fewer, of each record of `order`.
  ReadAhead(const FileProps& table, const FileSystem& files, const StopToken& stop, std::vector<std::int32_t> order,
            std::int64_t bytesEach);
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  // Any thread: the files in front of this place of `order` are being read or have been.
  void Reached(std::size_t place);

 private:
  bool Cold() const;
  void Run();
  std::int64_t BytesOf(std::size_t place) const;

  const FileProps& table_;
  const FileSystem& files_;
  const StopToken& stop_;
  const std::vector<std::int32_t> order_;
  const std::int64_t bytesEach_;
  std::atomic<std::size_t> reached_{0};
  std::atomic<bool> quit_{false};
  std::thread thread_;
};

}  // namespace tresmor
