#include "transfer/trash_info.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "transfer/transfer_world.h"

namespace tresmor {

namespace {

class TrashInfoTest : public testing::Test {
 protected:
  TrashInfoTest() { SetZone("EST5EDT,M3.2.0,M11.1.0"); }
  ~TrashInfoTest() override { SetZone(old_.c_str()); }
  static void SetZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }

 private:
  const std::string old_ = std::getenv("TZ") ? std::getenv("TZ") : "UTC";
};

constexpr PathStyle kStyle = PathStyle::Posix();

TEST_F(TrashInfoTest, WritesAllOtherBytesInHexadecimal) {
  EXPECT_EQ(TrashInfo("/a b/50%/\xC3\xA4\xFF\n#=;/~x_(1)-'2'!*.txt", {"/t", ""}, 1'088'683'200, kStyle),
            "[Trash Info]\nPath=/a%20b/50%25/%C3%A4%FF%0A%23%3D%3B/~x_(1)-'2'!*.txt\n"
            "DeletionDate=2004-07-01T08:00:00\n");
}

TEST_F(TrashInfoTest, TellsLocalTimeInSummerAndWinter) {
  EXPECT_NE(TrashInfo("/a", {"/t", ""}, 1'104'537'599, kStyle).find("=2004-12-31T18:59:59\n"), std::string::npos);
}

TEST_F(TrashInfoTest, TellsPathsFromTheTopFolderOn) {
  EXPECT_EQ(TrashInfo("/usb/x/y", {"/usb/.Trash-1", "/usb"}, 1'088'683'200, kStyle),
            "[Trash Info]\nPath=x/y\nDeletionDate=2004-07-01T08:00:00\n");
  // One that was reached by another way is told whole.
  EXPECT_EQ(TrashInfo("/usbx/y", {"/usb/.Trash-1", "/usb"}, 1'088'683'200, kStyle),
            "[Trash Info]\nPath=/usbx/y\nDeletionDate=2004-07-01T08:00:00\n");
}

TEST_F(TrashInfoTest, TellsTheWayWithoutLinksFromTheTopFolderOn) {
  EXPECT_EQ(TrashInfo("/link/../y", {"/usb/.Trash-1", "/usb", "/usb/x"}, 1'088'683'200, kStyle),
            "[Trash Info]\nPath=x/y\nDeletionDate=2004-07-01T08:00:00\n");
  EXPECT_EQ(TrashInfo("/link/y", {"/.Trash-1", "/", "/"}, 1'088'683'200, kStyle),
            "[Trash Info]\nPath=y\nDeletionDate=2004-07-01T08:00:00\n");
}

TEST_F(TrashInfoTest, StandsInTheTrashAsItIsToldHere) {
  Disks disks;
  disks.files.MakeFile("/usb/x/one two", "1");
  disks.files.MakeFile("/a/one two", "2");
  Program program(disks);
  EXPECT_EQ(program.Do(TrashThese({"/usb/x/one two", "/a/one two"})).code, OperationCode::Done);
  const auto all = AllFiles(disks.files);
  EXPECT_EQ(all.at("/usb/.Trash-1/info/one two.trashinfo"),
            "[Trash Info]\nPath=x/one%20two\nDeletionDate=2004-07-01T08:00:00\n");
  EXPECT_EQ(all.at("/home/me/Trash/info/one two.trashinfo"),
            "[Trash Info]\nPath=/a/one%20two\nDeletionDate=2004-07-01T08:00:00\n");
}

}  // namespace

}  // namespace tresmor
