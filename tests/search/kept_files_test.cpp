// Files that stay open between the reading of their heads and their comparison.

#include "search/kept_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>

#include "support/memory_file_system.h"

namespace tresmor {

namespace {

// A table of files, each with the one letter of its name as its content.
class Kept {
 public:
  explicit Kept(std::size_t files, std::size_t limit = 100, std::size_t openLimit = 100) {
    table_.folders = &tree_;
    const FolderId folder = tree_.AddTop("/d/");
    for (std::size_t k = 0; k < files; ++k) {
      names_.emplace_back(1, static_cast<char>('a' + k));
      files_.MakeFile("/d/" + names_.back(), names_.back());
      FileProp record;
      record.Sz = 1;
      record.folder = folder;
      record.name = names_.back().data();
      record.nameLength = 1;
      table_.records.push_back(record);
    }
    files_.SetOpenLimit(openLimit);
    kept_ = std::make_unique<KeptFiles>(files_, stop_, limit);
  }

  FileProps& Table() { return table_; }
  KeptFiles& Files() { return *kept_; }
  MemoryFileSystem& System() { return files_; }
  StopToken& Stop() { return stop_; }

  std::unique_ptr<FileReader> Open(std::int32_t index) {
    Errors failure = Errors::Device;
    auto reader = kept_->Open(table_, index, failure, [this] { ++givenBack_; });
    failure_ = failure;
    return reader;
  }
  void OpenAndKeep(std::int32_t index) { kept_->Keep(table_[index], Open(index)); }
  std::string Content(std::int32_t index) {
    std::string content(1, '?');
    const auto reader = Open(index);
    if (reader) reader->ReadAt(0, content);
    return content;
  }
  std::ptrdiff_t Opened() const {
    const auto calls = files_.Calls();
    return std::count_if(calls.begin(), calls.end(),
                         [](const auto& call) { return call.op == MemoryFileSystem::Op::Open; });
  }
  Errors Failure() const { return failure_; }
  int GivenBack() const { return givenBack_; }

 private:
  MemoryFileSystem files_;
  StopToken stop_;
  FolderTree tree_;
  std::deque<std::string> names_;
  FileProps table_;
  std::unique_ptr<KeptFiles> kept_;
  Errors failure_ = Errors::None;
  int givenBack_ = 0;
};

TEST(KeptFiles, OpenEachFileOnce) {
  Kept kept(2);
  kept.OpenAndKeep(0);
  kept.OpenAndKeep(1);
  EXPECT_EQ(kept.System().OpenFiles(), 2U);
  EXPECT_EQ(kept.Content(0), "a");
  kept.OpenAndKeep(1);
  EXPECT_EQ(kept.Content(1), "b");
  EXPECT_EQ(kept.Opened(), 2);
  EXPECT_EQ(kept.System().OpenFiles(), 0U);
}

TEST(KeptFiles, FindTheirRecordsWhereverThoseAreSortedTo) {
  Kept kept(3);
  for (std::int32_t k = 0; k < 3; ++k) kept.OpenAndKeep(k);
  std::reverse(kept.Table().records.begin(), kept.Table().records.end());
  EXPECT_EQ(kept.Content(0), "c");
  EXPECT_EQ(kept.Content(2), "a");
  EXPECT_EQ(kept.Opened(), 3);
}

TEST(KeptFiles, ComeToAnEndWhereThereIsNoRoom) {
  Kept kept(5, 2);
  for (std::int32_t k = 0; k < 5; ++k) kept.OpenAndKeep(k);
  EXPECT_EQ(kept.System().OpenFiles(), 2U);
  EXPECT_EQ(kept.Content(1), "b");
  EXPECT_EQ(kept.Content(4), "e");
  EXPECT_EQ(kept.Opened(), 6);
}

TEST(KeptFiles, TakeNoMoreThanAQuarterOfTheDescriptors) {
  Kept kept(5, 100, 8);
  for (std::int32_t k = 0; k < 5; ++k) kept.OpenAndKeep(k);
  EXPECT_EQ(kept.System().OpenFiles(), 2U);
  EXPECT_EQ(kept.Files().LeftOpen(), 4U);
}

// The numbers of the first round's slots are still in the records when others have the slots.
TEST(KeptFiles, GiveNoRecordAnothersFile) {
  Kept kept(3);
  kept.OpenAndKeep(0);
  kept.OpenAndKeep(1);
  kept.Files().Clear();
  EXPECT_EQ(kept.System().OpenFiles(), 0U);
  kept.OpenAndKeep(2);
  kept.OpenAndKeep(1);
  EXPECT_EQ(kept.Content(0), "a");
  EXPECT_EQ(kept.Content(1), "b");
  EXPECT_EQ(kept.Content(2), "c");
}

TEST(KeptFiles, AreClosedForWhoLacksDescriptors) {
  Kept kept(3, 100, 8);
  kept.OpenAndKeep(0);
  kept.OpenAndKeep(1);
  kept.System().SetOpenLimit(1);
  EXPECT_EQ(kept.Content(2), "c");
  EXPECT_EQ(kept.Failure(), Errors::None);
  EXPECT_EQ(kept.GivenBack(), 1);
  EXPECT_EQ(kept.Content(0), "a");
}

TEST(KeptFiles, StopWaitingWithTheSearch) {
  Kept kept(1);
  kept.System().SetOpenLimit(0);
  kept.Stop().Stop();
  EXPECT_EQ(kept.Open(0), nullptr);
  EXPECT_EQ(kept.Failure(), Errors::TooManyFiles);
}

TEST(KeptFiles, TellWhyAFileCannotBeOpened) {
  Kept kept(1);
  kept.System().FailOpen("/d/a", Errors::PermissionDenied);
  EXPECT_EQ(kept.Open(0), nullptr);
  EXPECT_EQ(kept.Failure(), Errors::PermissionDenied);
}

TEST(KeptFiles, ReachFilesOfAnOpenFolderByName) {
  Kept kept(1);
  kept.System().MakeFile("/moved/a", "x");
  Errors failure = Errors::None;
  kept.Table().openFolders.push_back(kept.System().OpenFolder("/moved/", failure));
  EXPECT_EQ(kept.Content(0), "x");
}

}  // namespace

}  // namespace tresmor
