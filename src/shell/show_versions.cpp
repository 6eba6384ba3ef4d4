#include "shell/show_versions.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "desk/run_job.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// Rows whose files are read before their cells are written.
constexpr std::int32_t kBlockRows = 256;

struct Block {
  std::int32_t first = 1;
  std::vector<std::string> paths;
  std::vector<std::string> versions;
};

void WriteVersions(ListView& lst, const Block& block) {
  for (std::size_t i = 0; i < block.paths.size(); ++i) {
    const std::int32_t row = block.first + static_cast<std::int32_t>(i);
    // A version must never get into the row of another file, should events have moved rows after all.
    if (row > lst.Count() || PathOf(lst, row) != block.paths[i]) continue;
    SetVersion(lst, row, block.versions[i]);
  }
}

Block NextBlock(const ListView& lst, const Block& block, std::int32_t rows) {
  Block next;
  next.first = block.first + static_cast<std::int32_t>(block.paths.size());
  const std::int32_t end = next.first + std::min(kBlockRows, std::min(rows, lst.Count()) - next.first + 1);
  for (std::int32_t row = next.first; row < end; ++row) {
    next.paths.push_back(PathOf(lst, row));
  }
  next.versions.resize(next.paths.size());
  return next;
}

// Reads block after block; in between the interface thread writes what was read and tells what comes next.
void FillColumn(ListView& lst, std::int32_t rows, Progress& progress, const ShowVersionsPorts& ports) {
  using Change = std::function<void()>;
  StopToken stop;  // only by a failure
  const auto fill = [&](JobLine<Change>& line) {
    ThreadPool pool;
    Block block;
    for (;;) {
      line.Ask([&] {
        WriteVersions(lst, block);
        block = NextBlock(lst, block, rows);
      });
      if (block.paths.empty() || stop.Stopped()) return;
      pool.ParallelFor(block.paths.size(), 1, [&](std::size_t i, std::size_t) {
        block.versions[i] = ports.versions.GetFileVer(block.paths[i], stop);
        progress.SetTag(block.first + static_cast<std::int32_t>(i));
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
    FillColumn(lst, rows, progress, ports);
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
