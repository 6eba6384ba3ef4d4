#include "fileops/same_content.h"

#include <gtest/gtest.h>

#include "support/memory_file_system.h"

namespace tresmor {
namespace {

class SameContentTest : public testing::Test {
 protected:
  // Bytes that tell their place, but for one of another value.
  void Make(const std::string& path, std::int64_t size, std::int64_t odd = -1) {
    files.MakeFile(path, size, [odd](std::int64_t offset, std::span<char> into) {
      for (char& byte : into) {
        byte = static_cast<char>(offset == odd ? 1 : offset / 1000 * 2);
        ++offset;
      }
    });
  }
  bool Same(const std::string& a, const std::string& b) {
    return SameContent(files, a, b, [this] { return --pieces < 0; });
  }
  MemoryFileSystem files;
  int pieces = 1000;  // until it is stopped
};

TEST_F(SameContentTest, ComparesEachByte) {
  constexpr std::int64_t size = 3'000'000;
  Make("/a", size);
  Make("/b", size);
  EXPECT_TRUE(Same("/a", "/b"));
  EXPECT_TRUE(Same("/a", "/a"));
  for (const std::int64_t odd : {std::int64_t{0}, std::int64_t{1'048'576}, size - 1}) {
    const std::string path = "/odd" + std::to_string(odd);
    Make(path, size, odd);
    EXPECT_FALSE(Same("/a", path)) << odd;
    EXPECT_FALSE(Same(path, "/a")) << odd;
  }
}

TEST_F(SameContentTest, LengthsCount) {
  Make("/none", 0);
  Make("/nothing", 0);
  Make("/one", 1);
  EXPECT_TRUE(Same("/none", "/nothing"));
  EXPECT_FALSE(Same("/none", "/one"));
}

TEST_F(SameContentTest, WhatCannotBeReadToItsEndIsNotTheSame) {
  Make("/a", 2'000'000);
  Make("/b", 2'000'000);
  EXPECT_FALSE(Same("/a", "/gone"));
  EXPECT_FALSE(Same("/gone", "/a"));
  files.FailRead("/b", 1'999'999, Errors::Device);
  EXPECT_FALSE(Same("/a", "/b"));
  EXPECT_FALSE(Same("/b", "/a"));
}

TEST_F(SameContentTest, AStopProvesNothing) {
  Make("/a", 2'000'000);
  Make("/b", 2'000'000);
  pieces = 1;
  EXPECT_FALSE(Same("/a", "/b"));
  pieces = 2;
  EXPECT_TRUE(Same("/a", "/b"));
}

}  // namespace
}  // namespace tresmor
