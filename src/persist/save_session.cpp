#include <algorithm>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "desk/event_slice.h"
#include "persist/session_file.h"
#include "persist/session_format.h"
#include "results/rows.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

constexpr std::size_t kStoredLists = 4;  // all but that of the read errors

void PutLine(std::string& file, std::string_view text) { file.append(text).append(kLineEnd); }
// None is ever negative.
void PutNumber(std::string& file, std::int64_t number) { PutLine(file, " " + std::to_string(number) + " "); }
void PutBoolean(std::string& file, bool value) { PutLine(file, BooleanText(value)); }

constexpr char kWhyUntold[] = ", since a name with \"|-\" or a line end in it has no place in a search session:";

// The rows that the format can't tell: how many, and what people know the first of them by.
class UntoldRows {
 public:
  void Add(std::string name) {
    ++count_;
    if (names_.size() < kNamed) names_.push_back(std::move(name));
  }
  std::int64_t Count() const { return count_; }
  // What became of them, why, and a line of its own for each name.
  BoxText Told(const std::string& what) const {
    BoxText text(what + kWhyUntold);
    for (const std::string& name : names_) text.Words("\r\n").Name(name);
    if (count_ > std::ssize(names_)) text.Words("\r\n...");
    return text;
  }

 private:
  static constexpr std::size_t kNamed = 10;

  std::int64_t count_ = 0;
  std::vector<std::string> names_;
};

// One row line at the end of a file.
class RowLine {
 public:
  explicit RowLine(std::string& file) : file_(file), begin_(file.size()) {}

  void Put(std::string_view field) {
    isTold_ =
        isTold_ && field.find(kFieldEnd) == std::string_view::npos && field.find(kLineEnd) == std::string_view::npos;
    file_.append(field).append(kFieldEnd);
  }
  void PutCells(const ListView& lst, std::int32_t row, std::int32_t subItems, std::string& scratch) {
    for (std::int32_t item = 0; item <= subItems; ++item) Put(lst.CellView(row, item, scratch));
  }
  // Ends the line with its last field. One that could not be read back is taken away again, and the result is false.
  bool End(bool last) {
    if (isTold_) {
      PutBoolean(file_, last);
    } else {
      file_.resize(begin_);
    }
    return isTold_;
  }

 private:
  std::string& file_;
  const std::size_t begin_;
  bool isTold_ = true;
};

void PutScope(std::string& file, const ListView& lstPath, UntoldRows& untold) {
  std::string scratch;
  PutNumber(file, lstPath.Count());
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    RowLine line(file);
    line.PutCells(lstPath, row, lstPath.SubItems(row), scratch);
    if (!line.End(lstPath.SmallIcon(row) == ScopeRow::kIncluded)) untold.Add(lstPath.Cell(row, 0));
  }
}

// Gives the number of rows that were put.
std::int64_t PutRows(std::string& file, const ListView& lst, EventSlice& slice, UntoldRows& untold) {
  const bool versions = lst.Tag() == kVersionTag;
  std::string scratch;
  std::int64_t told = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    RowLine line(file);
    // Where there are versions, a row without one has an empty one.
    const std::int32_t subItems = lst.SubItems(row);
    line.PutCells(lst, row, versions ? std::max<std::int32_t>(subItems, kVersionItem) : subItems, scratch);
    line.Put(versions ? lst.CellTag(row, kVersionItem) : std::string());
    if (line.End(lst.Checked(row))) {
      ++told;
    } else {
      untold.Add(PathOf(lst, row));
    }
    if (slice.IsOver()) slice.LetEventsIn();
  }
  return told;
}

void PutLists(std::string& file, const SessionControls& controls, EventQueue& events, UntoldRows& untold) {
  EventSlice slice(events);
  PutBoolean(file, controls.session.SaveSrchResult);
  PutNumber(file, kStoredLists);
  for (std::size_t i = 0; i < kStoredLists; ++i) {
    const ListView& lst = controls.results.lstResult[i];
    // The number of rows stands before them, but how many can be told shows only on the way.
    std::string rows;
    PutNumber(file, controls.session.SaveSrchResult ? PutRows(rows, lst, slice, untold) : 0);
    PutLine(file, lst.Tag());
    file += rows;
  }
}

void PutOptions(std::string& file, const SessionControls& controls) {
  PutLine(file, kSessionVersion);
  for (std::int32_t i = 0; i < controls.lstSrchType.Count(); ++i) PutBoolean(file, controls.lstSrchType.Ticked(i));
  for (const CheckBox* box : {&controls.chkTolerant, &controls.chkHidden, &controls.chkProtectWinDir}) {
    PutNumber(file, box->Value());
  }
}

}  // namespace

bool SaveSession(const std::string& sFileName, const SessionControls& controls, const SessionSaver& saver) {
  std::string file;
  PutOptions(file, controls);
  UntoldRows untoldScope;
  PutScope(file, controls.lstPath, untoldScope);
  if (untoldScope.Count() > 0) {
    saver.dialogs.MessageBox(untoldScope.Told("Search session can't be saved"), BoxIcon::Critical,
                             "Search session not saved", BoxButtons::Ok);
    return false;
  }
  Panel& msgBar = controls.results.msgBar;
  msgBar.Text = "Saving search session to " + sFileName + ".";
  UntoldRows untold;
  PutLists(file, controls, saver.events, untold);
  if (const Errors failure = saver.writer.Replace(sFileName, file); failure != Errors::None) throw Failure(failure);
  msgBar.Text = "Search session - " + sFileName + " is saved.";
  if (untold.Count() > 0) {
    saver.dialogs.MessageBox(untold.Told(std::to_string(untold.Count()) + " file(s) left out"), BoxIcon::Exclamation,
                             "Files left out", BoxButtons::Ok);
  }
  return true;
}

}  // namespace tresmor
