#include "cli/formats.h"
#include "cli/result_reader.h"

namespace tresmor {
namespace {

// As RFC 4180 has it: a field that holds what parts fields stands in quotes, and a quote in it is written twice.
void AppendField(std::string& line, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    line.append(text);
    return;
  }
  line.push_back('"');
  for (const char c : text) line.append(c == '"' ? 2 : 1, c);
  line.push_back('"');
}

void PrintListAsCsv(Output& out, const PrintOptions& options, const ResultLists& lists, ResultList kind) {
  ResultReader reader(lists.List(kind));
  std::int64_t running = 0;
  std::string line;
  ForEachGroup(lists, kind, [&](RowGroup group) {
    const auto number = GroupNumber(reader, kind, group, ++running);
    for (std::int32_t row = group.first; row <= group.last; ++row) {
      line.assign(ListName(kind)).append(1, ',');
      line.append(number ? std::to_string(*number) : "").append(1, ',');
      AppendField(line, reader.Folder(row));
      line.append(1, ',');
      AppendField(line, reader.Name(row));
      line.append(1, ',').append(std::to_string(reader.Size(row))).append(1, ',');
      line.append(reader.IsoDate(row).value_or(""));
      if (options.versions) line.append(1, ',').append(reader.Version(row).value_or(""));
      line.append("\r\n");
      out.Write(line);
    }
  });
}

}  // namespace

void PrintCsv(Output& out, const PrintOptions& options, const FindResult& result) {
  out.Write("list,group,folder,name,size,date");
  out.Write(options.versions ? ",version\r\n" : "\r\n");
  for (int i = 0; i < kResultLists; ++i) PrintListAsCsv(out, options, result.lists, static_cast<ResultList>(i));
}

}  // namespace tresmor
