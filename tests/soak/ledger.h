// Keeps account of the bytes of all files: what stood there and wasn't deleted for good has to stand somewhere.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "support/memory_file_system.h"

namespace tresmor::soak {

// Any thread, but for Begin and Missing, which run while nothing else does. The program's own
// files aren't counted: those that it keeps for itself, copies that it has begun, notes of the trash.
class Ledger {
 public:
  explicit Ledger(const MemoryFileSystem& files) : files_(files) {}

  // What stands now is owed from now on. All files can be read.
  void Begin();
  // Somebody else made a file, or let one go: by that alone nothing is lost.
  void Made(const std::string& path, const std::string& content);
  void LetGo(const std::string& content);
  // The program was told to delete what is at `path` for good.
  void Condemn(const std::string& path);
  // What should be there and isn't, told for people. All files can be read.
  std::vector<std::string> Missing() const;

 private:
  std::map<std::string, std::string> Counted() const;

  const MemoryFileSystem& files_;
  mutable std::mutex mutex_;
  std::map<std::string, std::int64_t> owed_;             // files of each content
  std::map<std::string, std::set<std::string>> seenAt_;  // contents of each path since Begin
  std::set<std::string> condemned_;
};

}  // namespace tresmor::soak
