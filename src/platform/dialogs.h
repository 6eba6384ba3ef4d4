// The port to questions: each call shows one modal box or dialog and returns its answer.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tresmor {

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, YesNo, OkCancel, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

// Open asks for a file to read, and before it takes one that doesn't exist whether it is to be created, which it isn't
// here; Save asks for any, and again before it takes one that exists.
enum class FileDialogMode { Open, Save };

// What a box says: words of the program's own, with line ends where the box is to have them, and among them names,
// which may hold any byte, line ends too. Only here the ones can be told from the others.
class BoxText {
 public:
  struct Part {
    enum class Kind { Words, Name } kind;
    std::string text;
  };

  BoxText(std::string words) { Words(std::move(words)); }
  BoxText(const char* words) : BoxText(std::string(words)) {}

  BoxText& Words(std::string words) { return Add(Part::Kind::Words, std::move(words)); }
  BoxText& Name(std::string name) { return Add(Part::Kind::Name, std::move(name)); }

  const std::vector<Part>& Parts() const { return parts_; }
  // All of it, names as they are.
  std::string Whole() const {
    std::string whole;
    for (const Part& part : parts_) whole += part.text;
    return whole;
  }

 private:
  BoxText& Add(Part::Kind kind, std::string text) {
    parts_.push_back({kind, std::move(text)});
    return *this;
  }

  std::vector<Part> parts_;
};

struct FileFilter {
  std::string label;
  std::string pattern;  // such as "*.csv"
};

struct FileQuestion {
  FileDialogMode mode = FileDialogMode::Open;
  std::string title;
  std::vector<FileFilter> filters;  // the first one is in force
  std::string defaultExtension;     // without a dot; given to a name without one, if that is no file to open
  std::string startName;            // the proposal, a bare name or a full path; may be empty
  // Where to begin, if the proposal is no full path. A file here means its folder, and a folder that isn't there the
  // nearest that is; what is no full path means the usual place.
  std::string startFolder;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Interface thread. Text and title are plain text; what a name in the text holds of line ends and other control
  // characters is shown as such and breaks no line. An empty title stands for the program's name.
  virtual BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) = 0;

  // Interface thread. Asks for one file and gives its full path, none after a cancel.
  virtual std::optional<std::string> OpenFileDlg(const FileQuestion& question) = 0;

  // Interface thread. Asks for a folder and gives its full path, none after a cancel. Begins at `startDir`, or as far
  // on the way there as it exists; at the usual place if that is empty.
  virtual std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) = 0;

  // Interface thread. Asks for a line of text, proposing one. Names in the prompt are shown as in a box. Empty after a
  // cancel.
  virtual std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) = 0;
};

}  // namespace tresmor
