#include "transfer/file_copier.h"

#include "base/path.h"

namespace tresmor {

namespace {

constexpr std::int64_t kPiece = std::int64_t{8} << 20;

Trouble Changed() { return {OperationCode::Changed, "it changed while it was copied"}; }

}  // namespace

struct FileCopier::Job {
  const std::string& from;
  const std::string& folder;
  AfterCopy after;
  CopyClient& client;
  std::unique_ptr<FileCopy> copy;
  std::string path;              // of the copy
  std::int64_t bytes = 0;        // that were copied
  bool whole = false;            // in its place
  bool mustGrowInPlace = false;  // its place can't be given to it later

  Trouble StepTrouble(const FileCopy::Step& step) const {
    return step.atSource ? SourceTrouble(step.failure) : TargetTrouble(step.failure, folder);
  }
};

std::string FileCopier::HiddenPath(const std::string& folder, std::int64_t number) const {
  return JoinPath(folder, ".tresmor-" + std::to_string(number) + ".part", files_.Style());
}

// Whether the next hidden name is free now.
bool FileCopier::RemoveAbandoned(const std::string& folder) {
  const bool free = changes_.RemoveAbandoned(HiddenPath(folder, nextHidden_)) == Errors::None;
  for (std::int64_t number = nextHidden_ + 1; changes_.RemoveAbandoned(HiddenPath(folder, number)) == Errors::None;) {
    ++number;
  }
  return free;
}

Trouble FileCopier::BeginHidden(Job& job) {
  for (;;) {
    job.path = HiddenPath(job.folder, nextHidden_);
    Errors failure = Errors::None;
    bool atSource = false;
    job.copy = changes_.BeginCopy(job.from, job.path, failure, atSource);
    if (job.copy) return {};
    if (failure != Errors::FileExists || atSource) return job.StepTrouble({0, failure, atSource});
    if (!job.client.Passed(0)) return CancelledTrouble();
    if (!RemoveAbandoned(job.folder)) ++nextHidden_;  // another program at work
  }
}

Trouble FileCopier::BeginAtItsPlace(Job& job) {
  for (;;) {
    job.path = job.client.Place();
    Errors failure = Errors::None;
    bool atSource = false;
    job.copy = changes_.BeginCopy(job.from, job.path, failure, atSource);
    if (job.copy) return {};
    if (atSource) return SourceTrouble(failure);
    if (!IsOfName(failure)) return PlaceTrouble(failure, job.path, files_.Style());
    if (Trouble trouble = job.client.PickAnother(failure)) return trouble;
  }
}

Trouble FileCopier::Fill(Job& job) const {
  for (;;) {
    const FileCopy::Step step = job.copy->CopyNext(kPiece);
    if (step.failure != Errors::None) return job.StepTrouble(step);
    job.bytes += step.bytes;
    if (!job.client.Passed(step.bytes)) return CancelledTrouble();
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
    if (!job.client.Passed(0)) return CancelledTrouble();
    if (step.bytes == 0) return {};
  }
}

Trouble FileCopier::Place(Job& job) {
  Trouble trouble;
  const Errors failure = RenameToPlace(changes_, job.path, job.client, trouble);
  job.mustGrowInPlace = failure == Errors::DifferentDrive;
  if (failure == Errors::None) job.path = job.client.Place();
  return trouble ? trouble : PlaceTrouble(failure, job.client.Place(), files_.Style());
}

// What a whole copy in its place still needs.
Trouble FileCopier::Finish(Job& job) {
  job.whole = true;
  if (const Errors failure = destination_.Flush(job.folder); failure != Errors::None) {
    return TargetTrouble(failure, job.folder);
  }
  return job.after == AfterCopy::RemoveSource ? RemoveSource(job) : Trouble{};
}

Trouble FileCopier::RemoveSource(const Job& job) {
  if (Trouble trouble = job.client.BeforeRemoval()) return trouble;
  if (!job.copy->SourceUnchanged()) return Changed();
  if (!job.copy->StandsAt(job.path)) return {OperationCode::WriteFault, "its copy is no longer at " + job.path};
  if (const Errors failure = changes_.Remove(job.from); failure != Errors::None) {
    Trouble trouble = SourceTrouble(failure);
    trouble.reason = "it can't be removed from its old place: " + trouble.reason;
    return trouble;
  }
  changes_.FlushFolder(ParentOf(job.from, files_.Style()));  // a source that comes back after a crash does no harm
  return {};
}

// From the first byte of a copy that was begun to its end.
Trouble FileCopier::Carry(Job& job, Begin begin) {
  if (Trouble trouble = Fill(job)) return trouble;
  if (job.after == AfterCopy::RemoveSource) {
    if (Trouble trouble = Compare(job)) return trouble;
  }
  if (!job.copy->SourceUnchanged()) return Changed();
  if (begin == Begin::Hidden) {
    if (Trouble trouble = Place(job)) return trouble;
  }
  return Finish(job);
}

Trouble FileCopier::Try(Job& job, Begin begin) {
  Trouble trouble = begin == Begin::Hidden ? BeginHidden(job) : BeginAtItsPlace(job);
  if (trouble) return trouble;
  trouble = Carry(job, begin);
  // A source that is gone after all, whatever was reported, lives on in its copy alone.
  FileStat source;
  const bool spare = !job.whole || job.after == AfterCopy::KeepSource || files_.Stat(job.from, source) == Errors::None;
  if (trouble && spare && job.copy->StandsAt(job.path)) changes_.Remove(job.path);
  return trouble;
}

Trouble FileCopier::Copy(const std::string& from, const std::string& folder, AfterCopy after, CopyClient& client) {
  Job job{from, folder, after, client, nullptr, {}};
  Trouble trouble = Try(job, Begin::Hidden);
  if (!job.mustGrowInPlace) return trouble;
  job.copy.reset();
  if (!client.Passed(-job.bytes)) return CancelledTrouble();
  return Try(job, Begin::AtItsPlace);
}

}  // namespace tresmor
