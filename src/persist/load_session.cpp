#include "base/failure.h"
#include "base/number.h"
#include "desk/event_slice.h"
#include "persist/session_file.h"
#include "persist/session_format.h"
#include "results/rows.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

std::int32_t NextNumber(std::string_view sFile, std::int32_t& pos) { return ParseInt32(NextLine(sFile, pos)); }
bool NextBoolean(std::string_view sFile, std::int32_t& pos) { return ParseBoolean(NextLine(sFile, pos)); }

class SessionLoader {
 public:
  SessionLoader(std::string_view sFile, std::int32_t& pos, const SessionControls& controls,
                const SessionProgress& shown)
      : sFile_(sFile), pos_(pos), controls_(controls), shown_(shown), slice_(shown.events) {}

  void LoadOptions() {
    for (std::int32_t i = 0; i < controls_.lstSrchType.Count(); ++i) {
      controls_.lstSrchType.SetTicked(i, NextBoolean(sFile_, pos_));
    }
    for (CheckBox* box : {&controls_.chkTolerant, &controls_.chkHidden, &controls_.chkProtectWinDir}) {
      box->Value = CheckedInt16(NextNumber(sFile_, pos_));
    }
  }

  // The last field tells whether a row is included; in files of the old version there is none and all rows are.
  void LoadScope(bool old) {
    const std::int32_t rows = NextNumber(sFile_, pos_);
    for (std::int64_t i = 1; i <= rows; ++i) {
      fields_.Split(NextLine(sFile_, pos_));
      const std::int32_t last = fields_.Last();
      const std::int32_t row = fields_.AddRow(controls_.lstPath, old ? last : last - 1);
      const bool included = old || ParseBoolean(fields_[last]);
      controls_.lstPath.SetSmallIcon(row, included ? ScopeRow::kIncluded : ScopeRow::kExcluded);
    }
  }

  void LoadLists() {
    const std::string_view count = NextLine(sFile_, pos_);
    const std::int16_t last = CheckedInt16(std::int64_t{ParseInt32(count)} - 1);
    for (std::int32_t index = 0; index <= last; ++index) {
      if (index >= kResultLists) throw Failure(Errors::Subscript);
      const std::string ofLists = std::to_string(index + 1) + " of " + std::string(count);
      LoadList(controls_.results.lstResult[static_cast<std::size_t>(index)], ofLists);
    }
  }

 private:
  void LoadList(ListView& lst, const std::string& ofLists) {
    lst.Visible = false;
    const std::string_view count = NextLine(sFile_, pos_);
    lst.Tag = std::string(NextLine(sFile_, pos_));
    const std::int32_t rows = ParseInt32(count);
    shown_.progress.ProgressMsg =
        "Loading search session " + ofLists + " - processing [value] of " + std::to_string(rows) + " files...";
    shown_.progress.pbItemsCnt = rows;
    for (std::int64_t i = 1; i <= rows; ++i) {
      LoadRow(lst);
      shown_.progress.SetTag(i);
      if (slice_.IsOver()) slice_.LetEventsIn();
    }
    lst.Visible = true;
  }

  // Behind the cells stand the sort key of the version and the mark.
  void LoadRow(ListView& lst) {
    fields_.Split(NextLine(sFile_, pos_));
    const std::int32_t last = fields_.Last();
    const std::int32_t row = fields_.AddRow(lst, last - 2);
    if (lst.Tag() == kVersionTag) {
      if (lst.SubItems(row) < kVersionItem) throw Failure(Errors::Subscript);
      lst.SetCellTag(row, kVersionItem, fields_[last - 1]);
    }
    lst.SetChecked(row, ParseBoolean(fields_[last]));
  }

  std::string_view sFile_;
  std::int32_t& pos_;
  const SessionControls& controls_;
  const SessionProgress& shown_;
  EventSlice slice_;
  SessionFields fields_;
};

// In a file that is no session at all the line may be megabytes long, more than a box can show in time.
std::string ShownVersion(std::string_view version) {
  constexpr std::size_t kMost = 60;
  return version.size() > kMost ? std::string(version.substr(0, kMost)) + "..." : std::string(version);
}

}  // namespace

bool LoadSession(std::string_view sFile, const SessionControls& controls, const SessionProgress& shown,
                 Dialogs& dialogs) {
  std::int32_t pos = -1;
  const std::string_view version = NextLine(sFile, pos);
  const bool old = version == kOldSessionVersion;
  if (!old && version != kSessionVersion) {
    dialogs.MessageBox(
        BoxText("File version ").Name(ShownVersion(version)).Words(" not supported. Search session can't be read."),
        BoxIcon::Critical, "Incorrect version", BoxButtons::Ok);
    return false;
  }
  SessionLoader loader(sFile, pos, controls, shown);
  loader.LoadOptions();
  loader.LoadScope(old);
  controls.session.SaveSrchResult = old || NextBoolean(sFile, pos);
  shown.progress.CancelSrch = false;
  shown.tmrProgress.Enabled = true;
  loader.LoadLists();
  return true;
}

std::string_view NextLine(std::string_view sFile, std::int32_t& pos) {
  const auto begin = static_cast<std::size_t>(std::int64_t{pos} + 2 - 1);
  const std::size_t end = begin <= sFile.size() ? sFile.find(kLineEnd, begin) : std::string_view::npos;
  if (end == std::string_view::npos) throw Failure(Errors::PastEnd);
  pos = static_cast<std::int32_t>(end + 1);
  return sFile.substr(begin, end - begin);
}

}  // namespace tresmor
