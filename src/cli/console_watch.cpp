#include "cli/console_watch.h"

namespace tresmor {
namespace {

constexpr std::chrono::milliseconds kRedraw{100};

}  // namespace

bool ConsoleWatch::Confirm(const ShFileOpStruct& /*operation*/, std::int64_t /*count*/) { return false; }

void ConsoleWatch::Progress(const OperationProgress& progress) {
  latest_ = progress;
  if (!ports_.err.IsTerminal() || Clock::now() < next_) return;
  next_ = Clock::now() + kRedraw;
  ports_.err.ShowProgress(std::to_string(progress.files) + " of " + std::to_string(progress.allFiles) + "  " +
                          progress.path);
}

OperationResult ConsoleOperations::ShFileOperation(const ShFileOpStruct& operation, OperationWatch& /*watch*/) {
  cancelled_ = cancelled_ || watch_.Cancelled();
  if (cancelled_) return {};
  watch_.Begin();
  OperationResult result = operations_.ShFileOperation(operation, watch_);
  files_ += watch_.Latest().files;
  bytes_ += watch_.Latest().bytes;
  if (result.code == OperationCode::Cancelled) {
    cancelled_ = true;
    cancelText_ = result.description;
    return {};
  }
  failed_ = failed_ || result.code != OperationCode::Done;
  return result;
}

}  // namespace tresmor
