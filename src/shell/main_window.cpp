#include "shell/main_window.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "base/path.h"
#include "desk/bind_timer.h"
#include "desk/history.h"
#include "results/counters.h"
#include "shell/layout.h"
#include "shell/menu_rules.h"
#include "shell/tooltips.h"

namespace tresmor {
namespace {

constexpr char kHelpFolder[] = "help";
constexpr char kErrorPicture[] = "err_read.bmp";

float TwipsPerDot(const Screen& screen) {
  const WorkArea area = screen.GetWorkArea();
  return area.twipsPerPixelX / area.dotsPerPixel;
}

}  // namespace

MainWindow::MainWindow(const MainWindowPorts& ports, MainWindowHooks hooks)
    : frmTip({ports.files, ports.settings, ports.dialogs, ports.random}),
      frmHelp({ports.files, ports.shell, ports.dialogs},
              JoinPath(ports.programFolder, kHelpFolder, ports.files.Style())),
      ports_(ports),
      hooks_(std::move(hooks)),
      dispatch_(ports.dialogs, {.restore = [this] { RestoreAfterFailure(); },
                                .atRest =
                                    [this] {
                                      if (std::exchange(closeLater_, false)) frm.Unload();
                                    }}),
      cancel_(ports.dialogs),
      messages_(ports.forms),
      progress_(ports.events, frm.tmrProgress, frm.msgBar, frm.pbMain),
      scopePage_(frm, presets_,
                 {.files = ports.files,
                  .shell = ports.shell,
                  .events = ports.events,
                  .dialogs = ports.dialogs,
                  .Act = [this](const std::function<void()>& action) { dispatch_.Run(action); },
                  .GuardedMsg = [this](GuardedId id) { return GuardedMsg(id); },
                  .Now = ports.now}),
      preview_(frm.results, frm.preview,
               {ports.pictures, ProgramFile(kErrorPicture), [this] { return TwipsPerDot(ports_.screen); }}),
      search_(frm, progress_, {ports.files, ports.shell, ports.versions, ports.events, ports.dialogs}),
      searchButton_(frm, search_, {ports.events, ports.dialogs, [this](GuardedId id) { return GuardedMsg(id); }}),
      fileCommands_(frm.results, frm.preview,
                    {{ports.files, ports.shell, ports.operations, ports.dialogs}, ports.events, ports.fileForms}),
      singleFile_(frm.results, options_,
                  {ports.files, ports.changes, ports.operations, ports.shell, ports.dialogs, fileCommands_.Job()}),
      sessions_(frm, progress_, {ports.files, ports.writer, ports.events, ports.dialogs}),
      export_(frm, {ports.writer, ports.shell, ports.events, ports.dialogs}),
      resultPage_(frm, progress_,
                  {.shell = ports.shell,
                   .versions = {ports.versions, ports.events},
                   .GuardedMsg = [this](GuardedId id) { return GuardedMsg(id); },
                   .Preview = [this] { preview_.Show(); },
                   .OpenFile = [this] { singleFile_.OpenFile(); },
                   .OwnFileProp = hooks_.OwnFileProp,
                   .PopUp = [](Menu& menu) { menu.PopUp(); }}),
      optionsDialog_({.options = options_,
                      .txtPath = frm.txtPath,
                      .txtExt = frm.txtExt,
                      .presets = presets_,
                      .InitTooltips = [this] { InitTooltips(frm); },
                      .RemoveTooltips = [this] { RemoveTooltips(frm, tips_); }},
                     {ports.settings, ports.dialogs, ports.shellForms}),
      smartMarker_({frm, progress_, options_, presets_, hovered_},
                   {.rules = {ports.events, ports.dialogs, [this](GuardedId id) { return GuardedMsg(id); }},
                    .settings = ports.settings,
                    .forms = ports.shellForms,
                    .style = ports.files.Style(),
                    .Help = [this] { Help(kMarkPage); }}) {
  frm.Visible = false;
  frm.screen = &ports_.screen;
  frm.txtPath.SetText(ports_.shell.FirstFolder());
  BindListTips(frm, options_, tips_);
  BindMessageTip(frm, options_);
  fileCommands_.frmFileOper.HelpContextID = frm.mnuDelete.HelpContextID;
  fileCommands_.frmFileProgress.HelpContextID = frm.mnuDelete.HelpContextID;
  BindButtons();
  BindMenus();
  BindFileMenu();
  BindHelpMenu();
  BindMenuRules(frm, [this] { return dispatch_.IsRunning(); });
  BindWindow();
  BindTimers();
  BindDispatch();
}

void MainWindow::BindButtons() {
  frm.cmdSrch.OnClick = [this] { Search(); };
  frm.cmdNewSrch.OnClick = [this] { Init(frm); };
  frm.cmdTask.OnClick = [this] { frm.mnuFile.PopUp(); };
}

void MainWindow::BindMenus() {
  frm.mnuOptions.OnClick = [this] { optionsDialog_.Show(); };
  frm.MnuQuit.OnClick = [this] { frm.Unload(); };
  frm.mnuSrch.OnClick = frm.cmdSrch.OnClick;
  frm.mnuNewSrch.OnClick = frm.cmdNewSrch.OnClick;
  frm.mnuLoadResultList.OnClick = [this] { sessions_.mnuLoadResultList(); };
  frm.mnuSaveResultList.OnClick = [this] { sessions_.mnuSaveResultList(); };
  frm.mnuSaveAsResultList.OnClick = [this] { sessions_.mnuSaveAsResultList(); };
}

void MainWindow::BindHelpMenu() {
  frm.mnuHelp.OnClick = [this] { Help(kQuickStartPage); };
  frm.mnuSuppForum.OnClick = [this] { ports_.shell.OpenUrl(SupportAddress()); };
  frm.mnuWebSite.OnClick = [this] { ports_.shell.OpenUrl(WebSiteAddress()); };
  frm.mnuEmail.OnClick = [this] { ports_.shell.OpenUrl(MailAddress()); };
  frm.mnuChkUpdate.OnClick = [this] { ChkUpdate(ports_.shell, ports_.version); };
  frm.mnuAbout.OnClick = [this] { ShowAbout(ports_.dialogs, ports_.version); };
}

void MainWindow::Help(const HelpTopic& topic) {
  dispatch_.RunPassive([&] { frmHelp.Show(topic); });
}

void MainWindow::BindFileMenu() {
  frm.mnuOpen.OnClick = [this] { singleFile_.OpenFile(); };
  frm.mnuOpenEditor.OnClick = [this] { singleFile_.OpenEditor(); };
  frm.mnuOpenFolder.OnClick = [this] { resultPage_.mnuOpenFolder(); };
  frm.mnuDelete.OnClick = [this] { Transfer(&FileCommands::DelFile); };
  frm.mnuMove.OnClick = [this] { Transfer(&FileCommands::MoveFile); };
  frm.mnuCopy.OnClick = [this] { Transfer(&FileCommands::CopyFile); };
  frm.mnuRen.OnClick = [this] { singleFile_.RenFile(); };
  frm.mnuExport.OnClick = [this] { export_.mnuExport(); };
  if (hooks_.OwnFileProp) frm.mnuPropPage.OnClick = [this] { resultPage_.mnuPropPage(); };
  frm.mnuShowVer.OnClick = [this] { resultPage_.mnuShowVer(); };
  frm.mnuSmartDel.OnClick = [this] { smartMarker_.Show(); };
  frm.mnuMarkAll.OnClick = [this] { resultPage_.mnuMarkAll(); };
  frm.mnuMarkSelected.OnClick = [this] { resultPage_.mnuMarkSelected(); };
  frm.mnuClearMarks.OnClick = [this] { resultPage_.mnuClearMarks(); };
}

void MainWindow::BindWindow() {
  BindLayout(frm);
  frm.OnQueryUnload = [this] { return MayClose(); };
  frm.OnUnload = [this] { Close(); };
}

void MainWindow::BindTimers() {
  for (Timer* const timer : {&frm.tmrProgress, &frm.tmrUpdate, &fileCommands_.frmFileProgress.tmrProgress}) {
    dispatch_.BindPassive(timer->OnTick);
    BindTimer(*timer, ports_.events);
  }
}

void MainWindow::BindDispatch() {
  // They touch nothing that an action works on.
  const std::initializer_list<MenuItem*> harmless = {&frm.MnuQuit,  &frm.mnuSuppForum, &frm.mnuWebSite,
                                                     &frm.mnuEmail, &frm.mnuChkUpdate, &frm.mnuAbout};
  const std::initializer_list<const MenuItem*> ownWays = {&frm.mnuSrch, &frm.mnuHelp};
  for (const Menu* const menu : frm.Menus()) {
    for (MenuItem* const item : menu->Items()) {
      if (item == nullptr || std::ranges::count(ownWays, item) || std::ranges::count(harmless, item)) continue;
      dispatch_.BindAction(item->OnClick);
    }
  }
  for (MenuItem* const item : harmless) dispatch_.BindPassive(item->OnClick);
  dispatch_.BindAction(frm.cmdNewSrch.OnClick);
  for (Menu* const menu : frm.Menus()) dispatch_.BindPassive(menu->OnOpen);
  for (auto* const event : {&frm.cmdTask.OnClick, &frm.OnResize, &fileCommands_.frmFileProgress.cmdCancel.OnClick}) {
    dispatch_.BindPassive(*event);
  }
  BindFieldDispatch();
  BindListDispatch();
}

// What has no failure to expect from files: it only moves between fields and entries.
void MainWindow::BindFieldDispatch() {
  for (auto* const event : {&frm.txtPath.OnClick, &frm.txtExt.OnClick, &frm.cmbDate.OnClick, &frm.txtDate.OnGotFocus,
                            &frm.preview.chkPreview.OnClick}) {
    dispatch_.BindPassive(*event);
  }
}

void MainWindow::BindListDispatch() {
  for (ListView& lst : frm.results.lstResult) {
    dispatch_.BindAction(lst.OnDblClick);
    dispatch_.BindAction(lst.OnColumnClick);
    for (auto* const event : {&lst.OnClick, &lst.OnItemClick, &lst.OnItemCheck}) dispatch_.BindPassive(*event);
    dispatch_.BindPassive(lst.OnMouseUp);
    dispatch_.BindPassive(lst.OnMouseMove);
  }
  dispatch_.BindPassive(frm.lstPath.OnMouseMove);
}

void MainWindow::Load() {
  dispatch_.Run([this] {
    dispatch_.RunPassive([this] { StartUp(); });
    frm.Visible = true;
  });
}

void MainWindow::OpenSession(const std::string& sFileName) {
  dispatch_.Run([&] { sessions_.OpenSession(sFileName); });
}

std::string MainWindow::ProgramFile(const char* name) const {
  return ports_.programFolder + ports_.files.Style().separator + name;
}

// Each step relies on those before it.
void MainWindow::StartUp() {
  InitProgressBar(frm);
  Init(frm);
  LoadSettings(ports_.settings, ports_.shell, ports_.now(), Settings());
  if (options_.NoTooltipsOpt != 1) InitTooltips(frm);
  RemindOfUpdate(options_, ports_.now, ports_.shell, ports_.dialogs, ports_.version);
  TakeLatest(frm.txtPath);
  TakeLatest(frm.txtExt);
  if (ShowTipsAtStartup(ports_.settings)) frmTip.Load(ports_.programFolder);
}

// A click that cancels comes in the middle of the search, which is an action itself.
void MainWindow::Search() {
  ActionDispatch& dispatch = frm.cmdSrch.Caption() == kCancelCaption ? cancel_ : dispatch_;
  dispatch.Run([this] { searchButton_.Click(); });
}

void MainWindow::Transfer(void (FileCommands::*command)()) {
  const std::int16_t asked = frm.results.mIntCurFrame;
  const std::int32_t rows = frm.results.Shown().Count();
  (fileCommands_.*command)();
  UpdateCount(frm.results, asked);
  if (frm.results.lstResult[static_cast<std::size_t>(asked)].Count() != rows) frm.tmrUpdate.Enabled = true;
}

// A close that comes in the middle of an action is made up for when that has ended. A search may take hours, so its
// user is told.
bool MainWindow::MayClose() {
  if (frm.cmdSrch.Caption() == kCancelCaption) {
    refusal_.Run([this] {
      ports_.dialogs.MessageBox("Please cancel your search before quitting.", BoxIcon::Information, "Quit",
                                BoxButtons::Ok);
    });
    return false;
  }
  closeLater_ = dispatch_.IsRunning();
  return !closeLater_;
}

void MainWindow::Close() {
  dispatch_.RunPassive([this] { SaveSettings(ports_.settings, Settings()); });
  ReleaseProgressBar(frm);
  frmTip.Visible = false;
  frmHelp.Close();
}

void MainWindow::RestoreAfterFailure() {
  frm.tmrProgress.Enabled = false;
  frm.pointer.Shape = PointerShape::Default;
  for (ListView& lst : frm.results.lstResult) lst.Visible = true;
  search_.UnlockSrchUi();
}

}  // namespace tresmor
