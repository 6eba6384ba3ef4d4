#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/dialogs.h"
#include "qt/binder.h"

namespace tresmor {

// The toolkit's boxes and dialogs, over the window that is active, or that this belongs to; F1 in them is about that
// window. Folders are chosen in the desktop's own dialog where it has one. Its dialogs for files aren't used: they ask
// about replacing a file before its name gets the extension. Names with quotation marks are taken as they stand.
class QtDialogs : public Dialogs {
 public:
  explicit QtDialogs(const Binder& binder) : binder_(binder) {}

  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) override;
  std::optional<std::string> OpenFileDlg(const FileQuestion& question) override;
  std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) override;
  std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) override;

 private:
  const Binder& binder_;
};

// The window that a modal one is to stand over: the dialog on show, else the main window.
QWidget* ModalOwner();

}  // namespace tresmor
