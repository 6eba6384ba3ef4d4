#include "shell/search_control.h"

#include <array>
#include <chrono>
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

// Inputs that rest while a search runs, in the order in which they are locked and freed.
std::array<Control*, 9> SearchInputs(FrmMain& frm) {
  return {&frm.frmSelPath,       &frm.cmdNewSrch, &frm.lstSrchType,    &frm.chkTolerant, &frm.chkHidden,
          &frm.chkProtectWinDir, &frm.chkVer,     &frm.mnuSrchSession, &frm.mnuFile};
}

// Holds a job up while it lives.
class PauseWhile {
 public:
  explicit PauseWhile(StopToken& stop) : stop_(stop) { stop_.Pause(); }
  ~PauseWhile() { stop_.Resume(); }
  PauseWhile(const PauseWhile&) = delete;
  PauseWhile& operator=(const PauseWhile&) = delete;

 private:
  StopToken& stop_;
};

}  // namespace

void SearchControl::RunSearch() {
  progress_.CancelSrch = false;
  stop_.Reset();
  frm_.msgBar.Text = "Start ...";
  LockSrchUi();
  frm_.session.HasSrchResult = true;
  progress_.SrchStartTime = ports_.events.Seconds();
  try {
    SearchRequest request = ReadControls(frm_);
    request.dates = readsDates;
    srchFileCnt_ = RunOnWorker(request);
  } catch (...) {
    Rest();
    progress_.ClearTag();
    frm_.msgBar.Text = kReadyText;
    for (ListView& lst : frm_.results.lstResult) lst.Visible = true;
    UnlockSrchUi();
    UpdateCount(frm_.results, kAllLists);
    throw;
  }
  Rest();
  frm_.msgBar.Text = "Completed in " + progress_.Elapsed() + ", searched " + std::to_string(srchFileCnt_) + " files.";
  UnlockSrchUi();
  ShowResult(frm_, [this] { ports_.events.Pump(std::chrono::milliseconds(0)); });
}

void SearchControl::CancelSearch() {
  if (frm_.cmdSrch.Caption() != kCancelCaption) return;
  frm_.msgBar.Text = "Stopping ...";
  progress_.CancelSrch = true;
  stop_.Stop();
  frm_.tmrProgress.Enabled = false;
  progress_.ClearTag();
}

void SearchControl::AskCancelSrch() {
  const PauseWhile pause(stop_);
  const BoxAnswer answer = ports_.dialogs.MessageBox("Are you sure to cancel searching?", BoxIcon::Question,
                                                     "Cancel Search", BoxButtons::YesNo);
  if (answer == BoxAnswer::Yes) CancelSearch();
}

void SearchControl::Rest() {
  frm_.pbMain.Value = 0;
  frm_.tmrProgress.Enabled = false;
}

void SearchControl::LockSrchUi() {
  for (ListView& lst : frm_.results.lstResult) {
    lst.Clear();
    lst.SetSorted(false);
  }
  UpdateCount(frm_.results, kAllLists);
  frm_.cmdSrch.Caption = kCancelCaption;
  for (Control* const input : SearchInputs(frm_)) input->Enabled = false;
  ClrPreview(frm_.preview);
}

void SearchControl::UnlockSrchUi() {
  frm_.cmdSrch.Caption = kSearchCaption;
  for (Control* const input : SearchInputs(frm_)) input->Enabled = true;
}

std::int64_t SearchControl::RunOnWorker(const SearchRequest& request) {
  const SearchDesk desk{frm_, progress_, ports_.dialogs};
  std::int64_t figure = 0;
  const auto search = [&](JobLine<DeskChange>& line) {
    ThreadPool pool;
    JobObserver observer(line, progress_);
    figure = ExecSrch(request, {ports_.files, ports_.shell, ports_.versions, pool, stop_, observer});
  };
  RunJob<DeskChange>(
      ports_.events, stop_, search, [&](DeskChange&& change) { change(desk); }, kChangesWaiting);
  return figure;
}

}  // namespace tresmor
