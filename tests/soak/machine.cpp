#include "soak/machine.h"

#include "base/date.h"
#include "soak/places.h"

namespace tresmor::soak {

Machine::Machine(std::uint64_t seed, Figures& all)
    : figures(all), dice(seed), changer(files, program.changes, ledger, PartOf(seed, 1)) {
  program.trash.home = {{"/home/me/.Trash", ""}};
  program.trash.usb = {{"/usb/.Trash", "/usb"}};
  for (const char* const folder : {"/home/me/.Trash/files", "/home/me/.Trash/info", "/usb/.Trash/files",
                                   "/usb/.Trash/info", kSavedFolder, "/home/me/Desktop", "/home/me/Documents"}) {
    files.MakeFolder(folder);
  }
  files.MakeFile("/opt/tresmor/TIPOFDAY.TXT", "One tip.\nAnother tip.\n");
  files.MakeFile("/opt/tresmor/help/quickstart.htm", "<title>Start</title>");
  changer.Fill();
}

MainWindowPorts Machine::Ports() {
  return {.files = files,
          .writer = writer,
          .changes = program.changes,
          .operations = operations,
          .versions = versions,
          .settings = settings,
          .shell = shell,
          .screen = screen,
          .events = events,
          .dialogs = dialogs,
          .forms = forms,
          .fileForms = forms,
          .shellForms = forms,
          .pictures = pictures,
          .now = [] { return DateStamp{40'000 * kOneDay}; },
          .random = [this] { return static_cast<double>(dice.Below(1000)) / 1000; },
          .version = {3, 1, 0},
          .programFolder = "/opt/tresmor"};
}

void Machine::Undo() { figures.undone += program.Undone().putBack; }

}  // namespace tresmor::soak
