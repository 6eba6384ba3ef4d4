#include "shell/help_pages.h"

#include <algorithm>

namespace tresmor {
namespace {

constexpr HelpPage kPages[] = {
    {"overview.htm", "Tresmor and its window"},
    {kQuickStartPage, "Quick start"},
    {"scope.htm", "Where to search"},
    {"criteria.htm", "Which files to search"},
    {"search.htm", "Searching"},
    {"findings.htm", "What is found"},
    {"results.htm", "The result lists"},
    {"preview.htm", "Preview of pictures"},
    {kMarkPage, "Marks and Smart Marker"},
    {"fileops.htm", "Deleting, moving and copying"},
    {"files.htm", "Opening and renaming files"},
    {"sessions.htm", "Search sessions"},
    {"export.htm", "Lists for a spreadsheet (CSV)"},
    {"options.htm", "Options"},
    {"messages.htm", "Messages, warnings and tips"},
    {"keys.htm", "Keys"},
    {"console.htm", "The console program"},
    {"questions.htm", "Questions and answers"},
    {"about.htm", "About Tresmor"},
};

constexpr HelpContext kContexts[] = {
    {100, kMarkPage},
    {101, "files.htm"},
    {kOverviewHelp, "overview.htm"},
    {104, "files.htm#rename"},
    {107, "about.htm#links"},
    {112, "options.htm"},
    {114, "export.htm"},
    {116, "fileops.htm"},
    {117, "scope.htm"},
    {118, "search.htm#options"},
    {119, "sessions.htm"},
    {120, "search.htm"},
    {kResultsHelp, "results.htm"},
    {kPreviewHelp, "preview.htm"},
};

}  // namespace

std::span<const HelpPage> HelpPages() { return kPages; }

std::span<const HelpContext> HelpContexts() { return kContexts; }

std::string HelpAddress(const HelpTopic& topic) {
  if (const auto* const page = std::get_if<std::string>(&topic)) return *page;
  const auto* const found = std::ranges::find(kContexts, std::get<std::int32_t>(topic), &HelpContext::number);
  return found == std::end(kContexts) ? kPages[0].file : found->address;
}

std::string_view HelpFileOf(std::string_view address) { return address.substr(0, address.find('#')); }

}  // namespace tresmor
