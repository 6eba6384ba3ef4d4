#include "search/tolerant_compare.h"

#include <algorithm>
#include <string_view>

#include "base/number.h"

namespace tresmor {

// A stretch of the block, held for all files at once.
struct SliceTable::Window {
  std::int64_t begin = 0;
  std::vector<std::string_view> bytes;  // by file; shorter where a file ends or fails early

  std::string_view Slice(int file, std::int64_t from, std::int64_t to) const {
    const std::string_view all = bytes[static_cast<std::size_t>(file)];
    const auto at = std::min(static_cast<std::size_t>(from - begin), all.size());
    return all.substr(at, static_cast<std::size_t>(to - from));
  }
};

void SliceTable::Read(OpenFiles& open, const std::vector<int>& files, std::size_t count, std::int64_t offset,
                      std::int64_t length) {
  slices_ = std::min<std::int64_t>(length, 100);
  const std::int64_t step = DivideRoundEven(length, slices_);
  labels_.assign(count * static_cast<std::size_t>(slices_), 0);
  failed_.assign(count, false);
  std::vector<int> whole = files;  // those that have not failed
  // Bytes before the first slice and behind the last are read as well: a failure there is a failure of the block.
  const std::int64_t share = static_cast<std::int64_t>(bytes_ / std::max<std::size_t>(files.size(), 1));
  const std::int64_t slicesAtOnce = std::clamp<std::int64_t>(share / step - 2, 1, slices_);
  std::vector<char> buffer;
  for (std::int64_t slice = 1; slice <= slices_; slice += slicesAtOnce) {
    const std::int64_t behind = std::min(slice + slicesAtOnce, slices_ + 1);
    Window window{slice == 1 ? 0 : std::min(slice * step - 1, length), {}};
    const std::int64_t end = behind > slices_ ? length : std::min(behind * step - 1, length);
    const auto size = static_cast<std::size_t>(end - window.begin);
    buffer.resize(size * files.size());
    window.bytes.resize(count);
    for (std::size_t k = 0; k < whole.size(); ++k) {
      const std::span<char> into(buffer.data() + k * size, size);
      const auto read = open.Read(whole[k], offset + window.begin, into);
      failed_[static_cast<std::size_t>(whole[k])] = read.failed;
      window.bytes[static_cast<std::size_t>(whole[k])] = {into.data(), read.got};
    }
    std::erase_if(whole, [&](int file) { return Failed(file); });
    for (std::int64_t s = slice; s < behind; ++s) {
      const std::int64_t from = std::min(s * step - 1, length);
      LabelSlice(static_cast<std::size_t>(s - 1), from, std::min(from + step, length), window, whole);
    }
  }
}

void SliceTable::LabelSlice(std::size_t slice, std::int64_t begin, std::int64_t end, const Window& window,
                            std::vector<int>& files) {
  if (begin == end || files.empty()) return;
  const auto bytes = [&](int file) { return window.Slice(file, begin, end); };
  std::sort(files.begin(), files.end(), [&](int a, int b) { return bytes(a) < bytes(b); });
  std::uint8_t label = 0;
  Label(files[0], slice) = label;
  for (std::size_t k = 1; k < files.size(); ++k) {
    if (bytes(files[k]) != bytes(files[k - 1])) ++label;
    Label(files[k], slice) = label;
  }
}

float SliceTable::FuzzyMatch(int file1, int file2) const {
  const auto row = [&](int file) {
    return labels_.begin() + static_cast<std::ptrdiff_t>(file) * static_cast<std::ptrdiff_t>(slices_);
  };
  std::int64_t hits = 0;
  for (std::ptrdiff_t s = 0; s < slices_; ++s) hits += row(file1)[s] == row(file2)[s] ? 1 : 0;
  return static_cast<float>(hits) / static_cast<float>(slices_);
}

}  // namespace tresmor
