#include "base/failure.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tresmor {
namespace {

constexpr Errors kAll[] = {Errors::Overflow,     Errors::Subscript,    Errors::TypeMismatch,     Errors::BadFileName,
                           Errors::FileNotFound, Errors::Device,       Errors::FileExists,       Errors::DiskFull,
                           Errors::PastEnd,      Errors::TooManyFiles, Errors::PermissionDenied, Errors::DifferentDrive,
                           Errors::PathAccess,   Errors::BadPattern,   Errors::KeyExists};

TEST(Failure, EveryNumberHasADescriptionOfItsOwn) {
  std::set<std::string> seen;
  for (const Errors number : kAll) {
    EXPECT_STRNE(Describe(number), Describe(Errors{9999})) << static_cast<int>(number);
    EXPECT_TRUE(seen.insert(Describe(number)).second) << Describe(number);
  }
  EXPECT_STREQ(Describe(Errors::FileNotFound), "File not found");
  EXPECT_STREQ(Describe(Errors::Overflow), "Overflow");
  EXPECT_STREQ(Describe(Errors::None), "");
}

TEST(Failure, CarriesNumberAndDescription) {
  const Failure plain(Errors::DiskFull);
  EXPECT_EQ(plain.Number(), Errors::DiskFull);
  EXPECT_EQ(plain.Description(), Describe(Errors::DiskFull));
  const Failure told(Errors::PathAccess, "no such place");
  EXPECT_EQ(told.Number(), Errors::PathAccess);
  EXPECT_STREQ(told.what(), "no such place");
}

}  // namespace
}  // namespace tresmor
