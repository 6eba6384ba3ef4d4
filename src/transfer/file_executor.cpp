#include "transfer/file_executor.h"

#include <chrono>
#include <memory>
#include <utility>

#include "transfer/delete_file.h"
#include "transfer/operation_run.h"
#include "transfer/transfer_file.h"
#include "transfer/trash_file.h"

namespace tresmor {

namespace {

std::unique_ptr<PathOperation> MakeOperation(const ShFileOpStruct& operation, const TransferTools& tools,
                                             const OperationPlan& plan, OperationRun& run,
                                             std::shared_ptr<EnteredFolders> entered) {
  const Passed passed = [&run](std::int64_t bytes) { return run.Passed(bytes); };
  if (operation.wFunc == FO_DELETE && operation.fFlags & FOF_ALLOWUNDO) {
    return std::make_unique<TrashFile>(tools, passed);
  }
  if (operation.wFunc == FO_DELETE) return std::make_unique<DeleteFile>(tools);
  const AfterCopy after = operation.wFunc == FO_COPY ? AfterCopy::KeepSource : AfterCopy::RemoveSource;
  const UndoNotes notes = operation.wFunc == FO_RENAME ? UndoNotes::None : UndoNotes::Keep;
  const OnCollision onCollision = operation.fFlags & FOF_RENAMEONCOLLISION ? OnCollision::Rename : OnCollision::Fail;
  return std::make_unique<TransferFile>(tools, after, plan.base, onCollision, notes, std::move(entered), passed);
}

}  // namespace

std::int64_t SystemSeconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

FileExecutor::FileExecutor(const FileSystem& files, FileChanges& changes, TrashPlaces& trash, UndoLog& log,
                           std::function<std::int64_t()> now)
    : names_(files.Style()), tools_{files, changes, trash, log, names_, std::move(now)} {}

// What all operations of a step have in common.
class FileExecutor::Step final : public OpenUndoStep {
 public:
  Step(UndoLog& log, std::shared_ptr<EnteredFolders> entered) : log_(log), entered_(std::move(entered)) {}

 private:
  const UndoLog::Use log_;
  const std::shared_ptr<EnteredFolders> entered_;
};

std::unique_ptr<OpenUndoStep> FileExecutor::BeginUndoStep() {
  tools_.log.Begin();
  auto entered = std::make_shared<EnteredFolders>();
  ofStep_ = entered;
  return std::make_unique<Step>(tools_.log, std::move(entered));
}

OperationResult FileExecutor::ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) {
  const OperationPlan plan = MakePlan(operation, tools_.files.Style());
  if (plan.trouble) return {plan.trouble.code, "Nothing was done: " + plan.trouble.reason + "."};
  if (operation.wFunc == FO_DELETE && (operation.fFlags & FOF_ALLOWUNDO) == 0) tools_.log.GoOn();
  const bool asks = operation.wFunc == FO_DELETE && (operation.fFlags & FOF_NOCONFIRMATION) == 0;
  if (asks && !watch.Confirm(operation, static_cast<std::int64_t>(plan.items.size()))) {
    return {OperationCode::Cancelled, "Cancelled: nothing was deleted."};
  }
  OperationRun run(tools_, plan, watch);
  auto entered = ofStep_.lock();
  if (!entered) entered = std::make_shared<EnteredFolders>();
  return run.Run(*MakeOperation(operation, tools_, plan, run, std::move(entered)));
}

}  // namespace tresmor
