#include "platform/posix/posix_file_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include "platform/posix/file_attributes.h"
#include "platform/posix/regular_file.h"

namespace tresmor {

namespace {

constexpr std::int64_t kPiece = 262144;  // that is read at once

bool SameTime(const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size && SameTime(a.st_mtim, b.st_mtim) &&
         SameTime(a.st_ctim, b.st_ctim);
}

// As much of a buffer as `length` asks for.
std::span<char> Piece(std::vector<char>& buffer, std::int64_t length) {
  buffer.resize(kPiece);
  return {buffer.data(), static_cast<std::size_t>(std::min(length, kPiece))};
}

Errors WriteFailure(int error) { return error == EFBIG ? Errors::Overflow : PathFailure(error); }

// Reading it is to leave the time of its last access alone, where that can be told.
void KeepAccessTime(int file) {
  const int flags = fcntl(file, F_GETFL);
  if (flags >= 0) fcntl(file, F_SETFL, flags | O_NOATIME);
}

FileCopy::Step Passed(std::size_t bytes) { return {static_cast<std::int64_t>(bytes), Errors::None, false}; }

}  // namespace

PosixFileCopy::PosixFileCopy(std::string from, Descriptor source, const struct stat& opened, Descriptor target)
    : from_(std::move(from)), source_(std::move(source)), opened_(opened), target_(std::move(target)) {
  KeepAccessTime(target_.Number());
}

// Where the file ends, and where the file system doesn't tell of holes, it says that there are bytes: reading tells
// better.
PosixFileCopy::Extent PosixFileCopy::ExtentAt(int file, std::int64_t at) {
  constexpr Extent kToBeRead{std::numeric_limits<std::int64_t>::max(), false};
  const off_t data = lseek(file, at, SEEK_DATA);
  if (data == at) {
    const off_t hole = lseek(file, at, SEEK_HOLE);
    return hole > at ? Extent{hole, false} : kToBeRead;
  }
  if (data < 0 && errno != ENXIO) return kToBeRead;
  const off_t end = data > at ? data : lseek(file, 0, SEEK_END);
  return end > at ? Extent{end, true} : kToBeRead;
}

// How many bytes from where `walk` is are of one kind.
std::int64_t PosixFileCopy::Ahead(Walk& walk, std::int64_t most) const {
  if (walk.at >= walk.extent.end) walk.extent = ExtentAt(source_.Number(), walk.at);
  return std::min(most, walk.extent.end - walk.at);
}

FileCopy::Step PosixFileCopy::CopyNext(std::int64_t most) {
  const std::int64_t length = Ahead(copied_, most);
  Step step{length, Errors::None, false};
  if (!copied_.extent.hole) {
    step = CopyBytes(length);
  } else if (ftruncate(target_.Number(), copied_.at + length) != 0) {
    step = {0, WriteFailure(errno), false};
  }
  copied_.at += step.bytes;
  return step;
}

// The kernel shares the blocks of both files where the file system can. Whatever keeps it from copying, or if there is
// nothing left, reading and writing tell what it is and which of the files it is about.
FileCopy::Step PosixFileCopy::CopyBytes(std::int64_t length) {
  while (kernelCopies_) {
    off_t from = copied_.at;
    off_t to = copied_.at;
    const ssize_t passed =
        copy_file_range(source_.Number(), &from, target_.Number(), &to, static_cast<std::size_t>(length), 0);
    if (passed > 0) return Passed(static_cast<std::size_t>(passed));
    kernelCopies_ = passed < 0 && errno == EINTR;
  }
  return ReadAndWrite(length);
}

FileCopy::Step PosixFileCopy::ReadAndWrite(std::int64_t length) {
  const std::span<char> piece = Piece(buffer_, length);
  const FileReader::Result result = ReadFully(source_.Number(), copied_.at, piece);
  if (result.failure != Errors::None) return {0, result.failure, true};
  if (!WriteFully(target_.Number(), copied_.at, {piece.data(), result.got})) return {0, WriteFailure(errno), false};
  return Passed(result.got);
}

Errors PosixFileCopy::TakeAttributes() { return CopyAttributes(source_.Number(), opened_, target_.Number()); }

Errors PosixFileCopy::Flush() { return fsync(target_.Number()) == 0 ? Errors::None : PathFailure(errno); }

FileCopy::Step PosixFileCopy::CompareNext(std::int64_t most) {
  // What the disk holds is to be compared and not what memory does.
  if (compared_.at == 0) posix_fadvise(target_.Number(), 0, 0, POSIX_FADV_DONTNEED);
  std::int64_t length = Ahead(compared_, most);
  bool holes = compared_.extent.hole;
  if (holes) {
    const Extent other = ExtentAt(target_.Number(), compared_.at);
    length = std::min(length, other.end - compared_.at);
    holes = other.hole;
  }
  const Step step = holes ? Step{length, Errors::None, false} : CompareBytes(length);
  compared_.at += step.bytes;
  return step;
}

FileCopy::Step PosixFileCopy::CompareBytes(std::int64_t length) {
  const std::span<char> piece = Piece(buffer_, length);
  const std::span<char> other = Piece(otherBuffer_, length);
  const FileReader::Result ours = ReadFully(source_.Number(), compared_.at, piece);
  if (ours.failure != Errors::None) return {0, ours.failure, true};
  const FileReader::Result theirs = ReadFully(target_.Number(), compared_.at, other);
  if (theirs.failure != Errors::None) return {0, theirs.failure, false};
  const bool same = std::string_view(piece.data(), ours.got) == std::string_view(other.data(), theirs.got);
  return same ? Passed(ours.got) : Step{0, Errors::Device, false};
}

bool PosixFileCopy::SourceUnchanged() const {
  struct stat opened {};
  struct stat there {};
  const ShortPath at(from_);
  return at.Failure() == Errors::None && fstatat(at.Folder(), at.Rest(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
         fstat(source_.Number(), &opened) == 0 && SameFile(opened_, there) && SameFile(opened_, opened);
}

bool PosixFileCopy::StandsAt(const std::string& path) const {
  struct stat own {};
  struct stat there {};
  const ShortPath at(path);
  return at.Failure() == Errors::None && fstatat(at.Folder(), at.Rest(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
         fstat(target_.Number(), &own) == 0 && own.st_dev == there.st_dev && own.st_ino == there.st_ino;
}

}  // namespace tresmor
