#include "search/plain_search.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "base/text.h"

namespace tresmor {

namespace {

struct Record {
  const PlainFile* file = nullptr;
  std::int64_t Sz = 0;
  int DupGrp = -1;
  std::string Head;
  bool IsSrchTarget = false;
};

int Sign(int x) { return (x > 0) - (x < 0); }

class Plain {
 public:
  Plain(const std::vector<PlainFile>& files, const SearchRequest& request, const SearchLimits& limits)
      : request_(request), limits_(limits) {
    for (const PlainFile& file : files) {
      table_.push_back(
          {&file, static_cast<std::int64_t>(file.content.size()), -1, std::string(limits.head, '\0'), file.isTarget});
    }
    last_ = static_cast<int>(table_.size()) - 1;
  }

  PlainResult Run() {
    if (request_.Wants(SrchType::SameName) && last_ >= 1) SameNames();
    QuickSort(0, last_, 0);
    int kept = 0;
    while (kept <= last_ && table_[kept].Sz <= 0) {
      if (request_.Wants(SrchType::ZeroSize) && table_[kept].IsSrchTarget) AddRow(0, kept);
      ++kept;
    }
    if (request_.Wants(SrchType::Duplicates)) {
      if (kept == 0) kept = 1;
      Duplicates(kept);
    }
    for (int i = 0; i <= last_; ++i) {
      if (table_[i].DupGrp == -3) AddRow(4, i);
      if (table_[i].DupGrp >= 0) {
        AddRow(1, i);
        table_[i].DupGrp = -1;
      }
    }
    if (request_.Wants(SrchType::Portions)) Portions(kept);
    result_.figure = last_;
    return result_;
  }

 private:
  void AddRow(int list, int i) {
    result_.rows.push_back({list, table_[i].file->folder + table_[i].file->name, table_[i].DupGrp, table_[i].Sz});
  }

  int Compare(const Record& a, const Record& b, int key) {
    if (key == 1) return CompareText(a.file->name, b.file->name);
    if (key == 2) {
      const int heads = Sign(a.Head.compare(b.Head));
      if (heads != 0) return heads;
    }
    return (a.Sz > b.Sz) - (a.Sz < b.Sz);
  }

  void QuickSort(int l, int r, int key) {
    int i = l;
    int j = r;
    int middle = (l + r) / 2;
    if ((l + r) % 2 == 1 && middle % 2 == 1) ++middle;  // a half goes to the even neighbour
    const Record pivot = table_[middle];
    while (i <= j) {
      while (Compare(table_[i], pivot, key) == -1 && i < r) ++i;
      while (Compare(pivot, table_[j], key) == -1 && j > l) --j;
      if (i <= j) {
        std::swap(table_[i], table_[j]);
        ++i;
        --j;
      }
    }
    if (l < j) QuickSort(l, j, key);
    if (i < r) QuickSort(i, r, key);
  }

  template <class Same, class Handle>
  void Scan(int first, int last, Same same, Handle handle) {
    int dupStart = -1;
    int dupEnd = -1;
    for (int i = first; i <= last; ++i) {
      if (same(i) && dupStart == -1) {
        dupStart = i - 1;
        dupEnd = i;
      }
      if (i != last && same(i)) continue;
      if (dupStart != -1) {
        dupEnd = i == last ? i : i - 1;
        handle(dupStart, dupEnd);
      }
      dupStart = -1;
    }
  }

  bool HoldsTarget(int from, int to) {
    if (request_.isAllSrchTarget) return true;
    for (int i = from; i <= to; ++i) {
      if (table_[i].IsSrchTarget) return true;
    }
    return false;
  }

  void KeepTargets(int from, int to) {
    if (request_.isAllSrchTarget) return;
    std::set<int> groups;
    for (int i = from; i <= to; ++i) {
      if (table_[i].IsSrchTarget && table_[i].DupGrp >= 0) groups.insert(table_[i].DupGrp);
    }
    for (int i = from; i <= to; ++i) {
      if (groups.count(table_[i].DupGrp) == 0) table_[i].DupGrp = -1;
    }
  }

  void SameNames() {
    QuickSort(0, last_, 1);
    Scan(
        1, last_, [&](int i) { return EqualText(table_[i].file->name, table_[i - 1].file->name); },
        [&](int from, int to) {
          if (!HoldsTarget(from, to)) return;
          for (int k = from; k <= to; ++k) AddRow(2, k);
        });
  }

  void Duplicates(int kept) {
    Scan(
        kept, last_, [&](int i) { return table_[i].Sz == table_[i - 1].Sz; },
        [&](int from, int to) {
          if (!HoldsTarget(from, to)) return;
          if (to - from >= limits_.span) {
            SrchPortion(from, to, true);
          } else {
            CompFileCnt(from, to, table_[from].Sz, true);
            KeepTargets(from, to);
          }
        });
  }

