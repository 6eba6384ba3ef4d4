// What a person reads beside the findings: remarks, errors, and one line of progress that is redrawn in place.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"

namespace tresmor {

enum class ErrorDevice { Terminal, File };

// Texts may hold anything; each is one line, made visible. Failures of writing here are passed over.
class ErrorOutput final : public Dialogs {
 public:
  ErrorOutput(std::FILE* file, ErrorDevice device) : file_(file), device_(device) {}
  ~ErrorOutput() override;
  ErrorOutput(const ErrorOutput&) = delete;
  ErrorOutput& operator=(const ErrorOutput&) = delete;

  bool IsTerminal() const { return device_ == ErrorDevice::Terminal; }

  // "tresmor-cli: " and the text.
  void Say(std::string_view text);
  void ShowProgress(std::string_view text);
  void ClearProgress();

  // Nobody is there to answer: the text is printed, with a blank for each of its own line ends, and the box counts as
  // closed.
  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) override;
  // Always cancelled: paths are given as arguments here.
  std::optional<std::string> OpenFileDlg(const FileQuestion& question) override;
  std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) override;
  std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) override;

 private:
  void SayVisible(const std::string& line);
  void Put(std::string_view text);

  std::FILE* file_;
  const ErrorDevice device_;
  bool drawn_ = false;  // a line of progress stands on the terminal
};

}  // namespace tresmor
