#include "transfer/trash_info.h"

#include "base/date.h"
#include "base/path.h"
#include "base/text.h"

namespace tresmor {

namespace {

constexpr std::string_view kPlainMarks = "-_.!~*'()/";

// "yyyy-mm-ddThh:mm:ss".
std::string IsoDate(DateStamp stamp) {
  std::string text = FormatStamp(stamp);
  text[4] = text[7] = '-';
  text[10] = 'T';
  return text;
}

}  // namespace

std::string TrashInfo(const std::string& path, const TrashPlace& place, std::int64_t unixSeconds, PathStyle style) {
  const std::string real =
      place.realFolder.empty() ? path : JoinPath(place.realFolder, GetFileNameOf(path, style), style);
  std::string_view noted = real;
  if (!place.topFolder.empty() && LiesBelow(real, place.topFolder, style)) {
    noted.remove_prefix(AddTail(place.topFolder, style.Tail()).size());
  }
  return "[Trash Info]\nPath=" + PercentEncoded(noted, kPlainMarks) +
         "\nDeletionDate=" + IsoDate(LocalStamp(unixSeconds)) + "\n";
}

}  // namespace tresmor
