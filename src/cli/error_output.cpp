#include "cli/error_output.h"

#include "base/text.h"
#include "cli/visible.h"

namespace tresmor {
namespace {

// A terminal is told to cut a long line off instead of wrapping it, since a wrapped one can't be redrawn in place.
constexpr char kDraw[] = "\r\x1b[?7l";
constexpr char kDrawn[] = "\x1b[K\x1b[?7h";
constexpr char kClear[] = "\r\x1b[K";

std::string OnOneLine(std::string_view words) {
  const std::string lines = ReplaceAll(ReplaceAll(words, "\r\n", "\n"), "\n\n", "\n");
  return ReplaceAll(lines, "\n", " ");
}

}  // namespace

ErrorOutput::~ErrorOutput() { ClearProgress(); }

void ErrorOutput::Say(std::string_view text) { SayVisible(Visible(text)); }

void ErrorOutput::SayVisible(const std::string& line) {
  ClearProgress();
  Put("tresmor-cli: " + line + "\n");
}

void ErrorOutput::ShowProgress(std::string_view text) {
  drawn_ = IsTerminal();
  Put(drawn_ ? kDraw + Visible(text) + kDrawn : Visible(text) + "\n");
}

void ErrorOutput::ClearProgress() {
  if (drawn_) Put(kClear);
  drawn_ = false;
}

BoxAnswer ErrorOutput::MessageBox(const BoxText& text, BoxIcon, const std::string&, BoxButtons buttons) {
  std::string line;
  for (const BoxText::Part& part : text.Parts()) {
    line += Visible(part.kind == BoxText::Part::Kind::Name ? part.text : OnOneLine(part.text));
  }
  SayVisible(line);
  return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

std::optional<std::string> ErrorOutput::OpenFileDlg(const FileQuestion&) { return std::nullopt; }

std::optional<std::string> ErrorOutput::BrowseFolder(const std::string&, const std::string&) { return std::nullopt; }

std::string ErrorOutput::InputBox(const BoxText&, const std::string&, const std::string&) { return {}; }

void ErrorOutput::Put(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), file_);
  std::fflush(file_);
}

}  // namespace tresmor
