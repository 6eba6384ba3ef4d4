// The dialog of the commands on files, answered from a script.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "fileops/file_commands.h"

namespace tresmor::tests {

// What a user does with the dialog each time it comes; it must be closed then.
class ScriptedFileForms final : public FileForms {
 public:
  ~ScriptedFileForms() override { EXPECT_TRUE(deeds.empty()) << "the dialog never came"; }

  void ShowModal(FrmFileOper& form) override {
    EXPECT_TRUE(form.Visible());
    if (deeds.empty()) {
      ADD_FAILURE() << "unexpected dialog: " << form.Caption();
      return form.CancelButton.OnClick();
    }
    const auto deed = deeds.front();
    deeds.pop_front();
    deed(form);
    EXPECT_FALSE(form.Visible());
  }

  std::deque<std::function<void(FrmFileOper&)>> deeds;
};

}  // namespace tresmor::tests
