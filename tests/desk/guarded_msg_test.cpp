// Messages that can be turned off, answered from a script.
#include "desk/guarded_msg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What a user does with one box.
using Deed = std::function<void(FrmMyMsgBox&)>;

const Deed kPressOk = [](FrmMyMsgBox& form) { form.OKButton.OnClick(); };
const Deed kPressCancel = [](FrmMyMsgBox& form) { form.cmdCancel.OnClick(); };
const Deed kCloseFrame = [](FrmMyMsgBox&) {};
const Deed kPressEscape = [](FrmMyMsgBox& form) { form.Escape(); };
Deed Ticked(const Deed& deed) {
  return [deed](FrmMyMsgBox& form) {
    form.chkDontShow.Value = true;
    deed(form);
  };
}

class ScriptedForms final : public ModalForms {
 public:
  void ShowModal(FrmMyMsgBox& form) override {
    captions.push_back(form.Caption());
    texts.push_back(form.lblMsg.Caption());
    EXPECT_TRUE(form.Visible());
    if (deeds.empty()) {
      ADD_FAILURE() << "unexpected box: " << form.lblMsg.Caption();
      return;
    }
    const Deed deed = deeds.front();
    deeds.pop_front();
    deed(form);
  }

  std::deque<Deed> deeds;
  std::vector<std::string> captions;
  std::vector<std::string> texts;
};

class GuardedMsgTest : public testing::Test {
 protected:
  ~GuardedMsgTest() override { EXPECT_TRUE(forms.deeds.empty()) << "a box that was expected never came"; }

  bool Warn(std::int16_t& flag, const Deed& deed) {
    forms.deeds.push_back(deed);
    return messages.GuardedMsg(flag, "text", "title", kWarningIcon);
  }
  bool Tip(std::int16_t& flag, const Deed& deed) {
    forms.deeds.push_back(deed);
    return messages.GuardedMsg(flag, "text", "", kTipsIcon);
  }

  ScriptedForms forms;
  GuardedMessages messages{forms};
  std::int16_t flag = 0;
};

TEST_F(GuardedMsgTest, TheBoxHasTheHelpOfTheOptions) {
  const FrmMyMsgBox form;
  EXPECT_EQ(form.HelpContextID, 112);
}

TEST_F(GuardedMsgTest, AFlagOf1ShowsNothing) {
  flag = 1;
  EXPECT_TRUE(messages.GuardedMsg(flag, "text", "title", kWarningIcon));
  EXPECT_THAT(forms.texts, IsEmpty());
  EXPECT_EQ(flag, 1);
}

TEST_F(GuardedMsgTest, AnyOtherFlagShowsTheBox) {
  for (const std::int16_t other : std::initializer_list<std::int16_t>{2, -1, 32767}) {
    flag = other;
    EXPECT_TRUE(Warn(flag, kPressOk));
    EXPECT_EQ(flag, 0);
  }
  EXPECT_THAT(forms.texts, ElementsAre("text", "text", "text"));
}

TEST_F(GuardedMsgTest, OkWithTheBoxTickedIsForGood) {
  EXPECT_TRUE(Warn(flag, Ticked(kPressOk)));
  EXPECT_EQ(flag, 1);
}

TEST_F(GuardedMsgTest, OkWithTheBoxClearComesAgain) {
  EXPECT_TRUE(Warn(flag, kPressOk));
  EXPECT_EQ(flag, 0);
  EXPECT_TRUE(Warn(flag, kPressOk));
  EXPECT_THAT(forms.texts, ElementsAre("text", "text"));
}

TEST_F(GuardedMsgTest, CancelLeavesTheFlagEvenWithATick) {
  EXPECT_FALSE(Warn(flag, Ticked(kPressCancel)));
  EXPECT_EQ(flag, 0);
  flag = 7;
  EXPECT_FALSE(Warn(flag, kPressCancel));
  EXPECT_EQ(flag, 7);
}

TEST_F(GuardedMsgTest, TheFrameCountsAsOkAtFirstEvenWithATick) {
  flag = 2;
  EXPECT_TRUE(Warn(flag, Ticked(kCloseFrame)));
  EXPECT_EQ(flag, 0);
}

TEST_F(GuardedMsgTest, TheFrameRepeatsTheLastAnswer) {
  EXPECT_FALSE(Warn(flag, kPressCancel));
  EXPECT_FALSE(Warn(flag, kCloseFrame));
  EXPECT_TRUE(Warn(flag, Ticked(kPressOk)));
  flag = 0;
  EXPECT_TRUE(Warn(flag, kCloseFrame));
  EXPECT_EQ(flag, 1);
}

TEST_F(GuardedMsgTest, EscapeIsCancelWhereThatButtonShows) {
  EXPECT_FALSE(Warn(flag, kPressEscape));
  EXPECT_TRUE(Warn(flag, kPressOk));
  EXPECT_TRUE(Tip(flag, Ticked(kPressEscape)));
  EXPECT_EQ(flag, 0);
}

