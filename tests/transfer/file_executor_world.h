// What tests of FileExecutor share.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "transfer/transfer_world.h"

namespace tresmor {

class FileExecutorTest : public testing::Test {
 protected:
  void Make(const std::string& path) { files.MakeFile(path, "bytes of " + path); }
  bool Stands(const std::string& path) const {
    FileStat stat;
    return files.Stat(path, stat) == Errors::None;
  }
  std::string Bytes(const std::string& path) const {
    const auto all = AllFiles(files);
    const auto found = all.find(path);
    return found == all.end() ? "nothing" : found->second;
  }
  // Nothing but what was named stands in the folder.
  std::vector<std::string> Names(const std::string& folder) const {
    FolderListing listing;
    EXPECT_EQ(files.List(folder, listing), Errors::None);
    std::vector<std::string> names;
    for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
    std::ranges::sort(names);
    return names;
  }
  void ExpectDone(const OperationResult& result) {
    EXPECT_EQ(result.code, OperationCode::Done) << result.description;
    EXPECT_EQ(result.description, "");
  }
  void ExpectFailed(const OperationResult& result, OperationCode code, const std::string& description) {
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.description, description);
  }

  Disks disks;
  MemoryFileSystem& files = disks.files;
  Program program{disks};
  MemoryFileChanges& changes = program.changes;
  ScriptedWatch& watch = program.watch;
};

}  // namespace tresmor