  void Portions(int kept) {
    if (kept <= last_) {
      while (table_[kept].Sz < limits_.portionFrom && kept < last_) ++kept;
      SrchPortion(kept, last_, false);
    }
    for (int i = 0; i <= last_; ++i) {
      if (table_[i].DupGrp == -3) AddRow(4, i);
      if (table_[i].DupGrp >= 0) AddRow(3, i);
    }
  }

  void SrchPortion(const int start, const int end, bool sameSizeOnly) {
    for (int i = start; i <= end; ++i) {
      table_[i].Head.assign(limits_.head, '\0');
      if (!ReadHead(*table_[i].file, table_[i].Head)) table_[i].DupGrp = -3;
    }
    QuickSort(start, end, 2);
    Scan(
        std::max(start, 1), end, [&](int i) { return table_[i].Head == table_[i - 1].Head; },
        [&](int from, int to) {
          if (!HoldsTarget(from, to)) return;
          const auto size0 = [&](int first) { return table_[std::max(first, start)].Sz; };
          if (to - from >= limits_.span) {
            CompFileCnt(from, from + limits_.span, size0(from), sameSizeOnly);
            CompFileCnt(to - limits_.span, to, size0(to - limits_.span), sameSizeOnly);
          } else {
            CompFileCnt(from, to, size0(from), sameSizeOnly);
          }
          KeepTargets(from, to);
        });
  }

  bool ReadHead(const PlainFile& file, std::string& head) {
    if (!file.opens) return false;
    std::string content = file.content;
    if (!file.rightLength) content.pop_back();
    const auto length = std::min(content.size(), limits_.head);
    if (file.failsAt >= 0 && file.failsAt < static_cast<std::int64_t>(length)) return false;
    head.replace(0, length, content, 0, length);
    return true;
  }

  // --- one comparison ---------------------------------------------------------------------------------------------

  static constexpr std::int64_t kNever = INT64_MAX;

  // The byte from which on a file can't be had.
  std::int64_t FailsFrom(int k) {
    const PlainFile& file = *table_[k].file;
    if (!file.opens || !file.rightLength) return 0;
    return file.failsAt >= 0 && file.failsAt < table_[k].Sz ? file.failsAt : kNever;
  }

  std::string Bytes(int k, std::int64_t from, std::int64_t to) {
    const std::string& content = table_[k].file->content;
    from = std::min(from, static_cast<std::int64_t>(content.size()));
    return content.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  }

  bool Fuzzy(const std::string& a, const std::string& b, std::int64_t length) {
    const std::int64_t slices = std::min<std::int64_t>(length, 100);
    const auto step = static_cast<std::int64_t>(std::nearbyint(static_cast<double>(length) / double(slices)));
    const auto slice = [&](const std::string& s, std::int64_t number) {
      const auto at = static_cast<std::size_t>(number * step - 1);
      return at < s.size() ? s.substr(at, static_cast<std::size_t>(step)) : std::string();
    };
    int hits = 0;
    for (std::int64_t s = 1; s <= slices; ++s) hits += slice(a, s) == slice(b, s) ? 1 : 0;
    return static_cast<float>(hits) / static_cast<float>(slices) > 0.7F;
  }

  int CountOf(int from, int to, int group) {
    int count = 0;
    for (int k = from; k <= to; ++k) count += table_[k].DupGrp == group ? 1 : 0;
    return count;
  }

  bool TwoSizes(int from, int to, int group) {
    std::set<std::int64_t> sizes;
    for (int k = from; k <= to; ++k) {
      if (table_[k].DupGrp == group) sizes.insert(table_[k].Sz);
    }
    return sizes.size() > 1;
  }

  // Whether the bytes of k in this block matter to anybody.
  bool IsRead(int from, int to, std::int64_t block, int k, std::int64_t size0, bool same, bool tolerant) {
    const Record& record = table_[k];
    const bool grouped = record.DupGrp >= from && CountOf(from, to, record.DupGrp) > 1;
    if (block > 0) return grouped;
    if (tolerant && grouped) return true;
    if (record.DupGrp != -1 || (same && record.Sz != size0)) return false;
    for (int other = from; other <= to; ++other) {
      if (other == k || table_[other].DupGrp != -1) continue;
      if ((table_[other].Sz == record.Sz) == same) return true;
    }
    return false;
  }

