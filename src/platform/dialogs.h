// The port to questions: each call shows one modal box or dialog and returns its answer.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tresmor {

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, YesNo, OkCancel, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

// Open asks for a file that exists; Save for any, and asks before one that exists is taken.
enum class FileDialogMode { Open, Save };

struct FileFilter {
  std::string label;
  std::string pattern;  // such as "*.csv"
};

struct FileQuestion {
  FileDialogMode mode = FileDialogMode::Open;
  std::string title;
  std::vector<FileFilter> filters;  // the first one is in force
  std::string defaultExtension;     // without a dot; given to a name that has none
  std::string startName;            // the proposal, a bare name or a path; may be empty
  std::string startFolder;          // a file here means its folder; empty for the usual place
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Interface thread. Text and title are plain text. An empty title stands for the program's name.
  virtual BoxAnswer MessageBox(const std::string& text, BoxIcon icon, const std::string& title, BoxButtons buttons) = 0;

  // Interface thread. Asks for one file and gives its full path, none after a cancel.
  virtual std::optional<std::string> OpenFileDlg(const FileQuestion& question) = 0;
};

}  // namespace tresmor
