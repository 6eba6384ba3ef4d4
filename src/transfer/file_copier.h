// Copies one file so that neither it nor anything else is lost, whenever that is broken off.
//
// The copy grows under a hidden name of its own beside its place. Only when it is whole, was flushed, and the source is
// still the file that was copied, is it given its name, and that is flushed too. For a move it is read again before and
// has to be equal; only after all that, and if the copy is still what stands in its place, the source is removed.
// Whatever fails before takes the copy away again. What killed programs left of theirs goes when it is in the way.
//
// On file systems that can't give a name without replacing what has it, the copy grows in its place from the beginning;
// a program that is killed then may leave a part of it there, with the source untouched.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_changes.h"
#include "platform/file_system.h"
#include "transfer/destination.h"
#include "transfer/place_picker.h"

namespace tresmor {

// Who wants a copy, and knows its place.
class CopyClient : public PlacePicker {
 public:
  // So many more bytes were copied, fewer than none if it has to begin again, or none while they are read again. False
  // ends it.
  virtual bool Passed(std::int64_t bytes) = 0;
  // The copy is in its place and the source about to be removed.
  virtual Trouble BeforeRemoval() = 0;
};

enum class AfterCopy { KeepSource, RemoveSource };

// One thread.
class FileCopier {
 public:
  FileCopier(const FileSystem& files, FileChanges& changes, Destination& destination)
      : files_(files), changes_(changes), destination_(destination) {}

  // `from` must be a regular file, and `folder`, which the client's places lie in, one that was entered.
  Trouble Copy(const std::string& from, const std::string& folder, AfterCopy after, CopyClient& client);

 private:
  struct Job;
  enum class Begin { Hidden, AtItsPlace };
  std::string HiddenPath(const std::string& folder, std::int64_t number) const;
  bool RemoveAbandoned(const std::string& folder);
  Trouble BeginHidden(Job& job);
  Trouble BeginAtItsPlace(Job& job);
  Trouble Fill(Job& job) const;
  Trouble Compare(Job& job) const;
  Trouble Place(Job& job);
  Trouble Finish(Job& job);
  Trouble RemoveSource(const Job& job);
  Trouble Carry(Job& job, Begin begin);
  Trouble Try(Job& job, Begin begin);

  const FileSystem& files_;
  FileChanges& changes_;
  Destination& destination_;
  std::int64_t nextHidden_ = 1;
};

}  // namespace tresmor
