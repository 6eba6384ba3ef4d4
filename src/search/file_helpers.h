// Small questions to the file system, shared by all that work on files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/date.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"

namespace tresmor {

// Looks at an entry of a folder that was to be opened. Where `folder` is null, `failure` tells why; if it was for want
// of descriptors, the way by path, which needs none, is left.
Errors StatEntry(const FileSystem& files, const Folder* folder, Errors failure, const std::string& path,
                 std::string_view name, FileStat& stat);

// Last write on the UTC clock. The zero date for a file that is hidden, gone, no regular file or can't be told.
DateStamp GetFileDate(const FileSystem& files, const std::string& path);
DateStamp GetFileDate(const Folder& folder, std::string_view name);

// Whether a file stands there that is no folder. The name is taken exactly: '*' and '?' are ordinary characters. A file
// that can't be asked for, as on a disk that fails or in a folder that may not be entered, counts as there: gone is
// only one that isn't found, or whose way has no folder any more where it had one.
bool ExistsFile(const FileSystem& files, const std::string& path);
// A file or a folder; false for an empty path.
bool ExistsPath(const FileSystem& files, const std::string& path);
// Whether a folder holds no file, link, socket or other entry that is no folder; sub-folders do not count.
bool IsEmptyDir(const FileSystem& files, const std::string& folder);

// The box that tells that a file's length could not be read. None for the failures that stay silent (a file that is
// gone or has a bad name).
std::optional<BoxText> LengthFailureText(Errors failure, const std::string& path);

}  // namespace tresmor
