// The program's own files, read in one go.
#include "persist/whole_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <span>
#include <string>

#include "base/failure.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

class ReadWholeFileTest : public testing::Test {
 protected:
  Errors FailureOf(const std::string& path, std::int64_t mostBytes) {
    return tests::FailureOf([&] { ReadWholeFile(files, path, mostBytes); });
  }
  Errors FailureOf(const std::string& path) { return FailureOf(path, std::numeric_limits<std::int32_t>::max()); }

  MemoryFileSystem files;
};

TEST_F(ReadWholeFileTest, GivesEveryByteAndClosesTheFile) {
  const std::string bytes("a\0\r\n\xFF", 5);
  files.MakeFile("/f", bytes);
  files.MakeFile("/empty", "");
  EXPECT_EQ(ReadWholeFile(files, "/f"), bytes);
  EXPECT_EQ(ReadWholeFile(files, "/empty"), "");
  EXPECT_EQ(files.OpenFiles(), 0U);
}

TEST_F(ReadWholeFileTest, TellsWhyItCanNot) {
  files.MakeFile("/denied", "x");
  files.SetUnreadable("/denied");
  files.MakeFile("/torn", "abcdef");
  files.FailRead("/torn", 3, Errors::Device);
  files.MakeFile("/long", std::int64_t{1} << 31, [](std::int64_t, std::span<char>) {});
  EXPECT_EQ(FailureOf("/none"), Errors::FileNotFound);
  EXPECT_EQ(FailureOf("/denied"), Errors::PermissionDenied);
  EXPECT_EQ(FailureOf("/torn"), Errors::Device);
  EXPECT_EQ(FailureOf("/long"), Errors::Overflow);
}

TEST_F(ReadWholeFileTest, FollowsLinks) {
  files.MakeFile("/d/f", "bytes");
  files.MakeLink("/d/near", "f");
  files.MakeLink("/far", "/d/near");
  files.MakeLink("/broken", "nothing");
  EXPECT_EQ(ReadWholeFile(files, "/far"), "bytes");
  EXPECT_EQ(FailureOf("/broken"), Errors::FileNotFound);
}

TEST_F(ReadWholeFileTest, TakesNoMoreThanItIsToldTo) {
  files.MakeFile("/f", "12345");
  EXPECT_EQ(FailureOf("/f", 5), Errors::None);
  EXPECT_EQ(FailureOf("/f", 4), Errors::Overflow);
}

}  // namespace
}  // namespace tresmor
