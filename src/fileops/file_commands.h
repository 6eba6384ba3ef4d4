// The commands on marked files: the gates that the menu calls, and the dialog behind them.
#pragma once

#include "desk/action_dispatch.h"
#include "fileops/file_job.h"
#include "fileops/frm_file_oper.h"
#include "fileops/transfer_marked.h"
#include "platform/event_queue.h"
#include "results/result_lists.h"

namespace tresmor {

// The port to dialogs that are forms of this floor.
class FileForms {
 public:
  virtual ~FileForms() = default;
  // Interface thread. Shows a form that is Visible over the main window, pumping events, and returns when it isn't
  // Visible any more. Throws nothing.
  virtual void ShowModal(FrmFileOper& form) = 0;
};

struct FileCommandPorts {
  TransferPorts transfer;
  EventQueue& events;
  FileForms& forms;
};

// Interface thread.
class FileCommands {
 public:
  FileCommands(ResultLists& results, PreviewPane& preview, const FileCommandPorts& ports);
  FileCommands(const FileCommands&) = delete;
  FileCommands& operator=(const FileCommands&) = delete;

  // Actions of the main window. Without rows these do nothing; without marks a box asks for them; else the dialog comes
  // up over the marked files of the list on show, and they return when it is closed. Rows whose files have gone by then
  // have left the list. The counters are the caller's to bring up to date.
  void DelFile();
  void MoveFile();
  void CopyFile();

  // For other work on files, which the same form shows. While no command runs.
  FileJob& Job() { return job_; }

  FrmFileOper frmFileOper;
  FrmFileProgress frmFileProgress;  // its timer wants binding to the event queue

 private:
  // `what` is what files are to be marked for.
  void Gate(const char* what, void (FileCommands::*showDialog)());
  void DelFiles();
  void MoveFiles();
  void CopyFiles();
  void ShowDialog(std::int32_t mode);
  // The handlers of the dialog's buttons, and what OKButton does in each mode.
  void Browse();
  void Ok();
  void DoDelete(ListView& lst);
  void DoMove(ListView& lst);
  void DoCopy(ListView& lst);
  bool HasDestination(const char* complaint);
  std::int32_t TransferTo(const ListView& lst, std::uint32_t wFunc);
  void FinishAtDestination(ListView& lst, std::int32_t rc);
  void Prune(ListView& lst);

  ResultLists& results_;
  const FileCommandPorts ports_;
  ActionDispatch inDialog_;  // what its buttons do
  ResultList asked_{};       // whose files the dialog is about, though another list may have come on show since
  FileJob job_;
  Transfer transfer_;
};

}  // namespace tresmor
