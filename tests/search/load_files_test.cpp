#include "search/load_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "search/walk_support.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Op = MemoryFileSystem::Op;

// Each test runs in both path styles. Paths are written with "/" and stand below "/" or "C:\".
class LoadFiles : public testing::TestWithParam<PathStyle> {
 protected:
  std::string At(std::string path) const {
    std::replace(path.begin(), path.end(), '/', GetParam().separator);
    return (GetParam().separator == '/' ? "/" : "C:\\") + path;
  }
  std::vector<std::string> All(std::vector<std::string> paths) const {
    for (std::string& path : paths) path = At(path);
    return paths;
  }
  void Make(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) files.MakeFile(At(path), "");
  }
  void MakeSized(const std::string& path, std::size_t size) { files.MakeFile(At(path), std::string(size, 'x')); }
  // In the "/" style a name with a dot in front is hidden, in the "\" style an attribute tells.
  void Hide(const std::string& path) {
    if (GetParam().separator == '\\') files.SetHidden(At(path));
  }
  std::vector<std::string> Called(Op op) const {
    std::vector<std::string> paths;
    for (const MemoryFileSystem::Call& call : files.Calls()) {
      if (call.op == op) paths.push_back(call.path);
    }
    return paths;
  }

  MemoryFileSystem files{GetParam()};
  Walk walk{files};
};

INSTANTIATE_TEST_SUITE_P(Styles, LoadFiles, testing::Values(PathStyle::Posix(), PathStyle::Windows()),
                         [](const auto& info) { return info.param.ignoreCase ? "Windows" : "Posix"; });

// --- Order

TEST_P(LoadFiles, SubFoldersComeBeforeTheFilesOfTheirFolder) {
  Make({"t/z", "t/b/2", "t/b/c/1", "t/a", "t/b/0", "t/a2/x", "t/empty/deep/y"});
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/b/c/1", "t/b/2", "t/b/0", "t/a2/x", "t/empty/deep/y", "t/z", "t/a"}));
}

TEST_P(LoadFiles, EachPatternIsAWalkOfItsOwnOverFoldersListedOnce) {
  Make({"t/1.jpg", "t/s/2.gif", "t/s/3.jpg", "t/s/q/4.jpg", "t/5.gif", "t/6.txt"});
  walk.Load({Row(At("t/*.jpg;*.gif;*.j*"))});
  EXPECT_EQ(walk.Paths(), All({"t/s/q/4.jpg", "t/s/3.jpg", "t/1.jpg", "t/s/2.gif", "t/5.gif"}));
  EXPECT_THAT(Called(Op::List), testing::UnorderedElementsAre(At("t/"), At("t/s/"), At("t/s/q/")));
}

TEST_P(LoadFiles, PatternsAreTrimmedAndEmptyOnesFindNothing) {
  Make({"t/1.jpg", "t/2.gif", "t/s/3.gif", "t/noext", "t/s/noext"});
  walk.Load({Row(At("t/*.jpg;; *.gif ;  "))});
  EXPECT_EQ(walk.Paths(), All({"t/1.jpg", "t/s/3.gif", "t/2.gif"}));
  walk.BeginAnew();
  walk.Load({Row(At("t/"))});
  EXPECT_THAT(walk.Paths(), IsEmpty());
}

TEST_P(LoadFiles, AStarAloneTakesNamesWithADotOnlyInTheRowsOwnFolder) {
  Make({"t/a.txt", "t/a", "t/s/b.txt", "t/s/b", "t/s/q/c.txt", "t/s/q/c"});
  walk.Load({Row(At("t/*"))});
  EXPECT_EQ(walk.Paths(), All({"t/s/q/c", "t/s/b", "t/a.txt", "t/a"}));
}

TEST_P(LoadFiles, ARowMayStartAtTheRoot) {
  Make({"1", "s/2"});
  walk.Load({Row(At("*.*"))});
  EXPECT_EQ(walk.Paths(), All({"s/2", "1"}));
}

