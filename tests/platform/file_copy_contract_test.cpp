// What every implementation of FileCopy keeps to.
#include <gtest/gtest.h>

#include <string>

#include "platform/file_changes_contract.h"

namespace tresmor {

namespace {

class FileCopyContract : public FileChangesContract {
 protected:
  // Bytes that are different wherever one looks.
  static std::string SomeBytes(std::size_t count) {
    std::string bytes(count, '\0');
    unsigned value = 1;
    for (char& byte : bytes) byte = static_cast<char>((value = value * 1103515245U + 12345U) >> 16U);
    return bytes;
  }
};

TEST_P(FileCopyContract, ACopyHasTheBytesAndTheTime) {
  const std::string bytes = SomeBytes(1'000'000);
  place_.MakeFile(At("from"), bytes);
  place_.SetModified(At("from"), 1'057'104'000);
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(Stat(At("to")).size, 0);
  EXPECT_EQ(CopyAll(*copy, 70'000), 1'000'000);
  EXPECT_EQ(copy->TakeAttributes(), Errors::None);
  EXPECT_EQ(copy->Flush(), Errors::None);
  EXPECT_EQ(CompareAll(*copy, 50'000), 1'000'000);
  EXPECT_TRUE(copy->SourceUnchanged());
  EXPECT_EQ(Content(At("to")), bytes);
  EXPECT_EQ(Content(At("from")), bytes);
  EXPECT_EQ(Stat(At("to")).modified, 1'057'104'000);
}

TEST_P(FileCopyContract, AnEmptyFileIsCopiedAtOnce) {
  place_.MakeFile(At("from"), "");
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(CopyAll(*copy), 0);
  EXPECT_EQ(CompareAll(*copy), 0);
  EXPECT_EQ(Stat(At("to")).size, 0);
}

TEST_P(FileCopyContract, ACopyMayLieOnAnotherFileSystem) {
  const std::string other = world_->OtherDisk();
  if (other.empty()) GTEST_SKIP() << "there is only one file system here";
  const std::string bytes = SomeBytes(600'000);
  place_.MakeFile(At("from"), bytes);
  const auto copy = Begin(At("from"), other + "to");
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(CopyAll(*copy), 600'000);
  EXPECT_EQ(CompareAll(*copy), 600'000);
  EXPECT_EQ(Content(other + "to"), bytes);
}

TEST_P(FileCopyContract, OnlyFilesAreCopiedAndNothingIsReplaced) {
  const std::vector<std::string> all = MakeOneOfEach("all");
  for (const std::string& path : all) {
    if (Stat(path).kind != EntryKind::File) {
      EXPECT_EQ(BeginFailure(path, At("to"), true), Errors::PathAccess) << path;
    }
  }
  EXPECT_EQ(BeginFailure(At("missing"), At("to"), true), Errors::FileNotFound);
  EXPECT_EQ(BeginFailure(At(std::string("all/file\0", 9)), At("to"), true), Errors::BadFileName);
  EXPECT_FALSE(Exists(At("to")));
  for (const std::string& path : all) {
    EXPECT_EQ(BeginFailure(At("all/file"), path, false), Errors::FileExists) << path;
  }
  EXPECT_EQ(BeginFailure(At("all/file"), At("missing/to"), false), Errors::FileNotFound);
  EXPECT_EQ(BeginFailure(At("all/file"), At("all/file/to"), false), Errors::PathAccess);
  EXPECT_EQ(BeginFailure(At("all/file"), At(std::string("to\0", 3)), false), Errors::BadFileName);
  EXPECT_EQ(Content(At("all/file")), "old");
  EXPECT_FALSE(Exists(At("all/missing")));
}

TEST_P(FileCopyContract, AComparisonFindsADifference) {
  std::string bytes = SomeBytes(700'000);
  place_.MakeFile(At("from"), bytes);
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  bytes[699'999] ^= 1;
  place_.SetContent(At("to"), bytes);
  const FileCopy::Step step = Difference(*copy);
  EXPECT_EQ(step.failure, Errors::Device);
  EXPECT_FALSE(step.atSource);
}

TEST_P(FileCopyContract, AComparisonFindsACopyThatIsTooShort) {
  place_.MakeFile(At("from"), std::string(700'000, '\0'));
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  place_.SetContent(At("to"), std::string(600'000, '\0'));
  EXPECT_EQ(Difference(*copy).failure, Errors::Device);
}

TEST_P(FileCopyContract, AComparisonStartsAtTheBeginning) {
  place_.MakeFile(At("from"), "abc");
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  place_.SetContent(At("to"), "xbc");
  EXPECT_EQ(Difference(*copy).failure, Errors::Device);
}

TEST_P(FileCopyContract, AChangedSourceIsNoticed) {
  place_.MakeFile(At("from"), "12345");
  place_.SetModified(At("from"), 1'057'104'000);
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  EXPECT_TRUE(copy->SourceUnchanged());
  place_.SetContent(At("from"), "54321");
  place_.SetModified(At("from"), 1'057'104'000);
  EXPECT_FALSE(copy->SourceUnchanged());
}

TEST_P(FileCopyContract, AnotherFileInTheSourcesPlaceIsNoticed) {
  place_.MakeFile(At("from"), "12345");
  const auto copy = Begin(At("from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  place_.Remove(At("from"));
  EXPECT_FALSE(copy->SourceUnchanged());
  place_.MakeFile(At("from"), "12345");
  EXPECT_FALSE(copy->SourceUnchanged());
}

TEST_P(FileCopyContract, AnotherFolderInTheSourcesPlaceIsNoticed) {
  place_.MakeFile(At("folder/from"), "12345");
  const auto copy = Begin(At("folder/from"), At("to"));
  ASSERT_NE(copy, nullptr);
  CopyAll(*copy);
  ASSERT_EQ(changes_.Rename(At("folder"), At("elsewhere")), Errors::None);  // the file itself is as it was
  EXPECT_FALSE(copy->SourceUnchanged());
  place_.MakeFile(At("folder/from"), "12345");
  EXPECT_FALSE(copy->SourceUnchanged());
}

TEST_P(FileCopyContract, WhatWasBegunStaysAsItStands) {
  place_.MakeFile(At("from"), "12345");
  Begin(At("from"), At("to"));
  EXPECT_EQ(Content(At("to")), "");
  EXPECT_EQ(Content(At("from")), "12345");
}

INSTANTIATE_TEST_SUITE_P(All, FileCopyContract, AllChangesImplementations(), NameOfChanges);

}  // namespace

}  // namespace tresmor
