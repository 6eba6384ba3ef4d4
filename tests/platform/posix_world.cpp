#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/file_world.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"
#include "support/temp_tree.h"

namespace tresmor {

namespace {

// The folder that holds a path's last name, reached name by name, so that the path may be of any length.
class Parent {
 public:
  explicit Parent(const std::string& path) : folder_(open("/", O_PATH | O_CLOEXEC)) {
    std::size_t at = 1;
    for (std::size_t end = path.find('/', at); end != std::string::npos; end = path.find('/', at)) {
      const std::string step = path.substr(at, end - at);
      const int next = openat(folder_, step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
      Check(next >= 0, step);
      close(folder_);
      folder_ = next;
      at = end + 1;
    }
    name_ = path.substr(at);
  }
  ~Parent() { close(folder_); }
  Parent(const Parent&) = delete;
  Parent& operator=(const Parent&) = delete;

  int Folder() const { return folder_; }
  const char* Name() const { return name_.c_str(); }

 private:
  int folder_;
  std::string name_;
};

class PosixWorld final : public FileWorld {
 public:
  PosixWorld() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_XXXXXX";
    Check(mkdtemp(pattern.data()) != nullptr, pattern);
    Check(chmod(pattern.c_str(), 0755) == 0, pattern);  // for the user of WithoutAccess
    root_ = pattern + "/";
  }
  // By a program that can go as deep as the tests do.
  ~PosixWorld() override {
    if (std::system(("rm -rf -- '" + root_ + "'").c_str()) != 0) std::perror(root_.c_str());
  }

  const FileSystem& Files() const override { return files_; }
  const FileWriter& Writer() const override { return writer_; }
  std::string Root() const override { return root_; }

  void MakeFolder(const std::string& path) override {
    int folder = open("/", O_PATH | O_CLOEXEC);
    for (std::size_t at = 1; at < path.size();) {
      const std::size_t end = std::min(path.find('/', at), path.size());
      const std::string step = path.substr(at, end - at);
      Check(mkdirat(folder, step.c_str(), 0755) == 0 || errno == EEXIST, step);
      const int next = openat(folder, step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
      Check(next >= 0, step);
      close(folder);
      folder = next;
      at = end + 1;
    }
    close(folder);
  }
  void MakeFile(const std::string& path, const std::string& content) override {
    MakeFolder(path.substr(0, path.rfind('/')));
    Write(path, O_CREAT | O_EXCL, content);
  }
  void MakeSparse(const std::string& path, std::int64_t size, const std::string& tail) override {
    MakeFile(path, "");
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    const auto tailAt = size - static_cast<std::int64_t>(tail.size());
    Check(pwrite(file, tail.data(), tail.size(), tailAt) == static_cast<ssize_t>(tail.size()), path);
    close(file);
  }
  void MakeLink(const std::string& path, const std::string& target) override {
    const Parent at(path);
    Check(symlinkat(target.c_str(), at.Folder(), at.Name()) == 0, path);
  }
  void MakeFifo(const std::string& path) override {
    const Parent at(path);
    Check(mkfifoat(at.Folder(), at.Name(), 0644) == 0, path);
  }
  void MakeHardLink(const std::string& path, const std::string& existing) override {
    Check(link(existing.c_str(), path.c_str()) == 0, path);
  }
  void Hide(const std::string&) override {}
  void SetModified(const std::string& path, std::int64_t seconds) override {
    const timespec times[2] = {{seconds, 0}, {seconds, 999'999'999}};
    Check(utimensat(AT_FDCWD, path.c_str(), times, 0) == 0, path);
  }
  void SetContent(const std::string& path, const std::string& content) override { Write(path, O_TRUNC, content); }
  void Remove(const std::string& file) override {
    const Parent at(file);
    Check(unlinkat(at.Folder(), at.Name(), 0) == 0, file);
  }

  // The superuser may read everything; for the time of the work this thread's file accesses are somebody else's.
  void WithoutAccess(const std::string& path, const std::function<void()>& work) override {
    struct stat before {};
    Check(stat(path.c_str(), &before) == 0 && chmod(path.c_str(), 0) == 0, path);
    const auto user = static_cast<uid_t>(setfsuid(geteuid() == 0 ? 65534 : geteuid()));
    work();
    setfsuid(user);
    Check(chmod(path.c_str(), before.st_mode & 07777) == 0, path);
  }
  // Who may write is asked for the user who started the program.
  void WithoutWriting(const std::string& path, const std::function<void()>& work) override {
    struct stat before {};
    Check(stat(path.c_str(), &before) == 0 && chmod(path.c_str(), 0444) == 0, path);
    const uid_t user = getuid();
    const bool superuser = geteuid() == 0;
    if (superuser) Check(setreuid(65534, 0) == 0, "user");
    work();
    if (superuser) Check(setreuid(user, 0) == 0, "user");
    Check(chmod(path.c_str(), before.st_mode & 07777) == 0, path);
  }
  void WithFewFiles(const std::function<void()>& work) override {
    rlimit limit{};
    Check(getrlimit(RLIMIT_NOFILE, &limit) == 0, "limit");
    const int lowestFree = open("/", O_PATH | O_CLOEXEC);
    close(lowestFree);
    const rlimit few{static_cast<rlim_t>(lowestFree) + 5, limit.rlim_max};
    Check(setrlimit(RLIMIT_NOFILE, &few) == 0, "limit");
    work();
    Check(setrlimit(RLIMIT_NOFILE, &limit) == 0, "limit");
  }
  std::string ForbiddenFolder() override { return "/proc"; }

 private:
  void Write(const std::string& path, int flags, const std::string& content) {
    const Parent at(path);
    const int file = openat(at.Folder(), at.Name(), O_WRONLY | O_CLOEXEC | flags, 0644);
    Check(file >= 0, path);
    Check(write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size()), path);
    close(file);
  }

  PosixFileSystem files_;
  PosixFileWriter writer_;
  std::string root_;
};

}  // namespace

std::unique_ptr<FileWorld> MakePosixWorld() { return std::make_unique<PosixWorld>(); }

}  // namespace tresmor
