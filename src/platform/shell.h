// The port to the desktop around the program.
#pragma once

#include <string>

namespace tresmor {

// Any thread, unless told otherwise. A path with a NUL in it is that of no file: it fails like any other that does.
class Shell {
 public:
  virtual ~Shell() = default;
  // The folders that hold the system and its programs, without a separator at the end; empty if they can't be told.
  virtual std::string GetWinDir() const = 0;
  virtual std::string GetProgramFilesDir() const = 0;

  // Opens a file or folder with the program that the desktop has for it, and doesn't wait for that. Whether it worked
  // isn't told.
  virtual void ShellOpen(const std::string& path) const = 0;
  // Whether `root` is where a disk that is built into this machine begins, and no disk to be taken out, CD or network.
  virtual bool IsLocalDrive(const std::string& root) const = 0;
  // A folder of the user by its number, without a separator at the end: 0 the desktop, 5 the documents, 6 the
  // favourites. Empty for any other number and for a folder that doesn't exist.
  virtual std::string spFolder(int number) const = 0;
  // What opens texts until the user names another program.
  virtual std::string DefaultEditor() const = 0;
  // Opens an address or a file by the desktop's default program. Doesn't wait for it; a failure shows nothing.
  virtual void OpenUrl(const std::string& target) const = 0;
  // Starts a program on one file and doesn't wait for it; a failure shows nothing. A bare name is looked up where the
  // system looks for programs. The file is one argument, whatever its name.
  virtual void RunProgram(const std::string& program, const std::string& file) const = 0;
  // Where a choice of folders begins that knows no better.
  virtual std::string FirstFolder() const = 0;
  // Whether a folder isn't to be removed when it is found empty: it is `destination`, a root, a mount point or the home
  // folder, or one of these lies below it, or that can't be told. Links on the way are no matter. An empty
  // `destination` stands for none.
  virtual bool MustStay(const std::string& folder, const std::string& destination) const = 0;
  // Has the desktop show its own sheet of a file's properties. False if nothing there answered, so that no sheet is
  // coming. Waits up to a few seconds for the answer, not for the sheet to be closed: a job's call, never the interface
  // thread's.
  virtual bool ShowFileProp(const std::string& file) const = 0;
};

}  // namespace tresmor
