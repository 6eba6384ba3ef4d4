#include "shell/search_control.h"

#include <string>

#include "base/number.h"
#include "base/thread_pool.h"
#include "desk/run_job.h"
#include "results/counters.h"
#include "search/exec_srch.h"
#include "shell/job_observer.h"

namespace tresmor {
namespace {

// A change may carry thousands of rows, so few of them wait at a time.
constexpr std::size_t kChangesWaiting = 8;

ScopeRow ReadScopeRow(const ListView& lstPath, std::int32_t row) {
  return {.Text = lstPath.Cell(row, kScopeTextItem),
          .SubFolder = lstPath.Cell(row, kSubFolderItem),
          .MinSize = lstPath.Cell(row, kMinSizeItem),
          .MaxSize = lstPath.Cell(row, kMaxSizeItem),
          .Date = lstPath.Cell(row, kSinceItem),
          .SearchTarget = lstPath.Cell(row, kSearchTargetItem),
          .SmallIcon = lstPath.SmallIcon(row)};
}

SearchRequest ReadControls(const FrmMain& frm) {
  SearchRequest request;
  request.isAllSrchTarget = true;
  for (std::int32_t row = 1; row <= frm.lstPath.Count(); ++row) {
    CheckedInt16(row);
    request.rows.push_back(ReadScopeRow(frm.lstPath, row));
    // A folder to keep out has no such cell, so with one of them not all rows are targets.
    if (request.rows.back().SearchTarget != "Yes") request.isAllSrchTarget = false;
  }
  for (int i = 0; i < kSrchTypes; ++i) request.types[static_cast<std::size_t>(i)] = frm.lstSrchType.Ticked(i);
  request.tolerant = frm.chkTolerant.Ticked();
  request.hidden = frm.chkHidden.Value() != kOff;
  request.protectWinDir = frm.chkProtectWinDir.Ticked();
  request.versions = frm.chkVer.Ticked();
  return request;
}

}  // namespace

void SearchControl::RunSearch() {
  progress_.CancelSrch = false;
  stop_.Reset();
  frm_.msgBar.Text = "Start ...";
  EmptyLists();
  frm_.session.HasSrchResult = true;
  progress_.SrchStartTime = ports_.events.Seconds();
  srchFileCnt_ = RunOnWorker();
  frm_.pbMain.Value = 0;
  frm_.tmrProgress.Enabled = false;
  frm_.msgBar.Text = "Completed in " + progress_.Elapsed() + ", searched " + std::to_string(srchFileCnt_) + " files.";
  ShowResult(frm_);
}

void SearchControl::CancelSearch() {
  frm_.msgBar.Text = "Stopping ...";
  progress_.CancelSrch = true;
  stop_.Stop();
  frm_.tmrProgress.Enabled = false;
  progress_.ClearTag();
}

void SearchControl::EmptyLists() {
  for (ListView& lst : frm_.results.lstResult) {
    lst.Clear();
    lst.SetSorted(false);
  }
  UpdateCount(frm_.results, kAllLists);
}

std::int64_t SearchControl::RunOnWorker() {
  const SearchRequest request = ReadControls(frm_);
  const SearchDesk desk{frm_, progress_, ports_.dialogs};
  std::int64_t figure = 0;
  const auto search = [&](JobLine<DeskChange>& line) {
    ThreadPool pool;
    JobObserver observer(line, progress_);
    figure = ExecSrch(request, {ports_.files, ports_.shell, ports_.versions, pool, stop_, observer});
  };
  try {
    RunJob<DeskChange>(
        ports_.events, stop_, search, [&](DeskChange&& change) { change(desk); }, kChangesWaiting);
  } catch (...) {
    frm_.tmrProgress.Enabled = false;
    for (ListView& lst : frm_.results.lstResult) lst.Visible = true;
    throw;
  }
  return figure;
}

}  // namespace tresmor
