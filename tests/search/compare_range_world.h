// What tests of the comparison share: one range of files in memory, compared on its own.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "search/comp_file_cnt.h"
#include "search/long_compare.h"
#include "support/memory_file_system.h"

namespace tresmor {

// A table of files of one folder, in the order given.
class Range {
 public:
  explicit Range(SearchLimits limits = {}) : limits_(limits) {}

  MemoryFileSystem& Files() { return files_; }

  void Add(std::string content, const std::string& name = "") {
    const auto size = static_cast<std::int64_t>(content.size());
    const std::string path = "/d/" + NameFor(name);
    files_.MakeFile(path, std::move(content));
    Record(size);
  }
  void Add(std::int64_t size, MemoryFileSystem::Generator content) {
    files_.MakeFile("/d/" + NameFor(""), size, std::move(content));
    Record(size);
  }

  enum class Threads { One, Shared };
  std::vector<std::int32_t> Compare(SizeRule rule = SizeRule::SameSize, bool tolerant = false,
                                    Threads threads = Threads::One) {
    names_.emplace_back();
    const FolderId folder = tree_.AddTop("/d/");
    FileProps table;
    table.records = records_;
    table.folders = &tree_;
    for (std::size_t k = 0; k < records_.size(); ++k) {
      table.records[k].folder = folder;
      table.records[k].name = names_[k].data();
      table.records[k].nameLength = static_cast<std::uint16_t>(names_[k].size());
    }
    const CompareRange range{0, table.Last(), records_.front().Sz};
    stop_.Reset();
    KeptFiles kept(files_, stop_, limits_.keptFiles);
    ThreadPool pool(threads == Threads::One ? 1 : 3);
    std::vector<std::unique_ptr<FileCompare>> compares;
    for (std::size_t k = 0; k < pool.Threads(); ++k) {
      compares.push_back(std::make_unique<FileCompare>(ComparePorts{kept, stop_, limits_, pool.Threads()}));
    }
    if (threads == Threads::Shared) {
      CompLongFiles(table, range, compares, pool);
    } else {
      compares.front()->CompFileCnt(table, range, tolerant, rule);
    }
    std::vector<std::int32_t> groups;
    for (const FileProp& record : table.records) groups.push_back(record.DupGrp);
    return groups;
  }

  bool Stopped() const { return stop_.Stopped(); }
  void StopWhenOpening() {
    files_.SetHook([this](const MemoryFileSystem::Call& call) {
      if (call.op == MemoryFileSystem::Op::Open) stop_.Stop();
    });
  }
  // Stops the comparison in front of the given number of reads.
  void StopAfter(int reads) {
    auto left = std::make_shared<std::atomic<int>>(reads);
    files_.SetHook([this, left](const MemoryFileSystem::Call& call) {
      if (call.op == MemoryFileSystem::Op::Read && --*left == 0) stop_.Stop();
    });
  }

 private:
  const std::string& NameFor(const std::string& name) {
    names_.push_back(name.empty() ? std::to_string(names_.size()) : name);
    return names_.back();
  }
  void Record(std::int64_t size) {
    FileProp record;
    record.Sz = size;
    records_.push_back(record);
  }

  SearchLimits limits_;
  MemoryFileSystem files_;
  StopToken stop_;
  FolderTree tree_;
  std::deque<std::string> names_;
  std::vector<FileProp> records_;
};

inline std::string Changed(std::string content, std::size_t at) {
  content[at] = '!';
  return content;
}

// Of each file; that a byte was read twice is an error.
inline std::map<std::string, std::int64_t> BytesRead(const MemoryFileSystem& files) {
  std::map<std::string, std::int64_t> bytes;
  std::map<std::pair<std::string, std::int64_t>, int> at;
  for (const auto& call : files.Calls()) {
    if (call.op != MemoryFileSystem::Op::Read) continue;
    bytes[call.path] += call.length;
    const int times = ++at[{call.path, call.offset}];
    EXPECT_EQ(times, 1) << call.path << " at " << call.offset;
  }
  return bytes;
}

}  // namespace tresmor
