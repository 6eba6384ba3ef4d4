// What a running search tells about itself, as plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"
#include "platform/dialogs.h"

namespace tresmor {

// The lists that findings go to.
enum class ResultList : int { ZeroSize = 0, Duplicates = 1, SameName = 2, Portions = 3, ReadErrors = 4 };
inline constexpr int kResultLists = 5;

// A file that belongs into a list. The full path is folder followed by name.
struct Finding {
  ResultList list = ResultList::ZeroSize;
  std::string name;
  std::string folder;              // with the separator at its end
  std::int32_t dupGrp = -1;        // group number, -1 none, -3 read error
  std::int64_t size = 0;           // bytes
  DateStamp modified = kZeroDate;  // UTC; the zero date for a hidden or vanished file, or if dates weren't asked for
  std::optional<std::string> version;  // only if versions were asked for
};

// Called on the job's threads; SetTag from any of them, the rest from one thread at a time and in order.
class SearchObserver {
 public:
  virtual ~SearchObserver() = default;
  virtual void ShowMessage(std::string text) = 0;     // straight into the message panel
  virtual void SetProgressMsg(std::string text) = 0;  // template with the placeholder "[value]"
  virtual void SetItemsCnt(std::int64_t count) = 0;   // files that the bar's 100 stands for
  virtual void SetTag(std::int64_t index) = 0;        // progress value; called for each file, must be cheap
  virtual void ClearTag() = 0;
  virtual void StartTag(std::int64_t index) = 0;  // figures start at this one, even if there were higher ones
  virtual void SetBar(int percent) = 0;
  virtual void EnableTimer(bool on) = 0;
  virtual void ShowList(ResultList list, bool visible) = 0;
  virtual void HighlightRow(int row) = 0;  // 1-based row of the scope list
  virtual void AddRows(std::vector<Finding> rows) = 0;
  // Shows a box and returns when it was answered.
  virtual void Box(BoxIcon icon, std::string title, BoxText text) = 0;
};

}  // namespace tresmor
