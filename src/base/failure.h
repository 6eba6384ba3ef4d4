// Failures that reach a user: a stable number and a description.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace tresmor {

// The numbers are part of the program's messages and never change. They are those of classic Basic run times, which
// people know from its message boxes.
enum class Errors : int {
  None = 0,
  Overflow = 6,
  OutOfMemory = 7,
  Subscript = 9,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  Device = 57,
  FileExists = 58,
  DiskFull = 61,
  PastEnd = 62,
  TooManyFiles = 67,
  PermissionDenied = 70,
  DifferentDrive = 74,
  PathAccess = 75,
  BadPattern = 93,
  KeyExists = 457,
};

// The fixed description of a number, in plain English ("File not found").
const char* Describe(Errors number);

class Failure : public std::exception {
 public:
  explicit Failure(Errors number) : Failure(number, Describe(number)) {}
  Failure(Errors number, std::string description) : number_(number), description_(std::move(description)) {}

  Errors Number() const { return number_; }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  Errors number_;
  std::string description_;
};

// For a handler of all: what is being caught, as a Failure. Memory that can't be had, and a text that would be too long
// for any, is OutOfMemory; whatever else it is goes on being thrown.
Failure CaughtFailure();

// For steps of which each is taken whether or not the others could be.
template <class Step>
void PassOverFailure(Step&& step) {
  try {
    step();
  } catch (const Failure&) {
  }
}

}  // namespace tresmor