  void CompFileCnt(int from, int to, std::int64_t size0, bool same) {
    const bool tolerant = request_.tolerant;
    const std::int64_t blockSize = same && size0 < limits_.wholeBelow ? size0 : limits_.block;
    double budget = std::nearbyint(static_cast<double>(size0) / static_cast<double>(blockSize) * 0.3);
    for (std::int64_t block = 0;; ++block) {
      const std::int64_t begin = block * blockSize;
      if (same ? begin >= size0 : (size0 <= blockSize || begin + blockSize > size0)) break;
      const std::int64_t end = std::min(begin + blockSize, size0);
      std::vector<int> reading;
      for (int k = from; k <= to; ++k) {
        if (IsRead(from, to, block, k, size0, same, tolerant)) reading.push_back(k);
      }
      if (block > 0 && reading.size() < 2) break;
      MarkFailures(reading, block, end, tolerant);
      const auto match = [&](int i, int j) {
        const auto isRead = [&](int k) { return std::find(reading.begin(), reading.end(), k) != reading.end(); };
        if (!isRead(i) || !isRead(j)) return false;
        if (tolerant) return budget >= 0 && Fuzzy(Bytes(i, begin, end), Bytes(j, begin, end), end - begin);
        // What lies behind a failure that nobody saw is not known to be equal to anything.
        if (FailsFrom(i) < end || FailsFrom(j) < end) return false;
        return Bytes(i, begin, end) == Bytes(j, begin, end);
      };
      if (block == 0) {
        FirstBlock(from, to, same, match);
      } else {
        NextBlock(from, to, same, tolerant, budget, reading, match);
      }
      for (int k = from; k <= to; ++k) {
        if (table_[k].DupGrp == -2) table_[k].DupGrp = -1;
      }
    }
  }

  void MarkFailures(const std::vector<int>& reading, std::int64_t block, std::int64_t end, bool tolerant) {
    std::vector<int> failed;
    for (int k : reading) {
      const std::int64_t at = FailsFrom(k);
      if (at >= end) continue;
      bool seen = tolerant;
      for (int other : reading) {
        if (other == k || FailsFrom(other) < at) continue;
        if (block > 0 && table_[other].DupGrp != table_[k].DupGrp) continue;
        if (Bytes(other, 0, at) == Bytes(k, 0, at)) seen = true;
      }
      if (seen) failed.push_back(k);
    }
    for (int k : failed) table_[k].DupGrp = -3;
  }

  template <class Match>
  void FirstBlock(int from, int to, bool same, Match match) {
    for (int i = from; i < to; ++i) {
      if (table_[i].DupGrp != -1) continue;
      for (int j = i + 1; j <= to; ++j) {
        if (table_[j].DupGrp != -1) continue;
        if (same && table_[i].Sz != table_[j].Sz) continue;
        if (!match(i, j)) continue;
        table_[j].DupGrp = -4;  // taken, if the group comes about
      }
      Settle(from, to, i, same, -1);
    }
  }

  // Turns the records that leader i took into its group, or gives them back if they make none.
  void Settle(int from, int to, int i, bool same, int otherwise) {
    const int before = table_[i].DupGrp;
    table_[i].DupGrp = -4;
    const bool stands = same ? CountOf(from, to, -4) > 1 : TwoSizes(from, to, -4);
    for (int k = from; k <= to; ++k) {
      if (table_[k].DupGrp == -4) table_[k].DupGrp = stands ? i : otherwise;
    }
    if (!stands) table_[i].DupGrp = before;
  }

  template <class Match>
  void NextBlock(int from, int to, bool same, bool tolerant, double& budget, const std::vector<int>& reading,
                 Match match) {
    std::map<int, int> origin;  // the group that each record had when the block began
    std::map<int, int> leader;  // by group: its lowest record that can be read
    for (int k : reading) {
      origin[k] = table_[k].DupGrp;
      if (table_[k].DupGrp >= 0) leader.try_emplace(table_[k].DupGrp, k);
    }
    // A failed record no longer tells its group, and takes no part.
    for (int i = from; i <= to; ++i) {
      if (origin.count(i) == 0 || table_[i].DupGrp == -3) continue;
      const int group = origin[i];
      if (table_[i].DupGrp == -2) {
        for (int j = i + 1; j <= to; ++j) {
          if (table_[j].DupGrp == -2 && origin[j] == group && match(i, j)) table_[j].DupGrp = -4;
        }
        Settle(from, to, i, same, -2);
      } else if (leader[group] == i) {
        bool dropped = false;
        for (int j = i + 1; j <= to; ++j) {
          if (table_[j].DupGrp != group || table_[i].DupGrp == -1 || match(i, j)) continue;
          budget -= 1;
          if (tolerant && budget >= 0) continue;
          table_[j].DupGrp = -2;
          dropped = true;
          if (CountOf(from, to, group) < 2) table_[i].DupGrp = -1;
        }
        if (!same && dropped && !TwoSizes(from, to, group)) {
          for (int k = from; k <= to; ++k) {
            if (table_[k].DupGrp == group) table_[k].DupGrp = -1;
          }
        }
      }
    }
  }

  const SearchRequest& request_;
  const SearchLimits& limits_;
  std::vector<Record> table_;
  int last_ = 0;
  PlainResult result_;
};

}  // namespace

PlainResult PlainSearch(const std::vector<PlainFile>& files, const SearchRequest& request, const SearchLimits& limits) {
  return Plain(files, request, limits).Run();
}

}  // namespace tresmor
