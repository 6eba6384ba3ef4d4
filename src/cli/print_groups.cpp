#include "cli/formats.h"
#include "cli/result_reader.h"
#include "cli/visible.h"
#include "results/rows.h"

namespace tresmor {

void PrintGroups(Output& out, const ResultLists& lists, ResultList kind, LineEnd lineEnd, Names names) {
  ResultReader reader(lists.List(kind));
  bool first = true;
  ForEachGroup(lists, kind, [&](RowGroup group) {
    if (HasGroups(kind) && group.Rows() < 2) return;
    if (!first) out.Write(static_cast<char>(lineEnd));
    first = false;
    for (std::int32_t row = group.first; row <= group.last; ++row) {
      const std::string_view path = reader.Path(row);
      out.Write(names == Names::MadeVisible ? std::string_view(Visible(path)) : path);
      out.Write(static_cast<char>(lineEnd));
    }
  });
}

}  // namespace tresmor
