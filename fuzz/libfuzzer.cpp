// Lets libFuzzer see what a check finds: the first failure ends the program where it stands.
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class AbortOnFailure final : public testing::EmptyTestEventListener {
  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (result.failed()) std::abort();
  }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  testing::UnitTest::GetInstance()->listeners().Append(new AbortOnFailure);
  return 0;
}
