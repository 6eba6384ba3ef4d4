#include "soak/monkey_ports.h"

#include <vector>

#include "soak/places.h"
#include "support/fake_file_operations.h"

namespace tresmor::soak {

namespace {

constexpr std::chrono::microseconds kWait{200};  // real time, for threads to get on
constexpr double kPumpSeconds = 0.02;

constexpr const char* kTyped[] = {
    "",  "new.txt", "sub/new.txt", "../up.txt", "a.txt",  "/data/b/other", "odd\n\xff",
    "/", "..",      "no/such/x",   "x|-y",      "A\r\nB", "\x01",          "name with blanks "};
constexpr const char* kFolders[] = {"/data",         "/data/a", "/usb",     "/usb/films",
                                    "/home/me/docs", "/",       "/nowhere", "relative"};
constexpr const char* kDestinations[] = {"/data/a", "/data/b/odd", "/usb", "/usb/films", "/home/me/docs", "/nowhere"};
constexpr const char* kFiles[] = {"/home/me/saved/one.Tresmor", "/home/me/saved/two.Tresmor", "/home/me/saved/list.csv",
                                  "/nowhere/three.Tresmor"};
constexpr const char* kMarkPatterns[] = {"", "*", "*.txt", "a*;b*", "[a-c]*", "[", "#", "*\xff*"};

}  // namespace

// --- The queue

void MonkeyQueue::Pump(std::chrono::milliseconds wait) {
  ++pumps;
  seconds += kPumpSeconds;
  if (onPump) onPump();
  if (wait.count() == 0) return;
  std::unique_lock lock(mutex_);
  woken_.wait_for(lock, kWait, [&] { return awake_; });
  awake_ = false;
}

void MonkeyQueue::Wake() {
  const std::lock_guard lock(mutex_);
  awake_ = true;
  woken_.notify_one();
}

// --- Questions

BoxAnswer MonkeyDialogs::MessageBox(const BoxText& text, BoxIcon, const std::string& title, BoxButtons buttons) {
  const std::string words = text.Whole();
  if (title == "Search completed") ++figures_.searches;
  if (words.starts_with("Run-time error") || title == "Failed" || title == "Incorrect version") {
    failureTold = true;
    lastRunTimeError = words;
    ++figures_.told[words.substr(0, words.find('\r'))];
  }
  if (meanwhile) meanwhile();
  static constexpr BoxAnswer kOkCancel[] = {BoxAnswer::Ok, BoxAnswer::Cancel};
  static constexpr BoxAnswer kAll[] = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
  BoxAnswer answer = BoxAnswer::Ok;
  if (buttons == BoxButtons::YesNo) answer = dice_.OneIn(4) ? BoxAnswer::No : BoxAnswer::Yes;
  if (buttons == BoxButtons::OkCancel) answer = dice_.Pick(kOkCancel);
  if (buttons == BoxButtons::YesNoCancel) answer = dice_.Pick(kAll);
  if (title == "Cancel Search") answer = dice_.OneIn(3) ? BoxAnswer::Yes : BoxAnswer::No;
  if (title == "Cancel Search" && answer == BoxAnswer::Yes) ++figures_.cancels;
  return answer;
}

std::optional<std::string> MonkeyDialogs::OpenFileDlg(const FileQuestion&) {
  if (meanwhile) meanwhile();
  if (dice_.OneIn(6)) return std::nullopt;
  return dice_.Pick(kFiles);
}

std::optional<std::string> MonkeyDialogs::BrowseFolder(const std::string&, const std::string&) {
  if (meanwhile) meanwhile();
  if (dice_.OneIn(4)) return std::nullopt;
  return dice_.Pick(kFolders);
}

std::string MonkeyDialogs::InputBox(const BoxText&, const std::string&, const std::string& proposal) {
  if (meanwhile) meanwhile();
  return dice_.OneIn(4) ? proposal + "2" : std::string(dice_.Pick(kTyped));
}

// --- Dialogs

void MonkeyForms::Play(Control& form, const char* name, const std::function<void()>& deed,
                       const std::function<void()>& close) {
  if (!form.Visible()) onTrouble(std::string(name) + " is to be shown and isn't visible");
  for (std::size_t deeds = 1 + dice_.Below(12); deeds > 0 && form.Visible(); --deeds) {
    deed();
    meanwhile();
  }
  if (form.Visible()) close();
  if (form.Visible()) onTrouble(std::string(name) + " can't be closed");
  form.Visible = false;
}

void MonkeyForms::Toggle(CheckBox& box) {
  if (!box.Visible() || !box.Enabled()) return;
  box.Value = box.Ticked() ? kOff : kTicked;
  if (box.OnClick) box.OnClick();
}

void MonkeyForms::Choose(ChoiceList& list) {
  if (list.Enabled()) list.Choose(dice_.UpTo(list.ListCount() - 1));
}

void MonkeyForms::ShowModal(FrmMyMsgBox& form) {
  const auto deed = [&] {
    switch (dice_.Below(5)) {
      case 0:
        return Toggle(form.chkDontShow);
      case 1:
        return form.Escape();
      case 2:
        if (form.cmdCancel.Visible()) form.cmdCancel.OnClick();
        return;
      default:
        return form.OKButton.OnClick();
    }
  };
  Play(form, "a message", deed, [&] { form.Unload(); });
}

void MonkeyForms::ShowModal(FrmFileOper& form) {
  const auto deed = [&] {
    switch (dice_.Below(12)) {
      case 0:
        return Toggle(form.chkDirStruct);
      case 1:
        return Toggle(form.chkOpenDestDir);
      case 2:
        return Toggle(form.chkRemoveEmptyDir);
      case 3:
        return Toggle(form.chkYesToAll);
      case 4:
        form.optRecycleBin.Value = true;
        return;
      case 5:
        form.optDelPermanently.Value = true;
        return;
      case 6:
        if (form.fraDest.Visible()) form.cmdBrowse.OnClick();
        return;
      case 7:
      case 8:
        if (form.fraDest.Visible()) form.txtDestination.Text = dice_.Pick(kDestinations);
        return;
      default:
        return form.OKButton.OnClick();
    }
  };
  Play(form, "the dialog of operations", deed, [&] { form.CancelButton.OnClick(); });
}

void MonkeyForms::ShowModal(FrmOptions& form) {
  const auto deed = [&] {
    switch (dice_.Below(8)) {
      case 0:
        return Toggle(form.chkLoadTipsAtStartup);
      case 1:
        return Toggle(form.chkNoTooltips);
      case 2:
        form.txtEditor.Text = dice_.Pick(kTyped);
        return;
      case 3:
        return form.cmdBrowse.OnClick();
      case 4:
        return form.cmdClrHist.OnClick();
      case 5:
        return form.cmdResetTips.OnClick();
      default:
        return form.OKButton.OnClick();
    }
  };
  Play(form, "Options", deed, [&] { form.CancelButton.OnClick(); });
}

void MonkeyForms::ShowModal(FrmSmartDel& form, const ListTip&) {
  const auto deed = [&] {
    const std::int32_t folders = form.lstFolder.Count();
    switch (dice_.Below(14)) {
      case 0:
        return Choose(form.lstDate);
      case 1:
        return Choose(form.lstSize);
      case 2:
        return Choose(form.lstVer);
      case 3:
        if (folders > 0) form.lstFolder.SetSelected(1 + dice_.UpTo(folders - 1), dice_.OneIn(2));
        return;
      case 4:
        return Toggle(form.chkSubFolder);
      case 5:
        return form.cmdSelAll.OnClick();
      case 6:
        return form.cmdClrAll.OnClick();
      case 7:
        return form.cmdGetSelections.OnClick();
      case 8:
        return form.cmbPattern.SetText(dice_.Pick(kMarkPatterns));
      case 9:
        return Toggle(form.chkLeaveAtLeast1);
      case 10:
        return dice_.OneIn(2) ? Choose(form.lstLeaveDate) : Choose(form.lstLeaveVer);
      case 11:
        return form.TabOptions.Select(1 + dice_.UpTo(1));
      case 12:
        return form.cmdClearMarks.OnClick();
      default:
        return form.cmdMark.OnClick();
    }
  };
  Play(form, "Smart Marking", deed, [&] { form.CancelButton.OnClick(); });
}

// --- Operations

std::int64_t& WatchedOperations::FigureOf(const ShFileOpStruct& operation) {
  if (operation.wFunc == FO_COPY) return figures_.copied;
  if (operation.wFunc != FO_DELETE) return figures_.moved;
  return (operation.fFlags & FOF_ALLOWUNDO) != 0 ? figures_.trashed : figures_.deleted;
}

OperationResult WatchedOperations::ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) {
  const std::vector<std::string> paths = FakeFileOperations::Paths(operation.pFrom);
  std::int64_t& figure = FigureOf(operation);
  FileStat stat;
  std::int64_t there = 0;
  for (const std::string& path : paths) {
    if (&figure == &figures_.deleted) ledger_.Condemn(path);
    there += files_.Look(path, stat) == Errors::None;
  }
  changer_.SetOperating(true);
  const OperationResult result = inner_.ShFileOperation(operation, watch);
  changer_.SetOperating(false);
  ++figures_.operations;
  for (const std::string& path : paths) there -= files_.Look(path, stat) == Errors::None;
  figure += operation.wFunc == FO_COPY ? static_cast<std::int64_t>(paths.size()) : there;
  return result;
}

}  // namespace tresmor::soak
