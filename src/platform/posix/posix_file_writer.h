// Files of the program's own on this machine.
#pragma once

#include "platform/file_writer.h"

namespace tresmor {

class PosixFileWriter final : public FileWriter {
 public:
  // To be made before other threads start: the permissions of new files can only be asked for by changing them.
  PosixFileWriter();

  Errors Replace(const std::string& path, std::string_view bytes) const override;
  Errors MakeFolder(const std::string& folder) const override;

 private:
  const unsigned newFileMode_;
};

}  // namespace tresmor
