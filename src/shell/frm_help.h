// The help as a form: its contents, a field to search them, and which page is asked for.
#pragma once

#include <string>
#include <vector>

#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "desk/action_dispatch.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "shell/help_pages.h"
#include "shell/help_search.h"

namespace tresmor {

struct HelpPorts {
  const FileSystem& files;
  const Shell& shell;
  Dialogs& dialogs;
};

// Shown, beside all other windows and not modal, while it is Visible. Its frame and the Escape key close it by Close().
// Interface thread.
class FrmHelp : public Control {
 public:
  // The pages lie in `folder`; they need not be there before the first Show.
  FrmHelp(const HelpPorts& ports, std::string folder);

  Property<std::string> Caption{*this, Notice::What::Text, "Tresmor Help"};
  TextBox txtFind;    // words; the list has the pages on which all of them are
  Label lblFound;     // says what the list holds
  ListView lstPages;  // titles: all in the order of the contents, or those found, the best first

  // Brings the window up with a topic and all the contents. Where its page is missing a box says so instead, here and
  // wherever else a page is asked for.
  void Show(const HelpTopic& topic);
  void Close() { Visible = false; }

  // Of what whoever shows the form is to show, told as Value each time, also for the same page again.
  const std::string& Address() const { return address_; }
  // The pages' folder, without a separator at its end.
  const std::string& Folder() const { return folder_; }

  // A link on the page was clicked: an address on the net, for the desktop to open, or one of a page.
  void Follow(const std::string& link);
  // That page has come on show by the view's own going back and forward; the list follows.
  void Arrived(const std::string& address);
  // The first page of the list is chosen.
  void OpenFirst();

 private:
  std::string PathOf(std::string_view address) const;
  // A page that is missing is told in a box, and what was on show stays. False then.
  bool Open(const std::string& address);
  void OpenRow(std::int32_t row);
  void LoadPages();
  void ListPages();
  void SelectRow();

  const HelpPorts ports_;
  const std::string folder_;
  ActionDispatch inDialog_;
  std::string address_;
  HelpSearch search_;
  std::vector<std::size_t> listed_;  // of HelpPages(), as in lstPages
};

}  // namespace tresmor
