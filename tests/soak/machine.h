// A machine in memory with the program's operations, for windows that come and go on it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "results/pe_version.h"
#include "shell/main_window.h"
#include "soak/changer.h"
#include "soak/dice.h"
#include "soak/figures.h"
#include "soak/ledger.h"
#include "soak/monkey_ports.h"
#include "support/fake_main_view.h"
#include "support/fake_picture_loader.h"
#include "support/fake_shell.h"
#include "support/memory_file_writer.h"
#include "support/memory_settings.h"
#include "transfer/transfer_world.h"

namespace tresmor::soak {

class Machine {
 public:
  Machine(std::uint64_t seed, Figures& figures);

  MainWindowPorts Ports();
  // Undoes the last step, as the console program does.
  void Undo();

  Figures& figures;
  Dice dice;
  Disks disks;
  Program program{disks};
  MemoryFileSystem& files = disks.files;
  Ledger ledger{files};
  Changer changer;
  MonkeyQueue events;
  MonkeyDialogs dialogs{dice, figures};
  MonkeyForms forms{dice};
  WatchedOperations operations{program.executor, files, ledger, changer, figures};
  MemoryFileWriter writer{files};
  PeVersionReader versions{files};
  MemorySettings settings;
  FakeShell shell;
  FakeScreen screen;
  FakePictureLoader pictures;
};

}  // namespace tresmor::soak
