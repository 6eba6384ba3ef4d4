#include "search/class_split.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tresmor {

namespace {

// Bytes that both begin with. Stretch by stretch, since memcmp is many times faster than a look at each byte.
std::size_t CommonLength(const char* a, const char* b, std::size_t length) {
  constexpr std::size_t kStretch = 512;
  std::size_t common = 0;
  while (length - common > kStretch && std::memcmp(a + common, b + common, kStretch) == 0) common += kStretch;
  return static_cast<std::size_t>(std::mismatch(a + common, a + length, b + common).first - a);
}

}  // namespace

// Turns the ordered contents of a piece into partings: contents side by side part in the block of their first
// difference, so the earliest such block cuts the row of contents into ways, and each way is cut further by its own.
template <class Content>
class ContentTree {
 public:
  ContentTree(const std::vector<Content*>& contents, const BlockGrid& grid, std::int64_t offset, std::int64_t behind,
              SplitOutcome& outcome)
      : contents_(contents), grid_(grid), offset_(offset), behind_(behind), outcome_(outcome) {
    for (std::size_t k = 0; k + 1 < contents.size(); ++k) {
      common_.push_back(CommonLength(contents[k]->bytes, contents[k + 1]->bytes,
                                     std::min(contents[k]->length, contents[k + 1]->length)));
    }
  }

  void Part(std::size_t from, std::size_t to) {
    if (to - from == 1) return Leaf(*contents_[from]);
    std::int64_t block = BlockOf(common_[from]);
    for (std::size_t k = from; k + 1 < to; ++k) block = std::min(block, BlockOf(common_[k]));
    for (std::size_t begin = from, end; begin < to; begin = end) {
      for (end = begin + 1; end < to && BlockOf(common_[end - 1]) > block;) ++end;
      if (end - begin == 1 && FailsWithPartner(begin) && BlockOf(contents_[begin]->length) == block) {
        Name(begin, end, block, Parting::kFailed);
      } else {
        Name(begin, end, block, ++outcome_.lastWay);
        Part(begin, end);
      }
    }
  }

 private:
  std::int64_t BlockOf(std::size_t length) const { return grid_.BlockOf(offset_ + static_cast<std::int64_t>(length)); }

  // A failure counts only if some other file has the same bytes up to it; a file that differs from all others in front
  // of its failure is known to be alone without it. What a content begins stands right behind it.
  bool FailsWithPartner(std::size_t k) const {
    const Content& content = *contents_[k];
    return content.failed && (content.files.size() > 1 || (k < common_.size() && common_[k] == content.length));
  }

  void Leaf(const Content& content) {
    if (content.files.size() < 2) return;
    if (content.failed) {
      for (int file : content.files) outcome_.partings.push_back({BlockOf(content.length), file, Parting::kFailed});
    } else {
      outcome_.goOn.push_back({content.files, behind_});
    }
  }

  void Name(std::size_t from, std::size_t to, std::int64_t block, int way) {
    for (std::size_t k = from; k < to; ++k) {
      for (int file : contents_[k]->files) outcome_.partings.push_back({block, file, way});
    }
  }

  const std::vector<Content*>& contents_;
  const BlockGrid& grid_;
  std::int64_t offset_;
  std::int64_t behind_;  // offset of the next piece
  SplitOutcome& outcome_;
  std::vector<std::size_t> common_;  // bytes that contents k and k + 1 share
};

ClassSplit::ClassSplit(std::size_t bytes) : bytes_(bytes), buffer_(std::make_unique_for_overwrite<char[]>(bytes_)) {}

void ClassSplit::Split(const FileClass& fileClass, const BlockGrid& grid, std::size_t piece, OpenFiles& files,
                       SplitOutcome& outcome) {
  piece = std::min(piece, std::max<std::size_t>(bytes_ / (fileClass.files.size() + 1), 1));
  piece = std::min(piece, static_cast<std::size_t>(grid.end - fileClass.offset));
  ReadAll(fileClass, piece, files);
  for (const Content* content : ordered_) {
    if (content->files.size() > 1 && !content->failed) continue;
    for (int file : content->files) files.Close(file);
  }
  ContentTree<Content> tree(ordered_, grid, fileClass.offset, fileClass.offset + static_cast<std::int64_t>(piece),
                            outcome);
  tree.Part(0, ordered_.size());
}

void ClassSplit::ReadAll(const FileClass& fileClass, std::size_t piece, OpenFiles& files) {
  contents_.resize(std::max(contents_.size(), fileClass.files.size()));
  ordered_.clear();
  latest_ = 0;
  for (int file : fileClass.files) {
    Content& content = contents_[ordered_.size()];
    char* const bytes = buffer_.get() + ordered_.size() * piece;
    const auto read = files.Read(file, fileClass.offset, {bytes, piece});
    content.bytes = bytes;
    content.length = read.got;
    content.failed = read.failed;
    latest_ = PlaceOf(content);
    const bool known = latest_ < ordered_.size() && Compare(*ordered_[latest_], content) == 0;
    if (!known) {
      content.files.clear();
      ordered_.insert(ordered_.begin() + static_cast<std::ptrdiff_t>(latest_), &content);
    }
    ordered_[latest_]->files.push_back(file);
  }
}

int ClassSplit::Compare(const Content& a, const Content& b) {
  const int bytes = std::memcmp(a.bytes, b.bytes, std::min(a.length, b.length));
  if (bytes != 0) return bytes;
  if (a.length != b.length) return a.length < b.length ? -1 : 1;
  return static_cast<int>(b.failed) - static_cast<int>(a.failed);
}

// The first place whose content isn't in front of `content`.
std::size_t ClassSplit::PlaceOf(const Content& content) const {
  if (latest_ < ordered_.size() && Compare(*ordered_[latest_], content) == 0) return latest_;
  const auto place = std::partition_point(ordered_.begin(), ordered_.end(),
                                          [&](const Content* known) { return Compare(*known, content) < 0; });
  return static_cast<std::size_t>(place - ordered_.begin());
}

}  // namespace tresmor
