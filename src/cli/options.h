// The command line.
#pragma once

#include <array>
#include <cstdint>
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

// What of a result is printed, and how.
struct PrintOptions {
  std::array<bool, kSrchTypes> types{};
  bool versions = false;
  OutputFormat format = OutputFormat::Text;

  bool Wants(SrchType type) const { return types[static_cast<std::size_t>(type)]; }
  // Whether the format is one of mere paths.
  bool PrintsGroups() const { return format == OutputFormat::Groups || format == OutputFormat::Groups0; }
  // The one list that such a format prints.
  ResultList ListOfGroups() const;
};

// What all searches can be told.
struct SearchOptions : PrintOptions {
  std::string save;  // the session file to be written, as it was typed; empty = none
  bool quiet = false;
  ProgressWhen progress = ProgressWhen::Auto;
};

struct FindOptions : SearchOptions {
  std::vector<std::string> paths;  // folders as they were typed
  std::vector<std::string> areas;
  std::vector<std::string> excludes;
  std::string pattern = "*.*";
  std::string minKb;  // whole numbers as text; empty = no limit
  std::string maxKb;
  std::optional<DateStamp> since;  // on the local clock
  bool noSubfolders = false;
  bool hidden = false;
  bool tolerant = false;
  bool noProtect = false;
};

// `session` is a file as it was typed, here and below. The types are those of the session and not set here.
struct RunOptions : SearchOptions {
  std::string session;
};

struct ShowOptions : PrintOptions {
  std::string session;
};

// What stays of a group that is marked wholly, as Smart Marker's dialog is told it.
struct KeepRule {
  bool leaveAtLeast1 = true;
  std::int32_t leaveDate = 0;  // entries of the dialog's lists
  std::int32_t leaveVer = 0;
};

inline constexpr KeepRule kKeepNewest = {.leaveDate = 1};

struct MarkOptions {
  std::string session;
  ResultList list = ResultList::Duplicates;
  bool clear = false;
  std::vector<std::string> folders;  // as they were typed
  bool subFolders = false;
  std::string pattern;
  std::int32_t byDate = 0;  // entries of the dialog's lists
  std::int32_t bySize = 0;
  std::int32_t byVersion = 0;
  KeepRule keep = kKeepNewest;
};

struct ExportOptions {
  std::string session;
  ResultList list = ResultList::Duplicates;
  std::string file;  // to be written, as it was typed
};

enum class FileAction { Trash, Delete, Move, Copy };

struct OperOptions {
  FileAction action = FileAction::Trash;
  std::string session{};
  ResultList list = ResultList::Duplicates;
  std::string destination{};  // a folder as it was typed; none for trash and delete, as is the next
  bool structure = false;
  bool yes = false;
  bool removeEmpty = false;  // not for copy, as are the next two
  bool noVerify = false;
  bool allowAll = false;

  bool HasDestination() const { return action == FileAction::Move || action == FileAction::Copy; }
  // Whether files leave their places.
  bool TakesAway() const { return action != FileAction::Copy; }
};

struct UndoOptions {};

// What the user must put right; the text says it to them.
struct WrongUse : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What is to be done; a text is to be printed (help, version).
using Command = std::variant<std::string, FindOptions, RunOptions, ShowOptions, MarkOptions, ExportOptions, OperOptions,
                             UndoOptions>;

// Throws WrongUse.
Command ParseCommandLine(int argc, const char* const* argv);

}  // namespace tresmor
