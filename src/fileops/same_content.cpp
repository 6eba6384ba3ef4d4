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

bool IsFile(const FileSystem& files, const std::string& path, FileStat& stat) {
  return files.Stat(path, stat) == Errors::None && stat.kind == EntryKind::File;
}

bool IsStill(const FileStat& before, const FileSystem& files, const std::string& path) {
  FileStat now;
  return IsFile(files, path, now) && now.identity == before.identity && now.size == before.size &&
         now.modified == before.modified && now.changedNs == before.changedNs;
}

bool SameBytes(const FileSystem& files, const std::string& a, const std::string& b, const std::function<bool()>& stop) {
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

}  // namespace

bool SameContent(const FileSystem& files, const std::string& a, const std::string& b,
                 const std::function<bool()>& stop) {
  FileStat first;
  FileStat second;
  return IsFile(files, a, first) && IsFile(files, b, second) && SameBytes(files, a, b, stop) &&
         IsStill(first, files, a) && IsStill(second, files, b);
}

}  // namespace tresmor
