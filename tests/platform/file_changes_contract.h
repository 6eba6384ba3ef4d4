// The implementations of FileChanges, and what tests of all of them share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/file_changes.h"
#include "platform/file_world.h"

namespace tresmor {

// What the suite needs of one implementation.
class FileChangesWorld {
 public:
  virtual ~FileChangesWorld() = default;
  virtual FileWorld& Place() = 0;
  virtual FileChanges& Changes() = 0;  // of the files in Place
  // An empty folder on another file system, with a separator at its end; empty if there is none.
  virtual std::string OtherDisk() = 0;
};

std::unique_ptr<FileChangesWorld> MakePosixChangesWorld();
std::unique_ptr<FileChangesWorld> MakeMemoryChangesWorld(PathStyle style);

struct ChangesImplementation {
  const char* name;
  std::function<std::unique_ptr<FileChangesWorld>()> make;
};

inline void PrintTo(const ChangesImplementation& implementation, std::ostream* out) { *out << implementation.name; }

class FileChangesContract : public testing::TestWithParam<ChangesImplementation> {
 protected:
  std::string At(std::string path) const {
    std::replace(path.begin(), path.end(), '/', files_.Style().separator);
    return place_.Root() + path;
  }
  bool Exists(const std::string& path) const {
    FileStat stat;
    return files_.Stat(path, stat) == Errors::None;
  }
  FileStat Stat(const std::string& path) const {
    FileStat stat;
    EXPECT_EQ(files_.Stat(path, stat), Errors::None) << path;
    return stat;
  }
  std::string Content(const std::string& path) const {
    Errors failure = Errors::None;
    const auto reader = files_.Open(path, failure);
    EXPECT_NE(reader, nullptr) << path;
    if (!reader) return "";
    std::string bytes(static_cast<std::size_t>(reader->Size()), '?');
    EXPECT_EQ(reader->ReadAt(0, bytes).got, bytes.size());
    return bytes;
  }
  // Something of every kind, a link that leads nowhere among them: nothing new may take the place of any.
  std::vector<std::string> MakeOneOfEach(const std::string& folder) {
    place_.MakeFile(At(folder + "/file"), "old");
    place_.MakeFolder(At(folder + "/folder"));
    place_.MakeLink(At(folder + "/link"), "file");
    place_.MakeLink(At(folder + "/nowhere"), "missing");
    place_.MakeFifo(At(folder + "/fifo"));
    std::vector<std::string> paths;
    for (const char* name : {"file", "folder", "link", "nowhere", "fifo"}) paths.push_back(At(folder + "/" + name));
    return paths;
  }

  std::unique_ptr<FileCopy> Begin(const std::string& from, const std::string& to) {
    Errors failure = Errors::Device;
    bool atSource = true;
    auto copy = changes_.BeginCopy(from, to, failure, atSource);
    EXPECT_EQ(failure, Errors::None) << from;
    EXPECT_NE(copy, nullptr) << from;
    return copy;
  }
  Errors BeginFailure(const std::string& from, const std::string& to, bool wantedAtSource) {
    Errors failure = Errors::None;
    bool atSource = !wantedAtSource;
    EXPECT_EQ(changes_.BeginCopy(from, to, failure, atSource), nullptr);
    EXPECT_EQ(atSource, wantedAtSource) << from << " to " << to;
    return failure;
  }
  // Goes to the end with one of the two walks through a file; gives the bytes that it passed.
  static std::int64_t WalkThrough(FileCopy& copy, FileCopy::Step (FileCopy::*next)(std::int64_t), std::int64_t most) {
    std::int64_t bytes = 0;
    for (;;) {
      const FileCopy::Step step = (copy.*next)(most);
      EXPECT_EQ(step.failure, Errors::None);
      EXPECT_LE(step.bytes, most);
      if (step.failure != Errors::None || step.bytes <= 0) return bytes;
      bytes += step.bytes;
    }
  }
  static std::int64_t CopyAll(FileCopy& copy, std::int64_t most = kMuch) {
    return WalkThrough(copy, &FileCopy::CopyNext, most);
  }
  static std::int64_t CompareAll(FileCopy& copy, std::int64_t most = kMuch) {
    return WalkThrough(copy, &FileCopy::CompareNext, most);
  }
  // The first failure of a comparison.
  static FileCopy::Step Difference(FileCopy& copy) {
    for (;;) {
      const FileCopy::Step step = copy.CompareNext(kMuch);
      if (step.failure != Errors::None || step.bytes == 0) return step;
    }
  }

  static constexpr std::int64_t kMuch = std::int64_t{1} << 40;

  const std::unique_ptr<FileChangesWorld> world_ = GetParam().make();
  FileWorld& place_ = world_->Place();
  FileChanges& changes_ = world_->Changes();
  const FileSystem& files_ = place_.Files();
};

inline auto AllChangesImplementations() {
  return testing::Values(
      ChangesImplementation{"Posix", MakePosixChangesWorld},
      ChangesImplementation{"Memory", [] { return MakeMemoryChangesWorld(PathStyle::Posix()); }},
      ChangesImplementation{"MemoryWindows", [] { return MakeMemoryChangesWorld(PathStyle::Windows()); }});
}
inline std::string NameOfChanges(const testing::TestParamInfo<ChangesImplementation>& info) { return info.param.name; }

}  // namespace tresmor
