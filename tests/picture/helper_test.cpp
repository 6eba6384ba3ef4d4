// The helper program itself, on pictures good and bad.
#include <gtest/gtest.h>

#include <QProcess>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>

#include "picture/limits.h"
#include "picture/samples.h"
#include "platform/picture_protocol.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

constexpr int kNoMatterHowLong = -1;

class HelperTest : public TempTree {
 protected:
  // The answer to a request that is sent as it stands, judged as one to `asked`.
  SharedImage Send(const std::string& request, const PictureRequest& asked) {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(TRESMOR_PICTURE, {});
    process.write(QByteArray::fromStdString(request));
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(kNoMatterHowLong)) << process.errorString().toStdString();
    const std::string output = process.readAllStandardOutput().toStdString();
    const bool well = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    const SharedImage picture = DecodePictureAnswer(output, asked);
    EXPECT_EQ(well, picture != nullptr) << "a picture and its status don't agree";
    EXPECT_TRUE(well || output.empty()) << "more than a status came without a picture";
    return picture;
  }
  SharedImage Ask(const std::string& name, std::int32_t width = 300, std::int32_t height = 300) {
    const PictureRequest asked{At(name), width, height};
    return Send(EncodePictureRequest(asked), asked);
  }
  SharedImage AskFor(const std::string& bytes) {
    MakeFile("picture", bytes);
    const SharedImage picture = Ask("picture");
    Check(unlink(At("picture").c_str()) == 0, "picture");
    return picture;
  }
};

std::uint32_t PixelOf(const SharedImage& picture, std::int32_t x, std::int32_t y) {
  return picture->pixels.at(static_cast<std::size_t>(y * picture->width + x));
}

TEST_F(HelperTest, ReadsEveryFormat) {
  for (const Sample& sample : AllSamples()) {
    const SharedImage picture = AskFor(sample.bytes);
    ASSERT_TRUE(picture) << sample.extension;
    EXPECT_EQ(picture->width, kSampleWidth) << sample.extension;
    EXPECT_EQ(picture->height, kSampleHeight) << sample.extension;
    EXPECT_EQ(PixelOf(picture, 5, 10), sample.left) << sample.extension;
    EXPECT_GE(PixelOf(picture, 35, 10), 0xFF0000FE) << sample.extension;
  }
}

// It comes where a picture can't be read, so it has to be readable itself.
TEST_F(HelperTest, ReadsTheProgramsOwnPicture) {
  const std::string helper = TRESMOR_PICTURE;
  const PictureRequest asked{helper.substr(0, helper.rfind('/')) + "/err_read.bmp", 300, 300};
  const SharedImage picture = Send(EncodePictureRequest(asked), asked);
  ASSERT_TRUE(picture);
  EXPECT_GE(picture->width, 16);
  EXPECT_NE(PixelOf(picture, 0, 0), PixelOf(picture, picture->width / 2, picture->height / 2));
}

// Only the first part of one would be read, and what is cut there could be shown as if it were all.
TEST_F(HelperTest, RefusesMetafilesThatAreTooLargeToBeReadAsAWhole) {
  for (const std::string& bytes : {Wmf(), Emf()}) {
    MakeFile("picture", bytes);
    Check(truncate(At("picture").c_str(), 64 << 20) == 0, "picture");
    EXPECT_TRUE(Ask("picture"));
    Check(truncate(At("picture").c_str(), (64 << 20) + 1) == 0, "picture");
    EXPECT_FALSE(Ask("picture"));
    Check(unlink(At("picture").c_str()) == 0, "picture");
  }
}

TEST_F(HelperTest, PaintsMetafilesSmallerButNotLarger) {
  for (const std::string& bytes : {Wmf(), Emf()}) {
    MakeFile("picture", bytes);
    const SharedImage picture = Ask("picture", 300, 10);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 20);
    EXPECT_EQ(picture->height, 10);
    EXPECT_EQ(PixelOf(picture, 2, 5), 0xFFFF0000);
    EXPECT_EQ(PixelOf(picture, 17, 5), 0xFF0000FF);
    Check(unlink(At("picture").c_str()) == 0, "picture");
  }
}

TEST_F(HelperTest, PaintsMetafilesInTheShapeOfTheirWindow) {
  const SharedImage picture = AskFor(BareWmf());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 2 * picture->height);
  EXPECT_EQ(PixelOf(picture, 5, 10), 0xFFFF0000);
  EXPECT_EQ(PixelOf(picture, picture->width - 5, 10), 0xFF0000FF);
}

TEST_F(HelperTest, PaintsTheImagesOfMetafiles) {
  const SharedImage picture = AskFor(WmfWithImage());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, kSampleWidth);
  EXPECT_EQ(PixelOf(picture, 3, 10), 0xFFFF0000);
  EXPECT_EQ(PixelOf(picture, 17, 10), 0xFF0000FF);
}

