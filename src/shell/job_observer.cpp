#include "shell/job_observer.h"

#include <limits>
#include <utility>

#include "base/failure.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// A change may still wait in the line when the user cancels, whose message is then the last one until the search ends.
bool IsUnderWay(const SearchDesk& desk) { return !desk.progress.CancelSrch; }

}  // namespace

void JobObserver::ShowMessage(std::string text) {
  line_.Post([text = std::move(text)](const SearchDesk& desk) {
    if (IsUnderWay(desk)) desk.frm.msgBar.Text = text;
  });
}

void JobObserver::SetProgressMsg(std::string text) {
  line_.Post([text = std::move(text)](const SearchDesk& desk) { desk.progress.ProgressMsg = text; });
}

void JobObserver::SetItemsCnt(std::int64_t count) {
  if (count > std::numeric_limits<std::int32_t>::max()) throw Failure(Errors::Overflow);
  line_.Post([count](const SearchDesk& desk) { desk.progress.pbItemsCnt = static_cast<std::int32_t>(count); });
}

void JobObserver::ClearTag() {
  line_.Post([](const SearchDesk& desk) { desk.progress.ClearTag(); });
}

void JobObserver::StartTag(std::int64_t index) {
  line_.Post([index](const SearchDesk& desk) { desk.progress.StartTag(index); });
}

void JobObserver::SetBar(int percent) {
  line_.Post([percent](const SearchDesk& desk) { desk.frm.pbMain.Value = static_cast<float>(percent); });
}

void JobObserver::EnableTimer(bool on) {
  line_.Post([on](const SearchDesk& desk) { desk.frm.tmrProgress.Enabled = on && IsUnderWay(desk); });
}

void JobObserver::ShowList(ResultList list, bool visible) {
  line_.Post([list, visible](const SearchDesk& desk) { desk.frm.results.List(list).Visible = visible; });
}

void JobObserver::HighlightRow(int row) {
  line_.Post([row](const SearchDesk& desk) { desk.frm.lstPath.SetSelected(row, true); });
}

void JobObserver::AddRows(std::vector<Finding> rows) {
  line_.Post([rows = std::move(rows)](const SearchDesk& desk) {
    for (const Finding& row : rows) AddResultItem(desk.frm.results.List(row.list), row);
  });
}

void JobObserver::Box(BoxIcon icon, std::string title, BoxText text) {
  line_.Ask([icon, title = std::move(title), text = std::move(text)](const SearchDesk& desk) {
    desk.dialogs.MessageBox(text, icon, title, BoxButtons::Ok);
  });
}

}  // namespace tresmor
