#include "base/date_names.h"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"

namespace tresmor {

namespace {

constexpr std::array<std::string_view, 12> kEnglish = {"January",   "February", "March",    "April",
                                                       "May",       "June",     "July",     "August",
                                                       "September", "October",  "November", "December"};

// Those of January; the other months' follow. The last ones stand alone, where a language has other names beside a day.
constexpr nl_item kLocaleNames[] = {
    MON_1,
    ABMON_1,
#ifdef ALTMON_1
    ALTMON_1,
#endif
};

// Some locales fill short names up with blanks.
std::string LocaleName(nl_item item) { return std::string(TrimBlanks(nl_langinfo(item))); }

struct MonthName {
  std::string folded;
  unsigned month;
};

void AddName(std::vector<MonthName>& names, std::string_view name, unsigned month) {
  if (name.ends_with('.')) name.remove_suffix(1);
  std::string folded = FoldCase(AsciiDigits(name));
  if (folded.find_first_not_of("0123456789./-, ") == folded.npos) return;  // could be any number
  names.push_back({std::move(folded), month});
}

// The longer first; of those as long the locale's.
std::vector<MonthName> AllNames() {
  std::vector<MonthName> names;
  for (unsigned i = 0; i < kEnglish.size(); ++i) {
    for (const nl_item item : kLocaleNames) AddName(names, LocaleName(item + static_cast<nl_item>(i)), i + 1);
  }
  for (unsigned i = 0; i < kEnglish.size(); ++i) {
    AddName(names, kEnglish[i], i + 1);
    AddName(names, EnglishShortMonth(i + 1), i + 1);
  }
  const auto longer = [](const MonthName& a, const MonthName& b) { return a.folded.size() > b.folded.size(); };
  std::stable_sort(names.begin(), names.end(), longer);
  return names;
}

// Where `name` stands in `text` with nothing but marks beside it.
std::size_t FindPart(std::string_view text, std::string_view name) {
  for (std::size_t at = text.find(name); at != text.npos; at = text.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    if ((at == 0 || !IsDatePart(text[at - 1])) && (end == text.size() || !IsDatePart(text[end]))) return at;
  }
  return text.npos;
}

}  // namespace

bool IsDateMark(char c) { return c == '.' || c == '/' || c == '-' || c == ','; }

std::optional<FoundMonth> FindMonth(std::string_view folded) {
  static const std::vector<MonthName> names = AllNames();
  for (const MonthName& name : names) {
    const std::size_t at = FindPart(folded, name.folded);
    if (at != folded.npos) return FoundMonth{at, name.folded.size(), name.month};
  }
  return std::nullopt;
}

std::string ShortMonth(unsigned month) { return LocaleName(ABMON_1 + static_cast<nl_item>(month) - 1); }

std::string EnglishShortMonth(unsigned month) { return std::string(kEnglish[month - 1].substr(0, 3)); }

std::optional<bool> TakeHalfOfDay(std::string_view& folded) {
  static const std::array<std::string, 4> marks = {FoldCase(LocaleName(AM_STR)), FoldCase(LocaleName(PM_STR)), "am",
                                                   "pm"};
  for (std::size_t i = 0; i < marks.size(); ++i) {
    if (marks[i].empty() || !folded.ends_with(marks[i])) continue;
    folded.remove_suffix(marks[i].size());
    return i % 2 == 1;
  }
  return std::nullopt;
}

}  // namespace tresmor
