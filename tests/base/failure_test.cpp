#include "base/failure.h"

#include <gtest/gtest.h>

#include <new>
#include <set>
#include <stdexcept>
#include <string>

namespace tresmor {
namespace {

constexpr Errors kAll[] = {Errors::Overflow,     Errors::Subscript,    Errors::TypeMismatch,     Errors::BadFileName,
                           Errors::FileNotFound, Errors::Device,       Errors::FileExists,       Errors::DiskFull,
                           Errors::PastEnd,      Errors::TooManyFiles, Errors::PermissionDenied, Errors::DifferentDrive,
                           Errors::PathAccess,   Errors::BadPattern,   Errors::KeyExists,        Errors::OutOfMemory};

TEST(Failure, EveryNumberHasADescriptionOfItsOwn) {
  std::set<std::string> seen;
  for (const Errors number : kAll) {
    EXPECT_STRNE(Describe(number), Describe(Errors{9999})) << static_cast<int>(number);
    EXPECT_TRUE(seen.insert(Describe(number)).second) << Describe(number);
  }
  EXPECT_STREQ(Describe(Errors::FileNotFound), "File not found");
  EXPECT_STREQ(Describe(Errors::Overflow), "Overflow");
  EXPECT_STREQ(Describe(Errors{7}), "Out of memory");
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

template <class Thrown>
Failure Caught(const Thrown& thrown) {
  try {
    throw Thrown(thrown);
  } catch (...) {
    return CaughtFailure();
  }
}

TEST(Failure, LackOfMemoryIsOneToo) {
  EXPECT_EQ(Caught(std::bad_alloc()).Number(), Errors::OutOfMemory);
  EXPECT_EQ(Caught(std::length_error("too long")).Number(), Errors::OutOfMemory);
  const Failure told = Caught(Failure(Errors::Device, "torn"));
  EXPECT_EQ(told.Number(), Errors::Device);
  EXPECT_EQ(told.Description(), "torn");
  EXPECT_THROW(Caught(std::logic_error("a mistake")), std::logic_error);
}

}  // namespace
}  // namespace tresmor
