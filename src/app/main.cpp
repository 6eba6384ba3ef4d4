// The program with the window.
#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/window_program.h"
#include "desk/options.h"
#include "platform/posix/program_folder.h"
#include "qt/program_style.h"

namespace {

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

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  const tresmor::FileWriters writers;
  qInstallMessageHandler(TellNoDisplay);
  QApplication app(argc, argv);
  qInstallMessageHandler(nullptr);
  QApplication::setDesktopFileName("tresmor");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new tresmor::ProgramStyle);  // the application owns it
  tresmor::ChooseIconTheme();
  tresmor::WindowProgram program(writers, tresmor::FindUserFolders(), tresmor::FindExecutableFolder());
  program.Start([] { QApplication::quit(); });
  return QApplication::exec();
}
