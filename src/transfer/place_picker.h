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
  // Something else stands there by now: picks another place and notes it, or says why not.
  virtual Trouble PickAnother() = 0;
};

// Renames `what` to the place, or to another one as long as something stands there. Where the picker gave up, why is in
// `trouble`, and the result is FileExists; other failures are left to the caller.
inline Errors RenameToPlace(FileChanges& changes, const std::string& what, PlacePicker& picker, Trouble& trouble) {
  for (;;) {
    const Errors failure = changes.Rename(what, picker.Place());
    if (failure != Errors::FileExists) return failure;
    trouble = picker.PickAnother();
    if (trouble) return failure;
  }
}

}  // namespace tresmor
