// Copies one file so that neither it nor anything else is lost, whenever that is broken off.
//
// The copy grows under a hidden name of its own beside its place. Only when it is whole, was flushed, was read again
// and found equal, and the source is still the file that was copied, is it given its name, and that is flushed too.
// Only then a source that is moved is removed. Whatever fails before takes the copy away again.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_changes.h"
#include "platform/file_system.h"
#include "transfer/destination.h"
#include "transfer/trouble.h"

namespace tresmor {

// Who wants a copy.
class CopyClient {
 public:
  virtual ~CopyClient() = default;
  // So many more bytes were copied, or none while they are read again. False ends it.
  virtual bool Passed(std::int64_t bytes) = 0;
  // Gives the whole copy its name in the folder, which goes into `placed`.
  virtual Trouble Place(const std::string& part, std::string& placed) = 0;
  // The copy is in its place and the source about to be removed.
  virtual Trouble BeforeRemoval(const std::string& placed) = 0;
};

enum class AfterCopy { KeepSource, RemoveSource };

// One thread.
class FileCopier {
 public:
  FileCopier(const FileSystem& files, FileChanges& changes, Destination& destination)
      : files_(files), changes_(changes), destination_(destination) {}

  // `from` must be a regular file, and `folder` one that was entered.
  Trouble Copy(const std::string& from, const std::string& folder, AfterCopy after, CopyClient& client);

 private:
  struct Job;
  Trouble Begin(Job& job);
  Trouble Fill(Job& job) const;
  Trouble Compare(Job& job) const;
  Trouble Finish(Job& job);
  Trouble RemoveSource(Job& job);

  const FileSystem& files_;
  FileChanges& changes_;
  Destination& destination_;
  std::int64_t nextPart_ = 1;
};

}  // namespace tresmor
