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

  struct FolderChoice {
    std::string title;
    std::string startDir;
    std::optional<std::string> answer;
  };
  struct Input {
    std::string prompt;
    std::string title;
    std::string proposal;
    std::string answer;
  };

  ~ScriptedDialogs() override {
    EXPECT_TRUE(boxes.empty()) << "never came: " << boxes.front().text;
    EXPECT_TRUE(files.empty()) << "never asked for a file";
    EXPECT_TRUE(folders.empty()) << "never asked for a folder";
    EXPECT_TRUE(inputs.empty()) << "never asked for a text";
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

  std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) override {
    if (folders.empty()) {
      ADD_FAILURE() << "unexpected folder dialog: " << title;
      return std::nullopt;
    }
    const FolderChoice choice = folders.front();
    folders.pop_front();
    EXPECT_EQ(title, choice.title);
    EXPECT_EQ(startDir, choice.startDir);
    return choice.answer;
  }

  std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) override {
    if (inputs.empty()) {
      ADD_FAILURE() << "unexpected input box: " << prompt.Whole();
      return {};
    }
    const Input input = inputs.front();
    inputs.pop_front();
    EXPECT_EQ(prompt.Whole(), input.prompt);
    EXPECT_EQ(title, input.title);
    EXPECT_EQ(proposal, input.proposal);
    if (onInput) onInput();
    return input.answer;
  }

  std::deque<Box> boxes;                         // to come, in order
  std::deque<std::optional<std::string>> files;  // answers to come, in order
  std::vector<FileQuestion> asked;
  std::deque<FolderChoice> folders;  // to come, in order
  std::deque<Input> inputs;          // to come, in order
  std::function<void()> onBox;
  std::function<void()> onFile;
  std::function<void()> onInput;
};

}  // namespace tresmor