TEST_F(HelperTest, PaintsTheTextsOfMetafiles) {
  const SharedImage plain = AskFor(Wmf());
  const SharedImage umlauts = AskFor(WmfWithText("\xE4\xE4\xE4\xE4"));
  const SharedImage others = AskFor(WmfWithText("\xDF\xDF\xDF\xDF"));
  ASSERT_TRUE(plain && umlauts && others);
  EXPECT_NE(plain->pixels, umlauts->pixels);
  EXPECT_NE(umlauts->pixels, others->pixels);
}

TEST_F(HelperTest, ReadsFilesOfAnyName) {
  for (const std::string name : {"a\nb.gif", "\xFF\xFE.gif", " ", "-h", "$(x)"}) {
    MakeFile(name, Gif());
    EXPECT_TRUE(Ask(name)) << name;
  }
}

// As one that is larger than a pipe holds, the request shows by its end that the helper reads it.
TEST_F(HelperTest, LimitsItselfBeforeItReadsARequest) {
  QProcess process;
  process.setStandardErrorFile(QProcess::nullDevice());
  process.start(TRESMOR_PICTURE, {});
  process.write(QByteArray(1 << 19, 'x'));
  while (process.bytesToWrite() > 0) ASSERT_TRUE(process.waitForBytesWritten(kNoMatterHowLong));
  const std::string proc = "/proc/" + std::to_string(process.processId()) + "/";
  const auto read = [&](const char* name) {
    std::ifstream file(proc + name);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  const std::string limits = read("limits");
  const auto expectLimit = [&](const std::string& what, std::uint64_t most) {
    const std::string value = std::to_string(most);
    EXPECT_TRUE(std::regex_search(limits, std::regex(what + " +" + value + " +" + value + " "))) << limits;
  };
  expectLimit("Max cpu time", kMostSeconds);
  expectLimit("Max file size", 0);
  expectLimit("Max open files", kMostOpenFiles);
  expectLimit("Max core file size", 0);
#ifndef __SANITIZE_ADDRESS__
  expectLimit("Max address space", kMostMemory);
#endif
  const std::string status = read("status");
  EXPECT_NE(status.find("\nNoNewPrivs:\t1\n"), status.npos) << status;
  EXPECT_NE(status.find("\nSeccomp:\t2\n"), status.npos) << status;
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(kNoMatterHowLong));
}

TEST_F(HelperTest, ReadsWhatIsBehindALink) {
  MakeFile("real", Gif());
  MakeLink("link", "real");
  EXPECT_TRUE(Ask("link"));
}

TEST_F(HelperTest, ReadsNothingButRegularFiles) {
  MakeFolder("folder");
  Check(mkfifo(At("pipe").c_str(), 0644) == 0, "pipe");
  for (const char* name : {"folder", "pipe", "vanished", "../../dev/zero"}) EXPECT_FALSE(Ask(name)) << name;
}

TEST_F(HelperTest, RefusesWhatIsNoRequest) {
  MakeFile("picture", Gif());
  const PictureRequest good{At("picture"), 300, 300};
  EXPECT_TRUE(Send(EncodePictureRequest(good), good));
  EXPECT_FALSE(Send("", good));
  EXPECT_FALSE(Send("short", good));
  EXPECT_FALSE(Send(EncodePictureRequest({good.file, 0, 300}), good));
  EXPECT_FALSE(Send(EncodePictureRequest({good.file, 300, kMostPixelsASide + 1}), good));
  EXPECT_FALSE(Send(EncodePictureRequest({good.file + std::string(1, '\0'), 300, 300}), good));
  EXPECT_FALSE(Send(EncodePictureRequest({std::string(2 << 20, '/') + good.file, 300, 300}), good));
}

TEST_F(HelperTest, SurvivesEnormousPictures) {
  EXPECT_FALSE(AskFor(BmpHeader(60000, 60000)));
  EXPECT_FALSE(AskFor(GifHeader(60000, 60000)));
  EXPECT_FALSE(AskFor(RunLengthBmp(20000, 20000)));
}

// Each gives a picture or none, as Send holds it to; a reader may well show what there is of a picture.
TEST_F(HelperTest, TruncatedPicturesDoNoHarm) {
  for (const Sample& sample : AllSamples()) {
    for (std::size_t part = 0; part < 16; ++part) {
      SCOPED_TRACE(sample.extension + " " + std::to_string(part));
      const SharedImage picture = AskFor(sample.bytes.substr(0, sample.bytes.size() * part / 16));
      EXPECT_TRUE(part > 0 || !picture);
    }
  }
}

TEST_F(HelperTest, DamagedPicturesDoNoHarm) {
  std::mt19937 random(20040701);
  for (const Sample& sample : AllSamples()) {
    for (int round = 0; round < 30; ++round) {
      std::string bytes = sample.bytes;
      for (int flips = 1 + round % 4; flips > 0; --flips) bytes[random() % bytes.size()] = static_cast<char>(random());
      SCOPED_TRACE(sample.extension + " " + std::to_string(round));
      AskFor(bytes);
    }
  }
}

}  // namespace
}  // namespace tresmor
