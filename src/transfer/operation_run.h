// One operation from the first path to the last: what is done is noted for some paths at a time, progress is told, a
// cancel noticed, and failures are made one result of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/file_operations.h"
#include "transfer/path_operation.h"

namespace tresmor {

// Lives for one operation.
class OperationRun {
 public:
  OperationRun(const TransferTools& tools, const OperationPlan& plan, OperationWatch& watch);

  OperationResult Run(PathOperation& operation);
  // So many bytes more were copied. False: cancelled.
  bool Passed(std::int64_t bytes);

 private:
  struct Step {
    Task task;
    Trouble trouble;
    bool noted = false;  // in the undo log
    bool begun = false;
  };
  void Measure();
  std::vector<Step> NextSteps(PathOperation& operation);
  void Prepare(Step& step, PathOperation& operation);
  void Note(std::vector<Step>& steps);
  Trouble LookAgain(const Task& task) const;
  void Perform(Step& step, PathOperation& operation);
  void Count(const Step& step, std::int64_t bytes);
  bool HasStayed(const Step& step) const;
  void Withdraw(const std::vector<Step>& steps);
  bool WentWithItsFolder(const std::string& path) const;
  bool Cancelled();
  OperationResult Result(const PathOperation& operation) const;

  const TransferTools& tools_;
  const UndoLog::Use log_{tools_.log};
  const OperationPlan& plan_;
  OperationWatch& watch_;
  OperationProgress progress_;
  std::vector<bool> folders_;  // which of the items are
  std::size_t next_ = 0;
  std::unordered_set<std::string> goneFolders_;
  Trouble first_;
  std::string firstPath_;
  std::int64_t othersFailed_ = 0;
  bool cancelled_ = false;
};

}  // namespace tresmor
