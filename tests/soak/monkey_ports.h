// The ports at which the monkey sits: the queue that lets it in, the questions that it answers, the dialogs that it
// plays with, and the operations that it has done.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "desk/guarded_msg.h"
#include "desk/scripted_event_queue.h"
#include "fileops/file_commands.h"
#include "platform/dialogs.h"
#include "platform/file_operations.h"
#include "shell/shell_forms.h"
#include "soak/changer.h"
#include "soak/dice.h"
#include "soak/figures.h"
#include "soak/ledger.h"

namespace tresmor::soak {

// Its clock goes by the pumps, so that nothing takes long.
class MonkeyQueue final : public tests::ScriptedEventQueue {
 public:
  void Pump(std::chrono::milliseconds wait) override;
  void Wake() override;

 private:
  std::mutex mutex_;
  std::condition_variable woken_;
  bool awake_ = false;
};

// Any answer that a box or dialog can give.
class MonkeyDialogs final : public Dialogs {
 public:
  MonkeyDialogs(Dice& dice, Figures& figures) : dice_(dice), figures_(figures) {}

  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) override;
  std::optional<std::string> OpenFileDlg(const FileQuestion& question) override;
  std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) override;
  std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) override;

  std::function<void()> meanwhile;  // while one is open
  bool failureTold = false;         // since somebody cleared it: a run-time error, or a session that can't be loaded
  std::string lastRunTimeError;

 private:
  Dice& dice_;
  Figures& figures_;
};

// Plays with each dialog until it is closed.
class MonkeyForms final : public ModalForms, public FileForms, public ShellForms {
 public:
  explicit MonkeyForms(Dice& dice) : dice_(dice) {}

  void ShowModal(FrmMyMsgBox& form) override;
  void ShowModal(FrmFileOper& form) override;
  void ShowModal(FrmOptions& form) override;
  void ShowModal(FrmSmartDel& form, const ListTip& tips) override;

  std::function<void()> meanwhile;  // between two deeds in a dialog
  std::function<void(const std::string& what)> onTrouble;

 private:
  // Until the form isn't Visible; then by `close`, which has to.
  void Play(Control& form, const char* name, const std::function<void()>& deed, const std::function<void()>& close);
  void Toggle(CheckBox& box);
  void Choose(ChoiceList& list);

  Dice& dice_;
};

// Has another one do them, tells the ledger what is to go for good, and counts.
class WatchedOperations final : public FileOperations {
 public:
  WatchedOperations(FileOperations& inner, const MemoryFileSystem& files, Ledger& ledger, Changer& changer,
                    Figures& figures)
      : inner_(inner), files_(files), ledger_(ledger), changer_(changer), figures_(figures) {}

  std::unique_ptr<OpenUndoStep> BeginUndoStep() override { return inner_.BeginUndoStep(); }
  OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) override;

 private:
  std::int64_t& FigureOf(const ShFileOpStruct& operation);

  FileOperations& inner_;
  const MemoryFileSystem& files_;
  Ledger& ledger_;
  Changer& changer_;
  Figures& figures_;
};

}  // namespace tresmor::soak
