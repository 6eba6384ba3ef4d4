// The user's settings in one file (persist/ini_text.h).
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/file_writer.h"
#include "platform/settings_store.h"

namespace tresmor {

// Every call reads the file anew, and the writer puts the new file in the old one's place as a whole. Who changes it
// keeps the others out from the reading to the writing, as long as none of them stands still there: then the one that
// has waited for too long goes on, and what the other writes later wins.
// A file of more than 16 MiB is no settings file: neither is it read nor is one written (Overflow).
class IniSettings final : public SettingsStore {
 public:
  // The file at `path` needn't be there yet, nor its folder. It may be a link to the file. `writer` should make files
  // that are the user's alone.
  IniSettings(const FileSystem& files, const FileWriter& writer, std::string path);

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) const override;
  // A value that stands there already is not written.
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;
  void DeleteSection(std::string_view application, std::string_view section) override;

 private:
  void Change(const std::function<bool(std::string& ini)>& change) const;
  std::string Read() const;

  const FileSystem& files_;
  const FileWriter& writer_;
  const std::string path_;
  mutable Errors unread_ = Errors::None;  // why Get once gave a fallback in place of what is kept
};

}  // namespace tresmor
