#pragma once

#include "platform/event_queue.h"
#include "platform/file_writer.h"

namespace tresmor {

// Writes by another writer, with which the interface thread answers events while a slow disk takes the bytes. That
// thread alone calls it, in an action.
class JobFileWriter final : public FileWriter {
 public:
  JobFileWriter(const FileWriter& writer, EventQueue& events) : writer_(writer), events_(events) {}

  Errors Replace(const std::string& path, std::string_view bytes) const override;
  Errors MakeFolder(const std::string& folder) const override { return writer_.MakeFolder(folder); }
  std::unique_ptr<FileLock> Lock(const std::string& path) const override { return writer_.Lock(path); }

 private:
  const FileWriter& writer_;
  EventQueue& events_;
};

}  // namespace tresmor
