#include "search/heads.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "search/read_ahead.h"

namespace tresmor {

namespace {

// Fills `into` from `offset`, with zero bytes where the file has none. All zero, and false, if it can't be read; all
// zero too after a stop.
bool ReadPart(FileProps& table, std::int32_t index, const HeadPorts& ports, std::int64_t offset, std::span<char> into) {
  Errors failure = Errors::None;
  FileReader::Result read;
  auto reader = ports.kept.Open(table, index, failure, [] {});
  if (reader) {
    read = reader->ReadAt(offset, into);
    failure = read.failure;
    ports.kept.Keep(table[index], std::move(reader));
  }
  if (failure != Errors::None) read.got = 0;
  std::fill(into.begin() + static_cast<std::ptrdiff_t>(read.got), into.end(), '\0');
  return failure == Errors::None || failure == Errors::TooManyFiles;
}

// The next bytes as a number that orders as they do; missing ones count as zero.
std::uint64_t WordOf(const char* bytes, std::size_t length) {
  std::uint64_t word = 0;
  for (std::size_t k = 0; k < sizeof word; ++k) {
    word = word << 8 | (k < length ? static_cast<unsigned char>(bytes[k]) : 0U);
  }
  return word;
}

// Refines an order of records by one part of their heads after the other.
class HeadOrder {
 public:
  HeadOrder(FileProps& table, std::int32_t first, std::int32_t last, const HeadPorts& ports)
      : table_(table), first_(first), ports_(ports), order_(static_cast<std::size_t>(last - first + 1)) {
    for (std::uint32_t k = 0; k < order_.size(); ++k) order_[k] = k;
    if (order_.size() > 1) ties_.push_back({0, order_.size()});
    part_.resize(order_.size());
    starts_.assign(order_.size(), 0);
    if (!starts_.empty()) starts_[0] = 1;
  }

  std::vector<std::uint32_t> Rank() {
    if (order_.size() == 1) ReadOnlyHead();
    for (std::size_t done = 0; done < ports_.limits.head && !ties_.empty() && !ports_.stop.Stopped();) {
      done += ReadNext(done);
    }
    std::vector<std::uint32_t> ranks(order_.size());
    std::uint32_t rank = 0;
    for (std::size_t k = 0; k < order_.size(); ++k) {
      if (starts_[k] != 0) ++rank;
      ranks[order_[k]] = rank;
    }
    return ranks;
  }

 private:
  // A stretch of order_ whose heads are equal as far as they were read.
  struct Tie {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  void ReadOnlyHead() {
    std::vector<char> head(ports_.limits.head);
    ReadRecord(0, 0, head);
  }

  std::size_t ReadNext(std::size_t offset) {
    const std::vector<std::uint32_t> reading = Tied();
    const std::size_t length =
        std::clamp<std::size_t>(ports_.limits.buffers / 2 / reading.size(), 1, ports_.limits.head - offset);
    bytes_.reset();  // before there are two
    bytes_ = std::make_unique_for_overwrite<char[]>(reading.size() * length);
    std::vector<std::int32_t> indexes(reading.size());
    for (std::uint32_t k = 0; k < reading.size(); ++k) {
      part_[reading[k]] = k;
      indexes[k] = first_ + static_cast<std::int32_t>(reading[k]);
    }
    ReadAhead ahead(table_, ports_.files, ports_.stop, std::move(indexes), static_cast<std::int64_t>(offset + length));
    ports_.pool.ParallelFor(reading.size(), 16, [&](std::size_t k, std::size_t) {
      if (ports_.stop.Stopped()) return;
      ahead.Reached(k + 1);
      ReadRecord(reading[k], static_cast<std::int64_t>(offset), {bytes_.get() + k * length, length});
    });
    if (!ports_.stop.Stopped()) Sort(length);
    return length;
  }

  // The records of all ties in the order of the table, which is about the order of the disk.
  std::vector<std::uint32_t> Tied() const {
    std::vector<bool> tied(order_.size());
    for (const Tie& tie : ties_) {
      for (std::size_t k = tie.begin; k < tie.end; ++k) tied[order_[k]] = true;
    }
    std::vector<std::uint32_t> records;
    for (std::uint32_t record = 0; record < tied.size(); ++record) {
      if (tied[record]) records.push_back(record);
    }
    return records;
  }

  void ReadRecord(std::uint32_t record, std::int64_t offset, std::span<char> into) {
    const std::int32_t index = first_ + static_cast<std::int32_t>(record);
    if (!ReadPart(table_, index, ports_, offset, into)) table_[index].DupGrp = kReadError;
    ports_.observer.SetTag(index);
  }

  // Sorts each tie by its parts of `length` bytes and leaves the smaller ties that they fall into. Word by word, since
  // to compare two equal parts is to go through them, and most parts of a big run often are equal.
  void Sort(std::size_t length) {
    std::vector<std::pair<Tie, std::size_t>> open;  // and how many bytes are known to be equal
    for (const Tie& tie : std::exchange(ties_, {})) open.emplace_back(tie, 0);
    while (!open.empty()) {
      const auto [tie, at] = open.back();
      open.pop_back();
      if (Alike(tie, at, length)) {
        ties_.push_back(tie);
        continue;
      }
      const std::size_t behind = std::min(at + sizeof(std::uint64_t), length);
      SortByWord(tie, at, length, [&](const Tie& smaller) { open.emplace_back(smaller, behind); });
    }
  }

  const char* PartAt(std::size_t k, std::size_t length) const { return bytes_.get() + part_[order_[k]] * length; }

  bool Alike(const Tie& tie, std::size_t at, std::size_t length) const {
    const char* const first = PartAt(tie.begin, length) + at;
    std::size_t k = tie.begin + 1;
    while (k < tie.end && std::memcmp(first, PartAt(k, length) + at, length - at) == 0) ++k;
    return k == tie.end;
  }

  template <class Visit>
  void SortByWord(const Tie& tie, std::size_t at, std::size_t length, const Visit& visitTie) {
    std::vector<std::pair<std::uint64_t, std::uint32_t>> words;
    words.reserve(tie.end - tie.begin);
    for (std::size_t k = tie.begin; k < tie.end; ++k) {
      words.emplace_back(WordOf(PartAt(k, length) + at, length - at), order_[k]);
    }
    std::sort(words.begin(), words.end());
    for (std::size_t begin = 0, end; begin < words.size(); begin = end) {
      for (end = begin; end < words.size() && words[end].first == words[begin].first; ++end) {
        order_[tie.begin + end] = words[end].second;
      }
      starts_[tie.begin + begin] = 1;
      if (end - begin > 1) visitTie({tie.begin + begin, tie.begin + end});
    }
  }

  FileProps& table_;
  std::int32_t first_;
  const HeadPorts& ports_;
  std::vector<std::uint32_t> order_;  // records, from first_
  std::vector<std::uint8_t> starts_;  // whether order_[k] begins a new head
  std::vector<Tie> ties_;
  std::vector<std::uint32_t> part_;  // by record: which of the parts in bytes_ is its own
  std::unique_ptr<char[]> bytes_;
};

}  // namespace

std::vector<std::uint32_t> RankHeads(FileProps& table, std::int32_t first, std::int32_t last, const HeadPorts& ports) {
  return HeadOrder(table, first, last, ports).Rank();
}

std::string ReadHead(FileProps& table, std::int32_t index, const HeadPorts& ports) {
  std::string head(ports.limits.head, '\0');
  ReadPart(table, index, ports, 0, head);
  return head;
}

}  // namespace tresmor
