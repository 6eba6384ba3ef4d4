#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>

namespace tresmor {

// What of the help is to be shown: a page by its name, or the topic of a HelpContextID.
using HelpTopic = std::variant<std::string, std::int32_t>;

inline constexpr char kQuickStartPage[] = "quickstart.htm";
inline constexpr char kMarkPage[] = "mark.htm";

// Shows it; none where there is no help to show.
using ShowHelp = std::function<void(const HelpTopic& topic)>;

}  // namespace tresmor
