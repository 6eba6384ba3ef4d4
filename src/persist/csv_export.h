// A result list as comma-separated values, for a spreadsheet. Nothing reads them back.
#pragma once

#include <string>

#include "controls/list_view.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_writer.h"
#include "platform/shell.h"

namespace tresmor {

struct ExportPorts {
  const FileWriter& writer;
  const Shell& shell;
  EventQueue& events;
  Dialogs& dialogs;
};

// Writes the rows of `lst` in their present order, under the headers of the columns that have a width, and asks whether
// the file is to be opened. Lines end in CR LF. Name and folder stand in quotes, shown or not; nothing is escaped. A
// failure, lack of memory too, is told in a box; there is no new file then. Pumps events now and then; nothing may add,
// remove or move rows then. Interface thread.
void ExportList(const std::string& sFileName, const ListView& lst, const ExportPorts& ports);

}  // namespace tresmor
