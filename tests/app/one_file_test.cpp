// Renaming a file and the sheet of its properties, by keys alone and by mouse.
#include <gtest/gtest.h>

#include <QInputDialog>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

class OneFileTest : public DialogTest {
 protected:
  OneFileTest() { StartWithDuplicates(); }

  static void TypeName(QWidget& window, const QString& name) {
    Press(window, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(window.focusWidget(), name);
  }
};

TEST_F(OneFileTest, RenamingByKeysAlone) {
  GoToRow("one");
  InDialog("Rename", Qt::Key_R, Qt::ControlModifier, [this](QWidget& window) {
    EXPECT_EQ(static_cast<QInputDialog&>(window).labelText().toStdString(),
              "Please type a new file name for \n" + At("data/one"));
    EXPECT_EQ(static_cast<QInputDialog&>(window).textValue(), "one");
    TypeName(window, "first");
    Press(window, Qt::Key_Return);
  });
  EXPECT_TRUE(Exists("data/first"));
  EXPECT_FALSE(Exists("data/one"));
  EXPECT_GT(RowOf("first"), 0);
}

TEST_F(OneFileTest, RenamingByTheMouse) {
  ClickRow("two");
  ByMenu("Result Files", "Rename", "Rename", [](QWidget& window) {
    TypeName(window, "second");
    ClickButton(window, "OK");
  });
  EXPECT_TRUE(Exists("data/second"));
  EXPECT_FALSE(Exists("data/two"));
  EXPECT_GT(RowOf("second"), 0);
}

TEST_F(OneFileTest, ANameThatIsLeftChangesNothing) {
  ClickRow("one");
  const std::vector<ModalScript::Answer> ways = {[](QWidget& window) { ClickButton(window, "Cancel"); },
                                                 [](QWidget& window) { Press(window, Qt::Key_Escape); },
                                                 [](QWidget& window) { window.close(); }};
  for (const ModalScript::Answer& leave : ways) {
    InDialog("Rename", Qt::Key_R, Qt::ControlModifier, [&](QWidget& window) {
      TypeName(window, "first");
      leave(window);
    });
  }
  EXPECT_TRUE(Exists("data/one"));
  EXPECT_FALSE(Exists("data/first"));
}

TEST_F(OneFileTest, ANameThatCannotBeIsTold) {
  ClickRow("one");
  const auto rename = [this] {
    script_.Expect("Rename", [](QWidget& window) {
      TypeName(window, "no/such");
      Press(window, Qt::Key_Return);
    });
  };
  rename();
  ExpectBoxByMouse("Can't rename", "File can't be renamed.");
  Key(Qt::Key_R, Qt::ControlModifier);
  WaitForDialogs();
  rename();
  script_.Expect("Can't rename", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Return); });
  Key(Qt::Key_R, Qt::ControlModifier);
  WaitForDialogs();
  EXPECT_TRUE(Exists("data/one"));
  EXPECT_GT(RowOf("one"), 0);
}

// --- Properties, on a desktop that has no sheet of them

class PropertiesTest : public OneFileTest {
 protected:
  PropertiesTest() {
    for (const char* const caller : {"gdbus", "dbus-send"}) MakeProgram(caller, "exit 1");
  }
  void ExpectSheetOf(const std::string& name, const QWidget& window) const {
    const QString text = static_cast<const QMessageBox&>(window).text();
    const std::string beginning = "Name: " + name + "\nFolder: " + At("data/") + "\nSize: 5 bytes\nModified: ";
    EXPECT_TRUE(text.startsWith(QString::fromStdString(beginning))) << text.toStdString();
    EXPECT_TRUE(text.trimmed().endsWith("Permissions: rw-r--r--")) << text.toStdString();
  }
};

TEST_F(PropertiesTest, ByKeysAlone) {
  GoToRow("one");
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    InDialog("File Properties", Qt::Key_P, Qt::ControlModifier, [&](QWidget& window) {
      ExpectSheetOf("one", window);
      QTest::keyClick(&window, key);
    });
  }
}

TEST_F(PropertiesTest, ByTheMouse) {
  ClickRow("two");
  ByMenu("Result Files", "File Properties", "File Properties", [&](QWidget& window) {
    ExpectSheetOf("two", window);
    ClickButton(window, "OK");
  });
}

TEST_F(PropertiesTest, OfAFileThatHasGone) {
  ClickRow("two");
  ASSERT_EQ(unlink(At("data/two").c_str()), 0);
  ByMenu("Result Files", "File Properties", "File Properties", [&](QWidget& window) {
    const std::string text = static_cast<QMessageBox&>(window).text().toStdString();
    EXPECT_TRUE(text.starts_with("Name: two\nFolder: " + At("data/") + "\nNot known: ")) << text;
    window.close();
  });
}

}  // namespace
}  // namespace tresmor::tests
