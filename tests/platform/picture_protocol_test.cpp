#include "platform/picture_protocol.h"

#include <gtest/gtest.h>

#include <limits>

namespace tresmor {
namespace {

const std::string kName = "/a\n\xFF b";

std::string Pixels(std::size_t count) { return std::string(count * 4, '\x7F'); }

TEST(PictureProtocolTest, ARequestComesOverWithAnyName) {
  const auto request = DecodePictureRequest(EncodePictureRequest({kName, 300, kMostPixelsASide}));
  ASSERT_TRUE(request);
  EXPECT_EQ(request->file, kName);
  EXPECT_EQ(request->width, 300);
  EXPECT_EQ(request->height, kMostPixelsASide);
}

TEST(PictureProtocolTest, ARequestAsksForASensibleSizeOfSomeFile) {
  for (const std::int32_t side : {0, -1, kMostPixelsASide + 1, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_FALSE(DecodePictureRequest(EncodePictureRequest({kName, side, 1}))) << side;
    EXPECT_FALSE(DecodePictureRequest(EncodePictureRequest({kName, 1, side}))) << side;
  }
  EXPECT_FALSE(DecodePictureRequest(EncodePictureRequest({"", 1, 1})));
  EXPECT_FALSE(DecodePictureRequest("short"));
  EXPECT_FALSE(DecodePictureRequest(""));
}

class PictureAnswerTest : public testing::Test {
 protected:
  const PictureRequest asked_{"/a", 3, 2};
};

TEST_F(PictureAnswerTest, HoldsAPicture) {
  std::string answer = EncodePictureHeader(2, 1);
  const std::uint32_t colours[] = {0x80402010, 0xFF000001};
  answer.append(reinterpret_cast<const char*>(colours), sizeof colours);
  const SharedImage picture = DecodePictureAnswer(answer, asked_);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 2);
  EXPECT_EQ(picture->height, 1);
  EXPECT_EQ(picture->pixels, (std::vector<std::uint32_t>{0x80402010, 0xFF000001}));
}

TEST_F(PictureAnswerTest, IsAsLargeAsAskedForAtMost) {
  EXPECT_TRUE(DecodePictureAnswer(EncodePictureHeader(3, 2) + Pixels(6), asked_));
  EXPECT_FALSE(DecodePictureAnswer(EncodePictureHeader(4, 1) + Pixels(4), asked_));
  EXPECT_FALSE(DecodePictureAnswer(EncodePictureHeader(1, 3) + Pixels(3), asked_));
  EXPECT_FALSE(DecodePictureAnswer(EncodePictureHeader(0, 2), asked_));
  EXPECT_FALSE(DecodePictureAnswer(EncodePictureHeader(-1, -1) + Pixels(1), asked_));
  EXPECT_FALSE(PictureAnswerSize(EncodePictureHeader(4, 1), asked_));
}

TEST_F(PictureAnswerTest, HasExactlyItsPixels) {
  const std::string answer = EncodePictureHeader(3, 2) + Pixels(6);
  for (std::size_t length = 0; length < answer.size(); ++length) {
    EXPECT_FALSE(DecodePictureAnswer(answer.substr(0, length), asked_)) << length;
    EXPECT_EQ(PictureAnswerSize(answer.substr(0, length), asked_), length < 12 ? 0 : answer.size()) << length;
  }
  EXPECT_EQ(PictureAnswerSize(answer, asked_), answer.size());
  EXPECT_FALSE(PictureAnswerSize(answer + "x", asked_));
  EXPECT_FALSE(DecodePictureAnswer(answer + "x", asked_));
}

TEST_F(PictureAnswerTest, BeginsWithItsMark) {
  std::string answer = EncodePictureHeader(1, 1) + Pixels(1);
  answer[0] ^= 1;
  EXPECT_FALSE(PictureAnswerSize(answer, asked_));
  EXPECT_FALSE(DecodePictureAnswer(answer, asked_));
}

}  // namespace
}  // namespace tresmor
