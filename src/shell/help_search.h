// Words looked for in the pages of the help.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tresmor {

// What a page says: its words, without mark-up.
std::string PlainText(std::string_view html);

// The pages to search, by their places in the order in which they were added.
class HelpSearch {
 public:
  void Add(std::string_view title, std::string_view html);
  bool IsEmpty() const { return pages_.empty(); }

  // Whether `query` has no word in it to look for.
  static bool IsBlank(std::string_view query);

  // The pages on which a word begins with each of the words in `query`, in any case of letters, those that say most of
  // them first: a word in the title counts for ten in the text. All pages in their order for a blank query.
  std::vector<std::size_t> Find(std::string_view query) const;

 private:
  struct Page {
    std::vector<std::string> title;  // words
    std::vector<std::string> text;
  };
  static std::size_t Weight(const Page& page, const std::vector<std::string>& query);

  std::vector<Page> pages_;
};

}  // namespace tresmor
