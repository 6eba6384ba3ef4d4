// The implementations of FileSystem, and what tests of all of them share.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/file_world.h"

namespace tresmor {

struct Implementation {
  const char* name;
  std::function<std::unique_ptr<FileWorld>()> make;
};

inline void PrintTo(const Implementation& implementation, std::ostream* out) { *out << implementation.name; }

class FileSystemContract : public testing::TestWithParam<Implementation> {
 protected:
  // Full path of a path that is written with '/'.
  std::string At(std::string path) const {
    std::replace(path.begin(), path.end(), '/', files_.Style().separator);
    return world_->Root() + path;
  }
  std::string Separator() const { return files_.Style().Tail(); }

  Errors ListFailure(const std::string& folder) const {
    FolderListing listing;
    return files_.List(folder, listing);
  }
  std::vector<std::string> Names(const std::string& folder) const {
    FolderListing listing;
    EXPECT_EQ(files_.List(folder, listing), Errors::None);
    std::vector<std::string> names;
    for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
    return names;
  }
  FileStat Stat(const std::string& path) const {
    FileStat stat;
    EXPECT_EQ(files_.Stat(path, stat), Errors::None) << path;
    return stat;
  }
  Errors StatFailure(const std::string& path) const {
    FileStat stat;
    return files_.Stat(path, stat);
  }
  std::unique_ptr<FileReader> Open(const std::string& path) const {
    Errors failure = Errors::Device;
    auto reader = files_.Open(path, failure);
    EXPECT_EQ(failure, Errors::None) << path;
    EXPECT_NE(reader, nullptr) << path;
    return reader;
  }
  Errors OpenFailure(const std::string& path) const {
    Errors failure = Errors::None;
    EXPECT_EQ(files_.Open(path, failure), nullptr);
    return failure;
  }
  std::unique_ptr<Folder> OpenFolder(const std::string& path) const {
    Errors failure = Errors::Device;
    auto folder = files_.OpenFolder(path, failure);
    EXPECT_EQ(failure, Errors::None) << path;
    return folder;
  }
  Errors OpenFolderFailure(const std::string& path) const {
    Errors failure = Errors::None;
    EXPECT_EQ(files_.OpenFolder(path, failure), nullptr);
    return failure;
  }
  static std::string Read(FileReader& reader, std::int64_t offset, std::size_t length) {
    std::string bytes(length, '?');
    const FileReader::Result result = reader.ReadAt(offset, bytes);
    EXPECT_EQ(result.failure, Errors::None);
    bytes.resize(result.got);
    return bytes;
  }
  std::string Content(const std::string& path) const {
    const auto reader = Open(path);
    return reader ? Read(*reader, 0, static_cast<std::size_t>(reader->Size())) : std::string();
  }

  const std::unique_ptr<FileWorld> world_ = GetParam().make();
  const FileSystem& files_ = world_->Files();
};

inline auto AllImplementations() {
  return testing::Values(Implementation{"Posix", MakePosixWorld},
                         Implementation{"Memory", [] { return MakeMemoryWorld(PathStyle::Posix()); }},
                         Implementation{"MemoryWindows", [] { return MakeMemoryWorld(PathStyle::Windows()); }});
}
inline std::string NameOf(const testing::TestParamInfo<Implementation>& info) { return info.param.name; }

}  // namespace tresmor
