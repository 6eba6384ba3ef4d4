// The loose comparison: blocks that agree in most of their slices pass for equal.
#pragma once

#include <cstdint>
#include <vector>

#include "search/open_files.h"

namespace tresmor {

// The blocks of several files, reduced to what the loose comparison asks of them: for each slice, which files have the
// same bytes there. So memory stays small whatever the block, each byte is read once however many pairs are judged, and
// a pair costs a hundred small comparisons.
//
// A block of `length` bytes has 100 slices (`length` if that is less) of round(length / slices) bytes each; slice s,
// counted from 1, begins at byte s * step, also counted from 1. So a block's first bytes are in no slice, and slices
// that begin behind its end are empty and equal.
class SliceTable {
 public:
  // `bytes` of buffers, or what three slices of each file take if that is more.
  explicit SliceTable(std::size_t bytes) : bytes_(bytes) {}

  // Reads `length` bytes (1 or more) at `offset` of each of `files`, of the `count` files that `open` knows.
  void Read(OpenFiles& open, const std::vector<int>& files, std::size_t count, std::int64_t offset,
            std::int64_t length);

  bool Failed(int file) const { return failed_[static_cast<std::size_t>(file)]; }
  // The share of slices in which two files that were read agree, 0 to 1.
  float FuzzyMatch(int file1, int file2) const;

 private:
  struct Window;
  void LabelSlice(std::size_t slice, std::int64_t begin, std::int64_t end, const Window& window,
                  std::vector<int>& files);
  std::uint8_t& Label(int file, std::size_t slice) {
    return labels_[static_cast<std::size_t>(file) * static_cast<std::size_t>(slices_) + slice];
  }

  std::size_t bytes_;
  std::int64_t slices_ = 0;
  std::vector<std::uint8_t> labels_;  // a row of slices for each file; the same label where the bytes are the same
  std::vector<bool> failed_;
};

// More than this share of slices must agree.
inline constexpr float kFuzzyLimit = 0.7F;

}  // namespace tresmor
