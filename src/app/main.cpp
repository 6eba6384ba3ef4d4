// The program with the window.
#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "app/window_program.h"
#include "desk/options.h"
#include "platform/posix/program_folder.h"
#include "qt/program_style.h"

namespace {

constexpr int kNoDisplay = 3;

// The toolkit ends a program that finds no display, with words for programmers.
bool HasDisplay() {
  for (const char* const name : {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != '\0') return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (!HasDisplay()) {
    std::fputs("Tresmor's window needs a graphical display, and there is none. tresmor-cli works without.\n", stderr);
    return kNoDisplay;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const tresmor::FileWriters writers;
  QApplication app(argc, argv);
  QApplication::setDesktopFileName("tresmor");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new tresmor::ProgramStyle);  // the application owns it
  tresmor::ChooseIconTheme();
  tresmor::WindowProgram program(writers, tresmor::FindUserFolders(), tresmor::FindExecutableFolder());
  program.Start([] { QApplication::quit(); });
  return QApplication::exec();
}
