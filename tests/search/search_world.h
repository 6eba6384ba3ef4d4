// What tests of whole searches share: a search over an in-memory file system, with everything that it told.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "search/exec_srch.h"
#include "support/fake_shell.h"
#include "support/memory_file_system.h"

namespace tresmor {

// Every file's version is its name.
class FakeVersions final : public VersionReader {
 public:
  std::string GetFileVer(const std::string& path, const StopToken&) const override {
    return std::string(GetFileNameOf(path, PathStyle::Posix()));
  }
};

// Keeps all that the search says, in order.
class SearchLog final : public SearchObserver {
 public:
  void ShowMessage(std::string text) override { events.push_back("message " + text); }
  void SetProgressMsg(std::string text) override { events.push_back("progress " + text); }
  void SetItemsCnt(std::int64_t count) override { itemsCnt = count; }
  void SetTag(std::int64_t index) override {
    const std::lock_guard lock(mutex_);
    tags.push_back(index);
    if (onTag) onTag(index);
  }
  void ClearTag() override { events.push_back("tag cleared"); }
  void StartTag(std::int64_t index) override { SetTag(index); }
  void SetBar(int percent) override { events.push_back("bar " + std::to_string(percent)); }
  void EnableTimer(bool on) override { events.push_back(on ? "timer on" : "timer off"); }
  void ShowList(ResultList list, bool visible) override {
    events.push_back((visible ? "show " : "hide ") + std::to_string(static_cast<int>(list)));
  }
  void HighlightRow(int row) override { highlighted.push_back(row); }
  void AddRows(std::vector<Finding> added) override {
    for (Finding& row : added) rows.push_back(std::move(row));
  }
  void Box(BoxIcon, std::string title, BoxText text) override {
    boxes.push_back(title + "|" + text.Whole());
    if (onBox) onBox();
  }

  std::vector<Finding> RowsOf(ResultList list) const {
    std::vector<Finding> found;
    for (const Finding& row : rows) {
      if (row.list == list) found.push_back(row);
    }
    return found;
  }
  // "name:group" of each row of a list.
  std::vector<std::string> Names(ResultList list) const {
    std::vector<std::string> names;
    for (const Finding& row : RowsOf(list)) names.push_back(row.name + ":" + std::to_string(row.dupGrp));
    return names;
  }

  std::vector<std::string> events;
  std::vector<std::int64_t> tags;
  std::vector<int> highlighted;
  std::vector<Finding> rows;
  std::vector<std::string> boxes;
  std::int64_t itemsCnt = -1;
  std::function<void(std::int64_t)> onTag;
  std::function<void()> onBox;

 private:
  std::mutex mutex_;
};

// A row that takes everything below a folder.
inline ScopeRow RowOf(const std::string& folder, bool target = true) {
  return {folder + "*.*", "Yes", "", "", "", target ? "Yes" : "No", ScopeRow::kIncluded};
}

inline SearchRequest RequestFor(std::vector<ScopeRow> rows, bool zero, bool duplicates, bool names, bool portions) {
  SearchRequest request;
  request.rows = std::move(rows);
  request.types = {zero, duplicates, names, portions};
  request.isAllSrchTarget = true;
  for (const ScopeRow& row : request.rows) request.isAllSrchTarget &= row.SearchTarget == "Yes";
  return request;
}

inline SearchRequest Everything(const std::string& folder) {
  return RequestFor({RowOf(folder)}, true, true, true, true);
}
inline SearchRequest Only(SrchType type, std::vector<ScopeRow> rows = {RowOf("/d/")}) {
  SearchRequest request = RequestFor(std::move(rows), false, false, false, false);
  request.types[static_cast<std::size_t>(type)] = true;
  return request;
}

struct SearchRun {
  SearchLog log;
  std::int64_t figure = 0;
};

inline std::unique_ptr<SearchRun> RunSearch(const FileSystem& files, const SearchRequest& request,
                                            const SearchLimits& limits, ThreadPool& pool) {
  auto run = std::make_unique<SearchRun>();
  StopToken stop;
  FakeShell shell;
  run->figure = ExecSrch(request, {files, shell, FakeVersions(), pool, stop, run->log}, limits);
  return run;
}

inline std::unique_ptr<SearchRun> RunSearch(const FileSystem& files, const SearchRequest& request,
                                            const SearchLimits& limits = {}, std::size_t threads = 1) {
  ThreadPool pool(threads);
  return RunSearch(files, request, limits, pool);
}

}  // namespace tresmor
