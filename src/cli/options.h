// The command line.
#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "base/date.h"
#include "search/exec_srch.h"

namespace tresmor {

enum class OutputFormat { Text, Groups, Groups0, Json, Csv };
enum class ProgressWhen { Auto, Always, Never };

struct FindOptions {
  std::vector<std::string> paths;  // folders as they were typed
  std::vector<std::string> areas;
  std::vector<std::string> excludes;
  std::string pattern = "*.*";
  std::string minKb;  // whole numbers as text; empty = no limit
  std::string maxKb;
  std::optional<DateStamp> since;  // on the local clock
  std::array<bool, kSrchTypes> types{};
  bool noSubfolders = false;
  bool hidden = false;
  bool tolerant = false;
  bool noProtect = false;
  bool quiet = false;
  OutputFormat format = OutputFormat::Text;
  ProgressWhen progress = ProgressWhen::Auto;

  bool Wants(SrchType type) const { return types[static_cast<std::size_t>(type)]; }
  // The one list that a format of mere paths prints.
  ResultList ListOfGroups() const;
};

// What the user must put right; the text says it to them.
struct WrongUse : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A search, or a text that was asked for (help, version). Throws WrongUse.
std::variant<FindOptions, std::string> ParseCommandLine(int argc, const char* const* argv);

}  // namespace tresmor
