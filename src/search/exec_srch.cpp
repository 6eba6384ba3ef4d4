#include "search/exec_srch.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "search/col_files.h"
#include "search/compare_jobs.h"
#include "search/file_helpers.h"
#include "search/file_table.h"
#include "search/load_files.h"
#include "search/run_scan.h"
#include "search/sort_table.h"
#include "search/srch_portion.h"
#include "search/targets.h"

namespace tresmor {

namespace {

constexpr std::size_t kRowBatch = 1024;  // rows whose dates are read at a time, between two looks at the stop

class Search {
 public:
  Search(const SearchRequest& request, const SearchPorts& ports, const SearchLimits& limits)
      : request_(request),
        ports_(ports),
        limits_(limits),
        keptFiles_(ports.files, ports.stop, limits_.keptFiles),
        headPorts_{ports.files, keptFiles_, ports.pool, ports.stop, ports.observer, limits_},
        colFiles_(ports.files.Style()) {}

  std::int64_t Run() {
    ports_.observer.ClearTag();
    ports_.observer.EnableTimer(true);
    LoadCatalogue();
    if (!LoadTable()) return 0;
    if (Wants(SrchType::SameName) && table_.records.size() >= 2) ListSameNames();
    QuickSortBySize(table_, 0, table_.Last());
    ListZeroSize();
    if (!FindDuplicates()) return 0;
    ShowDuplicates();
    if (Wants(SrchType::Portions)) {
      FindPortions();
      ShowPortions();
    }
    ports_.observer.EnableTimer(false);
    ports_.observer.ClearTag();
    return table_.Last();
  }

 private:
  // A record on its way into a list, with the group that it has at this moment.
  struct Row {
    ResultList list;
    std::int32_t index;
    std::int32_t dupGrp;
  };

  bool Wants(SrchType type) const { return request_.Wants(type); }
  bool Stopped() const { return ports_.stop.Stopped(); }
  std::string Count() const { return std::to_string(table_.records.size()); }

  void LoadCatalogue() {
    ProtectDir protectDir(ports_.files.Style());
    if (request_.protectWinDir) ProtectSystem(protectDir);
    std::int64_t number = 0;
    for (const ScopeRow& row : request_.rows) {
      CheckedInt16(++number);
      if (row.SmallIcon == ScopeRow::kExcluded) protectDir.Add(row.Text);
    }
    const WalkPorts walk{ports_.files, ports_.pool, ports_.stop, ports_.observer};
    LoadPathList(colFiles_, protectDir, true, request_.hidden, request_.rows, walk);
    LoadPathList(colFiles_, protectDir, false, request_.hidden, request_.rows, walk);
    ports_.observer.SetItemsCnt(colFiles_.Count());
  }

  void ProtectSystem(ProtectDir& protectDir) {
    const std::string tail = ports_.files.Style().Tail();
    const std::string system = ports_.shell.GetWinDir();
    if (!system.empty()) protectDir.Add(AddTail(system, tail));
    const std::string programs = ports_.shell.GetProgramFilesDir();
    if (programs.empty()) {
      ports_.observer.Box(BoxIcon::None, "", "Error getting program files folder location.");
    } else {
      protectDir.Add(AddTail(programs, tail));
    }
  }

  bool LoadTable() {
    ports_.observer.ShowMessage("Loading files ...");
    ports_.observer.SetBar(0);
    if (colFiles_.Count() > 0) {
      ports_.observer.SetProgressMsg("Loading [value] of " + std::to_string(colFiles_.Count()) + " files...");
      table_ = FillTable(colFiles_, ports_.files, ports_.pool, ports_.stop, ports_.observer);
      if (Stopped()) return false;
      ports_.observer.SetItemsCnt(table_.Last() + 1);
    }
    if (table_.records.empty()) ports_.observer.ShowMessage("No Files found.");
    return !table_.records.empty();
  }

  void ListSameNames() {
    ports_.observer.ShowMessage("Searching same file name  ...");
    ports_.observer.SetProgressMsg("Search files with same name in [value] of " + Count() + " files...");
    ports_.observer.SetBar(0);
    QuickSortByName(table_, 0, table_.Last());
    ports_.observer.ShowList(ResultList::SameName, false);
    const auto same = [&](std::int32_t i) { return EqualText(table_[i].Name(), table_[i - 1].Name()); };
    ScanRuns(1, table_.Last(), same, [&](std::int32_t dupStart, std::int32_t dupEnd) {
      if (!Stopped() && ChkSrchTarget(table_, dupStart, dupEnd, request_.isAllSrchTarget)) {
        for (std::int32_t k = dupStart; k <= dupEnd; ++k) AddResultItem(ResultList::SameName, k);
      }
      ports_.observer.SetTag(std::min(dupEnd + 1, table_.Last()));
    });
    FlushRows();
    ports_.observer.ShowList(ResultList::SameName, true);
  }

  void ListZeroSize() {
    ports_.observer.ShowMessage("Searching duplicated files ...");
    ports_.observer.SetBar(0);
    for (; kept_ <= table_.Last() && table_[kept_].Sz <= 0; ++kept_) {
      if (Wants(SrchType::ZeroSize) && table_[kept_].IsSrchTarget) AddResultItem(ResultList::ZeroSize, kept_);
    }
    FlushRows();
  }

