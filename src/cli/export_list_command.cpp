#include "cli/export_list_command.h"

#include "cli/session_io.h"
#include "cli/typed_path.h"
#include "persist/csv_export.h"

namespace tresmor {
namespace {

// A script isn't asked whether to open the file; what went wrong is told.
class ExportDialogs final : public Dialogs {
 public:
  explicit ExportDialogs(Dialogs& told) : told_(told) {}

  bool HasFailed() const { return failed_; }

  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string& title, BoxButtons buttons) override {
    if (icon == BoxIcon::Question) return BoxAnswer::No;
    failed_ = true;
    return told_.MessageBox(text, icon, title, buttons);
  }
  std::optional<std::string> OpenFileDlg(const FileQuestion& question) override { return told_.OpenFileDlg(question); }
  std::optional<std::string> BrowseFolder(const std::string& title, const std::string& startDir) override {
    return told_.BrowseFolder(title, startDir);
  }
  std::string InputBox(const BoxText& prompt, const std::string& title, const std::string& proposal) override {
    return told_.InputBox(prompt, title, proposal);
  }

 private:
  Dialogs& told_;
  bool failed_ = false;
};

bool AreOneFile(const FileSystem& files, const std::string& a, const std::string& b) {
  FileStat first;
  FileStat second;
  return files.Stat(files.Resolved(a), first) == Errors::None &&
         files.Stat(files.Resolved(b), second) == Errors::None && first.identity == second.identity;
}

}  // namespace

int ExportListCommand(const ExportOptions& options, const ConsolePorts& ports) {
  const std::string out = TypedPath(options.file, ports.workingFolder);
  if (AreOneFile(ports.files, out, TypedPath(options.session, ports.workingFolder))) {
    throw WrongUse("'" + options.file + "' is the session itself; the list would take its place.");
  }
  ports.nothingToCancel();
  SavedResult saved(ports);
  if (!saved.Load(options.session, ports)) return kFailed;
  ExportDialogs dialogs(ports.err);
  ExportList(out, saved.frm.results.List(options.list), {ports.writer, ports.shell, ports.events, dialogs});
  return dialogs.HasFailed() ? kFailed : kRanThrough;
}

}  // namespace tresmor
