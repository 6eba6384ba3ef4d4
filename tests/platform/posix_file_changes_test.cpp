// What only changes on this machine show: permissions, holes, races, and calls that fail.
#include "platform/posix/posix_file_changes.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/fsuid.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/file_world.h"
#include "platform/own_system.h"

namespace tresmor {

namespace {

constexpr std::int64_t kMuch = std::int64_t{1} << 40;
constexpr char kNoFilter[] = "system calls can't be made to fail here";

class PosixChanges : public testing::Test {
 protected:
  std::string At(const std::string& path) const { return world_->Root() + path; }
  struct stat Stat(const std::string& path) const {
    struct stat info {};
    EXPECT_EQ(lstat(path.c_str(), &info), 0) << path;
    return info;
  }
  bool Exists(const std::string& path) const {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0;
  }
  std::string Content(const std::string& path) const {
    Errors failure = Errors::None;
    const auto reader = world_->Files().Open(path, failure);
    EXPECT_NE(reader, nullptr) << path;
    std::string bytes(reader ? static_cast<std::size_t>(reader->Size()) : 0, '?');
    EXPECT_EQ(reader ? reader->ReadAt(0, bytes).got : 0, bytes.size());
    return bytes;
  }
  std::unique_ptr<FileCopy> Begin(const std::string& from, const std::string& to) {
    Errors failure = Errors::None;
    bool atSource = false;
    auto copy = changes_.BeginCopy(from, to, failure, atSource);
    EXPECT_NE(copy, nullptr);
    return copy;
  }
  // The step at which a walk ends, well or not.
  static FileCopy::Step Last(FileCopy& copy, FileCopy::Step (FileCopy::*next)(std::int64_t)) {
    for (;;) {
      const FileCopy::Step step = (copy.*next)(kMuch);
      if (step.failure != Errors::None || step.bytes == 0) return step;
    }
  }
  void CopyWhole(const std::string& from, const std::string& to) {
    const auto copy = Begin(from, to);
    EXPECT_EQ(Last(*copy, &FileCopy::CopyNext).failure, Errors::None);
    EXPECT_EQ(copy->TakeAttributes(), Errors::None);
    EXPECT_EQ(copy->Flush(), Errors::None);
    EXPECT_EQ(Last(*copy, &FileCopy::CompareNext).failure, Errors::None);
    EXPECT_TRUE(copy->SourceUnchanged());
  }

