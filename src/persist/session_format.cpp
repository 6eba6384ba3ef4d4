#include "persist/session_format.h"

#include <algorithm>
#include <span>
#include <variant>

#include "base/failure.h"
#include "base/number.h"
#include "base/text.h"

namespace tresmor {

void SessionFields::Split(std::string_view line) {
  fields_.clear();
  if (line.empty()) return;
  std::size_t begin = 0;
  for (std::size_t end = line.find(kFieldEnd); end != std::string_view::npos; end = line.find(kFieldEnd, begin)) {
    fields_.emplace_back(line.substr(begin, end - begin));
    begin = end + kFieldEnd.size();
  }
  fields_.emplace_back(line.substr(begin));
}

std::string_view SessionFields::operator[](std::int32_t index) const {
  if (index < 0 || index > Last()) throw Failure(Errors::Subscript);
  return std::get<std::string_view>(fields_[static_cast<std::size_t>(index)]);
}

std::int32_t SessionFields::AddRow(ListView& lst, std::int32_t last) const {
  const std::string_view text = (*this)[0];
  const std::int32_t subItems = std::clamp(last, 0, lst.Columns() - 1);
  const std::int32_t row = lst.AddRow(text, std::span(fields_).subspan(1, static_cast<std::size_t>(subItems)));
  if (last > subItems) throw Failure(Errors::Subscript);
  return row;
}

bool ParseBoolean(std::string_view text) {
  if (EqualText(text, BooleanText(true))) return true;
  if (EqualText(text, BooleanText(false))) return false;
  try {
    ParseInt32(text);
  } catch (const Failure& failure) {
    if (failure.Number() != Errors::Overflow) throw;  // a number is one however long it is
  }
  return text.find_first_of("123456789") != std::string_view::npos;
}

}  // namespace tresmor
