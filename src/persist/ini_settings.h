// The user's settings in one file (persist/ini_text.h).
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/file_writer.h"
#include "platform/settings_store.h"

namespace tresmor {

// Every call reads the file anew, and the writer puts the new file in the old one's place as a whole. So programs that
// change keys of their own one after the other lose nothing; of two that write at the same moment the later one wins.
// A file of more than 16 MiB is no settings file: neither is it read nor is one written (Overflow).
class IniSettings final : public SettingsStore {
 public:
  // The file at `path` needn't be there yet, nor its folder. It may be a link to the file.
  IniSettings(const FileSystem& files, const FileWriter& writer, std::string path);

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) const override;
  // A value that stands there already is not written.
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;
  void DeleteSection(std::string_view application, std::string_view section) override;

 private:
  void Write(const std::string& ini) const;
  std::string ReadToChange() const;

  const FileSystem& files_;
  const FileWriter& writer_;
  const std::string path_;
};

}  // namespace tresmor
