// What every implementation of FileChanges keeps to: folders, files and names.
#include "platform/file_changes_contract.h"

#include <gtest/gtest.h>

#include <vector>

namespace tresmor {

namespace {

TEST_P(FileChangesContract, AFolderIsMadeWhereNothingStands) {
  EXPECT_EQ(changes_.MakeFolder(At("new")), Errors::None);
  EXPECT_EQ(Stat(At("new")).kind, EntryKind::Folder);
  EXPECT_EQ(changes_.MakeFolder(At("new/inner")), Errors::None);
  EXPECT_EQ(Stat(At("new/inner")).kind, EntryKind::Folder);
  for (const std::string& path : MakeOneOfEach("all")) EXPECT_EQ(changes_.MakeFolder(path), Errors::FileExists) << path;
  EXPECT_EQ(changes_.MakeFolder(At("missing/new")), Errors::FileNotFound);
  EXPECT_EQ(changes_.MakeFolder(At("all/file/new")), Errors::PathAccess);
  EXPECT_EQ(changes_.MakeFolder(At(std::string(256, 'n'))), Errors::BadFileName);
  EXPECT_EQ(changes_.MakeFolder(At(std::string("a\0b", 3))), Errors::BadFileName);
}

TEST_P(FileChangesContract, CreateMakesNewFilesOnly) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(changes_.Create(At("new"), bytes), Errors::None);
  EXPECT_EQ(Content(At("new")), bytes);
  EXPECT_EQ(changes_.Create(At("empty"), ""), Errors::None);
  EXPECT_EQ(Content(At("empty")), "");
  for (const std::string& path : MakeOneOfEach("all")) {
    EXPECT_EQ(changes_.Create(path, "new"), Errors::FileExists) << path;
  }
  EXPECT_EQ(Content(At("all/file")), "old");
  EXPECT_FALSE(Exists(At("all/missing")));
  EXPECT_EQ(changes_.Create(At("missing/new"), ""), Errors::FileNotFound);
  EXPECT_EQ(changes_.Create(At("all/file/new"), ""), Errors::PathAccess);
  EXPECT_EQ(changes_.Create(At(std::string("a\0b", 3)), ""), Errors::BadFileName);
}

TEST_P(FileChangesContract, AppendAddsAtTheEnd) {
  EXPECT_EQ(changes_.Append(At("log"), "one"), Errors::None);
  EXPECT_EQ(changes_.Append(At("log"), ""), Errors::None);
  EXPECT_EQ(changes_.Append(At("log"), std::string("\0two", 4)), Errors::None);
  EXPECT_EQ(Content(At("log")), std::string("one\0two", 7));
  place_.MakeFile(At("old"), "12345");
  EXPECT_EQ(changes_.Append(At("old"), "6"), Errors::None);
  EXPECT_EQ(Content(At("old")), "123456");
}

TEST_P(FileChangesContract, AppendWritesToFilesOnly) {
  MakeOneOfEach("all");
  for (const char* name : {"all/folder", "all/link", "all/nowhere", "all/fifo"}) {
    EXPECT_EQ(changes_.Append(At(name), "x"), Errors::PathAccess) << name;
  }
  EXPECT_EQ(Content(At("all/file")), "old");
  EXPECT_FALSE(Exists(At("all/missing")));
  EXPECT_EQ(changes_.Append(At("missing/log"), "x"), Errors::FileNotFound);
}

// --- Rename

TEST_P(FileChangesContract, RenameGivesAnotherPlace) {
  MakeOneOfEach("all");
  place_.MakeFile(At("all/folder/inner"), "inside");
  place_.MakeFolder(At("to"));
  for (const char* name : {"file", "folder", "link", "nowhere", "fifo"}) {
    const std::string from = At(std::string("all/") + name);
    const std::string to = At(std::string("to/new ") + name);
    const FileStat before = Stat(from);
    EXPECT_EQ(changes_.Rename(from, to), Errors::None) << name;
    EXPECT_FALSE(Exists(from)) << name;
    EXPECT_EQ(Stat(to).identity, before.identity) << name;
    EXPECT_EQ(Stat(to).kind, before.kind) << name;
    EXPECT_EQ(Stat(to).modified, before.modified) << name;
  }
  EXPECT_EQ(Content(At("to/new file")), "old");
  EXPECT_EQ(Content(At("to/new folder/inner")), "inside");
}

TEST_P(FileChangesContract, RenameReplacesNothing) {
  const std::vector<std::string> there = MakeOneOfEach("there");
  place_.MakeFile(At("file"), "new");
  place_.MakeFolder(At("folder"));
  for (const std::string& to : there) {
    const FileStat before = Stat(to);
    EXPECT_EQ(changes_.Rename(At("file"), to), Errors::FileExists) << to;
    EXPECT_EQ(changes_.Rename(At("folder"), to), Errors::FileExists) << to;
    EXPECT_EQ(Stat(to).identity, before.identity) << to;
  }
  place_.MakeHardLink(At("same"), At("file"));
  EXPECT_EQ(changes_.Rename(At("file"), At("same")), Errors::FileExists);
  EXPECT_EQ(changes_.Rename(At("file"), At("file")), Errors::FileExists);
  EXPECT_EQ(Content(At("file")), "new");
  EXPECT_EQ(Content(At("same")), "new");
  EXPECT_EQ(Content(At("there/file")), "old");
  EXPECT_EQ(Stat(At("folder")).kind, EntryKind::Folder);
}

TEST_P(FileChangesContract, RenameTellsWhyItFails) {
  place_.MakeFile(At("file"), "1");
  place_.MakeFolder(At("folder/inner"));
  EXPECT_EQ(changes_.Rename(At("missing"), At("to")), Errors::FileNotFound);
  EXPECT_EQ(changes_.Rename(At("missing"), At("file")), Errors::FileNotFound);
  EXPECT_EQ(changes_.Rename(At("missing/file"), At("to")), Errors::FileNotFound);
  EXPECT_EQ(changes_.Rename(At("file"), At("missing/to")), Errors::FileNotFound);
  EXPECT_EQ(changes_.Rename(At("folder"), At("file/to")), Errors::PathAccess);
  EXPECT_EQ(changes_.Rename(At("folder"), At("folder/inner/to")), Errors::PathAccess);
  EXPECT_EQ(changes_.Rename(At("file"), At(std::string(256, 'n'))), Errors::BadFileName);
  EXPECT_EQ(changes_.Rename(At("file"), At(std::string("a\0b", 3))), Errors::BadFileName);
  EXPECT_EQ(changes_.Rename(At(std::string("file\0", 5)), At("to")), Errors::BadFileName);
  EXPECT_FALSE(Exists(At("folder/inner/to")));
  EXPECT_EQ(Content(At("file")), "1");
}

TEST_P(FileChangesContract, RenameStaysOnItsFileSystem) {
  const std::string other = world_->OtherDisk();
  if (other.empty()) GTEST_SKIP() << "there is only one file system here";
  place_.MakeFile(At("file"), "1");
  place_.MakeFolder(At("folder"));
  EXPECT_EQ(changes_.Rename(At("file"), other + "file"), Errors::DifferentDrive);
  EXPECT_EQ(changes_.Rename(At("folder"), other + "folder"), Errors::DifferentDrive);
  EXPECT_EQ(Content(At("file")), "1");
  EXPECT_FALSE(Exists(other + "file"));
  EXPECT_FALSE(Exists(other + "folder"));
}

TEST_P(FileChangesContract, WhereCaseCountsForNothingRenameChangesIt) {
  place_.MakeFile(At("name"), "1");
  place_.MakeFolder(At("folder"));
  const bool blind = Exists(At("NAME"));
  EXPECT_EQ(changes_.Rename(At("name"), At("NaMe")), Errors::None);
  EXPECT_EQ(changes_.Rename(At("folder"), At("FOLDER")), Errors::None);
  FolderListing listing;
  ASSERT_EQ(files_.List(place_.Root(), listing), Errors::None);
  EXPECT_EQ(listing.entries.size(), 2U);
  EXPECT_NE(listing.names.find("NaMe"), std::string::npos);
  EXPECT_NE(listing.names.find("FOLDER"), std::string::npos);
  EXPECT_EQ(Exists(At("name")), blind);
  place_.MakeFile(At("other"), "2");
  EXPECT_EQ(changes_.Rename(At("other"), At("NaMe")), Errors::FileExists);
}

// --- Removal

TEST_P(FileChangesContract, RemoveTakesFilesAndLinks) {
  MakeOneOfEach("all");
  for (const char* name : {"all/link", "all/nowhere", "all/fifo"}) {
    EXPECT_EQ(changes_.Remove(At(name)), Errors::None) << name;
    EXPECT_FALSE(Exists(At(name))) << name;
  }
  EXPECT_EQ(Content(At("all/file")), "old");
  EXPECT_EQ(changes_.Remove(At("all/file")), Errors::None);
  EXPECT_FALSE(Exists(At("all/file")));
  EXPECT_EQ(changes_.Remove(At("all/file")), Errors::FileNotFound);
  EXPECT_EQ(changes_.Remove(At("all/folder")), Errors::PathAccess);
  EXPECT_TRUE(Exists(At("all/folder")));
}

TEST_P(FileChangesContract, OnlyAbandonedCopiesAreRemovedAsSuch) {
  place_.MakeFile(At("from"), "1");
  const std::vector<std::string> all = MakeOneOfEach("all");
  {
    const auto copy = Begin(At("from"), At("copy"));
    EXPECT_EQ(changes_.RemoveAbandoned(At("copy")), Errors::PathAccess);
    EXPECT_TRUE(copy->StandsAt(At("copy")));
  }
  EXPECT_EQ(changes_.RemoveAbandoned(At("copy")), Errors::None);
  EXPECT_FALSE(Exists(At("copy")));
  EXPECT_EQ(changes_.RemoveAbandoned(At("copy")), Errors::FileNotFound);
  for (const std::string& path : all) {
    if (Stat(path).kind == EntryKind::File) continue;
    EXPECT_EQ(changes_.RemoveAbandoned(path), Errors::PathAccess) << path;
    EXPECT_TRUE(Exists(path)) << path;
  }
}

// --- Files of the program's own

TEST_P(FileChangesContract, ReplaceTakesTheOldFileAway) {
  place_.MakeFile(At("new"), "new");
  EXPECT_EQ(changes_.Replace(At("new"), At("file")), Errors::None);
  EXPECT_EQ(Content(At("file")), "new");
  EXPECT_FALSE(Exists(At("new")));
  place_.MakeFile(At("newer"), "newer");
  EXPECT_EQ(changes_.Replace(At("newer"), At("file")), Errors::None);
  EXPECT_EQ(Content(At("file")), "newer");
  EXPECT_FALSE(Exists(At("newer")));
  EXPECT_EQ(changes_.Replace(At("missing"), At("file")), Errors::FileNotFound);
  EXPECT_EQ(Content(At("file")), "newer");
}

TEST_P(FileChangesContract, AFolderIsLockedByManyOrByOneAlone) {
  place_.MakeFolder(At("folder"));
  Errors failure = Errors::Device;
  const auto lock = [&](Sharing sharing) { return changes_.Lock(At("folder"), sharing, failure); };
  auto first = lock(Sharing::Shared);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(failure, Errors::None);
  auto second = lock(Sharing::Shared);
  EXPECT_NE(second, nullptr);
  EXPECT_EQ(lock(Sharing::Alone), nullptr);
  EXPECT_EQ(failure, Errors::PathAccess);
  first.reset();
  EXPECT_EQ(lock(Sharing::Alone), nullptr);
  second.reset();
  first = lock(Sharing::Alone);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(lock(Sharing::Shared), nullptr);
  EXPECT_EQ(failure, Errors::PathAccess);
  EXPECT_EQ(lock(Sharing::Alone), nullptr);
  first.reset();
  EXPECT_NE(lock(Sharing::Shared), nullptr);
  EXPECT_EQ(changes_.Lock(At("missing"), Sharing::Shared, failure), nullptr);
  EXPECT_EQ(failure, Errors::FileNotFound);
}

TEST_P(FileChangesContract, FlushFolderWaitsForAFolder) {
  place_.MakeFile(At("folder/file"), "1");
  EXPECT_EQ(changes_.FlushFolder(At("folder")), Errors::None);
  EXPECT_EQ(changes_.FlushFolder(At("missing")), Errors::FileNotFound);
  EXPECT_EQ(changes_.FlushFolder(At("folder/file")), Errors::PathAccess);
}

// --- Everything

TEST_P(FileChangesContract, AFolderWithoutAccessLetsNothingChange) {
  place_.MakeFile(At("shut/file"), "1");
  place_.MakeFile(At("open/file"), "2");
  place_.WithoutAccess(At("shut"), [&] {
    EXPECT_EQ(changes_.MakeFolder(At("shut/new")), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Create(At("shut/new"), "x"), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Append(At("shut/file"), "x"), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Rename(At("shut/file"), At("shut/new")), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Rename(At("open/file"), At("shut/new")), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Remove(At("shut/file")), Errors::PermissionDenied);
    EXPECT_EQ(changes_.RemoveAbandoned(At("shut/file")), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Replace(At("shut/file"), At("open/new")), Errors::PermissionDenied);
    EXPECT_EQ(BeginFailure(At("shut/file"), At("open/new"), true), Errors::PermissionDenied);
    EXPECT_EQ(BeginFailure(At("open/file"), At("shut/new"), false), Errors::PermissionDenied);
  });
  EXPECT_EQ(Content(At("shut/file")), "1");
  EXPECT_EQ(Content(At("open/file")), "2");
  EXPECT_FALSE(Exists(At("shut/new")));
  EXPECT_FALSE(Exists(At("open/new")));
}

TEST_P(FileChangesContract, PathsMayBeLongAndOfAnyBytes) {
  std::string folder = At("long");
  for (int i = 0; i < 60; ++i) folder += files_.Style().Tail() + std::string(200, 'd');
  place_.MakeFolder(folder);
  const std::string inside = folder + files_.Style().Tail();
  const std::string name = inside + "\xFF\xC3(\n";
  EXPECT_EQ(changes_.MakeFolder(inside + "\x01new"), Errors::None);
  EXPECT_EQ(changes_.Create(name, "1"), Errors::None);
  EXPECT_EQ(changes_.Append(name, "2"), Errors::None);
  const auto copy = Begin(name, inside + "copy");
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(CopyAll(*copy), 2);
  EXPECT_TRUE(copy->SourceUnchanged());
  EXPECT_EQ(changes_.Rename(inside + "copy", inside + "\x01new" + files_.Style().Tail() + "moved"), Errors::None);
  EXPECT_EQ(Content(inside + "\x01new" + files_.Style().Tail() + "moved"), "12");
  EXPECT_EQ(changes_.Rename(name, At("short")), Errors::None);
  EXPECT_EQ(changes_.Rename(At("short"), name), Errors::None);
  EXPECT_EQ(changes_.Rename(At("short"), name), Errors::FileNotFound);
  EXPECT_EQ(changes_.FlushFolder(folder), Errors::None);
  EXPECT_EQ(changes_.Remove(name), Errors::None);
  EXPECT_EQ(changes_.Remove(inside + "\x01new" + files_.Style().Tail() + "moved"), Errors::None);
}

INSTANTIATE_TEST_SUITE_P(All, FileChangesContract, AllChangesImplementations(), NameOfChanges);

}  // namespace

}  // namespace tresmor
