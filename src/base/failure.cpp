#include "base/failure.h"

#include <new>
#include <stdexcept>

namespace tresmor {

const char* Describe(Errors number) {
  switch (number) {
    case Errors::None:
      return "";
    case Errors::Overflow:
      return "Overflow";
    case Errors::OutOfMemory:
      return "Out of memory";
    case Errors::Subscript:
      return "Subscript out of range";
    case Errors::TypeMismatch:
      return "Type mismatch";
    case Errors::BadFileName:
      return "Bad file name or number";
    case Errors::FileNotFound:
      return "File not found";
    case Errors::Device:
      return "Device I/O error";
    case Errors::FileExists:
      return "File already exists";
    case Errors::DiskFull:
      return "Disk full";
    case Errors::PastEnd:
      return "Input past end of file";
    case Errors::TooManyFiles:
      return "Too many files";
    case Errors::PermissionDenied:
      return "Permission denied";
    case Errors::DifferentDrive:
      return "Can't rename with different drive";
    case Errors::PathAccess:
      return "Path/File access error";
    case Errors::BadPattern:
      return "Invalid pattern string";
    case Errors::KeyExists:
      return "This key is already associated with an element of this collection";
  }
  return "Application-defined or object-defined error";
}

Failure CaughtFailure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(Errors::OutOfMemory);
  } catch (const std::length_error&) {
    return Failure(Errors::OutOfMemory);
  }
}

}  // namespace tresmor
