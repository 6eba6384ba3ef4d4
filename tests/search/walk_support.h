// What tests of the folder walk share.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "search/load_files.h"

namespace tresmor {

// Keeps what a walk tells.
class WalkRecorder final : public SearchObserver {
 public:
  struct Message {
    BoxIcon icon;
    std::string title;
    std::string text;
    friend bool operator==(const Message&, const Message&) = default;
  };

  void ShowMessage(std::string) override {}
  void SetProgressMsg(std::string text) override { texts.push_back(std::move(text)); }
  void SetItemsCnt(std::int64_t) override {}
  void SetTag(std::int64_t) override {}
  void ClearTag() override {}
  void StartTag(std::int64_t) override {}
  void SetBar(int percent) override { bars.push_back(percent); }
  void EnableTimer(bool) override {}
  void ShowList(ResultList, bool) override {}
  void HighlightRow(int row) override { highlighted.push_back(row); }
  void AddRows(std::vector<Finding>) override {}
  void Box(BoxIcon icon, std::string title, BoxText text) override {
    boxes.push_back({icon, std::move(title), text.Whole()});
    if (onBox) onBox();
  }

  bool Told(const std::string& text) const { return std::find(texts.begin(), texts.end(), text) != texts.end(); }

  std::vector<std::string> texts;
  std::vector<int> bars;
  std::vector<int> highlighted;
  std::vector<Message> boxes;
  std::function<void()> onBox;
};

// One search's walk over some file system.
class Walk {
 public:
  explicit Walk(const FileSystem& files, std::size_t threads = 2)
      : catalogue(files.Style()), protectDir(files.Style()), files_(files), pool_(threads) {}

  void BeginAnew() { catalogue = ColFiles(files_.Style()); }

  enum class Class { Targets, Areas };
  void Load(const std::vector<ScopeRow>& rows, Class which = Class::Targets) {
    LoadPathList(catalogue, protectDir, which == Class::Targets, hidden, rows, {files_, pool_, stop, observer});
  }

  std::vector<std::string> Paths() const {
    std::vector<std::string> paths;
    for (const ColFiles::Item& item : catalogue.Items()) catalogue.AppendPath(item, paths.emplace_back());
    return paths;
  }
  std::vector<bool> Targets() const {
    std::vector<bool> flags;
    for (const ColFiles::Item& item : catalogue.Items()) flags.push_back(item.isSrchTarget);
    return flags;
  }

  ColFiles catalogue;
  ProtectDir protectDir;
  bool hidden = false;
  StopToken stop;
  WalkRecorder observer;

 private:
  const FileSystem& files_;
  ThreadPool pool_;
};

// A row that searches `text` and its sub-folders as a target.
inline ScopeRow Row(std::string text) { return {std::move(text), "Yes", "", "", "", "Yes", ScopeRow::kIncluded}; }
inline ScopeRow AreaRow(std::string text) { return {std::move(text), "Yes", "", "", "", "No", ScopeRow::kIncluded}; }
inline ScopeRow ExcludedRow(std::string text) { return {std::move(text), "Yes", "", "", "", "", ScopeRow::kExcluded}; }

}  // namespace tresmor
