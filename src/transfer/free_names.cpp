#include "transfer/free_names.h"

#include "base/path.h"
#include "base/text.h"

namespace tresmor {

namespace {

std::string_view Shortened(std::string_view text, std::size_t most) {
  std::size_t end = 0;
  while (end < text.size()) {
    const std::size_t next = end + CharLength(text, end);
    if (next > most) break;
    end = next;
  }
  return text.substr(0, end);
}

}  // namespace

std::string NumberedName(std::string_view name, std::int64_t number, std::size_t most) {
  const std::size_t dot = name.rfind('.');
  std::string_view stem = name.substr(0, dot == 0 ? name.npos : dot);
  std::string end(name.substr(stem.size()));
  if (number > 1) end.insert(0, " (" + std::to_string(number) + ")");
  if (end.size() >= most) {  // all but a few letters are extension
    stem = name;
    end = number > 1 ? " (" + std::to_string(number) + ")" : "";
  }
  return std::string(Shortened(stem, most - end.size())) + end;
}

bool FreeNames::Promise(const Wish& wish, const std::string& name, const Taken& taken) {
  const std::string key = style_.Key(JoinPath(wish.folder, name, style_));
  return !promised_.contains(key) && !taken(name) && promised_.insert(key).second;
}

std::string FreeNames::Pick(const Wish& wish, const Taken& taken) {
  return Promise(wish, wish.name, taken) ? wish.name : Next(wish, taken);
}

std::string FreeNames::Next(const Wish& wish, const Taken& taken) {
  std::int64_t& last = last_.try_emplace(style_.Key(JoinPath(wish.folder, wish.name, style_)), 1).first->second;
  for (;;) {
    std::string name = NumberedName(wish.name, ++last, wish.most);
    if (Promise(wish, name, taken)) return name;
  }
}

}  // namespace tresmor
