#include "fileops/single_file.h"

#include "base/failure.h"
#include "base/path.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// Where a row is that stood at `row` while events were let in; 0 if it has gone.
std::int32_t FindRow(const ListView& lst, const std::string& path, std::int32_t row) {
  if (row <= lst.Count() && PathOf(lst, row) == path) return row;
  for (row = lst.Count(); row > 0 && PathOf(lst, row) != path;) --row;
  return row;
}

}  // namespace

void SingleFile::RenFile() {
  WithPath([this](const std::string& path) { Rename(path); });
}

void SingleFile::OpenFile() {
  WithPath([this](const std::string& path) { ports_.shell.ShellOpen(path); });
}

void SingleFile::OpenEditor() {
  WithPath([this](const std::string& path) { ports_.shell.RunProgram(options_.DefaultEditorOpt, path); });
}

void SingleFile::WithPath(const std::function<void(const std::string& path)>& use) {
  const ListView& lst = results_.Shown();
  if (lst.SelectedItem() == 0) {
    ports_.dialogs.MessageBox("Please select a file.", BoxIcon::None, "Select file", BoxButtons::Ok);
  } else {
    use(PathOf(lst, lst.SelectedItem()));
  }
}

void SingleFile::Rename(const std::string& path) {
  ListView& lst = results_.Shown();
  const std::int32_t row = lst.SelectedItem();
  const std::string answer = ports_.dialogs.InputBox(BoxText("Please type a new file name for \r\n").Name(path),
                                                     "Rename", std::string(GetFileNameOf(path, ports_.files.Style())));
  if (answer.empty()) return;
  if (!GiveName(lst, row, path, answer)) {
    ports_.dialogs.MessageBox("File can't be renamed.", BoxIcon::None, "Can't rename", BoxButtons::Ok);
  }
}

bool SingleFile::GiveName(ListView& lst, std::int32_t row, const std::string& path, const std::string& name) {
  try {
    const std::string renamed = std::string(GetFolderOf(path, ports_.files.Style())) + name;
    const Errors failure = ports_.changes.Rename(path, renamed);
    if (failure != Errors::None && (failure != Errors::DifferentDrive || !MoveByCopy(path, renamed))) return false;
    if (const std::int32_t now = FindRow(lst, path, row); now != 0) lst.SetCell(now, kNameItem, name);
    return true;
  } catch (...) {
    CaughtFailure();
    return false;
  }
}

bool SingleFile::MoveByCopy(const std::string& from, const std::string& to) {
  const std::string end(2, '\0');
  const ShFileOpStruct operation{FO_RENAME, from + end, to + end, FOF_MULTIDESTFILES,
                                 ParentOf(to, ports_.files.Style())};
  OperationResult result;
  ports_.job.Run("Renaming file",
                 [&](OperationWatch& watch) { result = ports_.operations.ShFileOperation(operation, watch); });
  return result.code == OperationCode::Done;
}

}  // namespace tresmor
