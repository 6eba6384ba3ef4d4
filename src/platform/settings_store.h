// The port to the user's settings.
#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

namespace tresmor {

// Texts under an application, a section of it and a key in that, all three compared without regard to case. Names and
// values are any bytes. Several programs may use one store at once, even in the same moment: what one saves stays when
// another saves a key of its own. One thread at a time.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The value, or `fallback` where none is kept. A store that can't be read has none, and from then on Save fails for
  // the same reason: what its caller holds may be fallbacks, which must not take the place of what is kept.
  virtual std::string Get(std::string_view application, std::string_view section, std::string_view key,
                          std::string_view fallback) const = 0;

  // These throw a Failure where the store can't be read or written, and leave it as it was.
  virtual void Save(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view value) = 0;
  // All keys of a section. A section that isn't there is no failure.
  virtual void DeleteSection(std::string_view application, std::string_view section) = 0;
};

}  // namespace tresmor
