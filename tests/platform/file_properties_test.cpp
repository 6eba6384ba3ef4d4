#include "platform/posix/file_properties.h"

#include <gtest/gtest.h>

#include "platform/posix_shell_world.h"

namespace tresmor {
namespace {

using FilePropertiesTest = PosixShellTest;

TEST_F(FilePropertiesTest, AreThoseOfTheFileItself) {
  MakeFile("one", "12345");
  const auto properties = FileProperties(At("one"));
  ASSERT_EQ(properties.size(), 7U);
  EXPECT_EQ(properties[0], std::pair(std::string("Name"), std::string("one")));
  EXPECT_EQ(properties[1], std::pair(std::string("Folder"), root_ + "/"));
  EXPECT_EQ(properties[2], std::pair(std::string("Size"), std::string("5 bytes")));
}

TEST_F(FilePropertiesTest, OfAPathThatIsNoneThereAreNone) {
  MakeFile("one", "12345");
  for (const std::string& path : {At("one") + std::string("\0two", 4), At("two")}) {
    const auto properties = FileProperties(path);
    ASSERT_EQ(properties.size(), 3U);
    EXPECT_EQ(properties[2].first, "Not known");
  }
}

TEST_F(FilePropertiesTest, ThePathMayBeLong) {
  std::string folder = root_;
  for (int i = 0; i < 25; ++i) {
    folder += "/" + std::string(200, 'd');
    std::filesystem::current_path(i == 0 ? std::filesystem::path(root_) : std::filesystem::path("."));
    std::filesystem::create_directory(std::string(200, 'd'));
    std::filesystem::current_path(std::string(200, 'd'));
  }
  std::ofstream("one") << "12345";
  std::filesystem::current_path("/");
  const auto properties = FileProperties(folder + "/one");
  ASSERT_EQ(properties.size(), 7U);
  EXPECT_EQ(properties[2].second, "5 bytes");
}

}  // namespace
}  // namespace tresmor
