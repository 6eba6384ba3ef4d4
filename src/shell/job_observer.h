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

// A change of the controls, to be made on the interface thread.
using ControlChange = std::function<void()>;

class JobObserver final : public SearchObserver {
 public:
  JobObserver(JobLine<ControlChange>& line, FrmMain& frm, Progress& progress, Dialogs& dialogs)
      : line_(line), frm_(frm), progress_(progress), dialogs_(dialogs) {}

  void ShowMessage(std::string text) override;
  void SetProgressMsg(std::string text) override;
  void SetItemsCnt(std::int64_t count) override;
  void SetTag(std::int64_t index) override { progress_.SetTag(index); }
  void ClearTag() override;
  void SetBar(int percent) override;
  void EnableTimer(bool on) override;
  void ShowList(ResultList list, bool visible) override;
  void HighlightRow(int row) override;
  void AddRows(std::vector<Finding> rows) override;
  // The search stands still until the user has answered.
  void Box(BoxIcon icon, std::string title, std::string text) override;

 private:
  JobLine<ControlChange>& line_;
  FrmMain& frm_;
  Progress& progress_;
  Dialogs& dialogs_;
};

}  // namespace tresmor
