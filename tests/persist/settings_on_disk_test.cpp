// The settings' file on this machine, which other programs and the user's links have to do with too.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "persist/ini_settings.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"

namespace tresmor {
namespace {

class SettingsOnDisk : public testing::Test {
 protected:
  SettingsOnDisk() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_settings_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    root_ = pattern + "/";
  }
  ~SettingsOnDisk() override { std::filesystem::remove_all(root_); }

  std::string Path() const { return root_ + "config/tresmor/tresmor.ini"; }
  std::string Get(const std::string& key) const {
    return IniSettings(files_, writer_, Path()).Get("Tresmor", "Options", key, "none");
  }
  void Save(const std::string& key, const std::string& value) const {
    IniSettings(files_, writer_, Path()).Save("Tresmor", "Options", key, value);
  }
  // Another program that saves ten keys and deletes what isn't there.
  pid_t StartProgram(const std::string& name) const {
    const pid_t child = fork();
    if (child != 0) return child;
    IniSettings store(files_, writer_, Path());
    for (int i = 0; i < 10; ++i) {
      store.Save("Tresmor", "Options", name + std::to_string(i), "saved");
      store.DeleteSection("Tresmor", "PathHistory");
    }
    _exit(0);
  }

  std::string root_;
  PosixFileSystem files_;
  PosixFileWriter writer_{PosixFileWriter::NewFiles::OfTheUserAlone, std::chrono::minutes(1)};
};

TEST_F(SettingsOnDisk, TwoProgramsAtOnceKeepEachOthersKeys) {
  for (int round = 0; round < 5; ++round) {
    const pid_t programs[] = {StartProgram("A"), StartProgram("B")};
    for (const pid_t program : programs) {
      int status = 1;
      EXPECT_EQ(waitpid(program, &status, 0), program);
      EXPECT_EQ(status, 0);
    }
    for (int i = 0; i < 10; ++i) {
      EXPECT_EQ(Get("A" + std::to_string(i)), "saved") << i;
      EXPECT_EQ(Get("B" + std::to_string(i)), "saved") << i;
    }
    std::filesystem::remove_all(root_ + "config");
  }
}

TEST_F(SettingsOnDisk, AProgramThatStandsStillHoldsNobodyUpForEver) {
  const PosixFileWriter hasty(PosixFileWriter::NewFiles::OfTheUserAlone, std::chrono::milliseconds(10));
  Save("A", "1");
  const auto lock = writer_.Lock(Path());
  ASSERT_TRUE(lock);
  IniSettings(files_, hasty, Path()).Save("Tresmor", "Options", "B", "2");
  EXPECT_EQ(Get("A") + Get("B"), "12");
}

TEST_F(SettingsOnDisk, ALinkToNoFileYetIsWrittenThrough) {
  std::filesystem::create_directories(root_ + "config/tresmor");
  std::filesystem::create_directories(root_ + "dots");
  std::filesystem::create_symlink(root_ + "dots/mine.ini", Path());
  EXPECT_EQ(Get("A"), "none");
  Save("A", "1");
  EXPECT_EQ(Get("A"), "1");
  EXPECT_TRUE(std::filesystem::is_symlink(Path()));
  EXPECT_TRUE(std::filesystem::is_regular_file(root_ + "dots/mine.ini"));
}

TEST_F(SettingsOnDisk, AnOldFileKeepsItsPermissions) {
  Save("A", "1");
  ASSERT_EQ(chmod(Path().c_str(), 0640), 0);
  Save("A", "2");
  EXPECT_EQ(std::filesystem::status(Path()).permissions(), std::filesystem::perms{0640});
}

}  // namespace
}  // namespace tresmor
