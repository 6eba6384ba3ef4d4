#include "transfer/trouble.h"

namespace tresmor {

namespace {

OperationCode CodeOf(Errors failure, OperationCode otherwise) {
  switch (failure) {
    case Errors::None:
      return OperationCode::Done;
    case Errors::FileNotFound:
      return OperationCode::NotFound;
    case Errors::PermissionDenied:
    case Errors::PathAccess:
      return OperationCode::Denied;
    case Errors::DiskFull:
      return OperationCode::DiskFull;
    case Errors::FileExists:
      return OperationCode::Exists;
    case Errors::BadFileName:
      return OperationCode::BadName;
    case Errors::Overflow:
      return OperationCode::TooLarge;
    default:
      return otherwise;
  }
}

std::string TargetReason(Errors failure, const std::string& place) {
  switch (failure) {
    case Errors::FileNotFound:
      return place + " is not there";
    case Errors::PermissionDenied:
      return "there is no permission to write to " + place;
    case Errors::PathAccess:
      return place + " can't be written to";
    case Errors::DiskFull:
      return "the disk of " + place + " is full";
    case Errors::Overflow:
      return "it is too large for the disk of " + place;
    case Errors::FileExists:
      return place + " stands there already";
    case Errors::BadFileName:
      return "the disk doesn't take the name " + place;
    case Errors::Device:
      return "writing to " + place + " failed";
    default:
      return place + ": " + Describe(failure);
  }
}

std::string SourceReason(Errors failure) {
  switch (failure) {
    case Errors::FileNotFound:
      return "it is not there";
    case Errors::PermissionDenied:
      return "permission denied";
    case Errors::PathAccess:
      return "it is in use, or no plain file";
    case Errors::BadFileName:
      return "its name is none that the disk takes";
    case Errors::Device:
      return "reading it failed";
    default:
      return Describe(failure);
  }
}

}  // namespace

Trouble SourceTrouble(Errors failure) {
  if (failure == Errors::None) return {};
  return {CodeOf(failure, OperationCode::ReadFault), SourceReason(failure)};
}

Trouble TargetTrouble(Errors failure, std::string_view place) {
  if (failure == Errors::None) return {};
  return {CodeOf(failure, OperationCode::WriteFault), TargetReason(failure, std::string(place))};
}

Trouble PlaceTrouble(Errors failure, const std::string& to, PathStyle style) {
  return TargetTrouble(failure, IsOfName(failure) ? to : ParentOf(to, style));
}

Trouble CancelledTrouble() { return {OperationCode::Cancelled, "it was cancelled"}; }

Trouble RenameTrouble(Errors failure, const FileSystem& files, const std::string& from, const std::string& to) {
  if (failure == Errors::None) return {};
  FileStat stat;
  if (const Errors source = files.Stat(from, stat); source != Errors::None) return SourceTrouble(source);
  if (failure == Errors::PermissionDenied) return {OperationCode::Denied, "there is no permission to move it to " + to};
  return PlaceTrouble(failure, to, files.Style());
}

}  // namespace tresmor
