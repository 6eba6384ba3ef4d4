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

class UndoLogTest : public testing::Test {
 protected:
  std::vector<UndoEntry> Entries() const {
    std::vector<UndoEntry> entries;
    EXPECT_EQ(log.Read(entries), Errors::None);
    return entries;
  }
  Errors Write(const std::vector<UndoEntry>& entries) { return log.Write(entries); }

  MemoryFileSystem files;
  MemoryFileChanges changes{files};
  UndoLog log{files, changes, "/state/tresmor/undo"};
};

TEST_F(UndoLogTest, KeepsEntriesOfAllKindsAndBytes) {
  const std::vector<UndoEntry> entries = {
      Moved("one"),
      {"/a/\xFF line\nend", "/trash/files/x", "/trash/info/x.trashinfo", EntryKind::Folder, 4096, 5'000'000'000},
      {"/a/link", "/d/link", "", EntryKind::Other, 0, 0}};
  EXPECT_THAT(Entries(), IsEmpty());
  EXPECT_EQ(Write(entries), Errors::None);
  EXPECT_EQ(Entries(), entries);
  EXPECT_EQ(changes.Count(Op::Append), 2U);  // the first found no folder
}

TEST_F(UndoLogTest, GrowsWithinAStep) {
  Write({Moved("one")});
  Write({Moved("two"), Moved("three")});
  EXPECT_THAT(Entries(), ElementsAre(Moved("one"), Moved("two"), Moved("three")));
}

TEST_F(UndoLogTest, CorrectsTheLastEntryOfAPath) {
  Write({Moved("one", "/x/"), Moved("two"), Moved("one")});
  EXPECT_EQ(log.Correct(Moved("one", "/e/")), Errors::None);
  EXPECT_EQ(log.Correct(Moved("one", "/f/")), Errors::None);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one", "/x/"), Moved("two"), Moved("one", "/f/")));
}

TEST_F(UndoLogTest, DropsTheOldStepOnlyWhenTheNewOneIsWritten) {
  Write({Moved("one")});
  log.Begin();
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  EXPECT_EQ(Write({}), Errors::None);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  changes.Fail(Op::Append, "/state/tresmor/undo.new", Errors::DiskFull);
  EXPECT_EQ(Write({Moved("two")}), Errors::DiskFull);
  EXPECT_THAT(Entries(), ElementsAre(Moved("one")));
  changes.Fail(Op::Append, "/state/tresmor/undo.new", Errors::None);
  EXPECT_EQ(Write({Moved("two")}), Errors::None);
  EXPECT_THAT(Entries(), ElementsAre(Moved("two")));
}

TEST_F(UndoLogTest, LetsNothingInThatAFailedStepLeft) {
  Write({Moved("one")});
  log.Begin();
  changes.Fail(Op::Remove, "/state/tresmor/undo", Errors::Device);
  EXPECT_EQ(Write({Moved("two")}), Errors::Device);
  changes.Fail(Op::Remove, "/state/tresmor/undo", Errors::None);
  EXPECT_EQ(Write({Moved("three")}), Errors::None);
  EXPECT_THAT(Entries(), ElementsAre(Moved("three")));
}

TEST_F(UndoLogTest, ANewProgramStartsANewStep) {
  Write({Moved("one")});
  UndoLog later(files, changes, "/state/tresmor/undo");
  std::vector<UndoEntry> entries;
  EXPECT_EQ(later.Read(entries), Errors::None);
  EXPECT_THAT(entries, ElementsAre(Moved("one")));
  const std::vector<UndoEntry> two = {Moved("two")};
  EXPECT_EQ(later.Write(two), Errors::None);
  EXPECT_THAT(Entries(), ElementsAre(Moved("two")));
}

TEST_F(UndoLogTest, KeepsWhatIsLeft) {
  Write({Moved("one"), Moved("two"), Moved("three")});
  const std::vector<UndoEntry> left = {Moved("one"), Moved("three")};
  EXPECT_EQ(log.Keep(left), Errors::None);
  EXPECT_EQ(Entries(), left);
  EXPECT_EQ(log.Keep({}), Errors::None);
  EXPECT_THAT(Entries(), IsEmpty());
  EXPECT_THAT(AllFiles(files), IsEmpty());
  EXPECT_EQ(log.Keep({}), Errors::None);
}

TEST_F(UndoLogTest, BelievesNothingBehindADamage) {
  Write({Moved("one"), Moved("two"), Moved("three")});
  const std::string whole = AllFiles(files).begin()->second;
  for (std::size_t end = 0; end < whole.size(); ++end) {
    files.SetContent("/state/tresmor/undo", whole.substr(0, end));
    EXPECT_LT(Entries().size(), 3U);
  }
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = whole[at] == '\0' ? 'x' : '\0';
    files.SetContent("/state/tresmor/undo", damaged);
    EXPECT_LT(Entries().size(), 3U);
  }
  files.SetContent("/state/tresmor/undo", whole + std::string(4096, '\0'));
  EXPECT_EQ(Entries().size(), 3U);
}

}  // namespace

}  // namespace tresmor
