// The port to questions: each call shows one modal box and returns its answer.
#pragma once

#include <string>

namespace tresmor {

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, YesNo, OkCancel, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Interface thread. Text and title are plain text. An empty title stands for the program's name.
  virtual BoxAnswer MessageBox(const std::string& text, BoxIcon icon, const std::string& title, BoxButtons buttons) = 0;
};

}  // namespace tresmor
