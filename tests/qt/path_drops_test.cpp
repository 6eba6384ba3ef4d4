#include "qt/path_drops.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QUrl>
#include <memory>

#include "qt/drops.h"
#include "qt/stage.h"

namespace tresmor::tests {
namespace {

class PathDropsTest : public testing::Test {
 protected:
  PathDropsTest() {
    stage_.events.OnUncaught = [this](const std::exception_ptr&) { ++failed_; };
    stage_.room->addWidget(area_);
    area_->setMinimumSize(200, 100);
    field_->setGeometry(0, 0, 100, 30);
    new PathDrops(*area_, stage_.binder, [this](const std::vector<std::string>& paths) {
      dropped_ = paths;
      if (paths.front() == "/fails") throw Failure(Errors::Device);
    });
    stage_.Show();
    data_.setUrls({QUrl("file:///a")});
    data_.setText("/a");  // as file managers do, for editors
  }
  Qt::DropAction DropOn(const QWidget& widget, const Drag& drag) {
    return Drop(stage_.window, CenterOf(widget, stage_.window), drag);
  }

  using Paths = std::vector<std::string>;

  int failed_ = 0;
  Paths dropped_;
  QMimeData data_;
  Stage stage_;
  QWidget* const area_ = new QWidget(&stage_.window);
  QLineEdit* const field_ = new QLineEdit(area_);
};

TEST_F(PathDropsTest, ComeWithTheExactBytes) {
  data_.setUrls({QUrl::fromEncoded("file:///a%FFb/c%0Ad"), QUrl("https://tresmor.example/x"),
                 QUrl::fromEncoded("file:///gr%C3%BCn%2520%23?")});
  EXPECT_EQ(DropOn(*area_, {data_}), Qt::CopyAction);
  WaitUntil([&] { return !dropped_.empty(); });
  EXPECT_EQ(dropped_, (Paths{"/a\xFF"
                             "b/c\nd",
                             "/gr\xC3\xBCn%20#"}));
}

TEST_F(PathDropsTest, AreNoTextForAField) {
  EXPECT_EQ(DropOn(*field_, {data_}), Qt::CopyAction);
  WaitUntil([&] { return !dropped_.empty(); });
  EXPECT_EQ(dropped_, Paths{"/a"});
  EXPECT_EQ(field_->text(), "");
}

TEST_F(PathDropsTest, WordsStayTheFields) {
  QMimeData words;
  words.setText("/a");
  EXPECT_EQ(DropOn(*area_, {words}), Qt::IgnoreAction);
  EXPECT_NE(DropOn(*field_, {words}), Qt::IgnoreAction);
  EXPECT_EQ(field_->text(), "/a");
  QCoreApplication::processEvents();
  EXPECT_EQ(dropped_, Paths{});
}

// A source deletes what it believes to have been moved.
TEST_F(PathDropsTest, AreNeverMoved) {
  EXPECT_EQ(DropOn(*area_, {data_, Qt::MoveAction | Qt::CopyAction, Qt::ShiftModifier}), Qt::CopyAction);
  EXPECT_EQ(DropOn(*area_, {data_, Qt::MoveAction | Qt::LinkAction, Qt::ShiftModifier}), Qt::LinkAction);
  WaitUntil([&] { return !dropped_.empty(); });
  dropped_.clear();
  for (const QWidget* const target : {area_, static_cast<QWidget*>(field_)}) {
    EXPECT_EQ(DropOn(*target, {data_, Qt::MoveAction, Qt::ShiftModifier}), Qt::IgnoreAction);
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(dropped_, Paths{});
  EXPECT_EQ(field_->text(), "");
}

TEST_F(PathDropsTest, WaitForTheEndOfTheDrop) {
  DropOn(*area_, {data_});
  EXPECT_EQ(dropped_, Paths{});
  WaitUntil([&] { return !dropped_.empty(); });
}

TEST_F(PathDropsTest, GoWithTheirArea) {
  DropOn(*area_, {data_});
  delete area_;
  QCoreApplication::processEvents();
  EXPECT_EQ(dropped_, Paths{});
}

TEST_F(PathDropsTest, AreNoMatterOfAnAreaThatRests) {
  area_->setEnabled(false);
  EXPECT_EQ(DropOn(*area_, {data_}), Qt::IgnoreAction);
  EXPECT_EQ(DropOn(*field_, {data_}), Qt::IgnoreAction);
}

TEST_F(PathDropsTest, LetNoFailureIntoTheToolkit) {
  data_.setUrls({QUrl("file:///fails")});
  DropOn(*area_, {data_});
  WaitUntil([&] { return failed_ > 0; });
  EXPECT_EQ(dropped_, Paths{"/fails"});
}

}  // namespace
}  // namespace tresmor::tests