TEST_F(GuardedMsgTest, EachBoxStartsWithoutATick) {
  EXPECT_TRUE(Warn(flag, Ticked(kPressOk)));
  forms.deeds.push_back([](FrmMyMsgBox& form) {
    EXPECT_FALSE(form.chkDontShow.Value());
    form.OKButton.OnClick();
  });
  EXPECT_EQ(messages.MyMsgBox("again", "", 0), FrmMyMsgBox::kOk);
  EXPECT_THAT(forms.captions, ElementsAre("title", "Tresmor"));
}

TEST(FrmMyMsgBox, AWarningHasItsPictureAndBothButtons) {
  FrmMyMsgBox form;
  EXPECT_FALSE(form.Visible() || form.imgWarning.Visible() || form.imgTips.Visible());
  EXPECT_EQ(form.chkDontShow.Caption(), "Don't show this dialog again.");
  form.Message = "text";
  form.Title = "title";
  form.IconType = kWarningIcon;
  form.Load();
  EXPECT_EQ(form.Caption(), "title");
  EXPECT_EQ(form.lblMsg.Caption(), "text");
  EXPECT_TRUE(form.imgWarning.Visible() && form.OKButton.Visible() && form.cmdCancel.Visible());
  EXPECT_FALSE(form.imgTips.Visible());
  EXPECT_EQ(form.OKButton.Left(), 1440);
  EXPECT_EQ(form.cmdCancel.Left(), 2760);
}

TEST(FrmMyMsgBox, ATipHasOneButtonInTheMiddle) {
  FrmMyMsgBox form;
  form.IconType = kTipsIcon;
  form.Width = 5442;
  form.Load();
  EXPECT_EQ(form.Caption(), "Tresmor");
  EXPECT_TRUE(form.imgTips.Visible());
  EXPECT_FALSE(form.imgWarning.Visible() || form.cmdCancel.Visible());
  EXPECT_EQ(form.OKButton.Left(), 2113.5);
  form.OKButton.OnClick();
  EXPECT_FALSE(form.Visible());

  form.IconType = 3;
  form.Load();
  EXPECT_FALSE(form.imgTips.Visible() || form.imgWarning.Visible());
  EXPECT_TRUE(form.cmdCancel.Visible());
  EXPECT_EQ(form.OKButton.Left(), 1440);
}

TEST(FrmMyMsgBox, ItsWidthMayBeMeasuredWhenItIsLoaded) {
  FrmMyMsgBox form;
  form.IconType = kTipsIcon;
  form.Load();
  EXPECT_EQ(form.OKButton.Left(), 2068.5);
  form.Width = 5442;
  EXPECT_EQ(form.OKButton.Left(), 2113.5);
  form.IconType = kWarningIcon;
  form.Load();
  form.Width = 5500;
  EXPECT_EQ(form.OKButton.Left(), 1440);
}

TEST_F(GuardedMsgTest, EachMessageHasItsOwnFlag) {
  for (std::size_t id = 0; id < kGuardedIds; ++id) {
    Options options;
    forms.deeds.push_back(Ticked(kPressOk));
    EXPECT_TRUE(messages.GuardedMsg(options, static_cast<GuardedId>(id)));
    for (std::size_t other = 0; other < kGuardedIds; ++other) {
      EXPECT_EQ(options.*kGuardedMessages[other].Flag, other == id ? 1 : 0);
    }
  }
  EXPECT_THAT(forms.captions, ElementsAre("Protect System Folders", "Tresmor", "Smart Marker", "Smart Marker",
                                          "Personal data", "Be patient"));
}

TEST_F(GuardedMsgTest, TheTextsAreTheProgramsOwn) {
  const std::vector<std::string> expected = {
      "It is risky if you don't protect system directories.",
      "Both original and duplicate files are included in the result list, it is recommended to keep at least one "
      "duplicate file.",
      "Both original and duplicate files are included in the result list, it is recommended to keep at least one "
      "duplicate file. To do this automatically, select 'Keep at least one'.",
      "You can now mark those files you want to delete or move by putting a tick to the box of the file. To mark files "
      "automatically, you can use 'Smart Marker' to mark duplicate files by date, folder, pattern, size and version. "
      "To do this, select menu 'Result Files' and then 'Smart Marker'.",
      "Searching the whole hard drive is only recommended for advanced user. It is recommended to search personal data "
      "for duplicate files as you know what the files are. You can select 'My documents' in the path list or add path "
      "containing your persoanl data. ",
      "The search can be a lengthy process, the more files to search, the longer the search time is. It may require "
      "hours of search time and may not response for a few minutes for very large files. Please be patient and wait "
      "for completion."};
  std::vector<std::string> texts;
  for (const GuardedMessage& message : kGuardedMessages) texts.emplace_back(message.Message);
  EXPECT_EQ(texts, expected);
  EXPECT_EQ(kGuardedMessages[kWarmProtWin].IconType, kWarningIcon);
  for (std::size_t id = kWarmProtWin + 1; id < kGuardedIds; ++id) EXPECT_EQ(kGuardedMessages[id].IconType, kTipsIcon);
}

}  // namespace
}  // namespace tresmor
