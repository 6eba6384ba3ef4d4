#include "search/file_table.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "search/file_helpers.h"

namespace tresmor {

namespace {

constexpr std::size_t kBatch = 64;  // files of one folder that are looked up at a time, between two looks at the stop
constexpr int kLooks = 5;
constexpr std::size_t kKeptFolders = 2048;
constexpr std::uint32_t kFree = 0xFFFFFFFF;

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

// A number that is equal for two entries of one file, and hardly ever otherwise. Never 0.
std::uint64_t Fingerprint(const FileIdentity& identity) {
  const std::uint64_t mixed = (identity.inode ^ (identity.device << 40)) * 0x9E3779B97F4A7C15;
  return mixed == 0 ? 1 : mixed;
}

class TableFill {
 public:
  TableFill(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
            SearchObserver& observer)
      : colFiles_(colFiles),
        files_(files),
        pool_(pool),
        stop_(stop),
        observer_(observer),
        mostFolders_(std::min(kKeptFolders, files.OpenLimit() / 4)) {}

  FileProps Fill() {
    table_.folders = &colFiles_.Folders();
    table_.records.resize(colFiles_.Items().size());
    table_.openFolders.resize(colFiles_.Folders().Count());
    failures_.resize(colFiles_.Items().size(), Errors::None);
    fingerprints_.resize(colFiles_.Items().size());
    const std::vector<Batch> batches = BatchesOf(colFiles_.Items());
    pool_.ParallelFor(batches.size(), 1, [&](std::size_t k, std::size_t) { Look(batches[k]); });
    if (stop_.Stopped()) return {};
    TellFailures();
    LeaveOutTwins();
    Compact();
    return std::move(table_);
  }

 private:
  void Look(const Batch& batch) {
    if (stop_.Stopped()) return;
    const auto& items = colFiles_.Items();
    const FolderId id = items[batch.begin].folder;
    Errors failure = Errors::None;
    std::string path;
    std::unique_ptr<Folder> opened;
    const Folder* folder = KeptFolder(id);
    if (folder == nullptr) {
      path = colFiles_.Folders().Path(id);
      opened = files_.OpenFolder(path, failure);
      folder = opened.get();
    }
    for (std::size_t k = batch.begin; k < batch.end; ++k) {
      FileStat stat;
      failures_[k] = StatEntry(files_, folder, failure, path, items[k].Name(), stat);
      Take(k, stat);
    }
    if (opened) KeepFolder(id, std::move(opened));
    observer_.SetTag(static_cast<std::int64_t>(batch.end));
  }

  const Folder* KeptFolder(FolderId id) {
    const std::lock_guard lock(mutex_);
    return table_.openFolders[id].get();
  }

  void KeepFolder(FolderId id, std::unique_ptr<Folder> folder) {
    const std::lock_guard lock(mutex_);
    if (table_.openFolders[id] || keptFolders_ == mostFolders_) return;
    table_.openFolders[id] = std::move(folder);
    ++keptFolders_;
  }

  void Take(std::size_t item, const FileStat& stat) {
    if (failures_[item] != Errors::None) return;
    if (stat.kind != EntryKind::File) {
      failures_[item] = Errors::FileNotFound;  // something else stands in its place by now
      return;
    }
    const ColFiles::Item& from = colFiles_.Items()[item];
    table_.records[item] = {stat.size, from.name, from.folder, kNoGroup, from.nameLength, from.isSrchTarget};
    fingerprints_[item] = Fingerprint(stat.identity);
  }

  void TellFailures() {
    for (std::size_t k = 0; k < failures_.size(); ++k) {
      if (failures_[k] == Errors::None) continue;
      if (stop_.Stopped()) return;
      const auto text = LengthFailureText(failures_[k], PathOf(k));
      if (text) observer_.Box(BoxIcon::Critical, "", *text);
    }
  }

  // Every entry goes into a hash table of its fingerprint. The few that meet an equal one there are looked at again.
  void LeaveOutTwins() {
    std::vector<std::uint32_t> slots(std::bit_ceil(2 * fingerprints_.size()), kFree);
    const int shift = 64 - std::countr_zero(slots.size());
    for (std::uint32_t k = 0; k < fingerprints_.size() && !stop_.Stopped(); ++k) {
      if (fingerprints_[k] == 0) continue;
      std::size_t at = shift < 64 ? fingerprints_[k] >> shift : 0;
      while (slots[at] != kFree && !(fingerprints_[slots[at]] == fingerprints_[k] && AreOneFile(slots[at], k))) {
        at = (at + 1) % slots.size();
      }
      if (slots[at] == kFree) {
        slots[at] = k;
      } else {
        failures_[k] = Errors::KeyExists;
      }
    }
  }

  // Inodes alone may repeat on odd file systems. A file that is just being written may look like two, but not for long.
  bool AreOneFile(std::size_t a, std::size_t b) const {
    for (int look = 0; look < kLooks; ++look) {
      FileStat first;
      FileStat second;
      if (files_.Stat(PathOf(a), first) != Errors::None || files_.Stat(PathOf(b), second) != Errors::None) return false;
      if (first.identity != second.identity) return false;
      if (first.size == second.size && first.changedNs == second.changedNs) return true;
    }
    return false;
  }

  std::string PathOf(std::size_t item) const {
    std::string path;
    colFiles_.AppendPath(colFiles_.Items()[item], path);
    return path;
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
  const std::size_t mostFolders_;
  FileProps table_;
  std::mutex mutex_;  // of the next, and of the table's open folders
  std::size_t keptFolders_ = 0;
  std::vector<Errors> failures_;             // by catalogue entry: why it isn't in the table
  std::vector<std::uint64_t> fingerprints_;  // by catalogue entry: of its file's identity; 0 if that isn't known
};

}  // namespace

FileProps FillTable(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
                    SearchObserver& observer) {
  return TableFill(colFiles, files, pool, stop, observer).Fill();
}

}  // namespace tresmor
