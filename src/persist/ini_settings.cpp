#include "persist/ini_settings.h"

#include <utility>

#include "persist/ini_text.h"
#include "persist/whole_file.h"

namespace tresmor {

namespace {

constexpr std::int64_t kMostBytes = 16 * 1024 * 1024;

}  // namespace

IniSettings::IniSettings(const FileSystem& files, const FileWriter& writer, std::string path)
    : files_(files), writer_(writer), path_(std::move(path)) {}

std::string IniSettings::Get(std::string_view application, std::string_view section, std::string_view key,
                             std::string_view fallback) const {
  std::string ini;
  PassOverFailure([&] { ini = ReadWholeFile(files_, path_, kMostBytes); });
  return FindIniValue(ini, {application, section}, key).value_or(std::string(fallback));
}

void IniSettings::Save(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
  std::string ini = ReadToChange();
  if (SetIniValue(ini, {application, section}, key, value)) Write(ini);
}

void IniSettings::DeleteSection(std::string_view application, std::string_view section) {
  std::string ini = ReadToChange();
  if (RemoveIniKeys(ini, {application, section})) Write(ini);
}

// Writing anew what could only be read in part would lose the rest.
std::string IniSettings::ReadToChange() const {
  try {
    return ReadWholeFile(files_, path_, kMostBytes);
  } catch (const Failure& failure) {
    if (failure.Number() != Errors::FileNotFound) throw;
    return {};
  }
}

void IniSettings::Write(const std::string& ini) const {
  if (static_cast<std::int64_t>(ini.size()) > kMostBytes) throw Failure(Errors::Overflow);
  Errors failure = writer_.Replace(path_, ini);
  if (failure == Errors::FileNotFound) {
    failure = writer_.MakeFolder(std::string(GetFolderOf(path_, files_.Style())));
    if (failure == Errors::None) failure = writer_.Replace(path_, ini);
  }
  if (failure != Errors::None) throw Failure(failure);
}

}  // namespace tresmor
