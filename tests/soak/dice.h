// What is drawn at random, the same again for the same seed, on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace tresmor::soak {

// One thread at a time.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  std::size_t Below(std::size_t end) { return static_cast<std::size_t>(engine_() % end); }  // `end` is above 0
  std::int32_t UpTo(std::int32_t most) { return static_cast<std::int32_t>(Below(static_cast<std::size_t>(most) + 1)); }
  bool OneIn(std::size_t chances) { return Below(chances) == 0; }
  template <class Range>
  const auto& Pick(const Range& range) {
    return *(std::begin(range) + static_cast<std::ptrdiff_t>(Below(std::size(range))));
  }

 private:
  std::mt19937_64 engine_;
};

// The seed of a part of what another seed stands for.
inline std::uint64_t PartOf(std::uint64_t seed, std::uint64_t part) {
  return std::mt19937_64(seed * 1'000'003 + part)();
}

}  // namespace tresmor::soak
