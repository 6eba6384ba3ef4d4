#include "controls/cell_store.h"

#include <charconv>
#include <cstring>

#include "base/text.h"

namespace tresmor {
namespace {

// The three highest bits tell how a cell is kept, the others hold it: a signed number, or for a text of its own block,
// offset and length, or for a shared one its index.
enum class Kind : std::uint64_t { Absent = 0, Own = 1, Shared = 2, Number = 3, Stamp = 4 };
constexpr int kPayloadBits = 61;
constexpr std::uint64_t kPayload = (std::uint64_t{1} << kPayloadBits) - 1;
constexpr std::int64_t kLargest = std::int64_t{1} << (kPayloadBits - 2);

constexpr int kBlockBits = 16;
constexpr std::size_t kBlock = std::size_t{1} << kBlockBits;  // bytes of a block, and one more than the longest text

constexpr DateStamp kLastStamp = 2'958'465LL * 86'400 + 86'399;  // 9999/12/31 23:59:59

CellStore::Cell Make(Kind kind, std::uint64_t payload) {
  return static_cast<std::uint64_t>(kind) << kPayloadBits | (payload & kPayload);
}
Kind KindOf(CellStore::Cell cell) { return static_cast<Kind>(cell >> kPayloadBits); }
std::int64_t Signed(CellStore::Cell cell) { return static_cast<std::int64_t>(cell << 3) >> 3; }
bool Fits(std::int64_t number) { return number > -kLargest && number < kLargest; }

std::optional<std::int64_t> ParsePadded(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (text.size() < 10 || text.size() > 20 || start == std::string_view::npos) return std::nullopt;
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + start, end, number);
  if (error != std::errc() || stop != end || PadNumber(number) != text) return std::nullopt;
  return number;
}

CellStore::Cell TryNumber(std::string_view text) {
  const std::optional<std::int64_t> number = ParsePadded(text);
  if (!number || !Fits(*number)) return CellStore::kAbsent;
  return Make(Kind::Number, static_cast<std::uint64_t>(*number));
}

CellStore::Cell TryStamp(std::string_view text) {
  if (text.size() != 19 || text[4] != '/') return CellStore::kAbsent;
  const std::optional<DateStamp> stamp = ParseStamp(text);
  if (!stamp || FormatStamp(*stamp) != text) return CellStore::kAbsent;
  return Make(Kind::Stamp, static_cast<std::uint64_t>(*stamp));
}

}  // namespace

CellStore::Cell CellStore::Pack(const CellValue& value, Texts texts) {
  if (const auto* padded = std::get_if<PaddedNumber>(&value)) {
    if (Fits(padded->number)) return Make(Kind::Number, static_cast<std::uint64_t>(padded->number));
    return PackText(PadNumber(padded->number), texts);
  }
  if (const auto* date = std::get_if<StampText>(&value)) {
    // Outside these bounds several stamps may share one text; the text decides which of them is kept.
    if (date->stamp >= kZeroDate && date->stamp <= kLastStamp) {
      return Make(Kind::Stamp, static_cast<std::uint64_t>(date->stamp));
    }
    return PackText(FormatStamp(date->stamp), texts);
  }
  return PackText(std::get<std::string_view>(value), texts);
}

CellStore::Cell CellStore::PackText(std::string_view text, Texts texts) {
  if (texts == Texts::Own) return text.size() < kBlock ? PackOwn(text) : PackShared(text);
  if (const Cell number = TryNumber(text); number != kAbsent) return number;
  if (const Cell stamp = TryStamp(text); stamp != kAbsent) return stamp;
  return PackShared(text);
}

CellStore::Cell CellStore::PackOwn(std::string_view text) {
  if (blocks_.empty() || text.size() > kBlock - used_) {
    blocks_.push_back(std::make_unique<char[]>(kBlock));
    used_ = 0;
  }
  if (!text.empty()) std::memcpy(blocks_.back().get() + used_, text.data(), text.size());
  // An offset that equals the size of a block belongs to an empty text and may as well be any other.
  const std::uint64_t offset = text.empty() ? 0 : used_;
  used_ += text.size();
  return Make(Kind::Own, (blocks_.size() - 1) << (2 * kBlockBits) | offset << kBlockBits | text.size());
}

CellStore::Cell CellStore::PackShared(std::string_view text) {
  auto found = sharedIndex_.find(text);
  if (found == sharedIndex_.end()) {
    shared_.emplace_back(text);
    found = sharedIndex_.emplace(shared_.back(), static_cast<std::uint32_t>(shared_.size() - 1)).first;
  }
  return Make(Kind::Shared, found->second);
}

std::string_view CellStore::View(Cell cell, std::string& scratch) const {
  const std::uint64_t payload = cell & kPayload;
  switch (KindOf(cell)) {
    case Kind::Absent:
      return {};
    case Kind::Own:
      return {blocks_[payload >> (2 * kBlockBits)].get() + (payload >> kBlockBits & (kBlock - 1)),
              payload & (kBlock - 1)};
    case Kind::Shared:
      return shared_[payload];
    case Kind::Number:
      return scratch = PadNumber(Signed(cell));
    case Kind::Stamp:
      return scratch = FormatStamp(Signed(cell));
  }
  return {};
}

bool CellStore::Same(Cell a, Cell b) const {
  if (a == b) return true;
  // Two cells of one of these kinds have one text only if they are one cell.
  if (KindOf(a) == KindOf(b) && KindOf(a) != Kind::Own) return false;
  std::string scratchA;
  std::string scratchB;
  return View(a, scratchA) == View(b, scratchB);
}

std::optional<std::int64_t> CellStore::Number(Cell cell) const {
  if (KindOf(cell) == Kind::Stamp) return std::nullopt;
  if (const auto number = KeptNumber(cell)) return number;
  std::string scratch;
  return ParsePadded(View(cell, scratch));
}

std::optional<std::int64_t> CellStore::KeptNumber(Cell cell) {
  if (KindOf(cell) != Kind::Number) return std::nullopt;
  return Signed(cell);
}

std::optional<DateStamp> CellStore::Stamp(Cell cell) {
  if (KindOf(cell) != Kind::Stamp) return std::nullopt;
  return Signed(cell);
}

bool CellStore::IsShared(Cell cell) { return KindOf(cell) != Kind::Own; }

void CellStore::Clear() {
  blocks_.clear();
  used_ = 0;
  sharedIndex_.clear();
  shared_.clear();
}

}  // namespace tresmor
