// What becomes of pictures, in this process; metafiles are left to the helper program, as their libraries may crash.
#include "picture/read_picture.h"

#include <gtest/gtest.h>

#include <QImageReader>

#include "picture/samples.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

class ReadPictureTest : public TempTree {
 protected:
  QImage ReadBytes(const std::string& bytes, QSize bounds = {300, 300}) {
    MakeFile(std::to_string(++files_made_), bytes);
    return ReadPicture(At(std::to_string(files_made_)), bounds);
  }

 private:
  int files_made_ = 0;
};

bool IsMetafile(const Sample& sample) { return sample.extension == "wmf" || sample.extension == "emf"; }

TEST_F(ReadPictureTest, ReadsEveryFormatWhateverTheName) {
  for (const Sample& sample : AllSamples()) {
    if (IsMetafile(sample)) continue;
    const QImage picture = ReadBytes(sample.bytes);
    ASSERT_EQ(picture.size(), QSize(kSampleWidth, kSampleHeight)) << sample.extension;
    EXPECT_EQ(picture.format(), QImage::Format_ARGB32_Premultiplied) << sample.extension;
    EXPECT_EQ(picture.pixel(5, 10), sample.left) << sample.extension;
    EXPECT_GE(qBlue(picture.pixel(35, 10)), 254) << sample.extension;
  }
}

TEST_F(ReadPictureTest, ScalesDownInProportion) {
  for (const char* format : {"jpg", "bmp"}) {
    const QImage picture = ReadBytes(Written(TwoHalves(3000, 1500), format), {300, 200});
    ASSERT_EQ(picture.size(), QSize(300, 150)) << format;
    EXPECT_GE(qRed(picture.pixel(10, 140)), 254) << format;
    EXPECT_GE(qBlue(picture.pixel(290, 10)), 254) << format;
  }
}

TEST_F(ReadPictureTest, ScalesNothingUpOrAway) {
  EXPECT_EQ(FitInto({40, 20}, {40, 20}), QSize(40, 20));
  EXPECT_EQ(FitInto({40, 20}, {4000, 4000}), QSize(40, 20));
  EXPECT_EQ(FitInto({40, 20}, {30, 200}), QSize(30, 15));
  EXPECT_EQ(FitInto({40, 20}, {200, 10}), QSize(20, 10));
  EXPECT_EQ(FitInto({9000, 1}, {90, 90}), QSize(90, 1));
  EXPECT_EQ(ReadBytes(Written(TwoHalves(9000, 2), "bmp"), {90, 90}).size(), QSize(90, 1));
}

TEST_F(ReadPictureTest, FollowsLinksToRegularFiles) {
  MakeFolder("sub");
  MakeFile("sub/real.gif", Gif());
  MakeLink("sub/beside.gif", "real.gif");
  MakeLink("chain.gif", "sub/beside.gif");
  EXPECT_EQ(ReadPicture(At("chain.gif"), {300, 300}).size(), QSize(kSampleWidth, kSampleHeight));
  MakeLink("folder.gif", "sub");
  MakeLink("zero.gif", "/dev/zero");
  MakeLink("circle.gif", "circle.gif");
  for (const char* name : {"folder.gif", "zero.gif", "circle.gif"}) {
    EXPECT_TRUE(ReadPicture(At(name), {300, 300}).isNull()) << name;
  }
}

// 6: the left side of what is stored is the top.
TEST_F(ReadPictureTest, TurnsAsThePictureSays) {
  const QImage picture = ReadBytes(TurnedJpg(400, 200, 6), {60, 100});
  ASSERT_EQ(picture.size(), QSize(50, 100));
  EXPECT_GE(qRed(picture.pixel(25, 10)), 254);
  EXPECT_GE(qBlue(picture.pixel(25, 90)), 254);
  EXPECT_EQ(ReadBytes(TurnedJpg(400, 200, 3), {100, 100}).size(), QSize(100, 50));
}

TEST_F(ReadPictureTest, KeepsWhatIsTransparent) {
  QImage glass(32, 32, QImage::Format_ARGB32);
  glass.fill(qRgba(255, 0, 0, 128));
  glass.setPixel(0, 0, 0);
  const QImage picture = ReadBytes(IconOf({glass}));
  ASSERT_EQ(picture.size(), QSize(32, 32));
  const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(0));
  EXPECT_EQ(row[0], 0U);
  EXPECT_EQ(row[1], 0x80800000);
}

TEST_F(ReadPictureTest, TakesTheLargestPictureOfAnIcon) {
  const QImage picture = ReadBytes(IconOf({TwoHalves(16, 16), TwoHalves(48, 48), TwoHalves(32, 32)}));
  EXPECT_EQ(picture.size(), QSize(48, 48));
}

TEST_F(ReadPictureTest, ReadsNoOtherFormatAndNoOtherFile) {
  EXPECT_TRUE(ReadBytes("").isNull());
  EXPECT_TRUE(ReadBytes("G").isNull());
  EXPECT_TRUE(ReadBytes(std::string(1000, 'x')).isNull());
  EXPECT_TRUE(ReadBytes(Written(TwoHalves(8, 8), "png")).isNull());
  MakeFile("picture", Gif());
  MakeFolder("folder");
  Check(mkfifo(At("pipe").c_str(), 0644) == 0, "pipe");
  EXPECT_FALSE(ReadPicture(At("picture"), {99, 99}).isNull());
  for (const char* name : {"folder", "pipe", "vanished"}) {
    EXPECT_TRUE(ReadPicture(At(name), {99, 99}).isNull()) << name;
  }
}

TEST_F(ReadPictureTest, TakesNoRoomForEnormousPictures) {
  EXPECT_TRUE(ReadBytes(BmpHeader(60000, 60000)).isNull());
  EXPECT_TRUE(ReadBytes(BmpHeader(2147483647, 2147483647)).isNull());
  EXPECT_TRUE(ReadBytes(BmpHeader(-5, 5)).isNull());
  EXPECT_TRUE(ReadBytes(GifHeader(60000, 60000)).isNull());
  EXPECT_TRUE(ReadBytes(RunLengthBmp(20000, 20000)).isNull());
  EXPECT_EQ(ReadBytes(RunLengthBmp(2000, 2000)).size(), QSize(300, 300));
  EXPECT_EQ(QImageReader::allocationLimit(), 512);
}

}  // namespace
}  // namespace tresmor
