#include "search/heads.h"

#include <algorithm>
#include <cstring>

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
    std::vector<std::uint32_t> reading;
    for (const Tie& tie : ties_) {
      for (std::size_t k = tie.begin; k < tie.end; ++k) {
        part_[order_[k]] = static_cast<std::uint32_t>(reading.size());
        reading.push_back(order_[k]);
      }
    }
    const std::size_t length =
        std::clamp<std::size_t>(ports_.limits.buffers / 2 / reading.size(), 1, ports_.limits.head - offset);
    bytes_.resize(reading.size() * length);
    // In the order of the table, which is about the order of the disk.
    std::vector<std::uint32_t> inOrder = reading;
    std::sort(inOrder.begin(), inOrder.end());
    std::vector<std::int32_t> indexes;
    for (std::uint32_t record : inOrder) indexes.push_back(first_ + static_cast<std::int32_t>(record));
    ReadAhead ahead(table_, ports_.files, ports_.stop, std::move(indexes), static_cast<std::int64_t>(offset + length));
    ports_.pool.ParallelFor(inOrder.size(), 16, [&](std::size_t k, std::size_t) {
      if (ports_.stop.Stopped()) return;
      ahead.Reached(k + 1);
      const std::uint32_t record = inOrder[k];
      ReadRecord(record, static_cast<std::int64_t>(offset), {bytes_.data() + part_[record] * length, length});
    });
    if (!ports_.stop.Stopped()) Sort(length);
    return length;
  }

  void ReadRecord(std::uint32_t record, std::int64_t offset, std::span<char> into) {
    const std::int32_t index = first_ + static_cast<std::int32_t>(record);
    if (!ReadPart(table_, index, ports_, offset, into)) table_[index].DupGrp = kReadError;
    if (ports_.headObserver != nullptr) ports_.headObserver->SetTag(index);
  }

  void Sort(std::size_t length) {
    const auto compare = [&](std::uint32_t a, std::uint32_t b) {
      return std::memcmp(bytes_.data() + part_[a] * length, bytes_.data() + part_[b] * length, length);
    };
    std::vector<Tie> left;
    for (const Tie& tie : ties_) {
      const auto at = [&](std::size_t k) { return order_.begin() + static_cast<std::ptrdiff_t>(k); };
      std::sort(at(tie.begin), at(tie.end), [&](std::uint32_t a, std::uint32_t b) { return compare(a, b) < 0; });
      for (std::size_t begin = tie.begin, end; begin < tie.end; begin = end) {
        for (end = begin + 1; end < tie.end && compare(order_[begin], order_[end]) == 0;) ++end;
        starts_[begin] = 1;
        if (end - begin > 1) left.push_back({begin, end});
      }
    }
    ties_ = std::move(left);
  }

  FileProps& table_;
  std::int32_t first_;
  const HeadPorts& ports_;
  std::vector<std::uint32_t> order_;  // records, from first_
  std::vector<std::uint8_t> starts_;  // whether order_[k] begins a new head
  std::vector<Tie> ties_;
  std::vector<std::uint32_t> part_;  // by record: which of the parts in bytes_ is its own
  std::vector<char> bytes_;
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
