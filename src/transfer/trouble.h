// Why a path could not be worked on, for the result of an operation.
#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/file_operations.h"
#include "platform/file_system.h"

namespace tresmor {

struct Trouble {
  OperationCode code = OperationCode::Done;
  std::string reason;  // the end of a sentence that names the path, without its full stop
  explicit operator bool() const { return code != OperationCode::Done; }
};

// A failure that is about the path that is worked on itself.
Trouble SourceTrouble(Errors failure);
// One that is about another place, which the reason names: a folder, a disk, a file of the program.
Trouble TargetTrouble(Errors failure, std::string_view place);

// Whether it is the last name of a place that can't be had there, and another one might.
inline bool IsOfName(Errors failure) { return failure == Errors::FileExists || failure == Errors::BadFileName; }

// One of taking the place `to`: about its name, or else about the folder that it is in.
Trouble PlaceTrouble(Errors failure, const std::string& to, PathStyle style);

Trouble CancelledTrouble();

// One of giving the path that is worked on, `from`, the place `to`.
Trouble RenameTrouble(Errors failure, const FileSystem& files, const std::string& from, const std::string& to);

}  // namespace tresmor
