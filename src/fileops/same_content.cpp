#include "fileops/same_content.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tresmor {
namespace {

constexpr std::int64_t kMostBytes = 1 << 20;

bool ReadsWhole(FileReader& reader, std::int64_t offset, std::span<char> into) {
  const FileReader::Result result = reader.ReadAt(offset, into);
  return result.failure == Errors::None && result.got == into.size();
}

}  // namespace

bool SameContent(const FileSystem& files, const std::string& a, const std::string& b,
                 const std::function<bool()>& stop) {
  Errors failure = Errors::None;
  const auto first = files.Open(a, failure);
  const auto second = files.Open(b, failure);
  if (!first || !second || first->Size() != second->Size()) return false;
  const std::int64_t size = first->Size();
  std::vector<char> ofFirst(static_cast<std::size_t>(std::min(size, kMostBytes)));
  std::vector<char> ofSecond(ofFirst.size());
  for (std::int64_t offset = 0; offset < size; offset += kMostBytes) {
    if (stop()) return false;
    const auto length = static_cast<std::size_t>(std::min(size - offset, kMostBytes));
    const std::span<char> one(ofFirst.data(), length);
    const std::span<char> other(ofSecond.data(), length);
    if (!ReadsWhole(*first, offset, one) || !ReadsWhole(*second, offset, other)) return false;
    if (!std::equal(one.begin(), one.end(), other.begin())) return false;
  }
  return true;
}

}  // namespace tresmor
