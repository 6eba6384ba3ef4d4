#include "cli/visible.h"

#include <gtest/gtest.h>

#include "cli/base64.h"

namespace tresmor {
namespace {

using namespace std::string_literals;

TEST(VisibleTest, PlainTextStays) {
  EXPECT_EQ(Visible(""), "");
  EXPECT_EQ(Visible("/data/a b'\".txt"), "/data/a b'\".txt");
  EXPECT_EQ(Visible("Zo\xc3\xab \xe2\x82\xac \xf0\x9f\x98\x80"), "Zo\xc3\xab \xe2\x82\xac \xf0\x9f\x98\x80");
}

TEST(VisibleTest, WhatATerminalWouldObeyIsEscaped) {
  EXPECT_EQ(Visible("a\nb\tc\rd"), "a\\nb\\tc\\rd");
  EXPECT_EQ(Visible("\x1b[2J\x7f\0"s), "\\x1b[2J\\x7f\\x00");
  EXPECT_EQ(Visible("\xc2\x9b"), "\\xc2\\x9b");
  EXPECT_EQ(Visible("\xc2\xa0"), "\xc2\xa0");
  EXPECT_EQ(Visible("a\u202egpj.exe"), "a\\xe2\\x80\\xaegpj.exe");
}

TEST(VisibleTest, BytesThatAreNotUtf8AreEscaped) {
  EXPECT_EQ(Visible("a\xff\xc3"), "a\\xff\\xc3");
  EXPECT_EQ(Visible("\xc3\xab\x80"), "\xc3\xab\\x80");
}

TEST(VisibleTest, ABackslashIsTwo) { EXPECT_EQ(Visible("a\\nb"), "a\\\\nb"); }

TEST(Base64Test, FillsUpToFours) {
  EXPECT_EQ(Base64(""), "");
  EXPECT_EQ(Base64("f"), "Zg==");
  EXPECT_EQ(Base64("fo"), "Zm8=");
  EXPECT_EQ(Base64("foo"), "Zm9v");
  EXPECT_EQ(Base64("foobar"), "Zm9vYmFy");
  EXPECT_EQ(Base64("\xff\xfe\xfb"), "//77");
}

}  // namespace
}  // namespace tresmor
