#include "fileops/same_content.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "search/file_helpers.h"
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

// While the second one is read, something happens to one of them that leaves the bytes that were read as they were.
TEST_F(SameContentTest, WhatChangesMeanwhileIsNotTheSame) {
  files.MakeFile("/other", "same");
  for (const char* changed : {"/a", "/b"}) {
    const std::vector<std::function<void()>> changes = {[&] { files.SetModified(changed, 1); },
                                                        [&] { files.Remove(changed); },
                                                        [&] {
                                                          files.Remove(changed);
                                                          files.MakeFile(changed, "same");
                                                        },
                                                        [&] {
                                                          files.Remove(changed);
                                                          files.MakeLink(changed, "/other");
                                                        }};
    for (const auto& change : changes) {
      for (const char* path : {"/a", "/b"}) files.MakeFile(path, "same");
      files.SetHook([&](const MemoryFileSystem::Call& call) {
        if (call.op == MemoryFileSystem::Op::Read && call.path == "/b") change();
      });
      EXPECT_FALSE(Same("/a", "/b")) << changed;
      files.SetHook({});
      for (const char* path : {"/a", "/b"}) {
        if (ExistsPath(files, path)) files.Remove(path);
      }
    }
  }
}

TEST_F(SameContentTest, OnlyFilesAreCompared) {
  Make("/a", 10);
  files.MakeLink("/link", "/a");
  files.MakeFolder("/folder");
  for (const char* other : {"/link", "/folder"}) {
    EXPECT_FALSE(Same("/a", other)) << other;
    EXPECT_FALSE(Same(other, "/a")) << other;
  }
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
