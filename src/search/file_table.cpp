#include "search/file_table.h"

#include <algorithm>
#include <unordered_map>

#include "search/file_helpers.h"

namespace tresmor {

namespace {

constexpr std::size_t kBatch = 256;  // files of one folder that are looked up at a time

// Catalogue entries side by side that lie in one folder.
struct Batch {
  std::size_t begin = 0;
  std::size_t end = 0;
};

std::vector<Batch> BatchesOf(const std::vector<ColFiles::Item>& items) {
  std::vector<Batch> batches;
  for (std::size_t begin = 0, end; begin < items.size(); begin = end) {
    for (end = begin + 1; end < items.size() && end - begin < kBatch && items[end].folder == items[begin].folder;)
      ++end;
    batches.push_back({begin, end});
  }
  return batches;
}

// What one file is, to tell whether another entry is the same. Inodes alone may repeat on odd file systems.
struct Sameness {
  std::uint32_t item = 0;
  FileIdentity identity;
  std::int64_t size = 0;
  std::int64_t changedNs = 0;
  auto Key() const { return std::tie(identity.device, identity.inode, size, changedNs); }
};

class TableFill {
 public:
  TableFill(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
            SearchObserver& observer)
      : colFiles_(colFiles), files_(files), pool_(pool), stop_(stop), observer_(observer) {}

  FileProps Fill() {
    table_.folders = &colFiles_.Folders();
    table_.records.resize(colFiles_.Items().size());
    failures_.resize(colFiles_.Items().size(), Errors::None);
    sameness_.resize(pool_.Threads());
    const std::vector<Batch> batches = BatchesOf(colFiles_.Items());
    pool_.ParallelFor(batches.size(), 1, [&](std::size_t k, std::size_t thread) { Look(batches[k], thread); });
    if (stop_.Stopped()) return {};
    TellFailures();
    LeaveOutTwins();
    Compact();
    return std::move(table_);
  }

 private:
  void Look(const Batch& batch, std::size_t thread) {
    if (stop_.Stopped()) return;
    const auto& items = colFiles_.Items();
    const std::size_t count = batch.end - batch.begin;
    std::vector<std::string_view> names(count);
    std::vector<FileStat> stats(count);
    for (std::size_t k = 0; k < count; ++k) names[k] = items[batch.begin + k].Name();
    files_.StatAll(colFiles_.Folders().Path(items[batch.begin].folder), names, stats,
                   std::span(failures_).subspan(batch.begin, count));
    for (std::size_t k = 0; k < count; ++k) Take(batch.begin + k, stats[k], thread);
    observer_.SetTag(static_cast<std::int64_t>(batch.end));
  }

  void Take(std::size_t item, const FileStat& stat, std::size_t thread) {
    if (failures_[item] != Errors::None) return;
    if (stat.kind != EntryKind::File) {
      failures_[item] = Errors::FileNotFound;  // something else stands in its place by now
      return;
    }
    const ColFiles::Item& from = colFiles_.Items()[item];
    table_.records[item] = {stat.size, from.name, from.folder, kNoGroup, from.nameLength, from.isSrchTarget};
    if (stat.links > 1 || colFiles_.ReachedTwice()) {
      sameness_[thread].push_back({static_cast<std::uint32_t>(item), stat.identity, stat.size, stat.changedNs});
    }
  }

  void TellFailures() {
    for (std::size_t k = 0; k < failures_.size(); ++k) {
      if (failures_[k] == Errors::None) continue;
      std::string path;
      colFiles_.AppendPath(colFiles_.Items()[k], path);
      const std::string text = LengthFailureText(failures_[k], path);
      if (!text.empty()) observer_.Box(BoxIcon::Critical, "", text);
    }
  }

  void LeaveOutTwins() {
    std::vector<Sameness> all;
    for (const auto& part : sameness_) all.insert(all.end(), part.begin(), part.end());
    std::sort(all.begin(), all.end(), [](const Sameness& a, const Sameness& b) {
      return a.Key() != b.Key() ? a.Key() < b.Key() : a.item < b.item;
    });
    for (std::size_t k = 1; k < all.size(); ++k) {
      if (all[k].Key() == all[k - 1].Key()) failures_[all[k].item] = Errors::KeyExists;
    }
  }

  void Compact() {
    std::size_t kept = 0;
    for (std::size_t k = 0; k < failures_.size(); ++k) {
      if (failures_[k] == Errors::None) table_.records[kept++] = table_.records[k];
    }
    table_.records.resize(kept);
  }

  const ColFiles& colFiles_;
  const FileSystem& files_;
  ThreadPool& pool_;
  const StopToken& stop_;
  SearchObserver& observer_;
  FileProps table_;
  std::vector<Errors> failures_;                 // by catalogue entry: why it isn't in the table
  std::vector<std::vector<Sameness>> sameness_;  // by thread: entries that may be one file with another
};

}  // namespace

FileProps FillTable(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
                    SearchObserver& observer) {
  return TableFill(colFiles, files, pool, stop, observer).Fill();
}

}  // namespace tresmor
