// Settings in memory, which fail where a test says so.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "platform/settings_store.h"

namespace tresmor {

class MemorySettings final : public SettingsStore {
 public:
  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) const override {
    asked.push_back(std::string(section) + "/" + std::string(key));
    const auto found = values_.find(Name(application, section, key));
    return found == values_.end() ? std::string(fallback) : found->second;
  }
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override {
    saved.push_back(std::string(section) + "/" + std::string(key));
    Check(section, key);
    values_[Name(application, section, key)] = value;
  }
  void DeleteSection(std::string_view application, std::string_view section) override {
    Check(section, "");
    const auto inside = [&, name = Name(application, section, "")](const auto& value) {
      return std::get<0>(value.first) == std::get<0>(name) && std::get<1>(value.first) == std::get<1>(name);
    };
    std::erase_if(values_, inside);
  }

  // From now on no key of this section, or only this one, can be written, until `failure` is Errors::None.
  void Fail(Errors failure, std::string section, std::string key = "") {
    failure_ = failure;
    failingSection_ = std::move(section);
    failingKey_ = std::move(key);
  }

  // What Save was called for, "section/key", in order, and what Get was.
  std::vector<std::string> saved;
  mutable std::vector<std::string> asked;

 private:
  using Names = std::tuple<std::string, std::string, std::string>;
  static Names Name(std::string_view application, std::string_view section, std::string_view key) {
    return {FoldCase(application), FoldCase(section), FoldCase(key)};
  }
  void Check(std::string_view section, std::string_view key) const {
    if (failure_ == Errors::None || section != failingSection_) return;
    if (failingKey_.empty() || failingKey_ == key) throw Failure(failure_);
  }

  std::map<Names, std::string> values_;
  Errors failure_ = Errors::None;
  std::string failingSection_;
  std::string failingKey_;
};

}  // namespace tresmor
