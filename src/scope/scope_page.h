// What the user does on the page of scope rows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/date.h"
#include "desk/guarded_msg.h"
#include "desk/presets.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "scope/scope_controls.h"

namespace tresmor {

struct ScopePagePorts {
  const FileSystem& files;
  const Shell& shell;
  EventQueue& events;
  Dialogs& dialogs;
  // Runs an action of the user's, or drops it while another one runs. Deals with its Failure.
  std::function<void(std::function<void()> action)> Act;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
  // This machine's local clock.
  std::function<DateStamp()> Now;
};

// Interface thread. What shows boxes or takes time goes through Act; choosing tabs and entries does not, so that it
// works at all times.
class ScopePage {
 public:
  // Shows a tab's frame; whoever lays it out listens to the tabs from a later time on. Binds all events of the page's
  // controls but hover texts. The page lives as long as they do. `presets` are those of the boxes' lists.
  ScopePage(ScopeControls& scope, const Presets& presets, const ScopePagePorts& ports);
  ScopePage(const ScopePage&) = delete;
  ScopePage& operator=(const ScopePage&) = delete;

 private:
  void BindActions();
  void BindChoices();

  // Makes a row of the fields. What keeps it from that is told in a box; a row that is there already is passed over in
  // silence. False if a field other than txtPath is to be mended first. Throws Failure TypeMismatch or Overflow for
  // sizes that are none, and Overflow for more rows than 16 bits count.
  bool AddRow();
  bool IsListed(const std::string& folder) const;
  bool CheckFileType();
  bool CheckFolder(const std::string& folder);
  bool CheckSizes();
  bool CheckDate();
  ScopeRow IncludedRow(const std::string& folder) const;
  void RemoveRow();
  void DropFolders(const std::vector<std::string>& paths);
  void BrowseFolder();
  void CheckSize(TextBox& size);
  void PickDate();
  void ShowFrame();

  ScopeControls& scope_;
  const Presets& presets_;
  const ScopePagePorts ports_;
};

}  // namespace tresmor
