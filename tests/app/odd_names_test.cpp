// Files whose names hold line ends and bytes that are no text.
#include <gtest/gtest.h>

#include <QInputDialog>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

const std::string kLineEnd = "a\nb <b>&amp;.txt";
const std::string kNoText = "c\xFF.txt";

class OddNamesTest : public AppTest {
 protected:
  OddNamesTest() {
    MakeFile("data/" + kLineEnd, "words");
    MakeFile("data/" + kNoText, "words");
    MakeFile("data/plain.txt", "words");
    // What a wrong reading of the names would hit.
    MakeFile("data/a", "other words");
    MakeFile("data/b <b>&amp;.txt", "others");
    MakeFile("data/c\xEF\xBF\xBD.txt", "more");
    Start();
    AddFolder(At("data"));
    Search(Report(5, 0, "3, 1 group(s)", "0, 0 group(s)"));
  }
  int RowOf(const std::string& name) {
    const ListView& list = List(ResultList::Duplicates);
    int row = list.Count();
    while (row > 0 && list.Cell(row, kNameItem) != name) --row;
    return row;
  }
  QTreeView* Shown() { return static_cast<QTreeView*>(Named("Duplicates")); }
  void ExpectOthers() {
    for (const char* const name : {"data/a", "data/b <b>&amp;.txt", "data/c\xEF\xBF\xBD.txt", "data/plain.txt"}) {
      EXPECT_TRUE(Exists(name)) << name;
    }
  }
};

TEST_F(OddNamesTest, AreShownOnOneLine) {
  const auto textOf = [&](const std::string& name) {
    return Shown()->model()->index(RowOf(name) - 1, 0).data().toString();
  };
  EXPECT_EQ(textOf(kLineEnd), QStringLiteral("a\u240Ab <b>&amp;.txt"));
  EXPECT_EQ(textOf(kNoText), QStringLiteral("c\uFFFD.txt"));
}

TEST_F(OddNamesTest, GoToTheTrash) {
  ListView& list = List(ResultList::Duplicates);
  list.SetChecked(RowOf(kLineEnd), true);
  list.SetChecked(RowOf(kNoText), true);
  ExpectDelete(false);
  Shown()->setFocus();
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(list.Count(), 1);
  EXPECT_FALSE(Exists("data/" + kLineEnd));
  EXPECT_FALSE(Exists("data/" + kNoText));
  EXPECT_TRUE(Exists("home/.local/share/Trash/files/" + kLineEnd));
  EXPECT_TRUE(Exists("home/.local/share/Trash/files/" + kNoText));
  ExpectOthers();
}

TEST_F(OddNamesTest, AreRenamedByteForByte) {
  ListView& list = List(ResultList::Duplicates);
  for (const std::string& name : {kLineEnd, kNoText}) {
    const int row = RowOf(name);
    list.SetSelected(row, true);
    script_.Expect("Rename", [](QWidget& window) {
      auto* const field = window.findChild<QLineEdit*>();
      field->setCursorPosition(0);
      QTest::keyClicks(field, "new ");
      QTest::keyClick(field, Qt::Key_Return);
    });
    Shown()->setFocus();
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(script_.IsDone());
    EXPECT_EQ(list.Cell(row, kNameItem), "new " + name);
    EXPECT_TRUE(Exists("data/new " + name));
    EXPECT_FALSE(Exists("data/" + name));
  }
  ExpectOthers();
}

}  // namespace
}  // namespace tresmor::tests