TEST_P(LoadFiles, PatternsHaveNoRegardToCase) {
  Make({"t/1.JPG", "t/2.jpg", "t/s/3.Jpg"});
  walk.Load({Row(At("t/*.jPg"))});
  EXPECT_EQ(walk.Paths(), All({"t/s/3.Jpg", "t/1.JPG", "t/2.jpg"}));
}

TEST_P(LoadFiles, APatternChangesOnItsWayDown) {
  Make({"t/txt", "t/.txt", "t/a/txt", "t/a/.txt", "t/a/b/txt", "t/a/b/.txt"});
  walk.hidden = true;
  walk.Load({Row(At("t/.txt"))});
  EXPECT_EQ(walk.Paths(), All({"t/a/b/txt", "t/a/txt", "t/.txt"}));
}

TEST_P(LoadFiles, ARowWithoutSubFoldersTakesOnlyItsOwnFiles) {
  Make({"t/1", "t/s/2", "t/3"});
  ScopeRow row = Row(At("t/*.*"));
  row.SubFolder = "No";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/1", "t/3"}));
  EXPECT_THAT(Called(Op::List), ElementsAre(At("t/")));
}

TEST_P(LoadFiles, NamesComeThroughWhole) {
  const std::string name(255, 'n');
  Make({"t/" + name + "/" + name});
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/" + name + "/" + name}));
}

TEST_P(LoadFiles, TreesMayBeHundredsOfFoldersDeep) {
  std::string path = "t/";
  for (int i = 0; i < 300; ++i) path += "deeper and deeper/";
  Make({"t/last", path + "first"});
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({path + "first", "t/last"}));
}

// --- One entry for one path

TEST_P(LoadFiles, AFileOfTwoRowsStaysWithTheFirst) {
  Make({"t/1", "t/s/2", "t/s/3"});
  const std::vector<ScopeRow> rows{AreaRow(At("t/*.*")), Row(At("t/s/2"))};
  walk.Load(rows, Walk::Class::Targets);
  walk.Load(rows, Walk::Class::Areas);
  EXPECT_EQ(walk.Paths(), All({"t/s/2", "t/s/3", "t/1"}));
  EXPECT_THAT(walk.Targets(), ElementsAre(true, false, false));
  EXPECT_FALSE(walk.catalogue.ReachedTwice());
}

TEST_P(LoadFiles, FoldersOfSeveralRowsAreListedOnce) {
  Make({"t/s/1.jpg", "t/s/q/2.jpg", "t/s/q/3.gif"});
  ScopeRow top = Row(At("t/s/*.jpg"));
  top.SubFolder = "No";
  walk.Load({top, Row(At("t/s/q/*.jpg")), Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/s/1.jpg", "t/s/q/2.jpg", "t/s/q/3.gif"}));
  EXPECT_THAT(Called(Op::List), testing::UnorderedElementsAre(At("t/"), At("t/s/"), At("t/s/q/")));
}

TEST_P(LoadFiles, PathsOfAnotherCaseAreTheSameWhereTheStyleSaysSo) {
  Make({"t/Sub/1.jpg", "t/Sub/2.gif"});
  walk.Load({Row(At("t/*.jpg")), Row(At("T/SUB/*.*"))});
  if (GetParam().ignoreCase) {
    EXPECT_EQ(walk.Paths(), All({"t/Sub/1.jpg", "T/SUB/2.gif"}));
    EXPECT_FALSE(walk.catalogue.ReachedTwice());
  } else {
    EXPECT_EQ(walk.Paths(), All({"t/Sub/1.jpg"}));
  }
}

TEST_P(LoadFiles, AFolderUnderASecondPathIsNoted) {
  Make({"t/1"});
  files.MakeLink(At("way"), "t");
  walk.Load({Row(At("way/*.*"))});
  EXPECT_FALSE(walk.catalogue.ReachedTwice());
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"way/1", "t/1"}));
  EXPECT_TRUE(walk.catalogue.ReachedTwice());
}

// --- Criteria

