// A local clock for a test.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace tresmor {

// Runs with a clock of this zone, and ends with the clock as it was.
class ZoneGuard {
 public:
  explicit ZoneGuard(const char* zone) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~ZoneGuard() {
    before_ ? setenv("TZ", before_->c_str(), 1) : unsetenv("TZ");
    tzset();
  }

 private:
  std::optional<std::string> before_;
};

}  // namespace tresmor
