// Reads the version that a program file bears in its resources.
#pragma once

#include <optional>
#include <string>

#include "platform/file_system.h"
#include "platform/version_reader.h"
#include "results/version_text.h"

namespace tresmor {

class PeVersionReader final : public VersionReader {
 public:
  // `files` outlives it.
  explicit PeVersionReader(const FileSystem& files) : files_(files) {}

  // As VersionText writes it. Opens the file each time.
  std::string GetFileVer(const std::string& path, const StopToken& stop) const override;

 private:
  const FileSystem& files_;
};

// The fixed part of the version resource of a program or library: 32-bit and 64-bit images, and the 16-bit ones of old.
// Of several version resources the first one in the directory counts, in its first language. None for a file that has
// none or isn't an image, and for one that is damaged: nothing in it is trusted, and reading takes a bounded number of
// reads of bounded length, all within the file as long as it was when it was opened.
std::optional<VS_FIXEDFILEINFO> ReadFixedFileInfo(FileReader& file);

}  // namespace tresmor
