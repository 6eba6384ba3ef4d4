// The pages of the help: one table of them all, and which of them is about what.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tresmor {

// What of the help is to be shown: a page by its name, or the topic of a HelpContextID.
using HelpTopic = std::variant<std::string, std::int32_t>;

// The HelpContextID of the first page, which tells of the window and of the help itself.
inline constexpr std::int32_t kOverviewHelp = 102;
// Those of the result lists and of the pictures beside them.
inline constexpr std::int32_t kResultsHelp = 121;
inline constexpr std::int32_t kPreviewHelp = 122;

inline constexpr char kQuickStartPage[] = "quickstart.htm";
inline constexpr char kMarkPage[] = "mark.htm";

struct HelpPage {
  const char* file;   // in the help's folder
  const char* title;  // also that of the page itself
};

// All pages, in the order of the contents. The first one is for who asks for nothing else.
std::span<const HelpPage> HelpPages();

// Where a HelpContextID is written about: a page, and perhaps "#" and a place on it.
struct HelpContext {
  std::int32_t number;
  const char* address;
};
std::span<const HelpContext> HelpContexts();

// Where a topic is written about; the first page for a number that nothing is written about.
std::string HelpAddress(const HelpTopic& topic);

// The page of an address.
std::string_view HelpFileOf(std::string_view address);

}  // namespace tresmor
