#include "shell/job_observer.h"

#include <limits>
#include <utility>

#include "base/failure.h"
#include "results/rows.h"

namespace tresmor {

void JobObserver::ShowMessage(std::string text) {
  line_.Post([this, text = std::move(text)] { frm_.msgBar.Text = text; });
}

void JobObserver::SetProgressMsg(std::string text) {
  line_.Post([this, text = std::move(text)] { progress_.ProgressMsg = text; });
}

void JobObserver::SetItemsCnt(std::int64_t count) {
  if (count > std::numeric_limits<std::int32_t>::max()) throw Failure(Errors::Overflow);
  line_.Post([this, count] { progress_.pbItemsCnt = static_cast<std::int32_t>(count); });
}

void JobObserver::ClearTag() {
  line_.Post([this] { progress_.ClearTag(); });
}

void JobObserver::SetBar(int percent) {
  line_.Post([this, percent] { frm_.pbMain.Value = static_cast<float>(percent); });
}

void JobObserver::EnableTimer(bool on) {
  line_.Post([this, on] { frm_.tmrProgress.Enabled = on; });
}

void JobObserver::ShowList(ResultList list, bool visible) {
  line_.Post([this, list, visible] { frm_.results.List(list).Visible = visible; });
}

void JobObserver::HighlightRow(int row) {
  line_.Post([this, row] { frm_.lstPath.SetSelected(row, true); });
}

void JobObserver::AddRows(std::vector<Finding> rows) {
  line_.Post([this, rows = std::move(rows)] {
    for (const Finding& row : rows) AddResultItem(frm_.results.List(row.list), row);
  });
}

void JobObserver::Box(BoxIcon icon, std::string title, std::string text) {
  line_.Ask([this, icon, title = std::move(title), text = std::move(text)] {
    dialogs_.MessageBox(text, icon, title, BoxButtons::Ok);
  });
}

}  // namespace tresmor
