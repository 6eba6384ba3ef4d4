// The scope page over folders in memory, with the boxes that a test expects.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desk/one_action.h"
#include "desk/scripted_event_queue.h"
#include "scope/scope_page.h"
#include "support/failure_of.h"
#include "support/fake_shell.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"

namespace tresmor {

// "text|sub-folder|min|max|date|target", and behind it which kind of row it is.
inline std::vector<std::string> Rows(const ListView& lst) {
  std::vector<std::string> rows;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    std::string text = lst.Cell(row, 0);
    for (std::int32_t item = 1; item <= lst.SubItems(row); ++item) text += "|" + lst.Cell(row, item);
    rows.push_back(text + (lst.SmallIcon(row) == ScopeRow::kExcluded ? " out" : " in"));
  }
  return rows;
}

class ScopePageTest : public testing::Test {
 protected:
  explicit ScopePageTest(PathStyle style = PathStyle::Posix()) : files(style) {
    AddPresets(scope.txtPath, presets.PathDizArr);
    AddPresets(scope.txtExt, presets.FileTypeDizArr);
    events.onPump = [this] {
      events.seconds += 0.25;
      events.Wake();
    };
    Follow(scope.txtPath, "txtPath");
    Follow(scope.txtExt, "txtExt");
    Follow(scope.txtMinSz, "txtMinSz");
    Follow(scope.txtMaxSz, "txtMaxSz");
    Follow(scope.txtDate, "txtDate");
    scope.txtExt.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::BackColor && notice.when == Notice::When::After) ++flashes;
    });
    files.MakeFolder("/data");
    files.MakeFolder("/other");
  }

  void Follow(Control& control, const std::string& name) {
    control.Listen([this, name](const Notice& notice) {
      if (notice.what == Notice::What::Focus) seen.push_back("focus " + name);
      if (notice.what == Notice::What::Selection) seen.push_back("all of " + name);
    });
  }
  void Add(const std::string& path) {
    scope.txtPath.SetText(path);
    scope.cmdAdd.OnClick();
  }
  void Exclude(const std::string& path) {
    scope.chkExclude.Value = kTicked;
    Add(path);
    scope.chkExclude.Value = kOff;
  }
  void Expect(const std::string& text, const std::string& title, BoxIcon icon = BoxIcon::Exclamation) {
    dialogs.boxes.push_back({.text = text, .title = title, .icon = icon});
  }
  Errors FailureOfAdding(const std::string& path) {
    return tests::FailureOf([&] { Add(path); });
  }
  void Choose(std::int32_t entry) { scope.cmbDate.Choose(entry); }
  void Leave(TextBox& size, const std::string& text) {
    size.Text = text;
    size.OnLostFocus();
  }

  MemoryFileSystem files;
  FakeShell shell;
  tests::ScriptedEventQueue events;
  ScriptedDialogs dialogs;
  OneAction action;
  Presets presets = BuildPresets(shell);
  ScopeControls scope;
  std::vector<std::string> seen;
  int flashes = 0;
  DateStamp now = *ParseStamp("2004/03/31 18:30:00");
  bool goesOn = true;
  ScopePage page{scope,
                 presets,
                 {.files = files,
                  .shell = shell,
                  .events = events,
                  .dialogs = dialogs,
                  .Act = [this](const std::function<void()>& act) { action.Run(act); },
                  .GuardedMsg =
                      [this](GuardedId id) {
                        seen.push_back(kGuardedMessages[id].Title);
                        return goesOn;
                      },
                  .Now = [this] { return now; }}};
};

class WindowsScopePageTest : public ScopePageTest {
 protected:
  WindowsScopePageTest() : ScopePageTest(PathStyle::Windows()) {
    shell.localDrive = "C:\\";
    for (const char* folder : {"C:\\Docs", "D:\\"}) files.MakeFolder(folder);
  }
};

}  // namespace tresmor
