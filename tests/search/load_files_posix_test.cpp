// The walk over real folders that mean no good.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include "search/walk_support.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class HostileTree : public TempTree {
 protected:
  Walk walk_{files_};
};

TEST_F(HostileTree, TwoThousandFoldersDeepBeyondTheLongestPath) {
  constexpr int depth = 2000;
  const std::string name(40, 'n');
  MakeShaft(name, depth);
  ScopeRow row = Row(At("*.*"));
  row.MaxSize = "5";
  walk_.Load({row});
  std::string path = root_;
  for (int i = 0; i < depth; ++i) path += name + "/";
  ASSERT_GT(path.size(), std::size_t{PATH_MAX});
  EXPECT_THAT(walk_.Paths(), ElementsAre(path + "end"));
  EXPECT_THAT(walk_.observer.boxes, IsEmpty());
}

TEST_F(HostileTree, LinksInCircles) {
  MakeFolder("a");
  MakeFile("a/1");
  MakeLink("a/up", "..");
  MakeLink("a/self", ".");
  MakeLink("a/ping", "pong");
  MakeLink("a/pong", "ping");
  MakeLink("a/nowhere", "gone");
  MakeLink("a/file", "1");
  walk_.Load({Row(At("*.*")), Row(At("a/ping/*.*")), Row(At("a/nowhere/*.*"))});
  EXPECT_THAT(walk_.Paths(), ElementsAre(At("a/1")));
  EXPECT_FALSE(walk_.catalogue.ReachedTwice());
}

TEST_F(HostileTree, ARowThatStartsAtALink) {
  MakeFolder("a");
  MakeFile("a/1");
  MakeLink("way", "a");
  walk_.Load({Row(At("way/*.*")), Row(At("a/../a/*.*"))});
  EXPECT_THAT(walk_.Paths(), ElementsAre(At("way/1"), At("a/../a/1")));
  EXPECT_TRUE(walk_.catalogue.ReachedTwice());
}

TEST_F(HostileTree, NamesOfAnyBytes) {
  const std::vector<std::string> names{"line\nend", "\xff\xfe",        "tab\t;\\\"'", "*?[",  " ",
                                       "\xc3",      "caf\xc3\xa9.jpg", "caf\xe9.jpg", "a\rb", std::string(255, '\xe9')};
  std::vector<std::string> paths;
  for (const std::string& name : names) {
    MakeFolder("in " + name.substr(0, 200));
    const std::string path = "in " + name.substr(0, 200) + "/" + name;
    MakeFile(path);
    paths.push_back(At(path));
  }
  ScopeRow sized = Row(At("*.*"));
  sized.MaxSize = "5";
  walk_.Load({sized});
  EXPECT_THAT(walk_.Paths(), testing::UnorderedElementsAreArray(paths));
  walk_.BeginAnew();
  walk_.Load({Row(At("caf?.jpg"))});
  EXPECT_THAT(walk_.Paths(),
              UnorderedElementsAre(At("in caf\xc3\xa9.jpg/caf\xc3\xa9.jpg"), At("in caf\xe9.jpg/caf\xe9.jpg")));
}

TEST_F(HostileTree, WhatIsNoFileIsNeverTouched) {
  MakeFile("1");
  Check(mkfifo(At("fifo").c_str(), 0644) == 0, "fifo");
  MakeLink("null", "/dev/null");
  ScopeRow row = Row(At("*.*"));
  row.MaxSize = "5";
  walk_.Load({row});  // would wait for ever if it opened the FIFO
  EXPECT_THAT(walk_.Paths(), ElementsAre(At("1")));
}

TEST_F(HostileTree, AFolderThatMayNotBeRead) {
  MakeFolder("closed");
  MakeFile("closed/1");
  MakeFile("2");
  Check(chmod(At("closed").c_str(), 0) == 0, "closed");
  // The superuser may read everything: this thread works for somebody else, and alone.
  Walk alone(files_, 1);
  const auto user = static_cast<uid_t>(setfsuid(geteuid() == 0 ? 65534 : geteuid()));
  alone.Load({Row(At("*.*")), Row(At("closed/*.*"))});
  setfsuid(user);
  Check(chmod(At("closed").c_str(), 0755) == 0, "closed");
  EXPECT_THAT(alone.Paths(), ElementsAre(At("2")));
  EXPECT_THAT(alone.observer.boxes, IsEmpty());
}

TEST_F(HostileTree, PseudoFileSystemsOfThisMachine) {
  walk_.Load({Row("/proc/*.*"), Row("/proc/self/*.*")});
  EXPECT_THAT(walk_.Paths(), IsEmpty());
}

TEST_F(HostileTree, TheSameCatalogueWithAnyNumberOfThreads) {
  for (int i = 0; i < 40; ++i) {
    const std::string folder = std::to_string(i);
    MakeFolder(folder);
    for (int k = 0; k < 20; ++k) {
      MakeFolder(folder + "/" + std::to_string(k));
      MakeFile(folder + "/" + std::to_string(k) + "/file");
    }
  }
  const auto paths = [&](std::size_t threads) {
    Walk walk(files_, threads);
    walk.Load({Row(At("*.*"))});
    return walk.Paths();
  };
  const auto alone = paths(1);
  EXPECT_EQ(alone.size(), 800u);
  EXPECT_EQ(paths(2), alone);
  EXPECT_EQ(paths(8), alone);
}

}  // namespace
}  // namespace tresmor
