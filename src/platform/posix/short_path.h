// Paths of any length for calls that take up to PATH_MAX bytes.
#pragma once

#include <string>
#include <utility>

#include "base/failure.h"

namespace tresmor {

// A descriptor that is closed at the end. -1 holds none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor();

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

 private:
  int number_;
};

// What a failed call's errno means for a path.
Errors PathFailure(int error);

// Where `path` leads if its last name is a link, and on through further links; nothing need stand there. `path` itself
// if they run in a circle or where nobody may look.
std::string ResolveLinks(const std::string& path);

// `path` as a folder and a rest that is short enough for the "at" calls. A long path costs a descriptor and a call for
// each PATH_MAX bytes, a short one nothing. `path` must outlive it.
class ShortPath {
 public:
  explicit ShortPath(const std::string& path);

  Errors Failure() const { return failure_; }  // None, or Folder and Rest must not be used
  int Folder() const;
  const char* Rest() const { return rest_; }

 private:
  void WalkDown(const std::string& path);

  Descriptor folder_;
  const char* rest_;
  Errors failure_ = Errors::None;
};

}  // namespace tresmor
