#include "cli/output.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

#include "cli/console_world.h"

namespace tresmor {
namespace {

TEST(OutputTest, LosesNothingAcrossItsPieces) {
  tests::Scratch scratch;
  Output out(scratch.File());
  std::string expected;
  for (int i = 0; i < 100'000; ++i) {
    const std::string text = std::to_string(i) + "\n";
    out.Write(text);
    expected += text;
  }
  const std::string large(1'000'000, 'x');
  out.Write(large);
  out.Write('y');
  out.Flush();
  EXPECT_TRUE(scratch.Text() == expected + large + 'y');
}

TEST(OutputTest, AFullDiskIsTold) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> full(std::fopen("/dev/full", "w"), std::fclose);
  ASSERT_NE(full, nullptr);
  Output out(full.get());
  out.Write("text");
  try {
    out.Flush();
    FAIL() << "the text went somewhere";
  } catch (const WriteFailure& failure) {
    EXPECT_EQ(failure.error, ENOSPC);
  }
}

}  // namespace
}  // namespace tresmor
