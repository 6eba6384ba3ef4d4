#include "search/file_table.h"

#include <bit>
#include <string>
#include <utility>

#include "search/file_helpers.h"

namespace tresmor {

namespace {

constexpr std::size_t kBatch = 64;  // files of one folder that are looked up at a time, between two looks at the stop
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
      : colFiles_(colFiles), files_(files), pool_(pool), stop_(stop), observer_(observer) {}

  FileProps Fill() {
    table_.folders = &colFiles_.Folders();
    table_.records.resize(colFiles_.Items().size());
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
    const std::size_t count = batch.end - batch.begin;
    std::vector<std::string_view> names(count);
    std::vector<FileStat> stats(count);
    for (std::size_t k = 0; k < count; ++k) names[k] = items[batch.begin + k].Name();
    files_.StatAll(colFiles_.Folders().Path(items[batch.begin].folder), names, stats,
                   std::span(failures_).subspan(batch.begin, count));
    for (std::size_t k = 0; k < count; ++k) Take(batch.begin + k, stats[k]);
    observer_.SetTag(static_cast<std::int64_t>(batch.end));
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
      const std::string text = LengthFailureText(failures_[k], PathOf(k));
      if (!text.empty()) observer_.Box(BoxIcon::Critical, "", text);
    }
  }

  // Every entry goes into a hash table of its fingerprint. The few that meet an equal one there are looked at again.
  void LeaveOutTwins() {
    std::vector<std::uint32_t> slots(std::bit_ceil(2 * fingerprints_.size()), kFree);
    const int shift = 64 - std::countr_zero(slots.size());
    for (std::uint32_t k = 0; k < fingerprints_.size(); ++k) {
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

  // Inodes alone may repeat on odd file systems.
  bool AreOneFile(std::size_t a, std::size_t b) const {
    FileStat first;
    FileStat second;
    if (files_.Stat(PathOf(a), first) != Errors::None || files_.Stat(PathOf(b), second) != Errors::None) return false;
    return first.identity == second.identity && first.size == second.size && first.changedNs == second.changedNs;
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
  FileProps table_;
  std::vector<Errors> failures_;             // by catalogue entry: why it isn't in the table
  std::vector<std::uint64_t> fingerprints_;  // by catalogue entry: of its file's identity; 0 if that isn't known
};

}  // namespace

FileProps FillTable(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
                    SearchObserver& observer) {
  return TableFill(colFiles, files, pool, stop, observer).Fill();
}

}  // namespace tresmor
