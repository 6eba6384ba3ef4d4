// Finding a place for something that is moved while others take places too.
#pragma once

#include <string>

#include "platform/file_changes.h"
#include "transfer/trouble.h"

namespace tresmor {

// Who knows where something is to go.
class PlacePicker {
 public:
  virtual ~PlacePicker() = default;
  virtual const std::string& Place() const = 0;
  // The name can't be had, since something else has it by now or the disk doesn't take it, as `failure` tells
  // (IsOfName): picks another place and notes it, or says why not.
  virtual Trouble PickAnother(Errors failure) = 0;
};

// Renames `what` to the place, or to another one as long as its name can't be had. Where the picker gave up, why is in
// `trouble`; other failures are left to the caller.
inline Errors RenameToPlace(FileChanges& changes, const std::string& what, PlacePicker& picker, Trouble& trouble) {
  for (;;) {
    const Errors failure = changes.Rename(what, picker.Place());
    if (!IsOfName(failure)) return failure;
    trouble = picker.PickAnother(failure);
    if (trouble) return failure;
  }
}

}  // namespace tresmor
