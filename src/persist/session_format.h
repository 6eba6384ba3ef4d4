// What the reading and the writing of a session file have in common.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "controls/list_view.h"

namespace tresmor {

inline constexpr std::string_view kSessionVersion = "3.0.0";
inline constexpr std::string_view kOldSessionVersion = "1.2.0";
inline constexpr std::string_view kFieldEnd = "|-";
inline constexpr std::string_view kLineEnd = "\r\n";

// A row line cut at each "|-". Keeps its room from line to line.
class SessionFields {
 public:
  // `line` must outlive what is read of it. An empty line has no fields at all.
  void Split(std::string_view line);
  // The index of the last field, -1 if there is none.
  std::int32_t Last() const { return static_cast<std::int32_t>(fields_.size()) - 1; }
  // Fails with Subscript where no field stands.
  std::string_view operator[](std::int32_t index) const;
  // Adds a row with field 0 as its text and fields 1 to `last` as its sub-items, and gives its position. If there are
  // more of them than columns the row comes about with those that fit, and then it fails with Subscript.
  std::int32_t AddRow(ListView& lst, std::int32_t last) const;

 private:
  std::vector<CellValue> fields_;  // texts all, in the form in which lists take them
};

// "True" and "False" in any case, and numbers, of which 0 is false. Throws Failure TypeMismatch for all else.
bool ParseBoolean(std::string_view text);
constexpr std::string_view BooleanText(bool value) { return value ? "True" : "False"; }

}  // namespace tresmor
