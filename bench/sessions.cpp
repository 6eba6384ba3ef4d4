// Saves and loads a session of many rows and writes the seconds that each took: measure_sessions [ROWS]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/posix/event_queue_posix.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"
#include "results/rows.h"
#include "shell/session_commands.h"

namespace {

using namespace tresmor;

// Answers with the file of this measurement, and wants the results saved.
class FixedAnswers final : public Dialogs {
 public:
  explicit FixedAnswers(std::string file) : file_(std::move(file)) {}
  BoxAnswer MessageBox(const BoxText& text, BoxIcon icon, const std::string&, BoxButtons) override {
    if (icon != BoxIcon::Question) std::fprintf(stderr, "%s\n", text.Whole().c_str());
    return BoxAnswer::Yes;
  }
  std::optional<std::string> OpenFileDlg(const FileQuestion&) override { return file_; }
  std::optional<std::string> BrowseFolder(const std::string&, const std::string&) override { return file_; }
  std::string InputBox(const BoxText&, const std::string&, const std::string&) override { return file_; }

 private:
  const std::string file_;
};

// Groups of five files in some thousand folders, every tenth marked.
void Fill(ListView& lst, std::int32_t rows) {
  for (std::int32_t i = 0; i < rows; ++i) {
    Finding finding;
    finding.name = "holiday picture " + std::to_string(i) + ".jpeg";
    finding.folder = "/home/somebody/pictures/" + std::to_string(i % 5000) + "/";
    finding.dupGrp = i / 5;
    finding.size = 1000 + i / 5;
    finding.modified = kZeroDate + std::int64_t{3'200'000'000} + i * 61;
    AddResultItem(lst, finding);
    lst.SetChecked(lst.Count(), i % 10 == 0);
  }
}

template <class Work>
void Measure(const char* name, Work&& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  std::printf("%s %.3f s\n", name, took.count());
}

}  // namespace

int main(int count, char** arguments) {
  const std::int32_t rows = count > 1 ? std::atoi(arguments[1]) : 500'000;
  const std::string file = std::filesystem::temp_directory_path() / "tresmor-bench.Tresmor";
  const PosixFileSystem files;
  const PosixFileWriter writer;
  PosixEventQueue events;
  FixedAnswers dialogs(file);
  FrmMain frm;
  Progress progress(events, frm.tmrProgress, frm.msgBar, frm.pbMain);
  SessionCommands commands(frm, progress, {files, writer, events, dialogs});
  ListView& lst = frm.results.List(ResultList::Duplicates);
  Fill(lst, rows);
  Measure("save", [&] { commands.mnuSaveAsResultList(); });
  std::printf("%ju bytes\n", static_cast<std::uintmax_t>(std::filesystem::file_size(file)));
  Measure("load", [&] { commands.mnuLoadResultList(); });
  std::filesystem::remove(file);
  return lst.Count() == rows ? 0 : 1;
}
