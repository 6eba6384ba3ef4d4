#include "shell/show_versions.h"

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "desk/run_job.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// Rows whose files are read before their cells are written.
constexpr std::size_t kBlockRows = 256;

// The rows of a list whose versions are yet to be read. Events may sort the list or remove rows while files are read;
// then the walk begins again at the first row, and what it has read from there on goes by the file's path.
class VersionColumn {
 public:
  struct Entry {
    std::int32_t row = 0;
    std::string path;
    std::string version;
  };

  explicit VersionColumn(ListView& lst) : lst_(lst), arrangement_(lst.Arrangement()) {}

  // Those that are to be read now; none when all rows have their versions.
  std::vector<Entry>& Block() { return block_; }

  // Interface thread: writes what was read of the block and takes the next one.
  void Advance() {
    if (IsInPlace()) {
      WriteBlock();
    } else {
      hasMoved_ = true;
      next_ = 1;
      arrangement_ = lst_.Arrangement();
    }
    if (hasMoved_) KeepBlock();
    TakeBlock();
  }

 private:
  bool IsInPlace() const {
    return lst_.Arrangement() == arrangement_ && std::all_of(block_.begin(), block_.end(), [this](const Entry& entry) {
             return PathOf(lst_, entry.row) == entry.path;
           });
  }
  void WriteBlock() {
    for (const Entry& entry : block_) SetVersion(lst_, entry.row, entry.version);
  }
  void KeepBlock() {
    for (Entry& entry : block_) known_.try_emplace(std::move(entry.path), std::move(entry.version));
  }
  void TakeBlock() {
    block_.clear();
    for (; next_ <= lst_.Count() && block_.size() < kBlockRows; ++next_) {
      std::string path = PathOf(lst_, next_);
      if (const auto found = known_.find(path); found != known_.end()) {
        SetVersion(lst_, next_, found->second);
      } else {
        block_.push_back({next_, std::move(path), {}});
      }
    }
  }

  ListView& lst_;
  std::uint64_t arrangement_;
  std::int32_t next_ = 1;
  std::vector<Entry> block_;
  bool hasMoved_ = false;
  std::unordered_map<std::string, std::string> known_;  // versions by path, of all that was read since a first move
};

// Reads block after block; in between the interface thread writes what was read and tells what comes next.
void FillColumn(ListView& lst, Progress& progress, const ShowVersionsPorts& ports) {
  using Change = std::function<void()>;
  StopToken stop;  // only by a failure
  VersionColumn column(lst);
  const auto fill = [&](JobLine<Change>& line) {
    ThreadPool pool;
    for (;;) {
      line.Ask([&] { column.Advance(); });
      std::vector<VersionColumn::Entry>& block = column.Block();
      if (block.empty() || stop.Stopped()) return;
      pool.ParallelFor(block.size(), 1, [&](std::size_t i, std::size_t) {
        block[i].version = ports.versions.GetFileVer(block[i].path, stop);
        progress.SetTag(block[i].row);
      });
    }
  };
  RunJob<Change>(ports.events, stop, fill, [](Change&& change) { change(); });
}

}  // namespace

void ShowVersions(FrmMain& frm, Progress& progress, const ShowVersionsPorts& ports) {
  ListView& lst = frm.results.Shown();
  const std::int32_t rows = lst.Count();
  lst.Frozen = true;
  progress.ProgressMsg = "Showing version... [value] of " + std::to_string(rows);
  progress.pbItemsCnt = rows;
  progress.CancelSrch = false;
  frm.tmrProgress.Enabled = true;
  try {
    FillColumn(lst, progress, ports);
  } catch (...) {
    frm.tmrProgress.Enabled = false;
    lst.Frozen = false;
    throw;
  }
  lst.Tag = kVersionTag;
  frm.tmrProgress.Enabled = false;
  frm.pbMain.Value = 0;
  frm.msgBar.Text = kReadyText;
  lst.Frozen = false;
}

}  // namespace tresmor
