#include "transfer/file_copier.h"

#include "transfer/operation_plan.h"

namespace tresmor {

namespace {

constexpr std::int64_t kPiece = std::int64_t{8} << 20;

Trouble Cancelled() { return {OperationCode::Cancelled, "it was cancelled"}; }
Trouble Changed() { return {OperationCode::Changed, "it changed while it was copied"}; }

}  // namespace

struct FileCopier::Job {
  const std::string& from;
  const std::string& folder;
  AfterCopy after;
  CopyClient& client;
  std::unique_ptr<FileCopy> copy;
  std::string path;  // of the copy: at first its hidden name, then its place
  bool placed = false;

  Trouble StepTrouble(const FileCopy::Step& step) const {
    return step.atSource ? SourceTrouble(step.failure) : TargetTrouble(step.failure, folder);
  }
};

Trouble FileCopier::Begin(Job& job) {
  for (;; ++nextPart_) {
    job.path = JoinPath(job.folder, ".tresmor-" + std::to_string(nextPart_) + ".part", files_.Style());
    Errors failure = Errors::None;
    bool atSource = false;
    job.copy = changes_.BeginCopy(job.from, job.path, failure, atSource);
    if (job.copy) return {};
    if (failure == Errors::FileExists && !atSource) continue;  // left by a crash, or another program at work
    return job.StepTrouble({0, failure, atSource});
  }
}

Trouble FileCopier::Fill(Job& job) const {
  for (;;) {
    const FileCopy::Step step = job.copy->CopyNext(kPiece);
    if (step.failure != Errors::None) return job.StepTrouble(step);
    if (!job.client.Passed(step.bytes)) return Cancelled();
    if (step.bytes == 0) break;
  }
  Errors failure = job.copy->TakeAttributes();
  if (failure == Errors::None) failure = job.copy->Flush();
  return TargetTrouble(failure, job.folder);
}

Trouble FileCopier::Compare(Job& job) const {
  for (;;) {
    const FileCopy::Step step = job.copy->CompareNext(kPiece);
    if (step.failure != Errors::None) return job.copy->SourceUnchanged() ? job.StepTrouble(step) : Changed();
    if (!job.client.Passed(0)) return Cancelled();
    if (step.bytes == 0) return {};
  }
}

// What a whole copy still needs.
Trouble FileCopier::Finish(Job& job) {
  if (!job.copy->SourceUnchanged()) return Changed();
  std::string placed;
  if (Trouble trouble = job.client.Place(job.path, placed)) return trouble;
  job.path = placed;
  job.placed = true;
  if (const Errors failure = destination_.Flush(job.folder); failure != Errors::None) {
    return TargetTrouble(failure, job.folder);
  }
  return job.after == AfterCopy::RemoveSource ? RemoveSource(job) : Trouble{};
}

Trouble FileCopier::RemoveSource(Job& job) {
  if (Trouble trouble = job.client.BeforeRemoval(job.path)) return trouble;
  if (!job.copy->SourceUnchanged()) return Changed();
  if (const Errors failure = changes_.Remove(job.from); failure != Errors::None) {
    Trouble trouble = SourceTrouble(failure);
    trouble.reason = "it can't be removed from its old place: " + trouble.reason;
    return trouble;
  }
  changes_.FlushFolder(ParentOf(job.from, files_.Style()));  // a source that comes back after a crash does no harm
  return {};
}

Trouble FileCopier::Copy(const std::string& from, const std::string& folder, AfterCopy after, CopyClient& client) {
  Job job{from, folder, after, client, nullptr, {}, false};
  if (Trouble trouble = Begin(job)) return trouble;
  Trouble trouble = Fill(job);
  if (!trouble && after == AfterCopy::RemoveSource) trouble = Compare(job);
  if (!trouble) trouble = Finish(job);
  // A source that is gone after all, whatever was reported, lives on in its copy alone.
  FileStat source;
  const bool spare = !job.placed || after == AfterCopy::KeepSource || files_.Stat(from, source) == Errors::None;
  if (trouble && spare) changes_.Remove(job.path);
  return trouble;
}

}  // namespace tresmor
