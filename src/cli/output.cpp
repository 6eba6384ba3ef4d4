#include "cli/output.h"

#include <cerrno>

namespace tresmor {

namespace {
constexpr std::size_t kPiece = 256 * 1024;
}

void Output::Write(std::string_view text) {
  if (buffer_.capacity() < kPiece) buffer_.reserve(kPiece);
  if (buffer_.size() + text.size() > kPiece) Flush();
  buffer_.append(text);
}

void Output::Flush() {
  const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), file_);
  if (written != buffer_.size() || std::fflush(file_) != 0) throw WriteFailure(errno);
  buffer_.clear();
}

}  // namespace tresmor
