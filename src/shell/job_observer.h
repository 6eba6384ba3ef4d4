// Brings what a search tells on its own threads into the controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "desk/progress.h"
#include "desk/run_job.h"
#include "platform/dialogs.h"
#include "search/search_observer.h"
#include "shell/frm_main.h"

namespace tresmor {

// What a search changes. Interface thread.
struct SearchDesk {
  FrmMain& frm;
  Progress& progress;
  Dialogs& dialogs;
};
// Made there, some time after the search told it and maybe after the search has ended.
using DeskChange = std::function<void(const SearchDesk&)>;

class JobObserver final : public SearchObserver {
 public:
  JobObserver(JobLine<DeskChange>& line, Progress& progress) : line_(line), progress_(progress) {}

  void ShowMessage(std::string text) override;
  void SetProgressMsg(std::string text) override;
  void SetItemsCnt(std::int64_t count) override;
  void SetTag(std::int64_t index) override { progress_.SetTag(index); }
  void ClearTag() override;
  void StartTag(std::int64_t index) override;
  void SetBar(int percent) override;
  void EnableTimer(bool on) override;
  void ShowList(ResultList list, bool visible) override;
  void HighlightRow(int row) override;
  void AddRows(std::vector<Finding> rows) override;
  // The search stands still until the user has answered.
  void Box(BoxIcon icon, std::string title, BoxText text) override;

 private:
  JobLine<DeskChange>& line_;
  Progress& progress_;  // for SetTag alone
};

}  // namespace tresmor
