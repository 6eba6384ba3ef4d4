#include "fileops/file_commands.h"

#include <string>

#include "results/marks.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

bool HasMark(const ListView& lst) {
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (lst.Checked(row)) return true;
  }
  return false;
}

}  // namespace

FileCommands::FileCommands(ResultLists& results, PreviewPane& preview, const FileCommandPorts& ports)
    : results_(results),
      ports_(ports),
      inDialog_(ports.transfer.dialogs),
      job_(frmFileProgress, ports.events, ports.transfer.dialogs),
      transfer_(job_, preview, ports.transfer) {
  const auto inDialog = [this](auto&& action) {
    return [this, action] {
      if (frmFileOper.Visible()) inDialog_.Run(action);
    };
  };
  frmFileOper.cmdBrowse.OnClick = inDialog([this] { Browse(); });
  frmFileOper.OKButton.OnClick = inDialog([this] { Ok(); });
  frmFileOper.CancelButton.OnClick = inDialog([this] { frmFileOper.Visible = false; });
}

void FileCommands::DelFile() { Gate("deletion", &FileCommands::DelFiles); }
void FileCommands::MoveFile() { Gate("moving files", &FileCommands::MoveFiles); }
void FileCommands::CopyFile() { Gate("copying files", &FileCommands::CopyFiles); }

void FileCommands::Gate(const char* what, void (FileCommands::*showDialog)()) {
  const ListView& lst = results_.Shown();
  if (lst.Count() == 0) return;
  if (HasMark(lst)) {
    (this->*showDialog)();
  } else {
    ports_.transfer.dialogs.MessageBox("Please mark files before " + std::string(what) + ".", BoxIcon::None, "",
                                       BoxButtons::Ok);
  }
}

void FileCommands::DelFiles() { ShowDialog(kDeleteMode); }
void FileCommands::MoveFiles() { ShowDialog(kMoveMode); }
void FileCommands::CopyFiles() { ShowDialog(kCopyMode); }

void FileCommands::ShowDialog(std::int32_t mode) {
  asked_ = results_.ShownKind();
  frmFileOper.SetOperMode(mode, GetPrevList(results_));
  frmFileOper.Visible = true;
  ports_.forms.ShowModal(frmFileOper);
}

void FileCommands::Browse() {
  std::string& destPath = frmFileOper.DestPath;
  if (destPath.empty()) destPath = ports_.transfer.shell.FirstFolder();
  const auto folder = ports_.transfer.dialogs.BrowseFolder("Select destination folder", destPath);
  if (!folder) return;
  destPath = *folder;
  frmFileOper.txtDestination.Text = *folder;
}

void FileCommands::Ok() {
  frmFileOper.DestPath = frmFileOper.txtDestination.Text();
  ListView& lst = results_.List(asked_);
  switch (frmFileOper.OperMode) {
    case kDeleteMode:
      return DoDelete(lst);
    case kMoveMode:
      return DoMove(lst);
    case kCopyMode:
      return DoCopy(lst);
  }
}

void FileCommands::DoDelete(ListView& lst) {
  const bool yesToAll = frmFileOper.chkYesToAll.Ticked();
  const auto step = ports_.transfer.operations.BeginUndoStep();
  transfer_.TransferMarked(lst,
                           {.wFunc = FO_DELETE, .bUndo = frmFileOper.optRecycleBin.Value(), .bYesToAll = yesToAll});
  if (frmFileOper.chkRemoveEmptyDir.Ticked()) transfer_.RmEmptyDirs(lst, {}, yesToAll);
  Prune(lst);
  frmFileOper.Visible = false;
}

void FileCommands::DoMove(ListView& lst) {
  if (!HasDestination("Destination path does not exist, please select a destination folder by clicking Browse button."))
    return;
  const auto step = ports_.transfer.operations.BeginUndoStep();
  const std::int32_t rc = TransferTo(lst, FO_MOVE);
  if (frmFileOper.chkRemoveEmptyDir.Ticked()) {
    transfer_.RmEmptyDirs(lst, {frmFileOper.DestPath, frmFileOper.chkDirStruct.Ticked()},
                          frmFileOper.chkYesToAll.Ticked());
  }
  FinishAtDestination(lst, rc);
}

void FileCommands::DoCopy(ListView& lst) {
  if (!HasDestination("Please select a destination folder by clicking Browse button.")) return;
  const auto step = ports_.transfer.operations.BeginUndoStep();
  FinishAtDestination(lst, TransferTo(lst, FO_COPY));
}

bool FileCommands::HasDestination(const char* complaint) {
  if (ExistsPath(ports_.transfer.files, frmFileOper.DestPath)) return true;
  ports_.transfer.dialogs.MessageBox(complaint, BoxIcon::Exclamation, "", BoxButtons::Ok);
  frmFileOper.txtDestination.SetFocus();
  return false;
}

std::int32_t FileCommands::TransferTo(const ListView& lst, std::uint32_t wFunc) {
  return transfer_.TransferMarked(lst, {.wFunc = wFunc,
                                        .bDirStruct = frmFileOper.chkDirStruct.Ticked(),
                                        .bYesToAll = frmFileOper.chkYesToAll.Ticked(),
                                        .destPath = frmFileOper.DestPath});
}

void FileCommands::FinishAtDestination(ListView& lst, std::int32_t rc) {
  Prune(lst);
  if (rc == 0 && frmFileOper.chkOpenDestDir.Ticked()) ports_.transfer.shell.ShellOpen(frmFileOper.DestPath);
  frmFileOper.Visible = false;
}

void FileCommands::Prune(ListView& lst) { PruneMissing(lst, ports_.transfer.files, ports_.events); }

}  // namespace tresmor
