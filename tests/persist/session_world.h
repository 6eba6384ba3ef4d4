// The controls of a session over files in memory, with short ways to fill and compare them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "controls/progress_bar.h"
#include "desk/scripted_event_queue.h"
#include "persist/session_file.h"
#include "persist/whole_file.h"
#include "results/rows.h"
#include "search/scope_row.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "support/scripted_dialogs.h"

namespace tresmor::tests {

inline std::vector<std::string> Lines(const std::string& file) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end = file.find("\r\n"); end != std::string::npos; end = file.find("\r\n", begin)) {
    lines.push_back(file.substr(begin, end - begin));
    begin = end + 2;
  }
  return lines;
}
inline std::string Join(const std::vector<std::string>& lines) {
  std::string file;
  for (const std::string& line : lines) file += line + "\r\n";
  return file;
}

struct SessionWorld {
  SessionWorld() {
    for (const char* header : {"Path", "Sub-folder", "Min. Size", "Max. Size", "Date", "Search Target"}) {
      lstPath.AddColumn({header, 1000});
    }
    files.MakeFolder("/home");
  }

  ListView& List(ResultList kind) { return results.List(kind); }
  // Sub-items may be fewer than there are columns.
  static std::int32_t Add(ListView& lst, const std::string& text, const std::vector<std::string>& subItems) {
    const std::vector<CellValue> cells(subItems.begin(), subItems.end());
    return lst.AddRow(text, cells);
  }
  void AddScope(const std::string& text, const std::vector<std::string>& subItems, int icon = ScopeRow::kIncluded) {
    lstPath.SetSmallIcon(Add(lstPath, text, subItems), icon);
  }
  static std::vector<std::string> Cells(const ListView& lst, std::int32_t row) {
    std::vector<std::string> cells;
    for (std::int32_t item = 0; item <= lst.SubItems(row); ++item) cells.push_back(lst.Cell(row, item));
    return cells;
  }

  bool Save(const std::string& name = "/home/s.Tresmor") {
    return SaveSession(name, controls, {writer, events, dialogs});
  }
  std::string SavedText() { return ReadWholeFile(files, "/home/s.Tresmor"); }
  bool Load(const std::string& text) { return LoadSession(text, controls, shown, dialogs); }
  // The number of the failure that ends the loading; None if it succeeds.
  Errors LoadFailure(const std::string& text) {
    return FailureOf([&] { Load(text); });
  }

  SlowEventQueue events;
  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  ScriptedDialogs dialogs;
  Panel msgBar;
  ProgressBar pbMain;
  Timer tmrProgress{1000};
  ListView lstPath;
  CheckList lstSrchType{{"Zero Size", "Duplicates", "Same File Name", "Portions"}};
  CheckBox chkTolerant;
  CheckBox chkHidden;
  CheckBox chkProtectWinDir;
  ResultLists results{msgBar};
  SessionState session;
  Progress progress{events, tmrProgress, msgBar, pbMain};
  SessionControls controls{lstSrchType, chkTolerant, chkHidden, chkProtectWinDir, lstPath, results, session};
  SessionProgress shown{progress, tmrProgress, events};
};

inline void ExpectSameRows(const ListView& a, const ListView& b) {
  ASSERT_EQ(a.Count(), b.Count());
  EXPECT_EQ(a.Tag(), b.Tag());
  for (std::int32_t row = 1; row <= a.Count(); ++row) {
    EXPECT_EQ(SessionWorld::Cells(a, row), SessionWorld::Cells(b, row));
    EXPECT_EQ(a.Checked(row), b.Checked(row));
    EXPECT_EQ(a.SmallIcon(row), b.SmallIcon(row));
    EXPECT_EQ(a.CellTag(row, 5), b.CellTag(row, 5));
  }
}

// What a session keeps has to be the same in both.
inline void ExpectSame(const SessionWorld& a, const SessionWorld& b) {
  for (int i = 0; i < 4; ++i) EXPECT_EQ(a.lstSrchType.Ticked(i), b.lstSrchType.Ticked(i));
  EXPECT_EQ(a.chkTolerant.Value(), b.chkTolerant.Value());
  EXPECT_EQ(a.chkHidden.Value(), b.chkHidden.Value());
  EXPECT_EQ(a.chkProtectWinDir.Value(), b.chkProtectWinDir.Value());
  ExpectSameRows(a.lstPath, b.lstPath);
  EXPECT_EQ(a.session.SaveSrchResult, b.session.SaveSrchResult);
  if (!a.session.SaveSrchResult) return;
  for (std::size_t i = 0; i < 4; ++i) ExpectSameRows(a.results.lstResult[i], b.results.lstResult[i]);
}

// Loads any bytes. What can be loaded can be saved, and comes back as it was; bytes of a version that isn't known are
// refused with a box.
inline void LoadAnything(const std::string& bytes) {
  SessionWorld world;
  const std::size_t end = bytes.find("\r\n");
  const std::string version = bytes.substr(0, end);
  const bool known = end == std::string::npos || version == "3.0.0" || version == "1.2.0";
  if (!known) {
    const std::string shown = version.size() > 60 ? version.substr(0, 60) + "..." : version;
    world.dialogs.boxes = {{.text = "File version " + shown + " not supported. Search session can't be read.",
                            .title = "Incorrect version"}};
    EXPECT_FALSE(world.Load(bytes));
    return;
  }
  if (world.LoadFailure(bytes) != Errors::None) return;
  ASSERT_TRUE(world.Save());
  SessionWorld again;
  ASSERT_TRUE(again.Load(world.SavedText()));
  ExpectSame(world, again);
  ASSERT_TRUE(again.Save());
  EXPECT_EQ(again.SavedText(), world.SavedText());
}

}  // namespace tresmor::tests
