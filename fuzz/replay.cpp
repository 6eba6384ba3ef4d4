// Stands in for libFuzzer in ordinary builds: runs a fuzzing program through every file of the folders that it is
// given, each as a test.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

namespace fs = std::filesystem;

class Replay final : public testing::Test {
 public:
  explicit Replay(fs::path input) : input_(std::move(input)) {}
  void TestBody() override {
    std::ifstream file(input_, std::ios::binary);
    ASSERT_TRUE(file);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }

 private:
  fs::path input_;
};

std::vector<fs::path> FilesIn(const fs::path& folder) {
  std::error_code failure;
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, failure)) files.push_back(entry);
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (const fs::path folder : std::vector<std::string>(argv + 1, argv + argc)) {
    const std::vector<fs::path> files = FilesIn(folder);
    if (files.empty()) {
      std::cerr << "no inputs in " << folder << "\n";
      return 1;
    }
    for (const fs::path& file : files) {
      testing::RegisterTest(folder.filename().c_str(), file.filename().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                            [file]() -> testing::Test* { return new Replay(file); });
    }
  }
  return RUN_ALL_TESTS();
}
