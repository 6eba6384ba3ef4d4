#include <array>

#include "base/text.h"
#include "cli/formats.h"
#include "cli/readable.h"
#include "cli/result_reader.h"
#include "cli/visible.h"
#include "results/counters.h"
#include "results/rows.h"

namespace tresmor {
namespace {

constexpr std::array<const char*, kResultLists> kHeadings = {"Zero size", "Duplicates", "Same name", "Portions",
                                                             "Read errors"};

std::string PadLeft(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

// Nothing where the list has no versions.
std::string VersionColumn(ResultReader& reader, std::int32_t row) {
  const auto version = reader.Version(row);
  if (!version) return "";
  return PadLeft(version->empty() ? "-" : std::string(*version), 16) + "  ";
}

void PrintGroup(Output& out, ResultReader& reader, RowGroup group) {
  std::int64_t bytes = 0;
  for (std::int32_t row = group.first; row <= group.last; ++row) bytes += reader.Size(row);
  out.Write("\n" + CountOf(group.Rows(), "file") + ", " + ReadableSize(bytes) + "\n");
}

void PrintListAsText(Output& out, const ResultLists& lists, ResultList kind) {
  const auto i = static_cast<std::size_t>(kind);
  const ListView& lst = lists.List(kind);
  const std::string groups = HasGroups(kind) ? " in " + CountOf(lists.GroupCnt[i], "group") : "";
  const std::int32_t marked = CountMarked(lst).count;
  const std::string marks = marked > 0 ? ", " + std::to_string(marked) + " marked" : "";
  const std::string heading = kHeadings[i] + (": " + CountOf(lst.Count(), "file")) + groups + marks;
  out.Write(heading + "\n" + std::string(heading.size(), '=') + "\n");
  ResultReader reader(lst);
  ForEachGroup(lists, kind, [&](RowGroup group) {
    if (HasGroups(kind)) PrintGroup(out, reader, group);
    for (std::int32_t row = group.first; row <= group.last; ++row) {
      const std::string date(reader.Date(row).value_or("-"));
      if (marked > 0) out.Write(reader.Marked(row) ? "* " : "  ");
      out.Write(PadLeft(ReadableSize(reader.Size(row)), 12) + "  " + PadLeft(date, 19) + "  " +
                VersionColumn(reader, row) + Visible(reader.Path(row)) + "\n");
    }
  });
  out.Write('\n');
}

}  // namespace

void PrintText(Output& out, const PrintOptions& options, const FindResult& result) {
  for (int i = 0; i < kResultLists; ++i) {
    const auto kind = static_cast<ResultList>(i);
    const bool wanted =
        kind == ResultList::ReadErrors ? result.lists.List(kind).Count() > 0 : options.Wants(static_cast<SrchType>(i));
    if (wanted) PrintListAsText(out, result.lists, kind);
  }
  if (result.end) out.Write(result.end->message + "\n");
  out.Write(ReplaceAll(GetReportCountStr(result.lists), "\r\n", "\n"));
}

}  // namespace tresmor
