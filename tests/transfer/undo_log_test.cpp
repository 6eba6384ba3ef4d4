#include "transfer/undo_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/memory_file_changes.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using testing::ElementsAre;
using testing::IsEmpty;

UndoEntry Moved(const std::string& name, const std::string& to = "/d/") {
  return {"/a/" + name, to + name, "", EntryKind::File, 12, -34};
}

constexpr char kPath[] = "/state/tresmor/undo";

class UndoLogTest : public testing::Test {
 protected:
  static UndoStep StepOf(const UndoLog& any) {
    UndoStep step;
    EXPECT_EQ(any.Read(step), Errors::None);
    return step;
  }
  std::vector<UndoEntry> Entries() const {
    const UndoStep step = StepOf(log);
    EXPECT_FALSE(step.damaged);
    return step.entries;
  }
  static OperationCode WriteBy(UndoLog& any, const std::vector<UndoEntry>& entries) { return any.Write(entries).code; }
  OperationCode Write(const std::vector<UndoEntry>& entries) { return WriteBy(log, entries); }
  // One operation of its own.
  void WriteAlone(const std::vector<UndoEntry>& entries) {
    EXPECT_EQ(Write(entries), OperationCode::Done);
    log.Release();
  }

  MemoryFileSystem files;
  MemoryFileChanges changes{files};
  UndoLog log{files, changes, kPath};
};

