// An open file made of bytes, for who reads files that nobody vouches for. It notes how much was read, and where.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "platform/file_system.h"

namespace tresmor::tests {

class BytesReader final : public FileReader {
 public:
  explicit BytesReader(std::string bytes) : bytes_(std::move(bytes)) {}

  std::int64_t Size() const override { return static_cast<std::int64_t>(bytes_.size()); }
  Result ReadAt(std::int64_t offset, std::span<char> into) override {
    if (offset < 0 || offset > Size() - static_cast<std::int64_t>(into.size())) readOutside = true;
    if (offset < 0 || offset > Size() || reads == wholeReads) return {};
    ++reads;
    const std::size_t got = std::min(into.size(), bytes_.size() - static_cast<std::size_t>(offset));
    std::copy_n(bytes_.data() + offset, got, into.data());
    bytesRead += got;
    return {got, Errors::None};
  }

  int wholeReads = std::numeric_limits<int>::max();  // after these the file is found cut down to nothing
  int reads = 0;
  std::size_t bytesRead = 0;
  bool readOutside = false;

 private:
  std::string bytes_;
};

}  // namespace tresmor::tests
