// The program with the window.
#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/arguments.h"
#include "app/window_program.h"
#include "desk/options.h"
#include "platform/posix/program_folder.h"
#include "qt/program_style.h"

namespace {

constexpr int kWrongUse = 2;
constexpr int kNoDisplay = 3;

// The toolkit aborts a program that reaches no display, with words for programmers, and says before what it tried.
void TellNoDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("Tresmor's window needs a graphical display, and none can be reached. tresmor-cli works without.\n",
               stderr);
    std::_Exit(kNoDisplay);
  }
  const char* const category = context.category == nullptr ? "" : context.category;
  if (std::strncmp(category, "qt.qpa.", 7) != 0) std::fprintf(stderr, "%s\n", qPrintable(text));
}

tresmor::Arguments Read(int argc, char** argv) { return tresmor::ReadArguments({argv + 1, argv + argc}); }

}  // namespace

int main(int argc, char** argv) {
  if (const tresmor::Arguments asked = Read(argc, argv); !asked.answer.empty() && !asked.areWrong) {
    std::fputs(asked.answer.c_str(), stdout);
    return EXIT_SUCCESS;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const tresmor::FileWriters writers;
  qInstallMessageHandler(TellNoDisplay);
  QApplication app(argc, argv);  // takes its own options away
  qInstallMessageHandler(nullptr);
  const tresmor::Arguments arguments = Read(argc, argv);
  if (arguments.areWrong) {
    std::fputs(arguments.answer.c_str(), stderr);
    return kWrongUse;
  }
  QApplication::setDesktopFileName("tresmor");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new tresmor::ProgramStyle);  // the application owns it
  tresmor::ChooseIconTheme();
  tresmor::WindowProgram program(writers, tresmor::FindUserFolders(), tresmor::FindExecutableFolder());
  return program.Run(arguments.sessionFile);
}
