#include "shell/help_search.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/text.h"

namespace tresmor {
namespace {

// Bytes of other scripts are letters.
bool IsOfAWord(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  const std::string folded = FoldCase(text);
  for (auto begin = folded.begin(); begin != folded.end();) {
    const auto end = std::find_if_not(begin, folded.end(), IsOfAWord);
    if (begin != end) words.emplace_back(begin, end);
    begin = std::find_if(end, folded.end(), IsOfAWord);
  }
  return words;
}

std::size_t Count(const std::vector<std::string>& words, const std::string& start) {
  return static_cast<std::size_t>(
      std::ranges::count_if(words, [&](const std::string& word) { return word.starts_with(start); }));
}

}  // namespace

std::string PlainText(std::string_view html) {
  std::string text(html);
  if (const std::size_t head = text.find("</head>"); head != std::string::npos) text.erase(0, head);
  for (std::size_t begin = 0; (begin = text.find('<', begin)) != std::string::npos;) {
    const std::size_t end = text.find('>', begin);
    text.replace(begin, end == std::string::npos ? end : end + 1 - begin, " ");
  }
  for (const auto& [entity, meaning] :
       {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&nbsp;", " "}, {"&amp;", "&"}}) {
    text = ReplaceAll(text, entity, meaning);
  }
  return text;
}

void HelpSearch::Add(std::string_view title, std::string_view html) {
  pages_.push_back({WordsOf(title), WordsOf(PlainText(html))});
}

bool HelpSearch::IsBlank(std::string_view query) { return WordsOf(query).empty(); }

std::size_t HelpSearch::Weight(const Page& page, const std::vector<std::string>& query) {
  constexpr std::size_t kTitleWeight = 10;
  std::size_t weight = 0;
  for (const std::string& word : query) {
    const std::size_t here = kTitleWeight * Count(page.title, word) + Count(page.text, word);
    if (here == 0) return 0;
    weight += here;
  }
  return weight;
}

std::vector<std::size_t> HelpSearch::Find(std::string_view query) const {
  const std::vector<std::string> words = WordsOf(query);
  std::vector<std::size_t> found(pages_.size());
  std::iota(found.begin(), found.end(), 0);
  if (words.empty()) return found;
  std::vector<std::size_t> weights;
  for (const Page& page : pages_) weights.push_back(Weight(page, words));
  std::erase_if(found, [&](std::size_t page) { return weights[page] == 0; });
  std::ranges::stable_sort(found, std::ranges::greater(), [&](std::size_t page) { return weights[page]; });
  return found;
}

}  // namespace tresmor
