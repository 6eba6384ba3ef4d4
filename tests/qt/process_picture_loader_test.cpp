#include "qt/process_picture_loader.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <cerrno>
#include <fstream>
#include <optional>

#include "platform/picture_protocol.h"
#include "qt/qt_test.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

using namespace std::chrono_literals;
using tests::WaitUntil;

bool IsGone(pid_t process) { return kill(process, 0) != 0 && errno == ESRCH; }

const std::string kHang = "echo $$ >\"$at\"pid.new; mv \"$at\"pid.new \"$at\"pid; exec sleep 1000000";

class PictureLoaderTest : public TempTree {
 protected:
  // A helper that is this shell script; it finds the test's folder in $at.
  std::string Fake(const std::string& script) {
    const std::string name = "helper" + std::to_string(++fakes_);
    MakeFile(name, "#!/bin/sh\nat='" + root_ + "'\n" + script + "\n");
    Check(chmod(At(name).c_str(), 0755) == 0, name);
    return At(name);
  }
  // One that answers with these bytes and ends with this status.
  std::string FakeAnswer(const std::string& answer, int status = 0) {
    MakeFile("answer" + std::to_string(fakes_), answer);
    return Fake("cat \"$at\"answer" + std::to_string(fakes_) + "; exit " + std::to_string(status));
  }
  // One that never ends, and the way to know its process.
  std::string FakeThatHangs() { return Fake(kHang); }
  pid_t WaitForPid() {
    pid_t number = 0;
    WaitUntil([&] { return static_cast<bool>(std::ifstream(At("pid")) >> number); });
    Check(unlink(At("pid").c_str()) == 0, "pid");
    return number;
  }

  // What a load of a picture of up to 2 x 1 pixels ends with.
  SharedImage LoadBy(ProcessPictureLoader& loader, const std::string& file = "/nowhere") {
    QEventLoop loop;
    std::optional<SharedImage> told;
    loader.Load(file, 2, 1, [&](SharedImage picture) {
      told = std::move(picture);
      loop.quit();
    });
    EXPECT_FALSE(told) << "not before Load has returned";
    loop.exec();
    return told.value_or(nullptr);
  }
  SharedImage LoadBy(const std::string& helper) {
    ProcessPictureLoader loader(helper, 1h);
    return LoadBy(loader);
  }

 private:
  int fakes_ = 0;
};

const std::string kTwoPixels = EncodePictureHeader(2, 1) + std::string("\1\2\3\4\5\6\7\x8", 8);

// A bmp of one pixel, blue.
const std::string kBmp(
    "BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
    "\xFF\0\0\0",
    58);

TEST_F(PictureLoaderTest, LoadsByTheHelper) {
  ProcessPictureLoader loader(TRESMOR_PICTURE, 1h);
  for (const std::string name : {"a.bmp", "a\nb.bmp", "\xFF.bmp"}) {
    MakeFile(name, kBmp);
    const SharedImage picture = LoadBy(loader, At(name));
    ASSERT_TRUE(picture) << name;
    EXPECT_EQ(picture->width, 1) << name;
    EXPECT_EQ(picture->height, 1) << name;
    EXPECT_EQ(picture->pixels, std::vector<std::uint32_t>{0xFF0000FF}) << name;
  }
  EXPECT_FALSE(LoadBy(loader, At("vanished")));
}

TEST_F(PictureLoaderTest, AsksForSidesThatCanBeAskedFor) {
  const std::string helper = Fake("cat >\"$at\"request.new; mv \"$at\"request.new \"$at\"request; exit 1");
  ProcessPictureLoader loader(helper, 1h);
  QEventLoop loop;
  loader.Load("/name", -7, 1 << 30, [&](const SharedImage&) { loop.quit(); });
  loop.exec();
  std::ifstream file(At("request"), std::ios::binary);
  const auto request = DecodePictureRequest(std::string(std::istreambuf_iterator<char>(file), {}));
  ASSERT_TRUE(request);
  EXPECT_EQ(request->file, "/name");
  EXPECT_EQ(request->width, 1);
  EXPECT_EQ(request->height, kMostPixelsASide);
}

TEST_F(PictureLoaderTest, TakesAWholeAnswerAlone) {
  const SharedImage picture = LoadBy(FakeAnswer(kTwoPixels));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 2);
  EXPECT_EQ(picture->pixels.size(), 2U);
  EXPECT_FALSE(LoadBy(FakeAnswer(kTwoPixels + "x")));
  EXPECT_FALSE(LoadBy(FakeAnswer(kTwoPixels.substr(0, 19))));
  EXPECT_FALSE(LoadBy(FakeAnswer(kTwoPixels.substr(0, 7))));
  EXPECT_FALSE(LoadBy(FakeAnswer("")));
  EXPECT_FALSE(LoadBy(FakeAnswer(EncodePictureHeader(2, 2) + std::string(16, 'x')))) << "larger than asked for";
}