TEST_P(LoadFiles, SizeBoundsAreExclusive) {
  MakeSized("t/0", 0);
  MakeSized("t/512", 512);
  MakeSized("t/513", 513);
  MakeSized("t/101887", 101'887);
  MakeSized("t/102400", 102'400);
  ScopeRow row = Row(At("t/*.*"));
  row.MaxSize = "100";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/0", "t/512", "t/513", "t/101887"}));
  walk.BeginAnew();
  row.MinSize = "0";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/513", "t/101887"}));
}

TEST_P(LoadFiles, ADateLetsPassWhatWasModifiedSince) {
  Make({"t/day before", "t/same day", "t/later"});
  constexpr std::int64_t noon = 1'057'104'000 + 12 * 3600;  // of 2003-07-02
  const std::int64_t localNoon = noon - (LocalStamp(noon) - UtcStamp(noon));
  files.SetModified(At("t/day before"), localNoon - 86'400);
  files.SetModified(At("t/same day"), localNoon);
  files.SetModified(At("t/later"), localNoon + 86'400);
  ScopeRow row = Row(At("t/*.*"));
  row.Date = "2003-07-02";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/same day", "t/later"}));
}

TEST_P(LoadFiles, OnlyLimitsAskForAFileAndOnlyOnce) {
  Make({"t/1.jpg", "t/s/2.jpg", "t/s/3.gif", "t/s/4.txt"});
  ScopeRow row = Row(At("t/*.jpg;*.j*;*.gif"));
  walk.Load({row});
  EXPECT_THAT(Called(Op::Stat), IsEmpty());
  walk.BeginAnew();
  row.MaxSize = "5";
  walk.Load({row});
  EXPECT_THAT(Called(Op::Stat), testing::UnorderedElementsAre(At("t/1.jpg"), At("t/s/2.jpg"), At("t/s/3.gif")));
  EXPECT_EQ(walk.Paths(), All({"t/s/2.jpg", "t/1.jpg", "t/s/3.gif"}));
}

TEST_P(LoadFiles, AskingAForABigFolderGetsEachAnswerToItsFile) {
  std::vector<std::string> wanted;
  for (std::size_t i = 0; i < 1500; ++i) {
    const std::string path = "t/" + std::to_string(i);
    MakeSized(path, i % 3 == 0 ? 2048 : 10);
    if (i % 3 == 0) wanted.push_back(path);
  }
  ScopeRow row = Row(At("t/*.*"));
  row.MinSize = "1";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All(wanted));
}

TEST_P(LoadFiles, HiddenFilesAndFoldersAreLeftOutUnlessAskedFor) {
  Make({"t/1", "t/.2", "t/.s/3", "t/.s/q/4"});
  Hide("t/.2");
  Hide("t/.s");
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1"}));
  EXPECT_THAT(Called(Op::List), ElementsAre(At("t/")));
  walk.hidden = true;
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1", "t/.s/q/4", "t/.s/3", "t/.2"}));
}

TEST_P(LoadFiles, ARowMayStartInAHiddenFolder) {
  Make({"t/.s/1"});
  Hide("t/.s");
  walk.Load({Row(At("t/.s/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/.s/1"}));
}

TEST_P(LoadFiles, OnlyFilesAreTakenAndOnlyFoldersEntered) {
  Make({"t/1", "far/2"});
  files.MakeLink(At("t/to file"), "1");
  files.MakeLink(At("t/to folder"), At("far"));
  files.MakeLink(At("t/to itself"), ".");
  files.MakeFifo(At("t/fifo"));
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1"}));
  EXPECT_THAT(Called(Op::Open), IsEmpty());
}

// --- Folders kept out

TEST_P(LoadFiles, AProtectedFolderIsNotEntered) {
  Make({"t/Old/1", "t/Old/s/2", "t/3", "t/Older/4", "t/s/Old/5"});
  walk.protectDir.Add(At("t/Old/"));
  walk.protectDir.Add(At("t/Old/"));
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/Older/4", "t/s/Old/5", "t/3"}));
}

TEST_P(LoadFiles, ARowThatStartsInAProtectedFolderIsDropped) {
  Make({"t/Old/1", "t/2"});
  walk.protectDir.Add(At("t/"));
  walk.Load({Row(At("t/Old/*.*")), Row(At("t/*.*"))});
  EXPECT_THAT(walk.Paths(), IsEmpty());
  EXPECT_THAT(Called(Op::List), IsEmpty());
  EXPECT_THAT(walk.observer.highlighted, IsEmpty());
}

TEST_P(LoadFiles, AnEmptyTextKeptOutDropsEveryRow) {
  Make({"t/1"});
  walk.protectDir.Add("");
  walk.Load({Row(At("t/*.*")), Row(""), ExcludedRow("")});
  EXPECT_THAT(walk.Paths(), IsEmpty());
  EXPECT_THAT(Called(Op::List), IsEmpty());
  EXPECT_THAT(walk.observer.bars, ElementsAre(33, 66));
}

TEST_P(LoadFiles, ProtectionIsOfWholeFolderNames) {
  Make({"Data/1", "Dat/2"});
  walk.protectDir.Add(At("Dat/"));
  walk.Load({Row(At("Data/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"Data/1"}));
}

TEST_P(LoadFiles, ProtectionFollowsTheCaseRule) {
  Make({"data/Old/1", "data/2", "other/3"});
  walk.protectDir.Add(At("DATA/old/"));
  walk.protectDir.Add(At("OTHER/"));
  walk.Load({Row(At("data/*.*")), Row(At("other/*.*"))});
  if (GetParam().ignoreCase) {
    EXPECT_EQ(walk.Paths(), All({"data/2"}));
  } else {
    EXPECT_EQ(walk.Paths(), All({"data/Old/1", "data/2", "other/3"}));
  }
}

TEST_P(LoadFiles, PseudoFileSystemsGiveNothing) {
  Make({"t/1", "t/proc/2"});
  files.SetForbidden(At("t/proc"));
  walk.Load({Row(At("t/*.*")), Row(At("t/proc/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1"}));
  EXPECT_THAT(walk.observer.boxes, IsEmpty());
}

TEST_P(LoadFiles, TrashIsOnlyEnteredByARowThatStartsThere) {
  Make({"t/1", "t/.Trash/2", "t/.Trash/files/.Trash/3"});
  walk.hidden = true;
  walk.Load({Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1"}));
  walk.Load({Row(At("t/.Trash/files/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1", "t/.Trash/files/.Trash/3"}));
  walk.Load({Row(At("t/.Trash/*.*")), Row(At("t/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/1", "t/.Trash/files/.Trash/3", "t/.Trash/2"}));
}

TEST_P(LoadFiles, FoldersThatCanNotBeListedAreSilent) {
  Make({"t/1", "t/closed/2", "t/half/3", "t/half/4"});
  files.SetUnreadable(At("t/closed"));
  files.FailList(At("t/half"), Errors::Device, 1);
  walk.Load({Row(At("gone/*.*")), Row(At("t/*.*")), Row(At("t/1/*.*"))});
  EXPECT_EQ(walk.Paths(), All({"t/half/3", "t/1"}));
  EXPECT_THAT(walk.observer.boxes, IsEmpty());
}

// --- Rows

TEST_P(LoadFiles, OnlyIncludedRowsOfTheClassAreWalked) {
  Make({"a/1", "b/2", "c/3", "d/4"});
  ScopeRow odd = Row(At("d/*.*"));
  odd.SearchTarget = "yes";
  const std::vector<ScopeRow> rows{AreaRow(At("a/*.*")), ExcludedRow(At("c/*.*")), Row(At("b/*.*")), odd};
  walk.Load(rows, Walk::Class::Targets);
  EXPECT_EQ(walk.Paths(), All({"b/2"}));
  walk.Load(rows, Walk::Class::Areas);
  EXPECT_EQ(walk.Paths(), All({"b/2", "a/1", "d/4"}));
  EXPECT_THAT(walk.Targets(), ElementsAre(true, false, false));
}

TEST_P(LoadFiles, RowsAreHighlightedAndMoveTheBar) {
  Make({"a/1", "b/2"});
  walk.protectDir.Add(At("b/"));
  walk.Load({AreaRow(At("a/*.*")), Row(At("a/*.*")), Row(At("b/*.*")), ExcludedRow(At("b/")), AreaRow(At("a/*.*")),
             Row(At("a/*.*")), AreaRow(At("a/*.*"))});
  EXPECT_THAT(walk.observer.highlighted, ElementsAre(2, 6));
  EXPECT_THAT(walk.observer.bars, ElementsAre(28, 42, 85));
}

TEST_P(LoadFiles, Row32768IsOneTooMany) {
  std::vector<ScopeRow> rows(32'767, ExcludedRow(At("a/")));
  walk.Load(rows);
  rows.push_back(ExcludedRow(At("a/")));
  EXPECT_EQ(tests::FailureOf([&] { walk.Load(rows); }), Errors::Overflow);
}

TEST_P(LoadFiles, ACellThatDoesNotConvertEndsTheWalkAtItsRow) {
  Make({"a/1", "b/2", "c/3"});
  ScopeRow bad = Row(At("b/*.*"));
  bad.MinSize = "many";
  EXPECT_THROW(walk.Load({Row(At("a/*.*")), bad, Row(At("c/*.*"))}), Failure);
  EXPECT_EQ(walk.Paths(), All({"a/1"}));
  EXPECT_THAT(walk.observer.highlighted, ElementsAre(1, 2));
}

TEST_P(LoadFiles, TellsWhereItIs) {
  Make({"t/1", "t/s/2"});
  walk.Load({Row(At("t/report;*.gif"))});
  EXPECT_TRUE(walk.observer.Told("Searching " + At("t/report")));
  EXPECT_TRUE(walk.observer.Told("Searching " + At("t/s/report.")));
  EXPECT_TRUE(walk.observer.Told("Searching " + At("t/*.gif")));
}

TEST_P(LoadFiles, AnEmptyPatternIsAWalkThatTellsTheBareFolder) {
  Make({"t/1.jpg", "t/2.gif"});
  walk.Load({Row(At("t/*.jpg;;*.gif"))});
  EXPECT_THAT(walk.observer.texts, ElementsAre("Searching " + At("t/*.jpg"), "Searching " + At("t/*.jpg"),
                                               "Searching " + At("t/"), "Searching " + At("t/*.gif")));
  EXPECT_EQ(walk.Paths(), All({"t/1.jpg", "t/2.gif"}));
}

// --- Trouble with single files

TEST_P(LoadFiles, AFileThatVanishedIsSkippedSilently) {
  Make({"t/1", "t/2"});
  ScopeRow row = Row(At("t/*.*"));
  row.MaxSize = "5";
  files.SetHook([&, gone = false](const MemoryFileSystem::Call& call) mutable {
    if (call.op == Op::Stat && !std::exchange(gone, true)) files.Remove(At("t/1"));
  });
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/2"}));
  EXPECT_THAT(walk.observer.boxes, IsEmpty());
}

TEST_P(LoadFiles, AFileThatCanNotBeAskedIsToldOnceAndSkipped) {
  Make({"t/1.jpg", "t/2.jpg", "t/3.gif"});
  files.FailStat(At("t/1.jpg"), Errors::PermissionDenied);
  files.FailStat(At("t/3.gif"), Errors::PermissionDenied);
  ScopeRow row = Row(At("t/*.jpg;*.j*"));
  row.MaxSize = "5";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/2.jpg"}));
  EXPECT_THAT(walk.observer.boxes, ElementsAre(WalkRecorder::Message{
                                       BoxIcon::Critical, "",
                                       "Error 70: " + std::string(Describe(Errors::PermissionDenied)) + "\nFile: '" +
                                           At("t/1.jpg") + "'\nTresmor will try to ignore this."}));
}

TEST_P(LoadFiles, AFileThatCanNotBeReadIsTakenAllTheSame) {
  Make({"t/1"});
  files.SetUnreadable(At("t/1"));
  ScopeRow row = Row(At("t/*.*"));
  row.MaxSize = "5";
  walk.Load({row});
  EXPECT_EQ(walk.Paths(), All({"t/1"}));
}

}  // namespace
}  // namespace tresmor
