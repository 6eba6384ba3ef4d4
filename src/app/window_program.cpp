#include "app/window_program.h"

#include <QApplication>
#include <QTimer>
#include <ctime>
#include <random>

#include "base/date.h"
#include "desk/report_failure.h"
#include "platform/posix/file_properties.h"
#include "platform/posix/program_folder.h"
#include "platform/posix/trash_folder.h"

namespace tresmor {
namespace {

constexpr char kPictureHelper[] = "/tresmor-picture";

void ShowOwnFileProp(Dialogs& dialogs, const std::string& file) {
  BoxText text("");
  for (const auto& [label, value] : FileProperties(file)) text.Words(label + ": ").Name(value).Words("\n");
  dialogs.MessageBox(text, BoxIcon::Information, "File Properties", BoxButtons::Ok);
}

}  // namespace

WindowProgram::WindowProgram(const FileWriters& writers, const UserFolders& folders,
                             const std::string& executableFolder)
    : writers_(writers),
      trash_(HomeTrash(folders)),
      undoLog_(files_, changes_, FindUndoLog(folders)),
      operations_(files_, changes_, trash_, undoLog_),
      settings_(files_, writers_.settings, FindSettingsFile(folders)),
      pictures_(HelperFolder(executableFolder) + kPictureHelper),
      window_(Ports(executableFolder), Hooks()),
      view_(window_.frm, binder_, window_.Tips()) {
  events_.OnUncaught = [this](const std::exception_ptr& failure) {
    try {
      std::rethrow_exception(failure);
    } catch (...) {
      ReportRunTimeError(dialogs_, CaughtFailure());
    }
  };
  binder_.OnHelp = [this](std::int32_t context) { window_.Help(context); };
  forms_.ShowWhileVisible(window_.Files().frmFileProgress);
  forms_.ShowWhileVisible(window_.frmTip, view_);
  forms_.ShowWhileVisible(window_.frmHelp);
}

MainWindowPorts WindowProgram::Ports(const std::string& executableFolder) {
  return {.files = files_,
          .writer = writer_,
          .changes = changes_,
          .operations = operations_,
          .versions = versions_,
          .settings = settings_,
          .shell = shell_,
          .screen = screen_,
          .events = events_,
          .dialogs = dialogs_,
          .forms = forms_,
          .fileForms = forms_,
          .shellForms = forms_,
          .pictures = pictures_,
          .now = [] { return LocalStamp(std::time(nullptr)); },
          .random = [generator = std::mt19937(std::random_device()()),
                     chance = std::uniform_real_distribution<double>()]() mutable { return chance(generator); },
          .version = {TRESMOR_VERSION_MAJOR, TRESMOR_VERSION_MINOR, TRESMOR_VERSION_PATCH},
          .programFolder = ProgramFolder(executableFolder)};
}

MainWindowHooks WindowProgram::Hooks() {
  MainWindowHooks hooks;
  hooks.OwnFileProp = [this](const std::string& file) { ShowOwnFileProp(dialogs_, file); };
  return hooks;
}

void WindowProgram::Start(std::function<void()> closed, const std::string& sessionFile) {
  window_.frm.Listen([this, closed = std::move(closed)](const Notice& notice) {
    const bool isShown = notice.what == Notice::What::Visible && notice.when == Notice::When::After;
    if (isShown && !window_.frm.Visible()) closed();
  });
  window_.Load();
  if (!sessionFile.empty()) window_.OpenSession(sessionFile);
}

// The window may be closed while the session loads, and a loop that hasn't begun can't be ended.
int WindowProgram::Run(const std::string& sessionFile) {
  QTimer::singleShot(
      0, &view_, [this, &sessionFile] { events_.Deliver([&] { Start([] { QApplication::quit(); }, sessionFile); }); });
  return QApplication::exec();
}

}  // namespace tresmor
