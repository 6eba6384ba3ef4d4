#include "transfer/trash_info.h"

#include "base/date.h"
#include "transfer/operation_plan.h"

namespace tresmor {

namespace {

constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.!~*'()/";

std::string PercentEncoded(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    if (kPlain.find(byte) != kPlain.npos) {
      text += byte;
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    text.append({'%', kDigits[value / 16], kDigits[value % 16]});
  }
  return text;
}

// "yyyy-mm-ddThh:mm:ss".
std::string IsoDate(DateStamp stamp) {
  std::string text = FormatStamp(stamp);
  text[4] = text[7] = '-';
  text[10] = 'T';
  return text;
}

}  // namespace

std::string TrashInfo(const std::string& path, const TrashPlace& place, std::int64_t unixSeconds, PathStyle style) {
  std::string_view noted = path;
  if (!place.topFolder.empty() && LiesBelow(path, place.topFolder, style)) {
    noted.remove_prefix(AddTail(place.topFolder, style.Tail()).size());
  }
  return "[Trash Info]\nPath=" + PercentEncoded(noted) + "\nDeletionDate=" + IsoDate(LocalStamp(unixSeconds)) + "\n";
}

}  // namespace tresmor
