#include "cli/typed_path.h"

#include "base/path.h"
#include "cli/options.h"

namespace tresmor {

std::string TypedPath(const std::string& typed, const std::string& workingFolder) {
  if (typed.starts_with('/')) return typed;
  if (workingFolder.empty()) throw WrongUse("Path '" + typed + "' does not exist: the working folder is gone.");
  return AddTail(workingFolder, "/") + typed;
}

}  // namespace tresmor
