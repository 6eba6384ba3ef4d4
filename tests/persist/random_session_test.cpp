// Sessions of random content, and bytes that are none.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "persist/golden.h"
#include "persist/session_world.h"

namespace tresmor {
namespace {

using tests::ExpectSame;
using tests::Golden;
using tests::LoadAnything;
using tests::SessionWorld;

class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}
  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
  bool Coin() { return Below(2) == 0; }
  // Texts that are near to what the format and the lists treat apart from others.
  std::string Text() {
    static const std::vector<std::string> odd = {"",
                                                 "|",
                                                 "-",
                                                 "\r",
                                                 "\n",
                                                 "\xFF\xC3",
                                                 "         7",
                                                 "        07",
                                                 "2147483648",
                                                 "True",
                                                 " ",
                                                 std::string("a\0b", 3),
                                                 "/data/",
                                                 "-         1",
                                                 "\xC3\xA4",
                                                 "2004/01/02 10:20:30",
                                                 "1899/12/30 00:00:00"};
    std::string text = odd[static_cast<std::size_t>(Below(static_cast<int>(odd.size())))];
    for (int i = Below(4); i > 0; --i) text += static_cast<char>(Below(256));
    if (Below(50) == 0) text += std::string(70'000, 'x');
    const bool told = text.find("|-") == std::string::npos && text.find("\r\n") == std::string::npos;
    return told ? text : "told";
  }
  std::vector<std::string> Texts(int count) {
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) texts.push_back(Text());
    return texts;
  }

 private:
  std::mt19937 random_;
};

void Fill(SessionWorld& world, Dice& dice) {
  for (int i = 0; i < 4; ++i) world.lstSrchType.SetTicked(i, dice.Coin());
  for (CheckBox* box : {&world.chkTolerant, &world.chkHidden, &world.chkProtectWinDir}) box->Value = dice.Coin();
  for (int i = dice.Below(5); i > 0; --i) {
    world.AddScope(dice.Text(), dice.Texts(dice.Below(6)), dice.Coin() ? ScopeRow::kIncluded : ScopeRow::kExcluded);
  }
  world.session.SaveSrchResult = true;
  for (std::size_t i = 0; i < 4; ++i) {
    ListView& lst = world.results.lstResult[i];
    lst.Tag = dice.Coin() ? kVersionTag : "";
    for (int rows = dice.Below(20); rows > 0; --rows) {
      const bool versions = lst.Tag() == kVersionTag;
      const std::int32_t row = SessionWorld::Add(lst, dice.Text(), dice.Texts(versions ? 5 : dice.Below(6)));
      if (versions) lst.SetCellTag(row, kVersionItem, dice.Text());
      lst.SetChecked(row, dice.Coin());
    }
  }
}

TEST(RandomSession, ComesBackByteForByte) {
  Dice dice(1);
  for (int round = 0; round < 200; ++round) {
    SessionWorld saved;
    Fill(saved, dice);
    ASSERT_TRUE(saved.Save());
    SessionWorld loaded;
    ASSERT_TRUE(loaded.Load(saved.SavedText()));
    ExpectSame(saved, loaded);
    ASSERT_TRUE(loaded.Save());
    ASSERT_EQ(loaded.SavedText(), saved.SavedText());
  }
}

TEST(RandomSession, BytesOfAnyKindEndInAFailureAtMost) {
  Dice dice(2);
  for (int round = 0; round < 300; ++round) {
    std::string bytes = dice.Coin() ? "3.0.0\r\n" : "1.2.0\r\n";
    for (int i = dice.Below(400); i > 0; --i) bytes += static_cast<char>(dice.Below(256));
    EXPECT_NO_FATAL_FAILURE(LoadAnything(bytes));
  }
}

TEST(RandomSession, DamagedFilesEndInAFailureAtMost) {
  Dice dice(3);
  int loaded = 0;
  for (int round = 0; round < 1000; ++round) {
    std::string bytes = Golden(dice.Coin() ? "results.Tresmor" : "old.Tresmor");
    for (int changes = 1 + dice.Below(3); changes > 0; --changes) {
      // The version stays, since what follows is of interest here.
      const auto at = static_cast<std::size_t>(7 + dice.Below(static_cast<int>(bytes.size()) - 7));
      static const std::string likely = "0129-| \r\nTF";
      const char byte = likely[static_cast<std::size_t>(dice.Below(static_cast<int>(likely.size())))];
      if (dice.Coin()) {
        bytes[at] = byte;
      } else {
        bytes.insert(at, 1, byte);
      }
    }
    EXPECT_NO_FATAL_FAILURE(LoadAnything(bytes));
    loaded += SessionWorld().LoadFailure(bytes) == Errors::None ? 1 : 0;
  }
  EXPECT_GT(loaded, 50);  // else nothing was seen of the rest
}

}  // namespace
}  // namespace tresmor
