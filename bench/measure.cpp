// Runs a command and writes what it cost: measure REPORT COMMAND [ARGUMENT...]
// The report is one line: wall, user and system seconds, peak memory in KiB, the command's exit status.
//
// A program of its own, since a process starts with the peak memory of the one that forked it: below this small one
// the figure is the command's own, below an interpreter it would be the interpreter's.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fputs("usage: measure REPORT COMMAND [ARGUMENT...]\n", stderr);
    return 2;
  }
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) return 3;
  if (child == 0) {
    execvp(arguments[2], arguments + 2);
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) != child) return 3;
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
  std::FILE* report = std::fopen(arguments[1], "w");
  if (report == nullptr) return 3;
  std::fprintf(report, "%.6f %.6f %.6f %ld %d\n", wall.count(), Seconds(usage.ru_utime), Seconds(usage.ru_stime),
               usage.ru_maxrss, WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
  return std::fclose(report) == 0 ? 0 : 3;
}
