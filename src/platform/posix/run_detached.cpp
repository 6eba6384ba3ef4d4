#include "platform/posix/run_detached.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include "base/path.h"
#include "platform/posix/open_limit.h"

namespace tresmor {

namespace {

using Words = std::vector<char*>;

// A program would get a part of it.
bool AnyHasNul(const std::vector<Command>& commands) {
  return std::any_of(commands.begin(), commands.end(),
                     [](const Command& command) { return std::any_of(command.begin(), command.end(), HasNul); });
}

std::vector<Words> WordsOf(const std::vector<Command>& commands) {
  std::vector<Words> all;
  for (const Command& command : commands) {
    Words& words = all.emplace_back();
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));  // execvp writes nothing
    words.push_back(nullptr);
  }
  return all;
}

// In the new process, where nothing may be called that takes memory or a lock.
[[noreturn]] void Become(const std::vector<Words>& commands, const char* folder) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : {SIGPIPE, SIGALRM}) std::signal(number, SIG_DFL);
  PutBackOpenLimit();
  const int nothing = open("/dev/null", O_RDWR);
  for (int stream = 0; stream <= STDERR_FILENO; ++stream) dup2(nothing, stream);
  if (nothing > STDERR_FILENO) close(nothing);
  if (chdir(folder) == 0) {
    for (const Words& words : commands) execvp(words[0], words.data());
  }
  _exit(127);
}

// The status with which a process ended, -1 if it can't be told.
int WaitFor(pid_t process) {
  int status = -1;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return status;
}

}  // namespace

void RunDetached(const std::vector<Command>& commands, const std::string& folder) {
  if (AnyHasNul(commands)) return;
  const std::vector<Words> words = WordsOf(commands);
  const pid_t between = fork();
  if (between == 0) {
    // This one ends at once, which hands the program over to the system.
    setsid();
    if (fork() == 0) Become(words, folder.c_str());
    _exit(0);
  }
  if (between > 0) WaitFor(between);
}

bool RunToEnd(const std::vector<Command>& commands, const std::string& folder, unsigned seconds) {
  if (AnyHasNul(commands)) return false;
  const std::vector<Words> words = WordsOf(commands);
  const pid_t program = fork();
  if (program == 0) {
    setsid();
    alarm(seconds);  // stays set for what the process becomes
    Become(words, folder.c_str());
  }
  return program > 0 && WaitFor(program) == 0;
}

}  // namespace tresmor
