#include "fileops/file_job.h"

#include "desk/run_job.h"

namespace tresmor {
namespace {

using Question = std::function<void()>;

// The form is gone again whatever happens.
class ShowWhile {
 public:
  ShowWhile(FrmFileProgress& frm, const std::string& title) : frm_(frm) {
    frm_.Caption = title;
    frm_.Show({});
    frm_.tmrProgress.Enabled = true;
    frm_.Visible = true;
  }
  ~ShowWhile() {
    frm_.tmrProgress.Enabled = false;
    frm_.Visible = false;
  }
  ShowWhile(const ShowWhile&) = delete;
  ShowWhile& operator=(const ShowWhile&) = delete;

 private:
  FrmFileProgress& frm_;
};

}  // namespace

// On the work's thread.
class FileJob::Watch final : public OperationWatch {
 public:
  Watch(FileJob& job, JobLine<Question>& line) : job_(job), line_(line) {}

  bool Confirm(const ShFileOpStruct& operation, std::int64_t count) override {
    bool confirmed = false;
    line_.Ask([&] { confirmed = job_.Confirm(operation, count); });
    return confirmed;
  }
  void Progress(const OperationProgress& progress) override { job_.SetProgress(progress); }
  bool Cancelled() override { return job_.stop_.Stopped(); }

 private:
  FileJob& job_;
  JobLine<Question>& line_;
};

FileJob::FileJob(FrmFileProgress& frm, EventQueue& events, Dialogs& dialogs)
    : frm_(frm), events_(events), dialogs_(dialogs) {
  frm_.cmdCancel.OnClick = [this] { stop_.Stop(); };
  frm_.tmrProgress.OnTick = [this] { frm_.Show(Latest()); };
}

void FileJob::Run(const std::string& title, const Work& work) {
  stop_.Reset();
  SetProgress({});
  const ShowWhile shown(frm_, title);
  RunJob<Question>(
      events_, stop_,
      [&](JobLine<Question>& line) {
        Watch watch(*this, line);
        work(watch);
      },
      [](Question&& question) { question(); });
}

void FileJob::SetProgress(const OperationProgress& progress) {
  const std::lock_guard lock(mutex_);
  latest_ = progress;
}

OperationProgress FileJob::Latest() const {
  const std::lock_guard lock(mutex_);
  return latest_;
}

bool FileJob::Confirm(const ShFileOpStruct& operation, std::int64_t count) {
  const std::string items = count == 1 ? "this item" : "these " + std::to_string(count) + " items";
  const bool undo = (operation.fFlags & FOF_ALLOWUNDO) != 0;
  const std::string question =
      undo ? "Move " + items + " to the recycle bin?" : "Delete " + items + " permanently? This can't be undone.";
  return dialogs_.MessageBox(question, BoxIcon::Question, frm_.Caption(), BoxButtons::YesNo) == BoxAnswer::Yes;
}

}  // namespace tresmor
