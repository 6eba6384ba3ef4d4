#include "cli/completion.h"

#include <map>
#include <span>

namespace tresmor {
namespace {

using Words = std::span<const std::string>;

// The names of values and positionals that stand for paths.
const std::map<std::string, const char*> kPathNames = {{"DIR", kOfferFolders},   {"PATH", kOfferFolders},
                                                       {"DEST", kOfferFolders},  {"FILE", kOfferFiles},
                                                       {"SESSION", kOfferFiles}, {"OUT", kOfferFiles}};

bool LooksLikeOption(const std::string& word) { return word.starts_with('-'); }

std::string Offer(const std::string& word, const std::string& typed, const std::string& help) {
  return word.starts_with(typed) ? word + '\t' + help + '\n' : "";
}

std::string OfferCommands(CLI::App& app, const std::string& typed) {
  std::string offers;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App* /*each*/) { return true; }))
    offers += Offer(command->get_name(), typed, command->get_description());
  return offers;
}

// Those that the help shows.
std::string OfferOptions(CLI::App& command, const std::string& typed) {
  std::string offers;
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_lnames()) offers += Offer("--" + name, typed, option->get_description());
  }
  return offers;
}

// Nothing if `word` is no option with a value behind it.
CLI::Option* OptionWithValue(CLI::App& command, const std::string& word) {
  CLI::Option* option = LooksLikeOption(word) ? command.get_option_no_throw(word) : nullptr;
  return option != nullptr && option->get_items_expected_max() > 0 ? option : nullptr;
}

// The names that an option takes, as OneOf has noted them; none for other options.
std::vector<std::string> NamesOf(CLI::Option& option) {
  try {
    const std::string& names = option.get_validator()->get_name();
    return names.empty() ? std::vector<std::string>() : CLI::detail::split(names, ',');
  } catch (const CLI::OptionNotFound&) {
    return {};
  }
}

std::string OfferValues(CLI::Option& option, const std::string& typed) {
  const auto path = kPathNames.find(option.get_positional() ? option.get_name() : option.get_type_name());
  if (path != kPathNames.end()) return path->second;
  const std::size_t comma = option.get_delimiter() == '\0' ? std::string::npos : typed.rfind(option.get_delimiter());
  const std::string before = comma == std::string::npos ? "" : typed.substr(0, comma + 1);
  std::string offers;
  for (const std::string& name : NamesOf(option)) offers += Offer(before + name, typed, "");
  return offers;
}

// The positional that a word behind `words` would be, the last one as often as it may come; nothing behind all of them.
CLI::Option* PositionalBehind(CLI::App& command, Words words) {
  std::vector<CLI::Option*> slots = command.get_options([](const CLI::Option* each) { return each->get_positional(); });
  std::size_t filled = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (OptionWithValue(command, words[i]) != nullptr) {
      ++i;
    } else if (!LooksLikeOption(words[i])) {
      ++filled;
    }
  }
  if (filled < slots.size()) return slots[filled];
  return !slots.empty() && slots.back()->get_items_expected_max() > 1 ? slots.back() : nullptr;
}

// For the last of the words behind a command.
std::string OfferBehind(CLI::App& command, Words words) {
  const std::string& typed = words.back();
  const Words before = words.first(words.size() - 1);
  CLI::Option* const option = before.empty() ? nullptr : OptionWithValue(command, before.back());
  if (option != nullptr) return OfferValues(*option, typed);
  if (LooksLikeOption(typed)) return OfferOptions(command, typed);
  CLI::Option* const positional = PositionalBehind(command, before);
  return positional == nullptr ? "" : OfferValues(*positional, typed);
}

}  // namespace

std::string Completions(CLI::App& app, const std::vector<std::string>& words) {
  if (words.empty()) return "";
  const std::string& typed = words.back();
  if (words.size() == 1) return LooksLikeOption(typed) ? OfferOptions(app, typed) : OfferCommands(app, typed);
  const std::vector<CLI::App*> named =
      app.get_subcommands([&](const CLI::App* each) { return each->get_name() == words.front(); });
  return named.empty() ? "" : OfferBehind(*named.front(), Words(words).subspan(1));
}

}  // namespace tresmor
