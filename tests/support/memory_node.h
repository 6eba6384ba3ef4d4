// A file, folder or link of a MemoryFileSystem; for its own sources alone.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>

#include "support/memory_file_system.h"

namespace tresmor {

struct MemoryFileSystem::Node {
  EntryKind kind = EntryKind::File;
  bool link = false;
  bool hidden = false;
  bool unreadable = false;
  bool readOnly = false;
  bool forbidden = false;
  std::uint64_t inode = 0;
  std::uint64_t links = 1;
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  std::string content;  // of a link its target
  std::int64_t size = 0;
  Generator generator;  // stands in for the content where set

  std::list<Place> children;
  std::unordered_map<std::string, std::list<Place>::iterator> byKey;

  Errors listFailure = Errors::None;
  std::size_t listedBefore = 0;
  Errors statFailure = Errors::None;
  Errors openFailure = Errors::None;
  Errors readFailure = Errors::None;
  std::int64_t readableBytes = 0;

  void SetContent(std::string bytes) {
    content = std::move(bytes);
    size = static_cast<std::int64_t>(content.size());
    generator = nullptr;
  }
};

}  // namespace tresmor
