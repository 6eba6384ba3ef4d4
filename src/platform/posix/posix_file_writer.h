// Files of the program's own on this machine.
#pragma once

#include <chrono>

#include "platform/file_writer.h"

namespace tresmor {

class PosixFileWriter final : public FileWriter {
 public:
  // Who may use what it makes: whoever the user lets use new files, or the user alone.
  enum class NewFiles { AsUsual, OfTheUserAlone };

  // To be made before other threads start: the permissions of new files can only be asked for by changing them. A lock
  // that another program holds is waited for as long as `patience`.
  explicit PosixFileWriter(NewFiles newFiles = NewFiles::AsUsual,
                           std::chrono::milliseconds patience = std::chrono::seconds(3));

  Errors Replace(const std::string& path, std::string_view bytes) const override;
  Errors MakeFolder(const std::string& folder) const override;
  std::unique_ptr<FileLock> Lock(const std::string& path) const override;

 private:
  const unsigned newFileMode_;
  const unsigned newFolderMode_;
  const std::chrono::milliseconds patience_;
};

}  // namespace tresmor
