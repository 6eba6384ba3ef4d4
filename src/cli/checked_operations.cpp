#include "cli/checked_operations.h"

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <utility>
#include <vector>

#include "transfer/operation_plan.h"

namespace tresmor {
namespace {

// Tells of one path as part of all.
class PartWatch final : public OperationWatch {
 public:
  explicit PartWatch(OperationWatch& watch) : watch_(watch) {}

  void Begin(const std::string& path) {
    before_ = latest_;
    latest_.path = path;
    watch_.Progress(latest_);
  }
  bool Confirm(const ShFileOpStruct& operation, std::int64_t count) override {
    return watch_.Confirm(operation, count);
  }
  void Progress(const OperationProgress& progress) override {
    latest_.files = before_.files + progress.files;
    latest_.bytes = before_.bytes + progress.bytes;
    watch_.Progress(latest_);
  }
  bool Cancelled() override { return watch_.Cancelled(); }

  OperationProgress& Latest() { return latest_; }

 private:
  OperationWatch& watch_;
  OperationProgress before_;  // what was done before this path
  OperationProgress latest_;
};

// The results of all paths as that of one operation.
class OneResult {
 public:
  void Add(OperationResult result) {
    cancelled_ = cancelled_ || result.code == OperationCode::Cancelled;
    if (result.code == OperationCode::Done || result.code == OperationCode::Cancelled) return;
    if (first_.code != OperationCode::Done) ++more_;
    if (first_.code == OperationCode::Done) first_ = std::move(result);
  }
  // Some had no turn.
  void Leave() { cancelled_ = true; }
  OperationResult Result(const std::string& cancelText) const {
    OperationResult result = first_;
    if (more_ > 0) result.description += " " + std::to_string(more_) + " more failed too.";
    if (!cancelled_) return result;
    result.code = OperationCode::Cancelled;
    result.description.insert(0, cancelText + (result.description.empty() ? "" : " "));
    return result;
  }

 private:
  OperationResult first_;
  std::int64_t more_ = 0;
  bool cancelled_ = false;
};

std::string ListOfOne(const std::string& path) { return path + std::string(2, '\0'); }

}  // namespace

OperationResult CheckedOperations::ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) {
  const std::vector<std::string> paths = ListedPaths(operation.pFrom);
  const bool hasPlaces = (operation.fFlags & FOF_MULTIDESTFILES) != 0;
  const std::vector<std::string> places = hasPlaces ? ListedPaths(operation.pTo) : std::vector<std::string>();
  ShFileOpStruct one{operation.wFunc, "", hasPlaces ? "" : operation.pTo, operation.fFlags, operation.destination};
  PartWatch part(watch);
  part.Latest().allFiles = static_cast<std::int64_t>(paths.size());
  OneResult results;
  std::unordered_set<std::string> seen;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (!seen.insert(paths[i]).second) continue;
    if (watch.Cancelled()) {
      results.Leave();
      break;
    }
    part.Begin(paths[i]);
    if (!mayGo_(paths[i])) continue;
    if (watch.Cancelled()) {
      results.Leave();
      break;
    }
    one.pFrom = ListOfOne(paths[i]);
    if (hasPlaces) one.pTo = ListOfOne(places.at(i));
    results.Add(operations_.ShFileOperation(one, part));
  }
  const OperationProgress& done = part.Latest();
  const std::string cancelText =
      "Cancelled: " + std::to_string(done.files) + " of " + std::to_string(done.allFiles) + " were done.";
  return results.Result(cancelText);
}

}  // namespace tresmor
