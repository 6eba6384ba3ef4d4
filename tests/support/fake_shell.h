// A desktop of the test's own, which keeps what it was asked to do.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/shell.h"

namespace tresmor {

// One thread at a time, but for the folders of the system.
class FakeShell final : public Shell {
 public:
  std::string GetWinDir() const override { return winDir; }
  std::string GetProgramFilesDir() const override { return programFilesDir; }
  std::string winDir = "/usr";
  std::string programFilesDir = "/opt";

  bool IsLocalDrive(const std::string& root) const override { return root == localDrive; }
  std::string spFolder(int number) const override {
    asked.push_back(number);
    const auto found = folders.find(number);
    return found == folders.end() ? "" : found->second;
  }
  std::string DefaultEditor() const override { return defaultEditor; }
  void OpenUrl(const std::string& target) const override { opened.push_back(target); }
  void ShellOpen(const std::string& path) const override { opened.push_back(path); }
  bool ShowFileProp(const std::string& file) const override {
    shown.push_back(file);
    return answers;
  }
  std::string localDrive = "/";
  std::map<int, std::string> folders = {{0, "/home/me/Desktop"}, {5, "/home/me/Documents"}, {6, "/home/me"}};
  std::string defaultEditor = "editor";
  bool answers = true;  // shows the sheets it is asked for
  mutable std::vector<int> asked;
  mutable std::vector<std::string> opened;
  mutable std::vector<std::string> shown;
};

}  // namespace tresmor
