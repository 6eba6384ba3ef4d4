#include <cmath>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "cli/base64.h"
#include "cli/formats.h"
#include "cli/result_reader.h"

namespace tresmor {
namespace {

using Json = nlohmann::ordered_json;

// Bytes that are not UTF-8 become U+FFFD.
std::string Dump(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

Json RowOf(ResultReader& reader, std::int32_t row, const std::optional<std::int64_t>& group) {
  const std::string_view path = reader.Path(row);
  Json object = {{"path", path}, {"size", reader.Size(row)}};
  const auto date = reader.IsoDate(row);
  object["date"] = date ? Json(*date) : Json();
  if (group) object["group"] = *group;
  if (const auto version = reader.Version(row)) object["version"] = version->empty() ? Json() : Json(*version);
  if (reader.Marked(row)) object["marked"] = true;
  if (!IsUtf8(path)) object["path_base64"] = Base64(path);
  return object;
}

void PrintListAsJson(Output& out, const ResultLists& lists, ResultList kind) {
  ResultReader reader(lists.List(kind));
  std::int64_t running = 0;
  const char* before = "\n";
  ForEachGroup(lists, kind, [&](RowGroup group) {
    const auto number = GroupNumber(reader, kind, group, ++running);
    for (std::int32_t row = group.first; row <= group.last; ++row) {
      out.Write(before);
      out.Write(Dump(RowOf(reader, row, number)));
      before = ",\n";
    }
  });
  if (running > 0) out.Write('\n');
}

void PrintEnd(Output& out, const SearchEnd& end) {
  const double milliseconds = std::round(end.seconds * 1000);
  out.Write("\"searched\": " + Dump(end.searched) + ",\n\"elapsed_seconds\": " + Dump(milliseconds / 1000) +
            ",\n\"cancelled\": " + Dump(end.cancelled) + ",\n");
}

}  // namespace

// Written row by row, since a document of a million rows would need more memory than the search.
void PrintJson(Output& out, const FindResult& result) {
  out.Write("{\n");
  if (result.end) PrintEnd(out, *result.end);
  out.Write("\"lists\": {");
  for (int i = 0; i < kResultLists; ++i) {
    const auto kind = static_cast<ResultList>(i);
    out.Write((i == 0 ? "\n" : ",\n") + Dump(ListName(kind)) + ": [");
    PrintListAsJson(out, result.lists, kind);
    out.Write(']');
  }
  out.Write("\n}\n}\n");
}

}  // namespace tresmor
