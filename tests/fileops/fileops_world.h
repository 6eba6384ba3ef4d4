// Result lists over files in memory, and the ports of the commands on them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <semaphore>
#include <string>
#include <utility>
#include <vector>

#include "desk/scripted_event_queue.h"
#include "fileops/transfer_marked.h"
#include "results/result_lists.h"
#include "results/rows.h"
#include "support/fake_file_operations.h"
#include "support/fake_shell.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"

namespace tresmor::tests {

enum class Mark { On, Off };

struct FileOpsWorld {
  explicit FileOpsWorld(PathStyle style = PathStyle::Posix()) : files(style) { Show(ResultList::Duplicates); }

  void Show(ResultList kind) { results.tabMain.Select(static_cast<std::int32_t>(kind) + 1); }
  // A row of a file that needn't be there.
  void AddRow(const std::string& path, Mark mark = Mark::On, ResultList kind = ResultList::Duplicates) {
    Finding finding;
    finding.folder = GetFolderOf(path, files.Style());
    finding.name = GetFileNameOf(path, files.Style());
    ListView& lst = results.List(kind);
    AddResultItem(lst, finding);
    lst.SetChecked(lst.Count(), mark == Mark::On);
  }
  void AddFile(const std::string& path, Mark mark = Mark::On) {
    files.MakeFile(path, "x");
    AddRow(path, mark);
  }
  // "/data/0" and so on.
  void AddRows(int count) {
    for (int i = 0; i < count; ++i) AddRow("/data/" + std::to_string(i));
  }
  // The paths of a list's rows, with a star behind marked ones.
  static std::vector<std::string> Rows(const ListView& lst) {
    std::vector<std::string> rows;
    for (std::int32_t row = 1; row <= lst.Count(); ++row)
      rows.push_back(PathOf(lst, row) + (lst.Checked(row) ? "*" : ""));
    return rows;
  }
  void ExpectBox(const std::string& text, BoxIcon icon = BoxIcon::None, const std::string& title = "") {
    dialogs.boxes.push_back({.text = text, .title = title, .icon = icon});
  }
  void ExpectFailure(OperationCode code, const std::string& description) {
    operations.results.push_back({code, description});
    ExpectBox("File operations failed. Error Code: " + std::to_string(static_cast<int>(code)) + "\r\n\r\n" +
              description);
  }
  std::vector<std::string> Sources(std::size_t call) const { return operations.Paths(operations.calls.at(call).pFrom); }

  // Runs `action` at each pump, of which each operation waits for one.
  void AtEachPump(std::function<void()> action) {
    events.onPump = [this, action = std::move(action)] {
      action();
      pumped_.release();
    };
    operations.onOperation = [this](const ShFileOpStruct&, OperationWatch&) {
      while (pumped_.try_acquire()) continue;
      events.Wake();
      pumped_.acquire();
    };
  }
  void AtNoPump() {
    events.onPump = nullptr;
    operations.onOperation = nullptr;
  }

  MemoryFileSystem files;
  FakeShell shell;
  FakeFileOperations operations{files};
  ScriptedDialogs dialogs;
  ScriptedEventQueue events;
  Panel panel;
  ResultLists results{panel};
  ListView& lst = results.List(ResultList::Duplicates);
  PreviewPane preview;

 private:
  std::counting_semaphore<> pumped_{0};
};

}  // namespace tresmor::tests
