#include "transfer/trash_file.h"

#include "transfer/trash_info.h"

namespace tresmor {

namespace {

constexpr std::string_view kInfoTail = ".trashinfo";
constexpr std::size_t kLongest = kLongestName - kInfoTail.size();  // so that the .trashinfo has a name too

std::string PathIn(const TrashPlace& place, std::string_view kind, std::string_view name, PathStyle style) {
  return JoinPath(JoinPath(place.folder, kind, style), name, style);
}

std::string InfoPath(const TrashPlace& place, const std::string& name, PathStyle style) {
  return PathIn(place, "info", name, style).append(kInfoTail);
}

}  // namespace

FreeNames::Wish TrashFile::WishFor(const Task& task, const TrashPlace& place) const {
  const PathStyle style = tools_.files.Style();
  return {place.folder, NumberedName(GetFileNameOf(task.item->from, style), 1, kLongest), kLongest};
}

FreeNames::Taken TrashFile::TakenIn(const TrashPlace& place) const {
  return [this, place](const std::string& name) {
    const PathStyle style = tools_.files.Style();
    FileStat stat;
    return tools_.files.Stat(PathIn(place, "files", name, style), stat) == Errors::None ||
           tools_.files.Stat(InfoPath(place, name, style), stat) == Errors::None;
  };
}

void TrashFile::ChooseName(Task& task, const TrashPlace& place, const std::string& name) const {
  task.entry.to = PathIn(place, "files", name, tools_.files.Style());
  task.entry.trashInfo = InfoPath(place, name, tools_.files.Style());
}

Trouble TrashFile::ChooseOtherName(Task& task, const TrashPlace& place, const std::string& name) const {
  ChooseName(task, place, name);
  return tools_.log.Correct(task.entry);
}

Trouble TrashFile::TroubleInTrash(const Task& task) const {
  const PathStyle style = tools_.files.Style();
  for (const TrashPlace& place : task.trash) {
    if (IsOrLiesBelow(place.folder, task.item->from, style)) {
      return {OperationCode::SameFile, "the trash itself lies in it"};
    }
    if (!place.within.empty() || IsOrLiesBelow(ParentOf(task.item->from, style), place.folder, style))
      return {OperationCode::SameFile, "it lies in the trash already"};
  }
  return {};
}

Trouble TrashFile::Prepare(Task& task) {
  TrashFailure why;
  const std::string& from = task.item->from;
  task.trash = tools_.trash.Places(from, why);
  if (task.trash.empty() && why.failure != Errors::None) return TargetTrouble(why.failure, why.at);
  if (task.trash.empty()) return {OperationCode::NoTrash, "its disk has no trash"};
  if (Trouble trouble = TroubleInTrash(task)) return trouble;
  const TrashPlace& place = task.trash.front();
  ChooseName(task, place, tools_.names.Pick(WishFor(task, place), TakenIn(place)));
  return {};
}

// Nothing is flushed here. A flush for each file would take several times as long as all the rest; and a crash of the
// machine can at worst take the .trashinfo, so that the file, which is only renamed, lies whole among the trash's
// files, or back in its old place.
//
// FileExists where another name is needed. Other failures are told in `trouble`.
Errors TrashFile::MoveWithInfo(const Task& task, const TrashPlace& place, Trouble& trouble) {
  const UndoEntry& entry = task.entry;
  const std::string info = TrashInfo(entry.from, place, tools_.now(), tools_.files.Style());
  Errors failure = tools_.changes.Create(entry.trashInfo, info);
  trouble = TargetTrouble(failure, place.folder);
  if (failure != Errors::None) return failure;
  failure = tools_.changes.Rename(entry.from, entry.to);
  if (failure == Errors::None) return failure;
  tools_.changes.Remove(entry.trashInfo);
  trouble = failure == Errors::DifferentDrive
                ? Trouble{OperationCode::NoTrash,
                          "it can't be renamed into " + place.folder + " in a way that is sure to replace nothing"}
                : RenameTrouble(failure, tools_.files, entry.from, entry.to);
  return failure;
}

Trouble TrashFile::MoveInto(Task& task, const TrashPlace& place) {
  Trouble trouble;
  while (MoveWithInfo(task, place, trouble) == Errors::FileExists) {
    if (!passed_(0)) return CancelledTrouble();
    trouble = ChooseOtherName(task, place, tools_.names.Next(WishFor(task, place), TakenIn(place)));
    if (trouble) return trouble;
  }
  return trouble;
}

Trouble TrashFile::Perform(Task& task) {
  Trouble first;
  for (const TrashPlace& place : task.trash) {
    const bool prepared = LiesBelow(task.entry.to, place.folder, tools_.files.Style());
    Trouble trouble;
    if (!prepared) {
      trouble = ChooseOtherName(task, place, tools_.names.Pick(WishFor(task, place), TakenIn(place)));
      if (trouble) return trouble;
    }
    trouble = MoveInto(task, place);
    if (!trouble || trouble.code == OperationCode::Cancelled) return trouble;
    if (!first) first = trouble;
  }
  return first;
}

}  // namespace tresmor
