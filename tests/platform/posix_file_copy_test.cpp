// Copies on this machine: who fills them, and who may remove those that were abandoned.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>

#include "platform/file_world.h"
#include "platform/own_system.h"
#include "platform/posix/posix_file_changes.h"

namespace tresmor {

namespace {

class PosixCopies : public testing::Test {
 protected:
  PosixCopies() { world_->MakeFolder(At("all")); }
  std::string At(const std::string& path) const { return world_->Root() + path; }
  std::unique_ptr<FileCopy> Begin() {
    Errors failure = Errors::None;
    bool atSource = false;
    return changes_.BeginCopy(At("from"), At("all/part"), failure, atSource);
  }

  const std::unique_ptr<FileWorld> world_ = MakePosixWorld();
  PosixFileChanges changes_;
};

// No byte passes through the program.
TEST_F(PosixCopies, WhatTheKernelCanCopyIsLeftToIt) {
  const std::string bytes(1'000'000, 'b');
  world_->MakeFile(At("from"), bytes);
  {
    const int from = open(At("from").c_str(), O_RDONLY | O_CLOEXEC);
    const int to = open(At("tried").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const bool can = copy_file_range(from, nullptr, to, nullptr, 1, 0) == 1;
    close(from);
    close(to);
    if (!can) GTEST_SKIP() << "the kernel can't copy on the disk of the temporary files";
  }
  const auto copy = Begin();
  ASSERT_NE(copy, nullptr);
  const bool filtered = WithFailingCall(SYS_pread64, EIO, [&] {
    EXPECT_TRUE(WithFailingCall(SYS_pwrite64, EIO, [&] {
      for (auto left = static_cast<std::int64_t>(bytes.size()); left > 0;) {
        const FileCopy::Step step = copy->CopyNext(left);
        ASSERT_EQ(step.failure, Errors::None);
        left -= step.bytes;
      }
    }));
  });
  if (!filtered) GTEST_SKIP() << "system calls can't be made to fail here";
  Errors failure = Errors::None;
  const auto reader = world_->Files().Open(At("all/part"), failure);
  ASSERT_NE(reader, nullptr);
  std::string copied(bytes.size(), '?');
  reader->ReadAt(0, copied);
  EXPECT_EQ(copied, bytes);
}

TEST_F(PosixCopies, TheAbandonedCopyOfAReadOnlyFileIsRemovedByWhoeverMadeIt) {
  world_->MakeFile(At("from"), "1");
  ASSERT_EQ(chmod(At("from").c_str(), 0444), 0);
  ASSERT_EQ(chmod(world_->Root().c_str(), 0777), 0);
  ASSERT_EQ(chmod(At("all").c_str(), 0777), 0);
  const uid_t user = geteuid();
  ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
  const bool begun = [&] {
    const auto copy = Begin();
    return copy && copy->TakeAttributes() == Errors::None;
  }();
  const int writable = open(At("all/part").c_str(), O_WRONLY | O_CLOEXEC);
  const Errors removed = changes_.RemoveAbandoned(At("all/part"));
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_EQ(writable, -1);
  EXPECT_EQ(removed, Errors::None);
  EXPECT_TRUE(begun);
  EXPECT_NE(access(At("all/part").c_str(), F_OK), 0);
}

}  // namespace

}  // namespace tresmor