TEST_F(PictureLoaderTest, TakesNothingFromAHelperThatFails) {
  EXPECT_FALSE(LoadBy(FakeAnswer(kTwoPixels, 1)));
  MakeFile("whole", kTwoPixels);
  EXPECT_FALSE(LoadBy(Fake("cat \"$at\"whole; kill -SEGV $$")));
  EXPECT_FALSE(LoadBy(At("no helper")));
  MakeFile("no program", "x");
  EXPECT_FALSE(LoadBy(At("no program")));
}

TEST_F(PictureLoaderTest, EndsAHelperThatAnswersWithoutEnd) {
  EXPECT_FALSE(LoadBy(Fake("exec cat /dev/zero")));
  MakeFile("begin", EncodePictureHeader(2, 1));
  EXPECT_FALSE(LoadBy(Fake("exec cat \"$at\"begin /dev/zero")));
}

TEST_F(PictureLoaderTest, EndsAHelperThatTakesTooLong) {
  ProcessPictureLoader loader(Fake("exec sleep 1000000"), 50ms);
  EXPECT_FALSE(LoadBy(loader));
}

TEST_F(PictureLoaderTest, DropEndsTheHelperAndTellsNothing) {
  ProcessPictureLoader loader(FakeThatHangs(), 1h);
  bool told = false;
  loader.Load("/nowhere", 2, 1, [&](const SharedImage&) { told = true; });
  const pid_t process = WaitForPid();
  loader.Drop();
  WaitUntil([&] { return IsGone(process); });
  EXPECT_FALSE(told);
  loader.Drop();
}

TEST_F(PictureLoaderTest, GoesWithItsHelper) {
  auto loader = std::make_unique<ProcessPictureLoader>(FakeThatHangs(), 1h);
  bool told = false;
  loader->Load("/nowhere", 2, 1, [&](const SharedImage&) { told = true; });
  const pid_t process = WaitForPid();
  loader.reset();
  WaitUntil([&] { return IsGone(process); });
  EXPECT_FALSE(told);
}

// The second load answers, the first has hung.
TEST_F(PictureLoaderTest, ALoadTakesThePlaceOfTheLast) {
  MakeFile("whole", kTwoPixels);
  ProcessPictureLoader loader(Fake("test -e \"$at\"again && exec cat \"$at\"whole; " + kHang), 1h);
  bool told = false;
  loader.Load("/nowhere", 2, 1, [&](const SharedImage&) { told = true; });
  const pid_t process = WaitForPid();
  MakeFile("again");
  EXPECT_TRUE(LoadBy(loader));
  WaitUntil([&] { return IsGone(process); });
  EXPECT_FALSE(told);
}

// None of them is known to have ended before an event says so.
TEST_F(PictureLoaderTest, IsStuckWhileManyDroppedHelpersHaventEnded) {
  const auto dropMany = [](ProcessPictureLoader& loader, bool becomesStuck) {
    for (std::size_t i = 0; i < kMostHangingHelpers; ++i) {
      EXPECT_FALSE(loader.IsStuck()) << i;
      loader.Load("/nowhere", 2, 1, [](const SharedImage&) { ADD_FAILURE() << "told"; });
      loader.Drop();
    }
    EXPECT_EQ(loader.IsStuck(), becomesStuck);
  };
  ProcessPictureLoader patient(FakeThatHangs(), 1h, 1h);
  dropMany(patient, false);
  ProcessPictureLoader loader(FakeThatHangs(), 1h, 0ms);
  dropMany(loader, true);
  WaitUntil([&] { return !loader.IsStuck(); });
}

std::vector<QString> messages;
void TakeMessage(QtMsgType, const QMessageLogContext&, const QString& text) { messages.push_back(text); }

// The toolkit says so when it waits.
TEST_F(PictureLoaderTest, TheApplicationsEndWaitsForNoHelper) {
  messages.clear();
  {
    ProcessPictureLoader loader(FakeThatHangs(), 1h);
    loader.Load("/nowhere", 2, 1, [](const SharedImage&) { ADD_FAILURE() << "told"; });
    WaitForPid();
  }
  const QList<QProcess*> left = QCoreApplication::instance()->findChildren<QProcess*>();
  EXPECT_EQ(left.size(), 1);
  const QtMessageHandler before = qInstallMessageHandler(TakeMessage);
  qDeleteAll(left);
  qInstallMessageHandler(before);
  EXPECT_EQ(messages, std::vector<QString>{});
}

TEST_F(PictureLoaderTest, GivesALoadAQuarterOfAMinute) { EXPECT_EQ(kLongestPictureLoad, 15s); }

TEST_F(PictureLoaderTest, MayBeUsedAndDestroyedByWhatItTells) {
  const std::string helper = FakeAnswer(kTwoPixels);
  auto loader = std::make_unique<ProcessPictureLoader>(helper, 1h);
  QEventLoop loop;
  int pictures = 0;
  loader->Load("/nowhere", 2, 1, [&](const SharedImage& first) {
    pictures += first ? 1 : 0;
    loader->Load("/nowhere", 2, 1, [&](const SharedImage& second) {
      pictures += second ? 1 : 0;
      loader.reset();
      loop.quit();
    });
  });
  loop.exec();
  EXPECT_EQ(pictures, 2);
}

}  // namespace
}  // namespace tresmor
