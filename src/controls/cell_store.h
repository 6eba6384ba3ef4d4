// Cells of a list, packed to eight bytes each. A cell is a text to everyone outside: it comes back byte for byte,
// however it is kept.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include "base/date.h"

namespace tresmor {

// The text PadNumber(number) and the text FormatStamp(stamp), for who has the number at hand anyway.
struct PaddedNumber {
  std::int64_t number = 0;
};
struct StampText {
  DateStamp stamp = kZeroDate;
};
using CellValue = std::variant<std::string_view, PaddedNumber, StampText>;

class CellStore {
 public:
  using Cell = std::uint64_t;
  static constexpr Cell kAbsent = 0;

  // How to keep a text that is neither a padded number nor a date: each on its own, for texts that seldom repeat, or
  // equal ones once.
  enum class Texts { Own, Shared };

  Cell Pack(const CellValue& value, Texts texts);
  // Valid until the next change of the store or of `scratch`.
  std::string_view View(Cell cell, std::string& scratch) const;
  // Whether the two texts are the same bytes.
  bool Same(Cell a, Cell b) const;
  // The number whose PadNumber is the cell's text. A cell that is kept as a number costs no parsing.
  std::optional<std::int64_t> Number(Cell cell) const;
  // The number or the stamp of a cell that is kept as one.
  static std::optional<std::int64_t> KeptNumber(Cell cell);
  static std::optional<DateStamp> Stamp(Cell cell);
  // Whether the cell may come up again for an equal text, so that work done for one may serve many. A text that was
  // packed as Texts::Own stands in its one cell alone, even if an equal one is shared.
  static bool IsShared(Cell cell);
  // Gives back the room of all texts. Single texts are never given back, so a list that is cut down keeps its peak.
  void Clear();

 private:
  Cell PackText(std::string_view text, Texts texts);
  Cell PackOwn(std::string_view text);
  Cell PackShared(std::string_view text);

  // Texts of their own stand in blocks, each text whole in one, so that none ever moves.
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t used_ = 0;  // bytes of the last block
  std::deque<std::string> shared_;
  std::unordered_map<std::string_view, std::uint32_t> sharedIndex_;  // keys point into shared_
};

}  // namespace tresmor
