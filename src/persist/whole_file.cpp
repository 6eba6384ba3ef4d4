#include "persist/whole_file.h"

#include <memory>

#include "base/failure.h"

namespace tresmor {

std::string ReadWholeFile(const FileSystem& files, const std::string& sFileName, std::int64_t mostBytes) {
  Errors failure = Errors::None;
  const std::unique_ptr<FileReader> reader = files.Open(files.Resolved(sFileName), failure);
  if (!reader) throw Failure(failure);
  if (reader->Size() > mostBytes) throw Failure(Errors::Overflow);
  std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
  const FileReader::Result read = reader->ReadAt(0, bytes);
  if (read.failure != Errors::None) throw Failure(read.failure);
  bytes.resize(read.got);
  return bytes;
}

}  // namespace tresmor
