// Result lists and the dialog of Smart Marker, to be filled in and run.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "desk/options.h"
#include "desk/scripted_event_queue.h"
#include "marker/smart_marker.h"
#include "results/rows.h"
#include "support/fake_shell.h"
#include "support/memory_settings.h"
#include "support/scripted_dialogs.h"

namespace tresmor::tests {

class SmartMarkerTest : public testing::Test {
 protected:
  SmartMarkerTest() { results.tabMain.Select(2); }

  struct File {
    std::string path;
    std::int32_t dupGrp = 0;
    std::string date = "2001/01/01 00:00:00";
    std::int64_t size = 7;
    std::string version = "";  // none if empty
  };
  void Add(ResultList kind, const File& file) {
    Finding finding;
    const std::size_t name = file.path.rfind('/') + 1;
    finding.folder = file.path.substr(0, name);
    finding.name = file.path.substr(name);
    finding.dupGrp = file.dupGrp;
    finding.size = file.size;
    if (!file.version.empty()) finding.version = file.version;
    ListView& lst = results.List(kind);
    AddResultItem(lst, finding);
    lst.SetCell(lst.Count(), kDateItem, file.date);
  }
  void Add(const File& file) { Add(ResultList::Duplicates, file); }
  void AddFolder(const std::string& folder, bool selected = true) {
    const std::int32_t row = frm.lstFolder.AddRow(folder);
    frm.lstFolder.SetSelected(row, selected);
  }
  // Leaves the guard out, which would take a mark off again.
  void KeepNone() { frm.chkLeaveAtLeast1.Value = false; }

  // Lets events in after each group whose marks have changed.
  void PumpAtEachMark() {
    for (ListView& lst : results.lstResult) {
      lst.Listen([this](const Notice&) { events.seconds += 1; });
    }
  }

  bool Run() { return ClickMark(frm, results, ports); }
  bool RunPattern(const std::string& pattern) {
    frm.cmbPattern.SetText(pattern);
    return Run();
  }
  // What the settings have of the history, "-" for a key that isn't there.
  std::vector<std::string> Kept(int keys) const {
    std::vector<std::string> kept;
    for (int i = 0; i < keys; ++i) kept.push_back(settings.Get(kAppTitle, "PatternHistory", std::to_string(i), "-"));
    return kept;
  }
  std::vector<std::string> PatternList() const {
    std::vector<std::string> texts;
    for (std::int32_t i = 0; i < frm.cmbPattern.ListCount(); ++i) texts.push_back(frm.cmbPattern.List(i));
    return texts;
  }
  static std::string Marks(const ListView& lst) {
    std::string marks;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) marks += lst.Checked(row) ? 'x' : '-';
    return marks;
  }
  std::string Marks() const { return Marks(results.Shown()); }
  // The names of the marked files.
  std::string Marked() const {
    std::string names;
    for (std::int32_t row = 1; row <= results.Shown().Count(); ++row) {
      if (results.Shown().Checked(row)) names += results.Shown().Cell(row, kNameItem) + " ";
    }
    return names;
  }

  Panel panel;
  ResultLists results{panel};
  Timer tmrUpdate{1000};
  FrmSmartDel frm;
  ScriptedEventQueue events;
  ScriptedDialogs dialogs;
  MemorySettings settings;
  const Presets presets = BuildPresets(FakeShell());
  std::vector<std::string> guarded;
  std::function<void()> duringWarning;
  bool goesOn = true;
  const ClickMarkPorts ports{
      {events, dialogs,
       [this](GuardedId id) {
         const GuardedMessage& message = kGuardedMessages[id];
         if (duringWarning) duringWarning();
         guarded.push_back(message.Title + ("|" + std::to_string(message.IconType)) + "|" + message.Message);
         return goesOn;
       }},
      tmrUpdate,
      settings,
      presets};
  ListView& duplicates = results.List(ResultList::Duplicates);
};

}  // namespace tresmor::tests
