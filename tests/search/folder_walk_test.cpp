// What the walk owes to its threads: the same catalogue with any number of them, circles that end, and stops.
#include "search/folder_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "search/walk_support.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Op = MemoryFileSystem::Op;

// Passes all on to another file system, but can let one folder stand for another one, as after "mount --bind", and
// change what a listing says.
class OddFileSystem final : public FileSystem {
 public:
  explicit OddFileSystem(const FileSystem& files) : files_(files) {}
  OddFileSystem(const FileSystem& files, std::string at, std::string source)
      : files_(files), at_(std::move(at)), source_(std::move(source)) {}

  PathStyle Style() const override { return files_.Style(); }
  Errors List(const std::string& folder, FolderListing& listing) const override {
    const int number = ++listed_;
    const Errors failure = files_.List(Bound(folder), listing);
    if (onListed) onListed(listing, number);
    return failure;
  }
  Errors Stat(const std::string& path, FileStat& stat) const override { return files_.Stat(Bound(path), stat); }
  std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const override {
    return files_.Open(Bound(path), failure);
  }
  std::unique_ptr<Folder> OpenFolder(const std::string& folder, Errors& failure) const override {
    return files_.OpenFolder(Bound(folder), failure);
  }
  std::string Resolved(const std::string& path) const override { return files_.Resolved(path); }
  std::size_t OpenLimit() const override { return files_.OpenLimit(); }
  CacheState Cached(const std::string& path) const override { return files_.Cached(Bound(path)); }
  void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const override {
    files_.ReadAhead(Bound(path), offset, length);
  }
  bool IsTrash(std::string_view folder) const override { return files_.IsTrash(folder); }

  int Listed() const { return listed_; }

  // The number counts the listings made so far, this one included.
  std::function<void(FolderListing& listing, int number)> onListed;

 private:
  std::string Bound(std::string path) const {
    if (at_.empty()) return path;
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
  const OddFileSystem bound(files, "/ring/", "/t/");
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
  const OddFileSystem bound(files, "/ring/", "/t/");
  Walk walk(bound);
  walk.Load({Row("/t/s/ring/*.jpg"), Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/s/ring/1.jpg", "/t/1.jpg", "/t/2.gif"));
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

TEST(BoundFolders, ACircleThatChangedMeanwhileIsKnownTheNextTimeRound) {
  MemoryFileSystem files;
  files.MakeFile("/t/1", "");
  files.MakeFolder("/t/s/ring");
  OddFileSystem odd(files, "/ring/", "/t/");
  odd.onListed = [](FolderListing& listing, int number) {
    if (number > 1) ++listing.changedNs;
  };
  Walk walk(odd, 1);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/s/ring/1", "/t/1"));
  EXPECT_EQ(odd.Listed(), 4);  // "s" comes up a second time as it was
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

TEST(BoundFolders, ACircleThatAlwaysChangesEndsToo) {
  MemoryFileSystem files;
  files.MakeFile("/t/1", "");
  files.MakeFolder("/t/s/ring");
  OddFileSystem odd(files, "/ring/", "/t/");
  odd.onListed = [](FolderListing& listing, int number) { listing.changedNs += number; };
  Walk walk(odd);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), testing::Contains("/t/1"));
  EXPECT_LT(odd.Listed(), 100);
}

TEST(BoundFolders, FoldersOfOneInodeNumberAreNoCircle) {
  MemoryFileSystem files;
  files.MakeFile("/t/a/b/c/d/1", "");
  files.MakeFile("/t/a/b/2", "");
  OddFileSystem odd(files);
  odd.onListed = [](FolderListing& listing, int) { listing.identity = {1, 7}; };
  Walk walk(odd);
  walk.Load({Row("/t/*.*"), Row("/t/a/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/a/b/c/d/1", "/t/a/b/2"));
}

TEST(BoundFolders, ASecondPathBesideTheFirstIsWalkedAndNoted) {
  MemoryFileSystem files;
  files.MakeFile("/t/a/1", "");
  files.MakeFolder("/t/b");
  const OddFileSystem bound(files, "/t/b/", "/t/a/");
  Walk walk(bound);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/a/1", "/t/b/1"));
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

void AppendEntry(FolderListing& listing, std::string_view name, EntryKind kind) {
  listing.entries.push_back(
      {static_cast<std::uint32_t>(listing.names.size()), static_cast<std::uint16_t>(name.size()), kind, false});
  listing.names += name;
}

TEST(RepeatedNames, ASubFolderGivenTwiceIsWalkedOnce) {
  for (const PathStyle style : {PathStyle::Posix(), PathStyle::Windows()}) {
    const std::string top = style.separator == '/' ? "/t/" : "C:\\t\\";
    MemoryFileSystem files(style);
    files.MakeFile(top + "sub" + style.separator + "1", "");
    OddFileSystem odd(files);
    odd.onListed = [](FolderListing& listing, int number) {
      if (number == 1) AppendEntry(listing, "sub", EntryKind::Folder);
    };
    Walk walk(odd);
    walk.Load({Row(top + "*.*")});
    EXPECT_THAT(walk.Paths(), ElementsAre(top + "sub" + style.separator + "1"));
    EXPECT_EQ(odd.Listed(), 2);
    EXPECT_FALSE(walk.catalogue.ReachedTwice());
  }
}

TEST(RepeatedNames, NamesThatDifferInCaseAreOneEntryWhereTheStyleSaysSo) {
  MemoryFileSystem files(PathStyle::Windows());
  files.MakeFile("C:\\t\\A", "");
  files.MakeFile("C:\\t\\B", "");
  files.MakeFile("C:\\t\\Sub\\1", "");
  OddFileSystem odd(files);
  odd.onListed = [](FolderListing& listing, int number) {
    if (number != 1) return;
    AppendEntry(listing, "a", EntryKind::File);
    AppendEntry(listing, "B", EntryKind::File);
    AppendEntry(listing, "sUB", EntryKind::Folder);
    AppendEntry(listing, "SUB", EntryKind::File);  // no folder, so another path
  };
  Walk walk(odd);
  walk.Load({Row("c:\\T\\*.*"), Row("C:\\t\\*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("c:\\T\\Sub\\1", "c:\\T\\A", "c:\\T\\B", "c:\\T\\SUB"));
  EXPECT_EQ(odd.Listed(), 2);
}

TEST(RepeatedNames, NamesThatDifferInCaseAreTwoWhereTheyAreExact) {
  MemoryFileSystem files;
  for (const char* path : {"/t/A", "/t/a", "/t/S/1", "/t/s/1"}) files.MakeFile(path, "");
  Walk walk(files);
  walk.Load({Row("/t/*.*")});
  EXPECT_THAT(walk.Paths(), ElementsAre("/t/S/1", "/t/s/1", "/t/A", "/t/a"));
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

TEST(Stop, WhileAskingForABigFolderIsNoticedSoon) {
  MemoryFileSystem files;
  for (int i = 0; i < 500; ++i) files.MakeFile("/t/" + std::to_string(i), "");
  Walk walk(files, 1);
  int asked = 0;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == Op::Stat && asked++ == 0) walk.stop.Stop();
  });
  ScopeRow row = Row("/t/*.*");
  row.MaxSize = "5";
  walk.Load({row});
  EXPECT_LE(asked, 64);
  EXPECT_THAT(walk.Paths(), IsEmpty());
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