TEST_F(UndoLogTest, KeepsEntriesOfAllKindsAndBytes) {
  const std::vector<UndoEntry> entries = {
      Moved("one"),
      {"/a/\xFF line\nend", "/trash/files/x", "/trash/info/x.trashinfo", EntryKind::Folder, 4096, 5'000'000'000},
      {"/a/link", "/d/link", "", EntryKind::Other, 0, 0}};
  EXPECT_THAT(Entries(), IsEmpty());
  EXPECT_EQ(Write(entries), OperationCode::Done);
  EXPECT_EQ(Entries(), entries);
  EXPECT_EQ(changes.Count(Op::Append), 1U);
}

TEST_F(UndoLogTest, GrowsWithinAStep) {
  Write({Moved("one")});
  Write({Moved("two"), Moved("three")});
  EXPECT_THAT(Entries(), ElementsAre(Moved("one"), Moved("two"), Moved("three")));
}

TEST_F(UndoLogTest, CorrectsTheLastEntryOfAPath) {
  Write({Moved("one", "/x/"), Moved("two"), Moved("one")});
  EXPECT_FALSE(log.Correct(Moved("one", "/e/")));
  EXPECT_FALSE(log.Correct(Moved("one", "/f/")));
  EXPECT_THAT(Entries(), ElementsAre(Moved("one", "/x/"), Moved("two"), Moved("one", "/f/")));
}

TEST_F(UndoLogTest, ForgetsWhatIsWithdrawn) {
  Write({Moved("one", "/x/"), Moved("two"), Moved("one"), Moved("three")});
  log.Withdraw(std::vector{Moved("one"), Moved("three"), Moved("never told of")});
  EXPECT_THAT(Entries(), ElementsAre(Moved("one", "/x/"), Moved("two")));
  Write({Moved("three", "/y/")});
  EXPECT_FALSE(log.Correct(Moved("three", "/z/")));
  EXPECT_THAT(Entries(), ElementsAre(Moved("one", "/x/"), Moved("two"), Moved("three", "/z/")));
}

TEST_F(UndoLogTest, DropsTheOldStepOnlyWhenTheNewOneIsWritten) {
  WriteAlone({Moved("one")});
  log.Begin();
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  EXPECT_EQ(Write({}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  const auto fails = [this](Op op, const std::string& path) {
    changes.Fail(op, path, Errors::DiskFull);
    EXPECT_EQ(Write({Moved("two")}), OperationCode::DiskFull);
    EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
    changes.Fail(op, path, Errors::None);
  };
  fails(Op::Lock, "/state/tresmor");
  fails(Op::Append, "/state/tresmor/undo.new");
  fails(Op::Replace, kPath);
  EXPECT_EQ(Write({Moved("three")}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("three")));  // nothing that a failed beginning left
}

TEST_F(UndoLogTest, ANewProgramStartsANewStep) {
  WriteAlone({Moved("one")});
  UndoLog later(files, changes, kPath);
  EXPECT_THAT(StepOf(later).entries, ElementsAre(Moved("one")));
  EXPECT_EQ(WriteBy(later, {Moved("two")}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("two")));
}

TEST_F(UndoLogTest, GoesOnWithTheOldStepWhereItIsTold) {
  WriteAlone({Moved("one")});
  UndoLog later(files, changes, kPath);
  later.GoOn();
  EXPECT_EQ(WriteBy(later, {Moved("two")}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one"), Moved("two")));
}

// --- Several programs

TEST_F(UndoLogTest, JoinsTheStepOfAnotherProgramThatIsAtWork) {
  WriteAlone({Moved("old")});
  log.Begin();
  Write({Moved("one")});
  UndoLog other(files, changes, kPath);
  EXPECT_EQ(WriteBy(other, {Moved("two")}), OperationCode::Done);
  Write({Moved("three")});
  log.Release();
  EXPECT_EQ(WriteBy(other, {Moved("four")}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one"), Moved("two"), Moved("three"), Moved("four")));
  other.Release();
  WriteAlone({Moved("five")});
  EXPECT_THAT(Entries(), testing::SizeIs(5));  // its step goes on
}

TEST_F(UndoLogTest, WritesItsEntriesToAStepThatWasBegunInTheSameMoment) {
  UndoLog other(files, changes, kPath);
  std::size_t locks = 0;
  changes.SetHook([&](const MemoryFileChanges::Call& call) {
    // Between its own beginning and the lock that it keeps.
    if (call.op == Op::Lock && ++locks == 2) {
      EXPECT_EQ(WriteBy(other, {Moved("two")}), OperationCode::Done);
    }
  });
  EXPECT_EQ(Write({Moved("one")}), OperationCode::Done);
  EXPECT_THAT(Entries(), ElementsAre(Moved("two"), Moved("one")));
}

TEST_F(UndoLogTest, NobodyWritesWhileAnUndoRunsNorUndoesWhileSomebodyWrites) {
  Write({Moved("one")});
  UndoLog other(files, changes, kPath);
  EXPECT_EQ(other.HoldAlone(), Errors::PathAccess);
  log.Release();
  EXPECT_EQ(other.HoldAlone(), Errors::None);
  const Trouble trouble = log.Correct(Moved("two"));
  EXPECT_EQ(trouble.code, OperationCode::Denied);
  EXPECT_EQ(trouble.reason, "files are being put back just now");
  log.Begin();
  EXPECT_EQ(Write({Moved("two")}), OperationCode::Denied);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  other.Release();
  EXPECT_EQ(Write({Moved("two")}), OperationCode::Done);
}

TEST_F(UndoLogTest, WithoutAHomeItSaysSo) {
  UndoLog homeless(files, changes, "");
  const Trouble trouble = homeless.Correct(Moved("one"));
  EXPECT_EQ(trouble.code, OperationCode::Denied);
  EXPECT_EQ(trouble.reason, "there is no home folder to note in how it can be undone");
  EXPECT_EQ(homeless.HoldAlone(), Errors::FileNotFound);
  EXPECT_THAT(changes.Calls(), IsEmpty());
}

TEST_F(UndoLogTest, KeepsWhatIsLeft) {
  WriteAlone({Moved("one"), Moved("two"), Moved("three")});
  const std::vector<UndoEntry> left = {Moved("one"), Moved("three")};
  EXPECT_EQ(log.HoldAlone(), Errors::None);
  EXPECT_EQ(log.Keep(left), Errors::None);
  EXPECT_EQ(Entries(), left);
  EXPECT_EQ(log.Keep({}), Errors::None);
  EXPECT_THAT(Entries(), IsEmpty());
  EXPECT_THAT(AllFiles(files), IsEmpty());
  EXPECT_EQ(log.Keep({}), Errors::None);
}

// --- Damage

TEST_F(UndoLogTest, TellsDamageAndBelievesNothingOfIt) {
  Write({Moved("one"), Moved("two"), Moved("three")});
  const std::string whole = AllFiles(files).begin()->second;
  const auto all = Entries();
  const auto expectFewer = [&](const std::string& bytes) {
    files.SetContent(kPath, bytes);
    const UndoStep step = StepOf(log);
    EXPECT_LT(step.entries.size(), 3U);
    for (const UndoEntry& entry : step.entries) EXPECT_THAT(all, testing::Contains(entry));
    return step.damaged;
  };
  for (std::size_t end = 0; end < whole.size(); ++end) {
    const bool atARecord = end <= 1 || whole.substr(0, end).ends_with(std::string("end\0", 4));
    EXPECT_EQ(expectFewer(whole.substr(0, end)), !atARecord) << end;
  }
  for (std::size_t at = 1; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = whole[at] == '\0' ? 'x' : '\0';
    EXPECT_TRUE(expectFewer(damaged)) << at;
  }
  files.SetContent(kPath, whole + std::string(4096, '\0'));
  EXPECT_EQ(StepOf(log).entries, all);
  EXPECT_TRUE(StepOf(log).damaged);
}

TEST_F(UndoLogTest, WhatIsWrittenBehindADamageIsBelieved) {
  Write({Moved("one"), Moved("two")});
  const std::string whole = AllFiles(files).begin()->second;
  for (const std::size_t cut : {2U, 5U, 20U, 30U}) {
    files.SetContent(kPath, whole.substr(0, whole.size() - cut));
    Write({Moved("three"), Moved("four")});
    const UndoStep step = StepOf(log);
    EXPECT_THAT(step.entries, ElementsAre(Moved("one"), Moved("three"), Moved("four"))) << cut;
    EXPECT_TRUE(step.damaged) << cut;
  }
}

}  // namespace

}  // namespace tresmor
