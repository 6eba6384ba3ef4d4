#include "search/compare_jobs.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <span>

#include "search/comp_file_cnt.h"
#include "search/long_compare.h"
#include "search/read_ahead.h"
#include "search/targets.h"

namespace tresmor {

namespace {

// Of a file that turns out to be equal the kernel's own reading ahead brings the rest.
constexpr std::int64_t kAheadEach = 128 << 10;

std::int32_t FilesOf(const CompareRun& run) { return run.dupEnd - run.dupStart + 1; }

class CompareJobs {
 public:
  // `done` files have been settled without being compared.
  CompareJobs(FileProps& table, const CompareChoices& choices, const HeadPorts& ports, std::int32_t done)
      : table_(table), choices_(choices), ports_(ports), done_(done) {
    ports.observer.StartTag(Figure(done));
    const std::size_t threads = ports.pool.Threads();
    for (std::size_t k = 0; k < threads; ++k) {
      compares_.push_back(std::make_unique<FileCompare>(ComparePorts{ports.kept, ports.stop, ports.limits, threads}));
    }
  }

  // Runs that may go on at the same time.
  void Compare(std::span<const CompareRun> runs) {
    std::vector<const CompareRun*> shorter;
    for (const CompareRun& run : runs) {
      if (SharedByThreads(run)) {
        CompareLong(run);
      } else {
        shorter.push_back(&run);
      }
    }
    CompareEach(shorter);
  }

 private:
  bool SharedByThreads(const CompareRun& run) const {
    return !choices_.tolerant && run.dupEnd - run.dupStart < ports_.limits.span &&
           IsLong({run.dupStart, run.dupEnd, run.Sz0}, choices_.rule, compares_.front()->Ports());
  }

  void CompareLong(const CompareRun& run) {
    if (ports_.stop.Stopped()) return;
    CompLongFiles(table_, {run.dupStart, run.dupEnd, run.Sz0}, compares_, ports_.pool);
    Close(run);
  }

  void CompareEach(const std::vector<const CompareRun*>& runs) {
    std::vector<std::int32_t> order;
    std::vector<std::size_t> behind;  // by run: the place of the first file behind it
    for (const CompareRun* run : runs) {
      for (const CompareRange& range : RangesOf(table_, *run, ports_.limits)) {
        for (std::int32_t i = range.dupStart; i <= range.dupEnd; ++i) {
          if (choices_.rule == SizeRule::DifferentSizes || table_[i].Sz == range.Sz0) order.push_back(i);
        }
      }
      behind.push_back(order.size());
    }
    ReadAhead ahead(table_, ports_.files, ports_.stop, std::move(order), kAheadEach);
    ports_.pool.ParallelFor(runs.size(), 1, [&](std::size_t k, std::size_t thread) {
      ahead.Reached(behind[k]);
      CompareOne(*runs[k], *compares_[thread]);
    });
  }

  void CompareOne(const CompareRun& run, FileCompare& compare) {
    if (ports_.stop.Stopped()) return;
    for (const CompareRange& range : RangesOf(table_, run, ports_.limits)) {
      compare.CompFileCnt(table_, range, choices_.tolerant, choices_.rule);
    }
    Close(run);
  }

  void Close(const CompareRun& run) {
    if (ports_.stop.Stopped()) return DropGroups(run);
    if (!choices_.isAllSrchTarget) ReChkSrchTarget(table_, run.dupStart, run.dupEnd);
    ports_.observer.SetTag(Figure(done_ += FilesOf(run)));
  }

  // A run that reaches back has a record in common with the one in front of it.
  std::int32_t Figure(std::int32_t done) const { return std::min(done, table_.Last()); }

  // Of a run that was stopped half-way nothing is listed as equal.
  void DropGroups(const CompareRun& run) {
    for (std::int32_t i = run.dupStart; i <= run.dupEnd; ++i) {
      // A record in front of the range may have a group of its own from an earlier comparison.
      if (table_[i].DupGrp >= run.dupStart) table_[i].DupGrp = kNoGroup;
    }
  }

  FileProps& table_;
  const CompareChoices& choices_;
  const HeadPorts& ports_;
  std::atomic<std::int32_t> done_;                      // files
  std::vector<std::unique_ptr<FileCompare>> compares_;  // by thread
};

}  // namespace

void CompareRuns(FileProps& table, const std::vector<CompareRun>& runs, const CompareChoices& choices,
                 const HeadPorts& ports) {
  std::int32_t settled = table.Last() + 1;
  for (const CompareRun& run : runs) settled -= FilesOf(run);
  CompareJobs jobs(table, choices, ports, settled);
  for (std::size_t begin = 0, end; begin < runs.size(); begin = end) {
    for (end = begin + 1; end < runs.size() && !runs[end].reachesBack;) ++end;
    jobs.Compare(std::span(runs).subspan(begin, end - begin));
  }
  ports.kept.Clear();
}

}  // namespace tresmor
