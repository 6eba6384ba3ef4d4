// A main window whose searches go over a file system in memory.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"
#include "results/rows.h"
#include "scope/scope_controls.h"
#include "search/search_world.h"
#include "shell/search_control.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"

namespace tresmor {

class SearchFixture : public testing::Test {
 protected:
  SearchFixture() {
    BindTimer(frm.tmrProgress, events);
    frm.msgBar.Listen([this](const Notice& notice) {
      if (notice.when == Notice::When::After) messages.push_back(frm.msgBar.Text());
    });
  }

  void AddRow(const std::string& text, const char* target = "Yes") {
    AddIncludedRow(frm.lstPath, {text, "Yes", "", "", "", target});
  }
  void AddExcluded(const std::string& folder) { AddExcludedRow(frm.lstPath, folder); }
  void MakeFiles(int count) {
    for (int i = 0; i < count; ++i) files.MakeFile("/data/f" + std::to_string(i), std::string(1, 'x'));
  }
  std::vector<std::string> Names(ResultList list) {
    std::vector<std::string> names;
    for (std::int32_t row = 1; row <= frm.results.List(list).Count(); ++row) {
      names.push_back(frm.results.List(list).Cell(row, kNameItem));
    }
    return names;
  }

  // Acts on the interface thread once the search has got to its first call of one kind, and lets it go on only then.
  void AtFirst(MemoryFileSystem::Op op, std::function<void()> act) {
    files.SetHook([this, op](const MemoryFileSystem::Call& call) {
      if (call.op != op || reached.exchange(true)) return;
      events.Wake();
      acted.wait(false);
    });
    events.onPump = [this, act = std::move(act)] {
      if (!reached || acted || !frm.tmrProgress.Enabled()) return;  // or it has begun, but not told so
      act();
      acted = true;
      acted.notify_all();
    };
  }
  void CancelAtFirst(MemoryFileSystem::Op op) {
    AtFirst(op, [this] { control.CancelSearch(); });
  }

  tests::ScriptedEventQueue events;
  MemoryFileSystem files;
  FakeShell shell;
  FakeVersions versions;
  ScriptedDialogs dialogs;
  FrmMain frm;
  Progress progress{events, frm.tmrProgress, frm.msgBar, frm.pbMain};
  SearchControl control{frm, progress, {files, shell, versions, events, dialogs}};
  std::vector<std::string> messages;
  std::atomic<bool> reached{false};
  std::atomic<bool> acted{false};
};

}  // namespace tresmor
