#include "platform/posix/run_detached.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tresmor {

namespace {

using Words = std::vector<char*>;

Words WordsOf(const Command& command) {
  Words words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));  // execvp writes nothing
  words.push_back(nullptr);
  return words;
}

// In the new process, where nothing may be called that takes memory or a lock.
[[noreturn]] void Become(const std::vector<Words>& commands, const char* folder) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
  const int nothing = open("/dev/null", O_RDWR);
  for (int stream = 0; stream <= STDERR_FILENO; ++stream) dup2(nothing, stream);
  if (nothing > STDERR_FILENO) close(nothing);
  if (chdir(folder) == 0) {
    for (const Words& words : commands) execvp(words[0], words.data());
  }
  _exit(127);
}

}  // namespace

void RunDetached(const std::vector<Command>& commands, const std::string& folder) {
  std::vector<Words> words;
  for (const Command& command : commands) words.push_back(WordsOf(command));
  const pid_t between = fork();
  if (between == 0) {
    // This one ends at once, which hands the program over to the system.
    setsid();
    if (fork() == 0) Become(words, folder.c_str());
    _exit(0);
  }
  if (between < 0) return;
  while (waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace tresmor