  // False if the search was stopped before the duplicates that it was to find.
  bool FindDuplicates() {
    ports_.observer.SetProgressMsg("Search duplicate files in [value] of " + Count() + " files...");
    if (!Wants(SrchType::Duplicates)) return true;
    if (Stopped()) return false;
    ports_.observer.StartTag(kept_);
    kept_ = std::max(kept_, 1);
    std::vector<CompareRun> runs;
    const auto same = [&](std::int32_t i) { return table_[i].Sz == table_[i - 1].Sz; };
    ScanRuns(kept_, table_.Last(), same, [&](std::int32_t dupStart, std::int32_t dupEnd) {
      if (Stopped() || !ChkSrchTarget(table_, dupStart, dupEnd, request_.isAllSrchTarget)) return;
      if (dupEnd - dupStart < limits_.span) {
        runs.push_back({dupStart, dupEnd, table_[dupStart].Sz, false});
      } else {
        const auto cut = CutByHeads(table_, dupStart, dupEnd, request_.isAllSrchTarget, headsRead_, headPorts_);
        runs.insert(runs.end(), cut.begin(), cut.end());
      }
    });
    Compare(runs, SizeRule::SameSize);
    return true;
  }

  void ShowDuplicates() {
    ports_.observer.ShowList(ResultList::Duplicates, false);
    ports_.observer.SetProgressMsg("Showing search result - duplicate files... processing [value] of " + Count() +
                                   " files...");
    ShowGroups(ResultList::Duplicates);
    ports_.observer.ShowList(ResultList::Duplicates, true);
  }

  void FindPortions() {
    ports_.observer.ShowMessage("Searching file portions ...");
    ports_.observer.SetProgressMsg("Reading file heads... [value] of " + Count() + " files...");
    ports_.observer.SetBar(0);
    if (kept_ > table_.Last()) return;
    while (table_[kept_].Sz < limits_.portionFrom && kept_ < table_.Last()) ++kept_;
    const auto runs = CutByHeads(table_, kept_, table_.Last(), request_.isAllSrchTarget, headsRead_, headPorts_);
    ports_.observer.SetProgressMsg("Search file portions in [value] of " + Count() + " files...");
    ports_.observer.SetBar(0);
    Compare(runs, SizeRule::DifferentSizes);
  }

  void ShowPortions() {
    ports_.observer.ShowList(ResultList::Portions, false);
    ports_.observer.ShowMessage("Showing search result - file portions... [value] of " + Count() + " files...");
    ports_.observer.ClearTag();  // figures begin anew, although the template stays
    ShowGroups(ResultList::Portions);
    ports_.observer.ShowList(ResultList::Portions, true);
  }

  void Compare(const std::vector<CompareRun>& runs, SizeRule rule) {
    CompareRuns(table_, runs, {request_.tolerant, request_.isAllSrchTarget, rule}, headPorts_);
  }

  // Groups go to their list and failures to the list of read errors. A group's number is taken off once it is shown, or
  // the next phase would take it for its own; a failure stays, and each phase lists it again.
  void ShowGroups(ResultList list) {
    for (std::int32_t i = 0; i <= table_.Last(); ++i) {
      if (table_[i].DupGrp == kReadError) AddResultItem(ResultList::ReadErrors, i);
      if (table_[i].DupGrp >= 0) {
        AddResultItem(list, i);
        table_[i].DupGrp = kNoGroup;
      }
      ports_.observer.SetTag(i);
      if (Stopped()) break;
    }
    FlushRows();
  }

  // Rows are handed on many at a time: they are made, and their dates read, by all threads.
  void AddResultItem(ResultList list, std::int32_t index) {
    rows_.push_back({list, index, table_[index].DupGrp});
    if (rows_.size() >= kRowBatch) FlushRows();
  }

  void FlushRows() {
    if (rows_.empty()) return;
    std::vector<Finding> findings(rows_.size());
    ports_.pool.ParallelFor(rows_.size(), 32, [&](std::size_t k, std::size_t) { findings[k] = FindingOf(rows_[k]); });
    rows_.clear();
    ports_.observer.AddRows(std::move(findings));
  }

  Finding FindingOf(const Row& row) const {
    const FileProp& record = table_[row.index];
    Finding finding;
    finding.list = row.list;
    finding.name = record.Name();
    finding.folder = table_.folders->Path(record.folder);
    finding.dupGrp = row.dupGrp;
    finding.size = record.Sz;
    if (request_.dates) finding.modified = DateOf(row.index, finding);
    if (request_.versions) finding.version = ports_.versions.GetFileVer(finding.folder + finding.name, ports_.stop);
    return finding;
  }

  DateStamp DateOf(std::int32_t index, const Finding& finding) const {
    const Folder* folder = table_.OpenFolder(index);
    return folder != nullptr ? GetFileDate(*folder, finding.name)
                             : GetFileDate(ports_.files, finding.folder + finding.name);
  }

  const SearchRequest& request_;
  const SearchPorts& ports_;
  const SearchLimits limits_;
  KeptFiles keptFiles_;
  const HeadPorts headPorts_;
  ColFiles colFiles_;
  FileProps table_;
  HeadsRead headsRead_;
  std::int32_t kept_ = 0;  // first record of positive size; the phases behind start from here
  std::vector<Row> rows_;
};

}  // namespace

std::int64_t ExecSrch(const SearchRequest& request, const SearchPorts& ports, const SearchLimits& limits) {
  return Search(request, ports, limits).Run();
}

}  // namespace tresmor
