// What the walk owes to its threads: the same catalogue with any number of them, circles that end, and stops.
#include "search/folder_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "search/walk_support.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Op = MemoryFileSystem::Op;

// Passes all on to another file system, but for one folder that stands for another one, as after "mount --bind".
class BoundFileSystem final : public FileSystem {
 public:
  BoundFileSystem(const FileSystem& files, std::string at, std::string source)
      : files_(files), at_(std::move(at)), source_(std::move(source)) {}

  PathStyle Style() const override { return files_.Style(); }
  Errors List(const std::string& folder, FolderListing& listing) const override {
    ++listed_;
    return files_.List(Bound(folder), listing);
  }
  Errors Stat(const std::string& path, FileStat& stat) const override { return files_.Stat(Bound(path), stat); }
  void StatAll(const std::string& folder, std::span<const std::string_view> names, std::span<FileStat> stats,
               std::span<Errors> failures) const override {
    files_.StatAll(Bound(folder), names, stats, failures);
  }
  std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const override {
    return files_.Open(Bound(path), failure);
  }
  std::size_t OpenLimit() const override { return files_.OpenLimit(); }
  CacheState Cached(const std::string& path) const override { return files_.Cached(Bound(path)); }
  void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const override {
    files_.ReadAhead(Bound(path), offset, length);
  }
  bool IsTrash(std::string_view folder) const override { return files_.IsTrash(folder); }

  int Listed() const { return listed_; }

 private:
  std::string Bound(std::string path) const {
    for (std::size_t found = path.rfind(at_); found != path.npos; found = path.rfind(at_)) {
      path.replace(0, found + at_.size(), source_);
    }
    return path;
  }

  const FileSystem& files_;
  const std::string at_;
  const std::string source_;
  mutable std::atomic<int> listed_ = 0;
};

TEST(BoundFolders, ACircleIsNotEnteredAgain) {
  MemoryFileSystem files;
  files.MakeFile("/t/1", "");
  files.MakeFile("/t/s/2", "");
  files.MakeFile("/t/s/ring/covered", "");
  const BoundFileSystem bound(files, "/ring/", "/t/");
  Walk walk(bound);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/s/2", "/t/1"));
  EXPECT_EQ(bound.Listed(), 3);
  EXPECT_FALSE(walk.catalogue.ReachedTwice());
}

TEST(BoundFolders, ACircleThatAnotherRowStartedInIsNotEnteredAgain) {
  MemoryFileSystem files;
  files.MakeFile("/t/1.jpg", "");
  files.MakeFile("/t/2.gif", "");
  files.MakeFolder("/t/s/ring");
  const BoundFileSystem bound(files, "/ring/", "/t/");
  Walk walk(bound);
  walk.Load({Row("/t/s/ring/*.jpg"), Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/s/ring/1.jpg", "/t/1.jpg", "/t/2.gif"));
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

TEST(BoundFolders, ASecondPathBesideTheFirstIsWalkedAndNoted) {
  MemoryFileSystem files;
  files.MakeFile("/t/a/1", "");
  files.MakeFolder("/t/b");
  const BoundFileSystem bound(files, "/t/b/", "/t/a/");
  Walk walk(bound);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/a/1", "/t/b/1"));
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

void MakeForest(MemoryFileSystem& files, const std::string& folder, int levels) {
  const char* const names[] = {"one.jpg", "two.gif", "three.txt", "report"};
  for (int i = 0; i < 5; ++i) {
    if (levels > 0) MakeForest(files, folder + "sub" + std::to_string(i) + "/", levels - 1);
    if (i < 4) files.MakeFile(folder + names[i], std::string(static_cast<std::size_t>(i) * 700, 'x'));
  }
}

std::vector<ScopeRow> ForestRows() {
  ScopeRow sized = AreaRow("/forest/sub2/*.*");
  sized.MinSize = "0";
  return {AreaRow("/forest/*.*"), Row("/forest/sub1/*.jpg;*.gif;report"), sized, Row("/forest/sub1/sub4/*.*")};
}

TEST(Threads, TheCatalogueIsTheSameWithAnyNumberOfThem) {
  MemoryFileSystem files;
  MakeForest(files, "/forest/", 4);
  // Shuffles the schedule: now and then a call gives its turn away.
  files.SetHook([turn = std::make_shared<std::atomic<unsigned>>(0)](const MemoryFileSystem::Call&) {
    if ((*turn)++ * 2654435761u >> 30 == 0) std::this_thread::yield();
  });
  const auto catalogue = [&](std::size_t threads) {
    Walk walk(files, threads);
    walk.Load(ForestRows(), Walk::Class::Targets);
    walk.Load(ForestRows(), Walk::Class::Areas);
    return std::pair(walk.Paths(), walk.Targets());
  };
  const auto alone = catalogue(1);
  EXPECT_EQ(alone.first.size(), 781u * 4);
  EXPECT_EQ(catalogue(2), alone);
  EXPECT_EQ(catalogue(8), alone);
  EXPECT_EQ(catalogue(8), alone);
}

TEST(Stop, WhileListingEndsTheWalk) {
  MemoryFileSystem files;
  files.MakeFile("/a/1", "");
  MakeForest(files, "/forest/", 3);
  files.MakeFile("/z/1", "");
  Walk walk(files);
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.path == "/forest/") walk.stop.Stop();
  });
  walk.Load({Row("/a/*.*"), Row("/forest/*.*"), Row("/z/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/a/1"));
  EXPECT_EQ(files.Calls().size(), 2u);
  EXPECT_THAT(walk.observer.highlighted, ElementsAre(1, 2));
}

TEST(Stop, WhileAskingForFilesEndsTheWalk) {
  MemoryFileSystem files;
  MakeForest(files, "/forest/", 3);
  Walk walk(files, 1);
  std::atomic<int> asked = 0;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op != Op::Stat) return;
    ++asked;
    walk.stop.Stop();
  });
  ScopeRow row = Row("/forest/*.*");
  row.MinSize = "0";
  walk.Load({row});
  EXPECT_THAT(walk.Paths(), IsEmpty());
  EXPECT_EQ(asked, 4);  // the one folder that was being asked for
}

TEST(Stop, InABoxEndsTheWalk) {
  MemoryFileSystem files;
  for (int i = 0; i < 5; ++i) {
    files.MakeFile("/t/" + std::to_string(i), "");
    if (i > 0) files.FailStat("/t/" + std::to_string(i), Errors::PermissionDenied);
  }
  Walk walk(files);
  walk.observer.onBox = [&] { walk.stop.Stop(); };
  ScopeRow row = Row("/t/*.*");
  row.MaxSize = "5";
  walk.Load({row, row});
  EXPECT_EQ(walk.observer.boxes.size(), 1u);
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/0"));
}

TEST(Stop, BeforeTheWalkLeavesAllOut) {
  MemoryFileSystem files;
  files.MakeFile("/t/1", "");
  Walk walk(files);
  walk.stop.Stop();
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), IsEmpty());
  EXPECT_THAT(files.Calls(), IsEmpty());
}

}  // namespace
}  // namespace tresmor
