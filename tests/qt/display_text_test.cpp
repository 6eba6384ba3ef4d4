#include "qt/display_text.h"

#include <gtest/gtest.h>

#include <QTextDocumentFragment>
#include <random>

namespace tresmor {
namespace {

std::string Back(const std::string& bytes) { return EditedBytes(EditText(bytes)); }

TEST(DisplayText, EveryPairOfBytesComesBack) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string bytes = {static_cast<char>(first), static_cast<char>(second)};
      ASSERT_EQ(Back(bytes), bytes) << first << ' ' << second;
    }
  }
}

TEST(DisplayText, RandomBytesAmongCharactersComeBack) {
  const std::vector<std::string> pieces = {"a",  "\xC3\xA4",         "\xE2\x82\xAC", "\xF0\x9F\x90\x80", "\xED\xB2\x80",
                                           "\n", "\xEF\xBF\xBD",     "\xEF\xBB\xBF", "\xE2\x80\xAE",     "\xC0\x80",
                                           "\r", "\xF4\x90\x80\x80", "\xED\xA0\xBD"};
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    for (auto i = random() % 12; i > 0; --i) {
      bytes += random() % 2 == 0 ? pieces[random() % pieces.size()] : std::string(1, static_cast<char>(random() % 256));
    }
    ASSERT_EQ(Back(bytes), bytes) << testing::PrintToString(bytes);
  }
}

TEST(DisplayText, UsualTextIsEditedAsItself) {
  const QString typed = QString::fromUtf8("Gr\u00fc\u00dfe \U0001F400 & <b>");
  EXPECT_EQ(EditedBytes(typed), typed.toStdString());
  EXPECT_EQ(EditText(typed.toStdString()), typed);
}

// A surrogate that was written out as UTF-8 is none: taken for a character, it would be the sign of another byte.
TEST(DisplayText, WrittenSurrogatesAreBytesOfTheirOwn) {
  EXPECT_EQ(EditText("\xED\xB2\x80"), QStringLiteral("\xDCED\xDCB2\xDC80"));
  EXPECT_EQ(ShownLine("\xED\xB2\x80"), QString(3, QChar(0xFFFD)));
}

// The low half of this character looks like the sign of the byte 0.
TEST(DisplayText, ACharacterOfTwoUnitsIsWhole) {
  EXPECT_EQ(EditedBytes(QStringLiteral("\xD83D\xDC00")), "\xF0\x9F\x90\x80");
}

TEST(DisplayText, AFieldHoldsNoControlCharacters) {
  for (int byte = 0; byte < 0x20; ++byte) {
    EXPECT_FALSE(EditText(std::string(1, static_cast<char>(byte))).contains(QChar(byte))) << byte;
  }
  EXPECT_EQ(EditText("\x7f"), QString(QChar(0xDC7F)));
  EXPECT_EQ(EditText("\u2028"), QStringLiteral("\xDCE2\xDC80\xDCA8"));
}

TEST(DisplayText, NoNameTurnsOrBreaksTheTextThatItStandsIn) {
  EXPECT_EQ(ShownLine("photo\u202Egpj.exe"), QStringLiteral("photo\uFFFD\uFFFD\uFFFDgpj.exe"));
  for (const char* const command : {"\u0085", "\u2028", "\u2029", "\u202A", "\u2066", "\u2069"}) {
    const QString character = QString::fromUtf8(command);
    EXPECT_FALSE(ShownLine(command).contains(character)) << testing::PrintToString(command);
    EXPECT_FALSE(EditText(command).contains(character)) << testing::PrintToString(command);
  }
}

TEST(DisplayText, LongLinesHaveUnseenPlacesToBreak) {
  const QString usual = "/home/somebody with a name/" + QString(30, 'x') + "/y";
  EXPECT_EQ(Breakable(usual, 30), usual);
  QString broken = Breakable(QString(70, 'x'), 30);
  EXPECT_EQ(broken, QString(30, 'x') + QChar(0x200B) + QString(30, 'x') + QChar(0x200B) + QString(10, 'x'));
  for (const QString& joined :
       {QString("1-2").repeated(20), QString("/7").repeated(30), QString(59, '-'), QString("a\u00A0").repeated(20)})
    EXPECT_EQ(Breakable(joined, 30).count(QChar(0x200B)), 1) << joined.toStdString();
  const QString rats = QString::fromUtf8("\U0001F400").repeated(50);
  broken = Breakable(rats, 30);
  EXPECT_EQ(broken.remove(QChar(0x200B)), rats);
  EXPECT_EQ(Breakable(rats, 30).indexOf(QChar(0x200B)), 30) << "between characters";
}

TEST(DisplayText, OneLineStaysOne) {
  EXPECT_EQ(ShownLine("a\r\nb\tc\x7f"), QStringLiteral("a\u240D\u240Ab\u2409c\u2421"));
  EXPECT_EQ(ShownLine(std::string_view("\0\x1f", 2)), QStringLiteral("\u2400\u241F"));
  EXPECT_EQ(ShownLine("a\xFFz\xC3"), QStringLiteral("a\uFFFDz\uFFFD"));
  EXPECT_EQ(ShownLine("\xEF\xBF\xBD"), QStringLiteral("\uFFFD"));
}

TEST(DisplayText, LinesEndAtBothKindsOfLineEnds) {
  EXPECT_EQ(ShownLines("a\r\nb\nc\rd\n"), QStringLiteral("a\nb\nc\u240Dd\n"));
  EXPECT_EQ(ShownLines(""), QString());
  EXPECT_EQ(ShownCaption("a\r\nb\nc"), QStringLiteral("a\nb\u240Ac"));
}

TEST(DisplayText, AToolTipIsNoMarkup) {
  EXPECT_EQ(PlainToolTip(""), QString());
  const std::string name = "<b>a</b>  &amp; 'b'\r\n<img src=x>";
  const QString tip = PlainToolTip(name);
  EXPECT_TRUE(Qt::mightBeRichText(tip));  // which the toolkit is told, so that it needn't guess
  EXPECT_EQ(QTextDocumentFragment::fromHtml(tip).toPlainText(), ShownLines(name));
}

}  // namespace
}  // namespace tresmor
