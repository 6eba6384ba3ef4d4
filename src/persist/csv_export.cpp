#include "persist/csv_export.h"

#include <cstdint>

#include "base/failure.h"
#include "base/text.h"
#include "desk/event_slice.h"
#include "desk/report_failure.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

constexpr char kExportFailed[] = "Result list export failed. File may already opened by other programs. ";

bool IsShown(const ListView& lst, std::int32_t column) { return lst.Column(column).width > 0; }

// The first header keeps its sort mark, the others don't.
std::string HeaderLine(const ListView& lst) {
  std::string line = lst.Column(1).text;
  for (std::int32_t column = 2; column <= lst.Columns(); ++column) {
    if (IsShown(lst, column)) line.append(",").append(WithoutSortMark(lst.Column(column).text));
  }
  return line;
}

void PutRow(std::string& file, const ListView& lst, std::int32_t row, std::string& scratch) {
  file.append("\"").append(lst.CellView(row, kNameItem, scratch)).append("\",\"");
  file.append(TrimBlanks(lst.CellView(row, kFolderItem, scratch))).append("\"");
  const std::int32_t last = lst.SubItems(row);
  for (std::int32_t item = kFolderItem + 1; item <= last; ++item) {
    if (IsShown(lst, item + 1)) file.append(",").append(TrimBlanks(lst.CellView(row, item, scratch)));
  }
  file.append("\r\n");
}

std::string CsvText(const ListView& lst, EventQueue& events) {
  EventSlice slice(events);
  std::string file = HeaderLine(lst) + "\r\n";
  std::string scratch;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    PutRow(file, lst, row, scratch);
    if (slice.IsOver()) slice.LetEventsIn();
  }
  return file;
}

}  // namespace

void ExportList(const std::string& sFileName, const ListView& lst, const ExportPorts& ports) {
  DoOrReport(ports.dialogs, kExportFailed, [&] {
    if (const Errors failure = ports.writer.Replace(sFileName, CsvText(lst, ports.events)); failure != Errors::None) {
      throw Failure(failure);
    }
    const BoxAnswer open =
        ports.dialogs.MessageBox(BoxText("Result list is successfully exported, open it now? \r\n").Name(sFileName),
                                 BoxIcon::Question, "Open?", BoxButtons::YesNo);
    if (open == BoxAnswer::Yes) ports.shell.ShellOpen(sFileName);
    return true;
  });
}

}  // namespace tresmor
