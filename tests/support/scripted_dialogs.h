// Answers questions from a script. A box or dialog that isn't expected fails the test, and so does one that never came.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace tresmor {

class ScriptedDialogs final : public Dialogs {
 public:
  struct Box {
    std::string text;
    std::string title;
    BoxIcon icon = BoxIcon::Critical;
    BoxButtons buttons = BoxButtons::Ok;
    BoxAnswer answer = BoxAnswer::Ok;
  };

  ~ScriptedDialogs() override {
    EXPECT_TRUE(boxes.empty()) << "never came: " << boxes.front().text;
    EXPECT_TRUE(files.empty()) << "never asked for a file";
  }

  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) override {
    if (boxes.empty()) {
      ADD_FAILURE() << "unexpected box: " << title << ": " << text.Whole();
      return BoxAnswer::Ok;
    }
    const Box box = boxes.front();
    boxes.pop_front();
    EXPECT_EQ(text.Whole(), box.text);
    EXPECT_EQ(title, box.title);
    EXPECT_EQ(icon, box.icon);
    EXPECT_EQ(buttons, box.buttons);
    if (onBox) onBox();
    return box.answer;
  }

  std::optional<std::string> OpenFileDlg(const FileQuestion& question) override {
    asked.push_back(question);
    if (files.empty()) {
      ADD_FAILURE() << "unexpected file dialog: " << question.title;
      return std::nullopt;
    }
    const std::optional<std::string> file = files.front();
    files.pop_front();
    if (onFile) onFile();
    return file;
  }

  std::deque<Box> boxes;                         // to come, in order
  std::deque<std::optional<std::string>> files;  // answers to come, in order
  std::vector<FileQuestion> asked;
  std::function<void()> onBox;
  std::function<void()> onFile;
};

}  // namespace tresmor
