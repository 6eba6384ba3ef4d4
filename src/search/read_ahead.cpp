#include "search/read_ahead.h"

#include <algorithm>
#include <system_error>

namespace tresmor {

namespace {

constexpr std::int64_t kAhead = 16 << 20;  // bytes asked for in front of the readers; measured on a cold disk
constexpr std::size_t kSamples = 16;
constexpr std::size_t kWorthIt = 32;  // fewer files are read sooner than asked about

}  // namespace

ReadAhead::ReadAhead(const FileProps& table, const FileSystem& files, const StopToken& stop,
                     std::vector<std::int32_t> order, std::int64_t bytesEach)
    : table_(table), files_(files), stop_(stop), order_(std::move(order)), bytesEach_(bytesEach) {
  if (order_.size() < kWorthIt || !Cold()) return;
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    // Without it the search is slower, not different.
  }
}

ReadAhead::~ReadAhead() {
  quit_ = true;
  reached_ = order_.size() + 1;  // a change, without which a waiting thread would not look up
  reached_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void ReadAhead::Reached(std::size_t place) {
  std::size_t before = reached_.load(std::memory_order_relaxed);
  while (before < place && !reached_.compare_exchange_weak(before, place)) {
  }
  if (thread_.joinable()) reached_.notify_one();
}

bool ReadAhead::Cold() const {
  const std::size_t step = std::max<std::size_t>(order_.size() / kSamples, 1);
  int cold = 0;
  int warm = 0;
  for (std::size_t place = 0; place < order_.size(); place += step) {
    const CacheState state = files_.Cached(table_.Path(order_[place]));
    cold += state == CacheState::Cold ? 1 : 0;
    warm += state == CacheState::Warm ? 1 : 0;
  }
  return cold > warm;
}

std::int64_t ReadAhead::BytesOf(std::size_t place) const { return std::min(table_[order_[place]].Sz, bytesEach_); }

void ReadAhead::Run() {
  std::int64_t ahead = 0;
  std::size_t counted = 0;  // places in front of this one are no longer ahead
  for (std::size_t place = 0; place < order_.size(); ++place) {
    for (;;) {
      const std::size_t reached = reached_.load();
      for (; counted < std::min(reached, place); ++counted) ahead -= BytesOf(counted);
      if (quit_ || stop_.Stopped()) return;
      if (ahead < kAhead) break;
      reached_.wait(reached);
    }
    if (place < reached_.load(std::memory_order_relaxed)) {
      ++counted;  // the readers were faster
      continue;
    }
    files_.ReadAhead(table_.Path(order_[place]), 0, BytesOf(place));
    ahead += BytesOf(place);
  }
}

}  // namespace tresmor