  const std::unique_ptr<FileWorld> world_ = MakePosixWorld();
  PosixFileChanges changes_;
};

TEST_F(PosixChanges, NewFilesAreForThisUserAlone) {
  EXPECT_EQ(changes_.Create(At("created"), "1"), Errors::None);
  EXPECT_EQ(changes_.Append(At("appended"), "1"), Errors::None);
  const auto copy = Begin(At("created"), At("copied"));
  for (const char* name : {"created", "appended", "copied"}) EXPECT_EQ(Stat(At(name)).st_mode & 07777, 0600U) << name;
}

TEST_F(PosixChanges, AppendRefusesAFifoThatSomebodyReads) {
  world_->MakeFifo(At("fifo"));
  const int reader = open(At("fifo").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  EXPECT_EQ(changes_.Append(At("fifo"), "x"), Errors::PathAccess);
  close(reader);
}

// --- Attributes

TEST_F(PosixChanges, ACopyHasPermissionsAndTimesToTheNanosecond) {
  world_->MakeFile(At("from"), "12345");
  ASSERT_EQ(chmod(At("from").c_str(), 06751), 0);
  const timespec times[2] = {{1'000'000'000, 123'456'789}, {-5, 987'654'321}};
  ASSERT_EQ(utimensat(AT_FDCWD, At("from").c_str(), times, 0), 0);
  const auto copy = Begin(At("from"), At("to"));
  Last(*copy, &FileCopy::CopyNext);
  EXPECT_EQ(copy->TakeAttributes(), Errors::None);
  const struct stat to = Stat(At("to"));
  EXPECT_EQ(to.st_mode & 07777, 06751U);
  EXPECT_EQ(to.st_mtim.tv_sec, -5);
  EXPECT_EQ(to.st_mtim.tv_nsec, 987'654'321);
}

// Reading a file that was written since it was last read changes the time of that.
TEST_F(PosixChanges, ACopyHasTheTimeOfTheLastAccessBeforeItWasMade) {
  world_->MakeFile(At("from"), "12345");
  const timespec times[2] = {{1'000'000'000, 123'456'789}, {1'100'000'000, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, At("from").c_str(), times, 0), 0);
  CopyWhole(At("from"), At("to"));
  EXPECT_EQ(Stat(At("to")).st_atim.tv_sec, 1'000'000'000);
  EXPECT_EQ(Stat(At("to")).st_atim.tv_nsec, 123'456'789);
  EXPECT_EQ(Stat(At("to")).st_mtim.tv_sec, 1'100'000'000);
}

TEST_F(PosixChanges, ACopyHasTheExtendedAttributes) {
  world_->MakeFile(At("from"), "12345");
  const std::string value(2000, '\xFE');
  if (setxattr(At("from").c_str(), "user.comment", value.data(), value.size(), 0) != 0) {
    GTEST_SKIP() << "the file system has no extended attributes";
  }
  ASSERT_EQ(setxattr(At("from").c_str(), "user.empty", "", 0, 0), 0);
  ASSERT_EQ(chmod(At("from").c_str(), 0444), 0);  // which must not come before them
  CopyWhole(At("from"), At("to"));
  std::string got(3000, '?');
  EXPECT_EQ(getxattr(At("to").c_str(), "user.comment", got.data(), got.size()), 2000);
  EXPECT_EQ(got.substr(0, 2000), value);
  EXPECT_EQ(getxattr(At("to").c_str(), "user.empty", nullptr, 0), 0);
  EXPECT_EQ(Stat(At("to")).st_mode & 07777, 0444U);
}

TEST_F(PosixChanges, AttributesThatMayNotBeSetAreLeft) {
  world_->MakeFile(At("from"), "12345");
  if (setxattr(At("from").c_str(), "user.comment", "x", 1, 0) != 0) {
    GTEST_SKIP() << "the file system has no extended attributes";
  }
  EXPECT_TRUE(WithFailingCall(SYS_fsetxattr, EOPNOTSUPP, [&] { CopyWhole(At("from"), At("to")); })) << kNoFilter;
  for (const int error : {ENOSPC, EDQUOT, E2BIG, ERANGE, ENOTSUP}) {
    EXPECT_TRUE(WithFailingCall(SYS_fsetxattr, error, [&] {
      EXPECT_EQ(Begin(At("from"), At("to " + std::to_string(error)))->TakeAttributes(), Errors::None);
    })) << kNoFilter;
  }
  for (const int error : {EPERM, EOVERFLOW, EINVAL}) {
    EXPECT_TRUE(WithFailingCall(SYS_fchown, error, [&] {
      EXPECT_EQ(Begin(At("from"), At("owned " + std::to_string(error)))->TakeAttributes(), Errors::None);
    })) << kNoFilter;
  }
  EXPECT_TRUE(WithFailingCall(SYS_fsetxattr, EIO, [&] {
    EXPECT_EQ(Begin(At("from"), At("broken"))->TakeAttributes(), Errors::Device);
  })) << kNoFilter;
}

TEST_F(PosixChanges, ACopyHasTheOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser gives files away";
  world_->MakeFile(At("from"), "12345");
  ASSERT_EQ(chown(At("from").c_str(), 1234, 2345), 0);
  ASSERT_EQ(chmod(At("from").c_str(), 06770), 0);
  CopyWhole(At("from"), At("to"));
  const struct stat to = Stat(At("to"));
  EXPECT_EQ(to.st_uid, 1234U);
  EXPECT_EQ(to.st_gid, 2345U);
  EXPECT_EQ(to.st_mode & 07777, 06770U);
}

TEST_F(PosixChanges, WithoutItsOwnerACopyGivesNobodyMoreRights) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser gives files away";
  world_->MakeFile(At("from"), "12345");
  ASSERT_EQ(chown(At("from").c_str(), 1234, 2345), 0);
  ASSERT_EQ(chmod(At("from").c_str(), 06774), 0);
  const bool filtered = WithFailingCall(SYS_fchown, EPERM, [&] { CopyWhole(At("from"), At("to")); });
  if (!filtered) GTEST_SKIP() << kNoFilter;
  EXPECT_EQ(Stat(At("to")).st_uid, geteuid());
  EXPECT_EQ(Stat(At("to")).st_mode & 07777, 0744U);
}

// Group and mask of a list are one set of bits, so a list must neither be lost on the way nor come from the folder.
TEST_F(PosixChanges, AccessListsComeFromTheSourceAlone) {
  const auto entry = [](char tag, char rights, char id) {
    return std::string{tag, 0, rights, 0} + (id < 0 ? std::string(4, id) : std::string{id, 0, 0, 0});
  };
  // The owner all, user 77 all, the group nothing, at the most all, others nothing.
  const std::string list = std::string{2, 0, 0, 0} + entry(1, 7, -1) + entry(2, 7, 77) + entry(4, 0, -1) +
                           entry(16, 7, -1) + entry(32, 0, -1);
  world_->MakeFile(At("listed"), "1");
  world_->MakeFile(At("plain"), "2");
  world_->MakeFolder(At("giving"));
  const bool lists = setxattr(At("listed").c_str(), "system.posix_acl_access", list.data(), list.size(), 0) == 0 &&
                     setxattr(At("giving").c_str(), "system.posix_acl_default", list.data(), list.size(), 0) == 0;
  if (!lists) GTEST_SKIP() << "the file system has no access lists";
  ASSERT_EQ(chmod(At("plain").c_str(), 0660), 0);
  CopyWhole(At("listed"), At("to"));
  std::string got(200, '?');
  got.resize(static_cast<std::size_t>(getxattr(At("to").c_str(), "system.posix_acl_access", got.data(), got.size())));
  EXPECT_EQ(got, list);
  CopyWhole(At("plain"), At("giving/to"));
  EXPECT_EQ(getxattr(At("giving/to").c_str(), "system.posix_acl_access", nullptr, 0), -1);
  EXPECT_EQ(Stat(At("giving/to")).st_mode & 07777, 0660U);
  EXPECT_TRUE(WithFailingCall(SYS_fsetxattr, EOPNOTSUPP, [&] { CopyWhole(At("listed"), At("bare")); })) << kNoFilter;
  EXPECT_EQ(Stat(At("bare")).st_mode & 07777, 0700U);
}

// --- Contents

TEST_F(PosixChanges, HolesStayHoles) {
  constexpr std::int64_t kSize = std::int64_t{4} << 30;
  world_->MakeSparse(At("from"), kSize, "tail");
  ASSERT_EQ(truncate(At("from").c_str(), 2 * kSize), 0);
  if (Stat(At("from")).st_blocks > 1000) GTEST_SKIP() << "the file system has no holes";
  CopyWhole(At("from"), At("to"));
  EXPECT_EQ(Stat(At("to")).st_size, 2 * kSize);
  EXPECT_LT(Stat(At("to")).st_blocks, 1000);
  const int file = open(At("to").c_str(), O_RDONLY | O_CLOEXEC);
  std::string tail(4, '?');
  EXPECT_EQ(pread(file, tail.data(), 4, kSize - 4), 4);
  EXPECT_EQ(tail, "tail");
  close(file);
}

TEST_F(PosixChanges, AByteInAHoleOfTheSourceIsADifference) {
  world_->MakeSparse(At("from"), 1 << 22, "tail");
  const auto copy = Begin(At("from"), At("to"));
  Last(*copy, &FileCopy::CopyNext);
  const int file = open(At("to").c_str(), O_WRONLY | O_CLOEXEC);
  ASSERT_EQ(pwrite(file, "x", 1, 1 << 21), 1);
  close(file);
  EXPECT_EQ(Last(*copy, &FileCopy::CompareNext).failure, Errors::Device);
}

TEST_F(PosixChanges, WhatTheKernelCantCopyIsReadAndWritten) {
  const std::string bytes(1'000'000, 'b');
  world_->MakeFile(At("from"), bytes);
  for (const int error : {ENOSYS, EXDEV, EINVAL, EOPNOTSUPP, EPERM, EIO}) {
    const std::string to = At("to " + std::to_string(error));
    const bool filtered = WithFailingCall(SYS_copy_file_range, error, [&] { CopyWhole(At("from"), to); });
    if (!filtered) GTEST_SKIP() << kNoFilter;
    EXPECT_EQ(Content(to), bytes) << error;
  }
}

TEST_F(PosixChanges, WithoutWordOfHolesEverythingIsCopied) {
  world_->MakeSparse(At("from"), 1'000'000, "tail");
  const bool filtered = WithFailingCall(SYS_lseek, EINVAL, [&] { CopyWhole(At("from"), At("to")); });
  if (!filtered) GTEST_SKIP() << kNoFilter;
  EXPECT_EQ(Content(At("to")), std::string(999'996, '\0') + "tail");
}

TEST_F(PosixChanges, AFailingStepTellsWhichOfTheFilesItIsAbout) {
  world_->MakeFile(At("from"), "12345");
  const auto writing = Begin(At("from"), At("to"));
  EXPECT_TRUE(WithFailingCall(SYS_pread64, EIO, [&] {
    EXPECT_TRUE(WithFailingCall(SYS_copy_file_range, EIO, [&] {
      const FileCopy::Step step = Last(*writing, &FileCopy::CopyNext);
      EXPECT_EQ(step.failure, Errors::Device);
      EXPECT_TRUE(step.atSource);
    }));
    EXPECT_TRUE(Last(*writing, &FileCopy::CompareNext).atSource);
  })) << kNoFilter;
  EXPECT_TRUE(WithFailingCall(SYS_pwrite64, ENOSPC, [&] {
    EXPECT_TRUE(WithFailingCall(SYS_copy_file_range, ENOSPC, [&] {
      const FileCopy::Step step = Last(*Begin(At("from"), At("full")), &FileCopy::CopyNext);
      EXPECT_EQ(step.failure, Errors::DiskFull);
      EXPECT_FALSE(step.atSource);
    }));
  })) << kNoFilter;
}

TEST_F(PosixChanges, FailedWaitingIsToldButForFileSystemsThatNeverWait) {
  world_->MakeFile(At("from"), "12345");
  const auto copy = Begin(At("from"), At("to"));
  const bool filtered = WithFailingCall(SYS_fsync, EIO, [&] {
    EXPECT_EQ(copy->Flush(), Errors::Device);
    EXPECT_EQ(changes_.FlushFolder(world_->Root()), Errors::Device);
  });
  if (!filtered) GTEST_SKIP() << kNoFilter;
  EXPECT_TRUE(
      WithFailingCall(SYS_fsync, EINVAL, [&] { EXPECT_EQ(changes_.FlushFolder(world_->Root()), Errors::None); }));
}

TEST_F(PosixChanges, AFullDiskLeavesNoHalfOfAStep) {
  world_->MakeFolder(At("small"));
  world_->MakeFile(At("from"), std::string(500'000, 'b'));
  const bool mounted = WithOwnMounts([&] {
    ASSERT_EQ(mount("tmpfs", At("small").c_str(), "tmpfs", 0, "size=64k"), 0);
    EXPECT_EQ(changes_.Create(At("small/new"), std::string(100'000, 'n')), Errors::DiskFull);
    EXPECT_FALSE(Exists(At("small/new")));
    EXPECT_EQ(changes_.Append(At("small/log"), "first"), Errors::None);
    EXPECT_EQ(changes_.Append(At("small/log"), std::string(100'000, 'n')), Errors::DiskFull);
    EXPECT_EQ(Content(At("small/log")), "first");
    const FileCopy::Step step = Last(*Begin(At("from"), At("small/to")), &FileCopy::CopyNext);
    EXPECT_EQ(step.failure, Errors::DiskFull);
    EXPECT_FALSE(step.atSource);
    EXPECT_EQ(changes_.Rename(At("from"), At("small/moved")), Errors::DifferentDrive);
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
  EXPECT_EQ(Stat(At("from")).st_size, 500'000);
}

TEST_F(PosixChanges, AReadOnlyDiskIsDenied) {
  world_->MakeFile(At("disk/file"), "1");
  const bool mounted = WithOwnMounts([&] {
    ASSERT_EQ(mount(At("disk").c_str(), At("disk").c_str(), nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(mount("", At("disk").c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(changes_.Create(At("disk/new"), "1"), Errors::PermissionDenied);
    EXPECT_EQ(changes_.Remove(At("disk/file")), Errors::PermissionDenied);
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

// --- Rename

TEST_F(PosixChanges, OfManyWhoWantANameOneGetsIt) {
  constexpr int kThreads = 4;
  constexpr int kNames = 50;
  world_->MakeFolder(At("to"));
  // With and without the kernel's help, and for files and folders.
  const auto race = [&](const std::string& kind, const std::function<void(const std::string&)>& make) {
    std::atomic<int> got{0};
    const auto run = [&](int t) {
      for (int i = 0; i < kNames; ++i) {
        const std::string name = kind + std::to_string(i);
        const std::string from = At(std::to_string(t) + "/" + name);
        const Errors result = changes_.Rename(from, At("to/" + name));
        if (result == Errors::None) ++got;
        EXPECT_TRUE(result == Errors::None || result == Errors::FileExists);
        EXPECT_EQ(Exists(from), result != Errors::None);
      }
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      for (int i = 0; i < kNames; ++i) make(At(std::to_string(t) + "/" + kind + std::to_string(i)));
    }
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&, t] {
        if (t % 2 == 0 || !WithFailingCall(SYS_renameat2, EINVAL, [&] { run(t); })) run(t);
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(got, kNames);
  };
  race("file", [&](const std::string& path) { world_->MakeFile(path, "1"); });
  race("folder", [&](const std::string& path) { world_->MakeFile(path + "/inner", "1"); });
}

TEST_F(PosixChanges, RenameNeedsNoHelpToReplaceNothing) {
  for (const int error : {EINVAL, ENOSYS}) {
    const std::string at = At(std::to_string(error) + "/");
    world_->MakeFile(at + "file", "new");
    world_->MakeFile(at + "folder/inner", "inside");
    world_->MakeFifo(at + "fifo");
    world_->MakeLink(at + "nowhere", "missing");
    world_->MakeFile(at + "there/file", "old");
    world_->MakeFolder(at + "there/empty");
    const bool filtered = WithFailingCall(SYS_renameat2, error, [&] {
      for (const char* taken : {"there/file", "there/empty", "nowhere", "fifo", "folder", "file"}) {
        EXPECT_EQ(changes_.Rename(at + "file", at + taken), Errors::FileExists) << taken;
        EXPECT_EQ(changes_.Rename(at + "folder", at + taken), Errors::FileExists) << taken;
      }
      EXPECT_EQ(changes_.Rename(at + "folder", at + "folder/self"), Errors::PathAccess);
      EXPECT_FALSE(Exists(at + "folder/self"));
      EXPECT_EQ(changes_.Rename(at + "missing", at + "to"), Errors::FileNotFound);
      EXPECT_EQ(changes_.Rename(at + "file", at + "missing/to"), Errors::FileNotFound);
      for (const char* name : {"file", "folder", "nowhere", "fifo"}) {
        const ino_t inode = Stat(at + name).st_ino;
        EXPECT_EQ(changes_.Rename(at + name, at + "there/new " + name), Errors::None) << name;
        EXPECT_EQ(Stat(at + "there/new " + name).st_ino, inode) << name;
        EXPECT_FALSE(Exists(at + name)) << name;
      }
    });
    if (!filtered) GTEST_SKIP() << kNoFilter;
    EXPECT_EQ(Content(at + "there/file"), "old");
    EXPECT_EQ(Content(at + "there/new file"), "new");
    EXPECT_EQ(Content(at + "there/new folder/inner"), "inside");
    EXPECT_EQ(Stat(at + "there/new file").st_nlink, 1U);
  }
}

TEST_F(PosixChanges, WhereNeitherRenameNorLinkIsSafeItTakesACopy) {
  world_->MakeFile(At("file"), "1");
  world_->MakeFile(At("taken"), "2");
  for (const int error : {EPERM, ENOSYS, EOPNOTSUPP, EMLINK}) {
    const bool filtered = WithFailingCall(SYS_renameat2, EINVAL, [&] {
      EXPECT_TRUE(WithFailingCall(SYS_linkat, error, [&] {
        EXPECT_EQ(changes_.Rename(At("file"), At("to")), Errors::DifferentDrive) << error;
        EXPECT_EQ(changes_.Rename(At("file"), At("taken")), Errors::FileExists) << error;
        EXPECT_EQ(changes_.Rename(At("file"), At(std::string(256, 'n'))), Errors::BadFileName) << error;
        EXPECT_EQ(changes_.Rename(At("file"), At("missing/to")), Errors::FileNotFound) << error;
      }));
    });
    if (!filtered) GTEST_SKIP() << kNoFilter;
  }
  EXPECT_EQ(Content(At("file")), "1");
  EXPECT_EQ(Content(At("taken")), "2");
  EXPECT_FALSE(Exists(At("to")));
}

TEST_F(PosixChanges, ARenameThatEndsHalfWayLeavesTheSourceAlone) {
  world_->MakeFile(At("file"), "1");
  const bool filtered = WithFailingCall(SYS_renameat2, EINVAL, [&] {
    EXPECT_TRUE(
        WithFailingCall(SYS_linkat, EIO, [&] { EXPECT_EQ(changes_.Rename(At("file"), At("to")), Errors::Device); }));
    // The second name that was given already can't be taken back either then.
    EXPECT_TRUE(WithFailingCall(SYS_unlinkat, EIO,
                                [&] { EXPECT_EQ(changes_.Rename(At("file"), At("half")), Errors::Device); }));
  });
  if (!filtered) GTEST_SKIP() << kNoFilter;
  EXPECT_EQ(Content(At("file")), "1");
  EXPECT_EQ(Content(At("half")), "1");
  EXPECT_FALSE(Exists(At("to")));
}

// --- Several at work

TEST_F(PosixChanges, WhatManyAppendAtOnceStandsWholeBehindEachOther) {
  constexpr int kThreads = 4;
  constexpr int kTimes = 50;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const std::string bytes(5000, static_cast<char>('a' + t));
      for (int i = 0; i < kTimes; ++i) EXPECT_EQ(PosixFileChanges().Append(At("log"), bytes), Errors::None);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string all = Content(At("log"));
  ASSERT_EQ(all.size(), 5000U * kThreads * kTimes);
  for (std::size_t at = 0; at < all.size(); at += 5000) {
    EXPECT_EQ(all.substr(at, 5000), std::string(5000, all[at]));
  }
}

TEST_F(PosixChanges, ACopyOfAnotherProgramLivesAsLongAsThat) {
  world_->MakeFile(At("from"), "1");
  int line[2] = {-1, -1};
  ASSERT_EQ(pipe2(line, O_CLOEXEC), 0);
  const pid_t child = fork();
  if (child == 0) {
    Errors failure = Errors::None;
    bool atSource = false;
    const auto copy = PosixFileChanges().BeginCopy(At("from"), At("part"), failure, atSource);
    const char mark = copy ? '.' : '!';
    if (write(line[1], &mark, 1) == 1) pause();
    _exit(0);
  }
  char mark = ' ';
  EXPECT_EQ(read(line[0], &mark, 1), 1);
  EXPECT_EQ(mark, '.');
  EXPECT_EQ(changes_.RemoveAbandoned(At("part")), Errors::PathAccess);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(changes_.RemoveAbandoned(At("part")), Errors::None);
  EXPECT_FALSE(Exists(At("part")));
  close(line[0]);
  close(line[1]);
}

TEST_F(PosixChanges, AFolderThatMayBeWrittenButNotReadIsFlushedAllTheSame) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser becomes somebody else";
  world_->MakeFolder(At("drop"));
  ASSERT_EQ(chmod(At("drop").c_str(), 0300), 0);
  ASSERT_EQ(chown(At("drop").c_str(), 65534, 65534), 0);
  setfsuid(65534);
  const Errors made = changes_.Create(At("drop/new"), "1");
  const Errors flushed = changes_.FlushFolder(At("drop"));
  setfsuid(0);
  EXPECT_EQ(made, Errors::None);
  EXPECT_EQ(flushed, Errors::None);
}

TEST_F(PosixChanges, AFileThatIsTooLargeForTheDiskIsToldFromAFullOne) {
  world_->MakeFile(At("from"), "12345");
  const bool filtered = WithFailingCall(SYS_pwrite64, EFBIG, [&] {
    EXPECT_TRUE(WithFailingCall(SYS_copy_file_range, EFBIG, [&] {
      EXPECT_EQ(Last(*Begin(At("from"), At("to")), &FileCopy::CopyNext).failure, Errors::Overflow);
    }));
  });
  if (!filtered) GTEST_SKIP() << kNoFilter;
}

}  // namespace

}  // namespace tresmor
