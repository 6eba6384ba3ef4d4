// What one call asks for, path by path.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/path.h"
#include "platform/file_operations.h"
#include "transfer/trouble.h"

namespace tresmor {

struct PlanItem {
  std::string from;  // without a separator at its end
  // The name that it is to get; none of both for a delete. No separator at the folder's end but for the root, and none
  // doubled and no "." or ".." below OperationPlan::base.
  std::string folder;
  std::string name;
  Trouble trouble;  // keeps it from being tried
};

struct OperationPlan {
  std::vector<PlanItem> items;  // each path once
  std::string base;             // the destination; all folders are it or lie below it
  Trouble trouble;              // keeps all from being tried
};

OperationPlan MakePlan(const ShFileOpStruct& operation, PathStyle style);

// The paths of a list, of which each has a NUL behind it and the last one two. An empty one is told like any other.
std::vector<std::string> ListedPaths(std::string_view list);

}  // namespace tresmor
