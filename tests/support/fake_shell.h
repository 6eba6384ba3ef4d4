// A desktop of the test's own, which keeps what it was asked to do.
#pragma once

#include <algorithm>
#include <functional>
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
  void ShellOpen(const std::string& path) const override {
    opened.push_back(path);
    if (onOpen) onOpen();
  }
  void RunProgram(const std::string& program, const std::string& file) const override {
    opened.push_back(program + " <" + file + ">");
  }
  std::string FirstFolder() const override { return firstFolder; }
  bool MustStay(const std::string& folder, const std::string& destination) const override {
    const auto isKept = [&](const std::string& kept) { return (kept + "/").starts_with(folder + "/"); };
    return isKept(destination) || std::any_of(kept.begin(), kept.end(), isKept);
  }
  std::string firstFolder = "/home/me";
  std::vector<std::string> kept;
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
  std::function<void()> onOpen;  // a file or folder, once it is kept in `opened`
};

}  // namespace tresmor
