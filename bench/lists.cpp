// Measures what is done to a whole result list, on one thread: measure_lists [ROWS], 500,000 if not told. Each line is
// the seconds of one thing. The list holds groups of two to five files, in an order of its own before each sort.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "findings.h"
#include "platform/posix/event_queue_posix.h"
#include "results/counters.h"
#include "results/marks.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace {

using namespace tresmor;

class Bench {
 public:
  explicit Bench(std::size_t rows) {
    results_.tabMain.Select(static_cast<std::int32_t>(ResultList::Duplicates) + 1);
    for (const Finding& finding : MakeFindings(rows)) AddResultItem(results_.Shown(), finding);
    std::printf("%d rows\n", results_.Shown().Count());
  }

  void Run() {
    ListView& lst = results_.Shown();
    for (const std::int16_t item : {kNameItem, kFolderItem, kDupGrpItem, kSizeItem, kDateItem, kVersionItem}) {
      const auto column = static_cast<std::int16_t>(item + 1);
      const std::string header = lst.Column(column).text;
      Time("sort by " + header, [&] { SortList(lst, column, kAscending); });
    }
    MeasureMarks("size", kSizeItem);
    MeasureMarks("date", kDateItem);
    MeasureMarks("version", kVersionItem);
    SetAllMarks(results_, true);
    for (std::int32_t row = 1; row <= lst.Count(); ++row) lst.SetSelected(row, row % 1000 == 0);
    Time("recount of all marked and some selected", [&] { UpdateStatus(results_, true, true); });
    Time("removal of every second row", [&] {
      std::vector<std::int32_t> rows;
      for (std::int32_t row = 1; row <= lst.Count(); row += 2) rows.push_back(row);
      lst.RemoveRows(rows);
    });
  }

 private:
  // Each pass first brings the groups together.
  void MeasureMarks(const std::string& what, std::int32_t subItem) {
    SortList(results_.Shown(), kNameItem + 1, kAscending);
    Time("MarkGroups by " + what, [&] { Mark({.SubItem = subItem, .bLow = true}); });
    SetAllMarks(results_, true);
    Time("the same as a guard, sorted already", [&] { Mark({.SubItem = subItem, .bLow = true, .bGuardOnly = true}); });
  }
  void Mark(const GroupRule& rule) { MarkGroups(results_.Shown(), results_.ShownKind(), events_, rule); }
  static void Time(const std::string& what, const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::printf("%8.3f  %s\n", seconds.count(), what.c_str());
  }

  Panel panel_;
  ResultLists results_{panel_};
  PosixEventQueue events_;
};

}  // namespace

int main(int count, char** arguments) {
  const long rows = count > 1 ? std::atol(arguments[1]) : 500'000;
  if (rows < 1) {
    std::fputs("usage: measure_lists [ROWS]\n", stderr);
    return 2;
  }
  Bench(static_cast<std::size_t>(rows)).Run();
  return 0;
}
