#include "persist/ini_settings.h"

#include <memory>
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
  try {
    return FindIniValue(Read(), {application, section}, key).value_or(std::string(fallback));
  } catch (const Failure& failure) {
    unread_ = failure.Number();
    return std::string(fallback);
  }
}

void IniSettings::Save(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
  if (unread_ != Errors::None) throw Failure(unread_);
  Change([&](std::string& ini) { return SetIniValue(ini, {application, section}, key, value); });
}

void IniSettings::DeleteSection(std::string_view application, std::string_view section) {
  Change([&](std::string& ini) { return RemoveIniKeys(ini, {application, section}); });
}

// `change` tells whether there is something to write.
void IniSettings::Change(const std::function<bool(std::string& ini)>& change) const {
  Errors failure = writer_.MakeFolder(std::string(GetFolderOf(path_, files_.Style())));
  const std::unique_ptr<FileLock> lock = writer_.Lock(path_);
  std::string ini = Read();
  if (!change(ini)) return;
  if (static_cast<std::int64_t>(ini.size()) > kMostBytes) throw Failure(Errors::Overflow);
  if (failure == Errors::None) failure = writer_.Replace(path_, ini);
  if (failure != Errors::None) throw Failure(failure);
}

// Writing anew what could only be read in part would lose the rest.
std::string IniSettings::Read() const {
  try {
    return ReadWholeFile(files_, path_, kMostBytes);
  } catch (const Failure& failure) {
    if (failure.Number() != Errors::FileNotFound) throw;
    return {};
  }
}

}  // namespace tresmor
