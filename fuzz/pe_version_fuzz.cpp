// Any bytes as a program image.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "results/version_of.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  tresmor::tests::BytesReader file(std::string(bytes, bytes + count));
  EXPECT_PRED1(tresmor::tests::IsVersionOrNone, VersionOf(file));
  return 0;
}
